#include "kivo/toolkit/less_c_string.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

const LESS_C_STRING less;

}  // namespace

TEST(LessCString, folds_a_to_z_and_nothing_else) {
    EXPECT_FALSE(less("Az", "aZ"));
    EXPECT_FALSE(less("aZ", "Az"));
    EXPECT_FALSE(less("@[", "@["));
    EXPECT_TRUE(less("@", "`"));
    EXPECT_TRUE(less("[", "{"));
    EXPECT_TRUE(less("\xC4", "\xE4"));
}

TEST(LessCString, folded_capitals_stand_after_the_characters_between_the_cases) {
    EXPECT_TRUE(less("_", "A"));
    EXPECT_TRUE(less("_", "a"));
    EXPECT_TRUE(less("Z", "{"));
}

TEST(LessCString, bytes_are_unsigned) {
    EXPECT_TRUE(less("z", "\x80"));
    EXPECT_TRUE(less("\x7F", "\xFF"));
    EXPECT_FALSE(less("\xFF", "\x01"));
}

TEST(LessCString, prefix_comes_first) {
    EXPECT_TRUE(less("A", "a2"));
    EXPECT_TRUE(less("", "a"));
    EXPECT_FALSE(less("a2", "A"));
    EXPECT_FALSE(less("", ""));
}

TEST(LessCString, first_different_byte_decides) {
    EXPECT_TRUE(less("WIDTH", "width2d"));
    EXPECT_TRUE(less("abcZ", "ABD"));
    EXPECT_TRUE(less("a2", "b"));
}

TEST(LessCString, every_pair_of_bytes_is_ordered_one_way_only) {
    for (int left = 0; left < 256; ++left) {
        for (int right = 0; right < 256; ++right) {
            const std::string a(1, static_cast<char>(left));
            const std::string b(1, static_cast<char>(right));
            const int order = LESS_C_STRING::compare(a, b);
            EXPECT_EQ(order < 0, less(a, b)) << left << ' ' << right;
            EXPECT_EQ(order > 0, less(b, a)) << left << ' ' << right;
        }
    }
}

TEST(LessCString, map_holds_one_entry_for_names_that_differ_in_case) {
    std::map<std::string, int, LESS_C_STRING> map;
    map["Name"] = 1;
    map["NAME"] = 2;
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.begin()->first, "Name");
    EXPECT_EQ(map["name"], 2);
}
