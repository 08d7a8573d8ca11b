#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/tools/program.h"
#include "tools/findings/catalogue.h"
#include "tools/findings/verdict_pages.h"
#include "tools/text/text_escape.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

TEST(Explain, a_message_is_explained_on_standard_output) {
    const RunResult run = run_kivo({"explain", "unknown-section"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "unknown-section (error)\n"
              "\n"
              "An element directly in ROOT is not a section of a description, so nothing in it\n"
              "is read. Tags are compared exactly and are written in upper case: correct the\n"
              "tag, or remove the element. The sections are FUNCTION_INFORMATION, PARAMETERS,\n"
              "PARAMETER_RULES, PORTS, PORT_RULES, HIDDEN_PARAMETERS, MACROS, RULES, MESSAGES,\n"
              "MSGS, WAVE_DATA, CUSTOM_VECTORS, WIZARD_DATA, HTML_TEXT and INCLUDE.\n"
              "\n"
              "Example:\n"
              "\n"
              "  <ROOT>\n"
              "    <PARAMETRS>\n"
              "      <PARAMETER NAME=\"WIDTH\" TYPE=\"INTEGER\" VALUE=\"8\"/>\n"
              "    </PARAMETRS>\n"
              "  </ROOT>\n");
}

TEST(Explain, every_message_is_explained_in_lines_that_a_terminal_holds) {
    for (const MessageDescription& row : message_catalogue()) {
        const RunResult run = run_kivo({"explain", std::string(row.id)});
        EXPECT_EQ(run.status, 0) << row.id;
        EXPECT_EQ(run.out.rfind(std::string(row.id) + " (", 0), 0U) << run.out;
        for (const std::string& line : lines_of(run.out)) {
            EXPECT_LE(line.size(), 100U) << line;
            EXPECT_EQ(escape_text(line), line) << row.id;
        }
    }
}

TEST(Explain, a_verdict_is_explained_with_what_to_set) {
    EXPECT_EQ(run_kivo({"explain", "out-of-range"}).out,
              "out-of-range (error of a configuration)\n"
              "\n"
              "A parameter lies outside a FORCE_RANGE that counts now. The configuration is not\n"
              "legal. Values are never moved into the range: set another one, or change what\n"
              "the limits or the condition of the range depend on. The message shows the limits\n"
              "as they stand now, and --why what they come from.\n"
              "\n"
              "Example, with kivo configure FILE DEPTH=128:\n"
              "\n"
              "  <ROOT>\n"
              "    <PARAMETERS>\n"
              "      <PARAMETER NAME=\"DEPTH\" TYPE=\"INTEGER\" VALUE=\"16\">\n"
              "        <FORCE_RANGE MIN=\"4\" MAX=\"64\"/>\n"
              "      </PARAMETER>\n"
              "    </PARAMETERS>\n"
              "  </ROOT>\n");
}

TEST(Explain, an_id_of_both_kinds_is_explained_twice) {
    const std::string out = run_kivo({"explain", "overridden"}).out;
    EXPECT_EQ(out.rfind("overridden (warning)\n\n", 0), 0U) << out;
    EXPECT_TRUE(contains(out, "\n\noverridden (warning of a configuration)\n\n")) << out;
}

TEST(Explain, every_verdict_is_explained_in_lines_that_a_terminal_holds) {
    for (const VerdictPage& page : verdict_pages()) {
        const RunResult run = run_kivo({"explain", std::string(page.id)});
        EXPECT_EQ(run.status, 0) << page.id;
        for (const std::string& line : lines_of(run.out)) {
            EXPECT_LE(line.size(), 100U) << line;
            EXPECT_EQ(escape_text(line), line) << page.id;
        }
    }
}

TEST(Explain, several_messages_are_explained_in_the_order_given) {
    const std::string first = run_kivo({"explain", "surplus-else"}).out;
    const std::string second = run_kivo({"explain", "no-root"}).out;
    EXPECT_EQ(run_kivo({"explain", "surplus-else", "no-root"}).out, first + "\n" + second);
}

TEST(Explain, without_an_id_all_are_listed_in_one_line_each) {
    const RunResult run = run_kivo({"explain"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    const std::vector<std::string> lines = lines_of(run.out);
    const std::size_t messages = message_catalogue().size();
    ASSERT_EQ(lines.size(), messages + 1 + verdict_pages().size());
    for (std::size_t index = 0; index < messages; ++index) {
        const MessageDescription& row = message_catalogue()[index];
        const std::string kind = row.severity == Severity::kError ? " error " : " warning ";
        EXPECT_EQ(lines[index].rfind(std::string(row.id) + ' ', 0), 0U) << lines[index];
        EXPECT_TRUE(contains(lines[index], kind)) << lines[index];
        EXPECT_EQ(lines[index].back(), '.') << lines[index];
    }
    EXPECT_EQ(lines[messages], "");
    for (std::size_t index = 0; index < verdict_pages().size(); ++index) {
        const VerdictPage& page = verdict_pages()[index];
        const std::string& line = lines[messages + 1 + index];
        EXPECT_EQ(line.rfind(std::string(page.id) + ' ', 0), 0U) << line;
        EXPECT_TRUE(contains(line, " " + std::string(page.severity) + " ")) << line;
        EXPECT_EQ(line.back(), '.') << line;
    }
    EXPECT_TRUE(contains(run.out,
                         "error    An element directly in ROOT is not a section of a "
                         "description, so nothing in it is read.\n"));
    EXPECT_FALSE(contains(run.out, "Tags are compared exactly"));
}

TEST(Explain, an_unknown_id_is_wrong_usage_and_the_nearest_is_named) {
    const RunResult run = run_kivo({"explain", "no-root", "unknown-sektion"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "kivo: error: ID: no message 'unknown-sektion', perhaps 'unknown-section'; usage: "
              "kivo explain [--color WHEN] [ID...]\n");
    EXPECT_TRUE(
        contains(run_kivo({"explain", "Surplus_Else"}).err, "perhaps 'surplus-else'; usage"));
}

TEST(Explain, nothing_is_named_for_an_id_that_is_like_none) {
    for (const std::string id : {"", "x", "something-else-altogether", "PARAMETRS"}) {
        const RunResult run = run_kivo({"explain", id});
        EXPECT_EQ(run.status, 2) << id;
        EXPECT_EQ(run.out, "") << id;
        EXPECT_TRUE(contains(run.err, "ID: no message '" + id + "'; usage: ")) << run.err;
    }
}

TEST(Explain, control_characters_of_an_id_are_escaped) {
    const RunResult run = run_kivo({"explain", "a\033[31m\nb"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'a\\x1B[31m\\nb'")) << run.err;
}

TEST(Explain, the_id_is_coloured_on_request) {
    EXPECT_TRUE(contains(run_kivo({"explain", "--color", "always", "no-root"}).out,
                         "\033[1mno-root\033[0m (error)\n"));
    EXPECT_FALSE(contains(run_kivo({"explain", "no-root"}).out, "\033"));
}

TEST(Explain, a_full_device_is_an_error) {
    EXPECT_EQ(run_kivo({"explain"}, {.out_path = "/dev/full"}).status, 3);
    EXPECT_EQ(run_kivo({"explain", "no-root"}, {.out_path = "/dev/full"}).status, 3);
}

// What "kivo check" prints can be asked for.
TEST(Explain, every_id_that_check_prints_is_known) {
    const RunResult run = run_kivo({"check", example("faulty_info.xml")});
    std::vector<std::string> arguments = {"explain"};
    for (const std::string& line : messages_in(run.err, example("faulty_info.xml"))) {
        const std::size_t open = line.rfind('[');
        ASSERT_NE(open, std::string::npos) << line;
        arguments.push_back(line.substr(open + 1, line.size() - open - 2));
    }
    ASSERT_GT(arguments.size(), 10U);
    EXPECT_EQ(run_kivo(arguments).status, 0);
}

}  // namespace
