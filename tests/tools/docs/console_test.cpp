// What the handbooks show of the program is what it prints: every block of the language "console"
// is run, command by command, in a folder with the examples in it. A line "..." stands for lines
// that are left out.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

using Lines = std::vector<std::string>;

struct Command {
    int line = 0;
    std::string text;
    Lines shown;
};

std::vector<Command> commands_of(const std::string& page) {
    std::vector<Command> commands;
    std::ifstream file(KIVO_DOCS "/" + page);
    bool is_console = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.rfind("```", 0) == 0) {
            is_console = line == "```console";
        } else if (is_console && line.rfind("$ ", 0) == 0) {
            commands.push_back({number, line.substr(2), {}});
        } else if (is_console) {
            commands.back().shown.push_back(line);
        }
    }
    return commands;
}

Lines words_of(const std::string& text) {
    std::istringstream stream(text);
    Lines words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

// Whether the lines are those shown, with others in place of each "...".
bool matches(const Lines& shown, const Lines& printed) {
    auto at = printed.begin();
    bool is_open = false;
    for (auto part = shown.begin(); part != shown.end();) {
        const auto end = std::find(part, shown.end(), "...");
        const auto size = end - part;
        const auto found = end == shown.end() && is_open && printed.end() - at >= size
                               ? std::search(printed.end() - size, printed.end(), part, end)
                               : std::search(at, printed.end(), part, end);
        const bool is_sound = size == 0 || (found != printed.end() && (is_open || found == at));
        if (!is_sound) {
            return false;
        }
        at = size == 0 ? at : found + size;
        is_open = end != shown.end();
        part = is_open ? end + 1 : end;
    }
    return is_open || at == printed.end();
}

std::string text_of(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

void expect_as_shown(const std::string& page, std::size_t at_least) {
    const TemporaryFolder folder;
    std::filesystem::create_directory_symlink(KIVO_EXAMPLES, folder.path("examples"));
    const std::vector<Command> commands = commands_of(page);
    EXPECT_GE(commands.size(), at_least);
    int status = 0;
    for (const Command& command : commands) {
        Lines words = words_of(command.text);
        Lines printed = {std::to_string(status)};
        if (command.text != "echo $?") {
            ASSERT_EQ(words[0], "kivo") << command.line;
            words.erase(words.begin());
            const RunResult run = run_kivo(words, {.directory = folder.path("")});
            printed = lines_of(run.err + run.out);
            status = run.status;
        }
        EXPECT_TRUE(matches(command.shown, printed))
            << page << ":" << command.line << ": " << command.text << "\nprints\n"
            << text_of(printed);
    }
}

TEST(Console, the_handbook_of_configurations_shows_what_is_printed) {
    expect_as_shown("configuring.md", 15);
}

TEST(Console, lines_that_are_left_out_match_any) {
    EXPECT_TRUE(matches({"a", "...", "c"}, {"a", "b", "c", "c"}));
    EXPECT_TRUE(matches({"...", "b", "..."}, {"a", "b", "c"}));
    EXPECT_TRUE(matches({"a", "b"}, {"a", "b"}));
    EXPECT_FALSE(matches({"a", "...", "c"}, {"b", "c"}));
    EXPECT_FALSE(matches({"a", "...", "c"}, {"a", "c", "d"}));
    EXPECT_FALSE(matches({"a", "...", "b", "...", "c"}, {"a", "c"}));
    EXPECT_FALSE(matches({"a"}, {"a", "b"}));
    EXPECT_FALSE(matches({"a", "b"}, {"a"}));
    EXPECT_FALSE(matches({}, {"a"}));
}

// The block of C++ in a handbook stands in an example that is built and run.
TEST(Console, the_host_that_it_shows_is_one_that_is_built) {
    std::ifstream page(KIVO_DOCS "/configuring.md");
    std::string block;
    bool is_code = false;
    for (std::string line; std::getline(page, line);) {
        const bool is_fence = line.rfind("```", 0) == 0;
        is_code = is_fence ? line == "```cpp" && block.empty() : is_code;
        block += is_code && !is_fence ? line + "\n" : "";
    }
    std::ifstream host(KIVO_EXAMPLES "/host/configure.cpp");
    std::ostringstream source;
    source << host.rdbuf();
    EXPECT_GT(block.size(), 500U);
    EXPECT_NE(source.str().find(block), std::string::npos) << block;
}

}  // namespace
