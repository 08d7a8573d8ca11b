#include "tools/text/words.h"

#include <gtest/gtest.h>

namespace {

TEST(WordsTest, OnlyOneIsSingular) {
    EXPECT_EQ(counted(0, "error"), "0 errors");
    EXPECT_EQ(counted(1, "error"), "1 error");
    EXPECT_EQ(counted(2, "error"), "2 errors");
}

TEST(WordsTest, NamesAreQuoted) {
    EXPECT_EQ(quoted({}), "none");
    EXPECT_EQ(quoted({"a"}), "'a'");
    EXPECT_EQ(quoted({"a", "b", ""}), "'a', 'b', ''");
}

TEST(WordsTest, AChoiceOfNamesEndsWithOr) {
    EXPECT_EQ(quoted_choice({"a"}), "'a'");
    EXPECT_EQ(quoted_choice({"a", "b"}), "'a' or 'b'");
    EXPECT_EQ(quoted_choice({"a", "b", "c"}), "'a', 'b' or 'c'");
}

TEST(WordsTest, AScaleThatHasANumberIsNoUnit) {
    EXPECT_EQ(with_unit(10, "ns"), "10 ns");
    EXPECT_EQ(with_unit(-10, ""), "-10");
    EXPECT_EQ(with_unit(10, "100 ps"), "10");
}

}  // namespace
