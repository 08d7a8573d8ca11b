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

TEST(ProgramTest, VersionIsOneLineOnStandardOutput) {
    const RunResult run = run_kivo({"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "kivo " KIVO_VERSION "\n");
    EXPECT_EQ(run.err, "");
}

TEST(ProgramTest, HelpNamesEverySubCommand) {
    const RunResult run = run_kivo({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    for (const char* const command : kCommands) {
        EXPECT_TRUE(contains(run.out, std::string("  ") + command + ' ')) << command << run.out;
    }
}

TEST(ProgramTest, HelpOfEachSubCommandHasUsageExitStatusAndAnExample) {
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

TEST(ProgramTest, NoLineOfHelpIsWiderThanATerminal) {
    for (const std::string command : kCommands) {
        for (const std::string& line : lines_of(run_kivo({command, "--help"}).out)) {
            EXPECT_LE(line.size(), 100U) << line;
        }
    }
}

TEST(ProgramTest, WrongUsageIsAnsweredInOneLineThatSaysWhatIsRight) {
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

TEST(ProgramTest, ControlCharactersOfArgumentsAreEscapedInErrors) {
    const RunResult run = run_kivo({std::string("a\nb\033[31m")});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(lines_of(run.err).size(), 1U) << run.err;
    EXPECT_TRUE(contains(run.err, "'a\\nb\\x1B[31m'")) << run.err;
}

TEST(ProgramTest, AFullDeviceIsAnError) {
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

TEST(ProgramTest, NothingIsColouredWhenNoTerminalReadsIt) {
    const RunResult run =
        run_kivo({"show", example("faulty_info.xml")}, {.environment = {{"TERM", "xterm"}}});
    EXPECT_FALSE(has_color(run.out));
    EXPECT_FALSE(has_color(run.err));
}

TEST(ProgramTest, TheOptionColoursBothStreams) {
    const RunResult run = run_kivo({"show", "--color", "always", example("faulty_info.xml")});
    EXPECT_TRUE(has_color(run.out));
    EXPECT_TRUE(has_color(run.err));
}

TEST(ProgramTest, TheOptionMayStandBeforeTheSubCommand) {
    EXPECT_TRUE(has_color(run_kivo({"--color=always", "show", example("faulty_info.xml")}).out));
}

TEST(ProgramTest, ForceColorColours) {
    const RunOptions options = {.environment = {{"FORCE_COLOR", "1"}}};
    EXPECT_TRUE(has_color(run_kivo({"show", example("fifo_info.xml")}, options).out));
}

TEST(ProgramTest, ForceColorZeroOrEmptyDoesNot) {
    for (const std::string value : {"", "0"}) {
        const RunOptions options = {.environment = {{"FORCE_COLOR", value}}};
        EXPECT_FALSE(has_color(run_kivo({"show", example("fifo_info.xml")}, options).out)) << value;
    }
}

TEST(ProgramTest, NoColorWinsOverForceColorAndTheOptionOverBoth) {
    const RunOptions options = {.environment = {{"FORCE_COLOR", "1"}, {"NO_COLOR", "1"}}};
    const std::string file = example("fifo_info.xml");
    EXPECT_FALSE(has_color(run_kivo({"show", file}, options).out));
    EXPECT_TRUE(has_color(run_kivo({"show", "--color", "always", file}, options).out));
    const RunOptions forced = {.environment = {{"FORCE_COLOR", "1"}}};
    EXPECT_FALSE(has_color(run_kivo({"show", "--color", "never", file}, forced).out));
}

TEST(ProgramTest, ColoursChangeNothingElse) {
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
