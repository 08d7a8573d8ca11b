// What all sub-commands have in common: usage, streams and colours.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

constexpr char kEscape = '\033';

constexpr const char* kCommands[] = {"check",    "completion", "configure", "doc",   "explain",
                                     "instance", "show",       "translate", "value", "wave"};

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool has_color(const std::string& text) {
    return text.find(kEscape) != std::string::npos;
}

void expect_usage_error(const std::vector<std::string>& arguments, const std::string& part) {
    const RunResult run = run_kivo(arguments);
    EXPECT_EQ(run.status, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(run.out, "") << testing::PrintToString(arguments);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, part)) << run.err;
    EXPECT_TRUE(contains(run.err, "usage: kivo ")) << run.err;
}

TEST(Program, version_is_one_line_on_standard_output) {
    const RunResult run = run_kivo({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "kivo " KIVO_VERSION "\n");
    EXPECT_EQ(run.err, "");
}

TEST(Program, help_names_every_sub_command) {
    const RunResult run = run_kivo({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    for (const char* const command : kCommands) {
        EXPECT_TRUE(contains(run.out, std::string("  ") + command + ' ')) << command << run.out;
    }
}

TEST(Program, help_of_each_sub_command_has_usage_exit_status_and_an_example) {
    for (const std::string command : kCommands) {
        const RunResult run = run_kivo({command, "--help"});
        EXPECT_EQ(run.status, 0) << command;
        const bool has_example = contains(run.out, "\nExample:\n  kivo " + command + ' ') ||
                                 contains(run.out, "\nExamples:\n  kivo " + command + ' ');
        EXPECT_TRUE(has_example) << run.out;
        EXPECT_TRUE(contains(run.out, "Usage: kivo " + command + ' ')) << run.out;
        EXPECT_TRUE(contains(run.out, "\nExit status: 0 ")) << run.out;
    }
}

TEST(Program, no_line_of_help_is_wider_than_a_terminal) {
    for (const std::string command : kCommands) {
        for (const std::string& line : lines_of(run_kivo({command, "--help"}).out)) {
            EXPECT_LE(line.size(), 100U) << line;
        }
    }
}

TEST(Program, wrong_usage_is_answered_in_one_line_that_says_what_is_right) {
    expect_usage_error({}, "a sub-command is missing");
    expect_usage_error({"chekc"}, "unknown sub-command 'chekc', perhaps 'check'; usage: kivo");
    expect_usage_error({"fifo_info.xml"}, "unknown sub-command 'fifo_info.xml'; usage: kivo");
    expect_usage_error({"--colour"}, "unknown option '--colour'");
    expect_usage_error({"completion"}, "SHELL is required; usage: kivo completion");
    expect_usage_error({"completion", "tcsh"},
                       "'bash', 'zsh' or 'fish' is wanted, not 'tcsh'; usage: kivo");
    expect_usage_error({"check"},
                       "FILE is required; usage: kivo check [--format text|json|sarif] [-W");
    expect_usage_error({"check", "--quiet"}, "unknown option '--quiet'");
    expect_usage_error({"check", "--color", "blue", "f"},
                       "'auto', 'always' or 'never' is wanted, not 'blue'");
    expect_usage_error({"show"},
                       "FILE is required; usage: kivo show [--format text|json] [-I DIR]... "
                       "[--color WHEN] FILE [NAME=VALUE...]");
    expect_usage_error({"show", "a", "b"}, "unexpected argument 'b'");
    expect_usage_error({"translate", "a"},
                       "--to is required; usage: kivo translate --to nhdl|vhdl");
    expect_usage_error({"translate", "--to", "ada", "a"},
                       "'nhdl', 'vhdl' or 'verilog' is wanted, not 'ada'");
    expect_usage_error({"value", "f", "v", "s"}, "TIME is required; usage: kivo value");
    expect_usage_error({"value", "f", "v", "s", "5ns"},
                       "TIME: a whole number from -2147483648 to 2147483647 is wanted, not '5ns'");
    expect_usage_error({"value", "f", "v", "s", "2147483648"}, "not '2147483648'");
}

TEST(Program, control_characters_of_arguments_are_escaped_in_errors) {
    const RunResult run = run_kivo({std::string("a\nb\033[31m")});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'a\\nb\\x1B[31m'")) << run.err;
}

TEST(Program, a_full_device_is_an_error) {
    const std::vector<std::vector<std::string>> runs = {
        {"--version"},
        {"--help"},
        {"show", example("fifo_info.xml")},
        {"translate", "--to", "vhdl", "a"},
        {"value", example("fifo_info.xml"), "fill_and_drain", "data", "60"}};
    RunOptions options;
    options.out_path = "/dev/full";
    for (const std::vector<std::string>& arguments : runs) {
        const RunResult run = run_kivo(arguments, options);
        EXPECT_EQ(run.status, 3) << testing::PrintToString(arguments);
        EXPECT_EQ(run.err,
                  "kivo: error: cannot write to standard output: No space left on device\n");
    }
}

TEST(Program, nothing_is_coloured_when_no_terminal_reads_it) {
    const RunResult run =
        run_kivo({"show", example("faulty_info.xml")}, {.environment = {{"TERM", "xterm"}}});
    EXPECT_FALSE(has_color(run.out));
    EXPECT_FALSE(has_color(run.err));
}

TEST(Program, the_option_colours_both_streams) {
    const RunResult run = run_kivo({"show", "--color", "always", example("faulty_info.xml")});
    EXPECT_TRUE(has_color(run.out));
    EXPECT_TRUE(has_color(run.err));
}

TEST(Program, the_option_may_stand_before_the_sub_command) {
    EXPECT_TRUE(has_color(run_kivo({"--color=always", "show", example("faulty_info.xml")}).out));
}

TEST(Program, force_color_colours) {
    const RunOptions options = {.environment = {{"FORCE_COLOR", "1"}}};
    EXPECT_TRUE(has_color(run_kivo({"show", example("fifo_info.xml")}, options).out));
}

TEST(Program, force_color_zero_or_empty_does_not) {
    for (const std::string value : {"", "0"}) {
        const RunOptions options = {.environment = {{"FORCE_COLOR", value}}};
        EXPECT_FALSE(has_color(run_kivo({"show", example("fifo_info.xml")}, options).out)) << value;
    }
}

TEST(Program, no_color_wins_over_force_color_and_the_option_over_both) {
    const RunOptions options = {.environment = {{"FORCE_COLOR", "1"}, {"NO_COLOR", "1"}}};
    const std::string file = example("fifo_info.xml");
    EXPECT_FALSE(has_color(run_kivo({"show", file}, options).out));
    EXPECT_TRUE(has_color(run_kivo({"show", "--color", "always", file}, options).out));
    const RunOptions forced = {.environment = {{"FORCE_COLOR", "1"}}};
    EXPECT_FALSE(has_color(run_kivo({"show", "--color", "never", file}, forced).out));
}

TEST(Program, colours_change_nothing_else) {
    const std::string file = example("fifo_info.xml");
    const std::string plain = run_kivo({"show", file}).out;
    std::string colored = run_kivo({"show", "--color", "always", file}).out;
    for (const char* const sequence : {"\033[0m", "\033[1m", "\033[2m"}) {
        for (std::size_t at = 0; (at = colored.find(sequence, at)) != std::string::npos;) {
            colored.erase(at, std::string(sequence).size());
        }
    }
    EXPECT_EQ(colored, plain);
}

}  // namespace
