#include <gtest/gtest.h>

#include <string>

#include "tests/tools/program.h"

namespace {

TEST(Translate, each_argument_becomes_one_line) {
    const RunResult run = run_kivo({"translate", "--to", "nhdl", "x gte 4 and y lt 2", "a || b"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "x >= 4 & y < 2\na # b\n");
    EXPECT_EQ(run.err, "");
}

TEST(Translate, each_language_has_its_operators) {
    EXPECT_EQ(run_kivo({"translate", "--to", "verilog", "a and b quot 2"}).out, "a && b / 2\n");
    EXPECT_EQ(run_kivo({"translate", "--to", "vhdl", "a and b quot 2"}).out, "a and b quot 2\n");
}

TEST(Translate, without_arguments_each_line_of_standard_input_is_translated) {
    const RunResult run =
        run_kivo({"translate", "--to", "verilog"}, {.input = "a lt b\n\nc and d"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "a < b\n\nc && d\n");
}

TEST(Translate, empty_input_gives_nothing) {
    const RunResult run = run_kivo({"translate", "--to", "verilog"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

TEST(Translate, bytes_pass_through) {
    const std::string bytes("\xE9\x01 \xFF", 4);
    EXPECT_EQ(run_kivo({"translate", "--to", "vhdl"}, {.input = bytes}).out, bytes + '\n');
}

TEST(Translate, an_argument_may_look_like_an_option_after_two_dashes) {
    EXPECT_EQ(run_kivo({"translate", "--to", "nhdl", "--", "-a lt b"}).out, "-a < b\n");
}

TEST(Translate, an_input_that_cannot_be_read_is_a_failure) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo({"translate", "--to", "vhdl"}, {.input_path = folder.path("")});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err, "kivo: error: cannot read standard input: Is a directory\n");
    const RunResult closed = run_kivo({"translate", "--to", "vhdl"}, {.closes_input = true});
    EXPECT_EQ(closed.status, 3);
    EXPECT_EQ(closed.err, "kivo: error: cannot read standard input: Bad file descriptor\n");
}

}  // namespace
