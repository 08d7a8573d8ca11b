#include "tools/text/words.h"

#include <gtest/gtest.h>

namespace {

TEST(Words, only_one_is_singular) {
    EXPECT_EQ(counted(0, "error"), "0 errors");
    EXPECT_EQ(counted(1, "error"), "1 error");
    EXPECT_EQ(counted(2, "error"), "2 errors");
}

TEST(Words, names_are_quoted) {
    EXPECT_EQ(quoted({}), "none");
    EXPECT_EQ(quoted({"a"}), "'a'");
    EXPECT_EQ(quoted({"a", "b", ""}), "'a', 'b', ''");
}

TEST(Words, a_choice_of_names_ends_with_or) {
    EXPECT_EQ(quoted_choice({"a"}), "'a'");
    EXPECT_EQ(quoted_choice({"a", "b"}), "'a' or 'b'");
    EXPECT_EQ(quoted_choice({"a", "b", "c"}), "'a', 'b' or 'c'");
}

TEST(Words, a_scale_that_has_a_number_is_no_unit) {
    EXPECT_EQ(with_unit(10, "ns"), "10 ns");
    EXPECT_EQ(with_unit(-10, ""), "-10");
    EXPECT_EQ(with_unit(10, "100 ps"), "10");
}

TEST(Words, a_radix_has_a_name_for_people_and_one_for_programs) {
    EXPECT_EQ(radix_name(DRO_RADIX_BINARY), "binary");
    EXPECT_STREQ(radix_id(DRO_RADIX_BINARY), "binary");
    EXPECT_EQ(radix_name(DRO_RADIX_HEX), "hexadecimal");
    EXPECT_STREQ(radix_id(DRO_RADIX_HEX), "hex");
    EXPECT_EQ(radix_name(DRO_RADIX_FIXED_POINT), "fixed point");
    EXPECT_STREQ(radix_id(DRO_RADIX_FIXED_POINT), "fixed_point");
    EXPECT_EQ(radix_name(DRO_RADIX_NONE), "as written");
    EXPECT_STREQ(radix_id(DRO_RADIX_NONE), "none");
}

}  // namespace
