#include <gtest/gtest.h>

#include <string>

#include "tests/tools/program.h"

namespace {

TEST(TranslateTest, EachArgumentBecomesOneLine) {
    const RunResult run = run_kivo({"translate", "--to", "nhdl", "x gte 4 and y lt 2", "a || b"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "x >= 4 & y < 2\na # b\n");
    EXPECT_EQ(run.err, "");
}

TEST(TranslateTest, EachLanguageHasItsOperators) {
    EXPECT_EQ(run_kivo({"translate", "--to", "verilog", "a and b quot 2"}).out, "a && b / 2\n");
    EXPECT_EQ(run_kivo({"translate", "--to", "vhdl", "a and b quot 2"}).out, "a and b quot 2\n");
}

TEST(TranslateTest, WithoutArgumentsEachLineOfStandardInputIsTranslated) {
    const RunResult run =
        run_kivo({"translate", "--to", "verilog"}, {.input = "a lt b\n\nc and d"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "a < b\n\nc && d\n");
}

TEST(TranslateTest, EmptyInputGivesNothing) {
    const RunResult run = run_kivo({"translate", "--to", "verilog"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

TEST(TranslateTest, BytesPassThrough) {
    const std::string bytes("\xE9\x01 \xFF", 4);
    EXPECT_EQ(run_kivo({"translate", "--to", "vhdl"}, {.input = bytes}).out, bytes + '\n');
}

TEST(TranslateTest, AnArgumentMayLookLikeAnOptionBehindTwoDashes) {
    EXPECT_EQ(run_kivo({"translate", "--to", "nhdl", "--", "-a lt b"}).out, "-a < b\n");
}

TEST(TranslateTest, AnInputThatCannotBeReadIsAFailure) {
    const TemporaryFolder folder;
    const RunResult run = run_kivo({"translate", "--to", "vhdl"}, {.input_path = folder.path("")});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err, "kivo: error: cannot read standard input: Is a directory\n");
    const RunResult closed = run_kivo({"translate", "--to", "vhdl"}, {.closes_input = true});
    EXPECT_EQ(closed.status, 3);
    EXPECT_EQ(closed.err, "kivo: error: cannot read standard input: Bad file descriptor\n");
}

}  // namespace
