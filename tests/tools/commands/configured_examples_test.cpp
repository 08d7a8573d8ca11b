// What configurations of the examples come to, as a user is told: values with their reasons,
// verdicts with their places, what is in conflict, and every way out.

#include <gtest/gtest.h>

#include <string>

#include "tests/tools/commands/configured.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

RunResult told(const std::string& name, const Words& words) {
    return configure(example(name + "_info.xml"), words);
}

// All of the text from a heading on.
std::string below(const std::string& text, const std::string& heading) {
    const std::size_t at = text.find("\n" + heading + "\n");
    return at == std::string::npos ? std::string() : text.substr(at + heading.size() + 2);
}

// The line of a table that begins with this name.
std::string row_of(const std::string& text, const std::string& name) {
    for (const std::string& line : lines_of(text)) {
        if (line.rfind("  " + name + " ", 0) == 0) {
            return line;
        }
    }
    return "no row";
}

std::string legal_column(const std::string& text, const std::string& name) {
    const std::string row = row_of(text, name);
    const std::size_t source = row.find_last_of(' ', row.find_last_not_of(' '));
    const std::size_t gap = row.rfind("  ", source);
    return gap == std::string::npos ? row : row.substr(gap + 2);
}

}  // namespace

TEST(ConfiguredExamples, the_fifo_says_which_rule_forces_and_where) {
    const RunResult run = told("fifo", {"--why", "UNDERFLOW_CHECKING"});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string why = below(run.out, "Why");
    EXPECT_TRUE(contains(why, "forced, READ_MODE == \"NORMAL\"")) << why;
    EXPECT_TRUE(contains(why, "fifo_info.xml:47")) << why;
    EXPECT_TRUE(contains(why, "READ_MODE = NORMAL")) << why;
}

TEST(ConfiguredExamples, a_deep_fifo_is_stored_in_blocks) {
    const RunResult run = told("fifo", {"DEPTH=1024", "--why", "STORAGE"});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string why = below(run.out, "Why");
    EXPECT_TRUE(contains(why, "forced, DEPTH * DATA_WIDTH gt 4096")) << why;
    EXPECT_TRUE(contains(why, "DEPTH = 1024")) << why;
    EXPECT_TRUE(contains(why, "given")) << why;
    EXPECT_TRUE(contains(why, "DATA_WIDTH = 8")) << why;
    EXPECT_TRUE(contains(why, "default")) << why;
}

TEST(ConfiguredExamples, registers_hold_few_words) {
    const Json fifo = configured("fifo", {"DEPTH=128", "STORAGE=REGISTERS"}, 1);
    ASSERT_EQ(verdicts_of(fifo), Words{"out-of-range DEPTH 17"});
    const Json& range = fifo["verdicts"][0];
    EXPECT_EQ(range["text"], "DEPTH is 128, and must be from 4 to 64");
    EXPECT_EQ(repairs_of(range), (Words{"STORAGE=AUTO", "STORAGE=BLOCK", "DEPTH=64"}));
    EXPECT_EQ(range["conflict"], (Json{"DEPTH", "STORAGE"}));
}

TEST(ConfiguredExamples, wide_words_need_blocks) {
    const Json fifo = configured("fifo", {"DATA_WIDTH=200"}, 1);
    ASSERT_EQ(verdicts_of(fifo), Words{"value-rule STORAGE 40"});
    const Json& rule = fifo["verdicts"][0];
    EXPECT_EQ(rule["text"],
              "the rule of STORAGE fails: if DATA_WIDTH gt 128 then STORAGE == \"BLOCK\" else "
              "DEPTH lte 131072");
    EXPECT_EQ(repairs_of(rule), (Words{"STORAGE=BLOCK", "DEPTH=21", "DATA_WIDTH=128"}));
    const Json deeper = configured("fifo", {"DATA_WIDTH=200", "DEPTH=32"}, 0);
    EXPECT_EQ(named(deeper["parameters"], "STORAGE")["value"], "BLOCK");
    EXPECT_EQ(named(deeper["parameters"], "STORAGE")["source"], "forced");
}

TEST(ConfiguredExamples, equal_levels_break_three_rules_for_one_reason) {
    const Json fifo = configured("fifo", {"ALMOST_FULL_LEVEL=4"}, 1);
    ASSERT_EQ(verdicts_of(fifo),
              (Words{"value-rule ALMOST_FULL_LEVEL 33", "rule  107", "message-error  122"}));
    for (const Json& verdict : fifo["verdicts"]) {
        EXPECT_EQ(verdict["conflict"], (Json{"ALMOST_FULL_LEVEL", "ALMOST_EMPTY_LEVEL"}));
        EXPECT_EQ(repairs_of(verdict), (Words{"ALMOST_EMPTY_LEVEL=3", "ALMOST_FULL_LEVEL=5"}));
    }
}

TEST(ConfiguredExamples, a_shallow_fifo_tells_how_deep_it_must_be) {
    const RunResult run = told("fifo", {"DEPTH=8"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(contains(run.out, "ALMOST_FULL_LEVEL is 12, and must be from 1 to 7 (DEPTH - 1)"))
        << run.out;
    EXPECT_EQ(legal_column(run.out, "DEPTH"), "13 to 131072");
    EXPECT_EQ(legal_column(run.out, "ALMOST_FULL_LEVEL"), "5 to 7");
    EXPECT_EQ(legal_column(run.out, "DATA_WIDTH"), "(1 to 256)");
    EXPECT_TRUE(contains(run.out, "\n  ( ) admitted by its own list, ranges and rules")) << run.out;
}

TEST(ConfiguredExamples, a_large_memory_on_a_shared_bus_is_explained_down_to_the_settings) {
    const Words words = {"BUS_STYLE=SHARED", "ADDRESS_WIDTH=13"};
    const Json ram = configured("ram", words, 1);
    const Json& verdict = ram["verdicts"][0];
    for (std::size_t i = 1; i < ram["verdicts"].size(); ++i) {
        EXPECT_EQ(ram["verdicts"][i]["severity"], "warning") << ram["verdicts"];
    }
    Words keys;
    for (const auto& [key, value] : verdict.items()) {
        keys.push_back(key);
    }
    EXPECT_EQ(keys, (Words{"conflict", "id", "place", "repairs", "result", "severity", "subject",
                           "text"}));
    EXPECT_EQ(verdict["id"], "value-rule");
    EXPECT_EQ(verdict["severity"], "error");
    EXPECT_EQ(verdict["result"], "fails");
    EXPECT_EQ(verdict["subject"], "OUTPUT_REGISTER");
    EXPECT_EQ(verdict["text"],
              "the rule of OUTPUT_REGISTER fails: if BLOCK_TYPE == \"LARGE\" then OUTPUT_REGISTER "
              "== \"ON\"");
    EXPECT_EQ(verdict["place"],
              (Json{{"file", example("ram_info.xml")}, {"line", 32}, {"column", 7}}));
    EXPECT_EQ(verdict["conflict"], (Json{"ADDRESS_WIDTH", "BUS_STYLE", "DATA_WIDTH"}));
    EXPECT_EQ(
        verdict["repairs"],
        Json::array({{{"set", {{"DATA_WIDTH", "8"}}}, {"text", "DATA_WIDTH=8"}},
                     {{"set", {{"ADDRESS_WIDTH", "12"}}}, {"text", "ADDRESS_WIDTH=12"}},
                     {{"set", {{"BUS_STYLE", "SEPARATE"}}}, {"text", "BUS_STYLE=SEPARATE"}}}));
}

TEST(ConfiguredExamples, the_tree_of_reasons_leads_to_what_was_given) {
    const RunResult run =
        told("ram", {"BUS_STYLE=SHARED", "ADDRESS_WIDTH=13", "--why", "all", "--repairs"});
    EXPECT_EQ(run.status, 1);
    const std::string why = below(run.out, "Why");
    std::size_t at = 0;
    for (const char* const part :
         {"OUTPUT_REGISTER: its rule fails", "if BLOCK_TYPE == \"LARGE\" then OUTPUT_REGISTER == ",
          "  BLOCK_TYPE = LARGE", "forced, CAPACITY gt 65536", "    CAPACITY = 131072",
          "ADDRESS_WIDTH = 13", "given", "DATA_WIDTH = 16", "default", "  OUTPUT_REGISTER = OFF",
          "forced, BUS_STYLE == \"SHARED\"", "    BUS_STYLE = SHARED", "given", "conflict of:",
          "would be legal with: DATA_WIDTH=8, or ADDRESS_WIDTH=12, or BUS_STYLE=SEPARATE"}) {
        at = why.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << " in\n" << why;
    }
}

TEST(ConfiguredExamples, odd_words_have_no_byte_enables) {
    const Json ram = configured("ram", {"DATA_WIDTH=18", "BYTE_ENABLES=ON"}, 1);
    EXPECT_EQ(ram["legal"], true);
    EXPECT_EQ(ram["granted"], false);
    ASSERT_EQ(ram["verdicts"].size(), 1U) << ram["verdicts"];
    EXPECT_EQ(ram["verdicts"][0]["severity"], "warning");
    EXPECT_EQ(ram["verdicts"][0]["text"],
              "BYTE_ENABLES was set to ON, but a rule makes it \"OFF\"");
    const std::string why = below(
        told("ram", {"DATA_WIDTH=18", "BYTE_ENABLES=ON", "--why", "BYTE_ENABLES"}).out, "Why");
    EXPECT_TRUE(contains(why, "forced, DATA_WIDTH % 8 != 0")) << why;
}

TEST(ConfiguredExamples, a_modulus_forces_the_step) {
    const Json counter = configured("counter", {"MODULUS=10", "STEP=3"}, 1);
    EXPECT_EQ(counter["granted"], false);
    EXPECT_EQ(named(counter["parameters"], "STEP")["asked"], "3");
    EXPECT_EQ(named(counter["parameters"], "STEP")["value"], "1");
    EXPECT_EQ(named(counter["hidden"], "LAST_COUNT")["value"], "9");
    EXPECT_EQ(named(counter["maps"], "clock_divider")["applies"], true);
    for (const Json& message : counter["messages"]) {
        EXPECT_NE(message["severity"], "error") << message;
    }
}

TEST(ConfiguredExamples, a_modulus_of_one_is_told_with_the_values_of_the_rule) {
    const Json counter = configured("counter", {"MODULUS=1"}, 1);
    bool has_rule = false;
    bool has_advice = false;
    for (const Json& verdict : counter["verdicts"]) {
        has_rule = has_rule || verdict["id"] == "rule";
        has_advice = has_advice || (verdict["id"] == "advice" && verdict["severity"] == "advice" &&
                                    contains(verdict["text"], "MODULUS != 1"));
    }
    EXPECT_TRUE(has_rule && has_advice) << counter["verdicts"];
}

TEST(ConfiguredExamples, a_counter_with_a_load_port_has_its_data_port) {
    const Json counter = configured("counter", {"DIRECTION=PORT", "load=USED", "WIDTH=4"}, 0);
    EXPECT_EQ(named(counter["ports"], "up_down")["state"], "USED");
    EXPECT_EQ(named(counter["ports"], "data")["state"], "USED");
    EXPECT_EQ(named(counter["ports"], "data")["width"], 4);
    EXPECT_EQ(named(counter["vectors"], "load_and_turn")["applies"], true);
}

TEST(ConfiguredExamples, the_largest_modulus_has_one_bit_more_than_the_counter) {
    configured("counter", {"WIDTH=64", "MODULUS=18446744073709551616"}, 0);
    const Json beyond = configured("counter", {"WIDTH=64", "MODULUS=18446744073709551617"}, 1);
    bool has_limit = false;
    for (const Json& verdict : beyond["verdicts"]) {
        has_limit = has_limit || (verdict["id"] == "out-of-range" &&
                                  contains(verdict["text"], "18446744073709551616 (2 ^ WIDTH)"));
    }
    EXPECT_TRUE(has_limit) << beyond["verdicts"];
}

TEST(ConfiguredExamples, an_instance_has_the_generics_that_leave_the_wizard) {
    for (const std::string language : {"vhdl", "verilog"}) {
        const RunResult run =
            run_kivo({"instance", example("fifo_info.xml"), "DEPTH=1024", "--language", language});
        EXPECT_EQ(run.status, 0) << run.err;
        for (const std::string generic : {"DATA_WIDTH", "DEPTH", "READ_MODE", "ALMOST_FULL_LEVEL",
                                          "ALMOST_EMPTY_LEVEL", "STORAGE"}) {
            EXPECT_TRUE(contains(
                run.out, language == "vhdl" ? "    " + generic + " => " : "  ." + generic + "("))
                << generic << run.out;
        }
        for (const char* const absent :
             {"OVERFLOW_CHECKING", "UNDERFLOW_CHECKING", "used_words", "_pointer"}) {
            EXPECT_FALSE(contains(run.out, absent)) << absent << run.out;
        }
        const RunResult refused = run_kivo({"instance", example("fifo_info.xml"), "DEPTH=128",
                                            "STORAGE=REGISTERS", "--language", language});
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
    }
}
