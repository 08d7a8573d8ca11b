#include "kivo/session/internal/near_word.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(NearWord, edits_are_counted) {
    EXPECT_EQ(edit_distance("", ""), 0U);
    EXPECT_EQ(edit_distance("PORT", "PORT"), 0U);
    EXPECT_EQ(edit_distance("", "PORT"), 4U);
    EXPECT_EQ(edit_distance("PORT", ""), 4U);
    EXPECT_EQ(edit_distance("POT", "PORT"), 1U);
    EXPECT_EQ(edit_distance("PORTT", "PORT"), 1U);
    EXPECT_EQ(edit_distance("PART", "PORT"), 1U);
    EXPECT_EQ(edit_distance("PROT", "PORT"), 1U);
    EXPECT_EQ(edit_distance("OPTR", "PORT"), 2U);
    EXPECT_EQ(edit_distance("TROP", "PORT"), 3U);
    EXPECT_EQ(edit_distance("CA", "ABC"), 3U);
}

TEST(NearWord, the_distance_is_the_same_both_ways) {
    for (const std::string_view first : {"", "A", "AB", "BA", "CAB", "ABCD", "BADC"}) {
        for (const std::string_view second : {"", "A", "AB", "BA", "CAB", "ABCD", "BADC"}) {
            EXPECT_EQ(edit_distance(first, second), edit_distance(second, first))
                << first << ' ' << second;
        }
    }
}

TEST(NearWord, one_edit_or_a_change_of_case_is_near) {
    for (const std::string_view word : {"HIHG", "HGH", "HIGHT", "HIGN", "high", "High"}) {
        EXPECT_EQ(nearest_word(word, {"HIGH", "LOW"}, 1), "HIGH") << word;
    }
}

TEST(NearWord, more_is_not) {
    for (const std::string_view word : {"", "HI", "HIGHER", "hig", "GHIH", "HOW_", "H\0IGH"}) {
        EXPECT_EQ(nearest_word(word, {"HIGH", "LOWEST"}, 1), "") << word;
    }
    EXPECT_EQ(nearest_word(std::string(100000, 'H'), {"HIGH"}, 1), "");
    EXPECT_EQ(nearest_word("HIGH", {}, 1), "");
}

TEST(NearWord, a_known_word_needs_no_other) {
    EXPECT_EQ(nearest_word("PORT", {"PORTS", "PORT"}, 1), "");
    EXPECT_EQ(nearest_word("V", {"V", "TO"}, 1), "");
}

TEST(NearWord, a_word_of_which_nothing_is_left_is_not_near) {
    EXPECT_EQ(nearest_word("X", {"V", "TO"}, 1), "");
    EXPECT_EQ(nearest_word("", {"V"}, 1), "");
    EXPECT_EQ(nearest_word("VV", {"V"}, 1), "V");
    EXPECT_EQ(nearest_word("v", {"V"}, 1), "V");
}

TEST(NearWord, of_several_the_nearest_then_the_first_is_taken) {
    EXPECT_EQ(nearest_word("WHE", {"THE", "WHEN"}, 1), "THE");
    EXPECT_EQ(nearest_word("WHE", {"WHEN", "THE"}, 1), "WHEN");
    EXPECT_EQ(nearest_word("ports", {"porte", "PORTS"}, 1), "PORTS");
    EXPECT_EQ(nearest_word("ABCD", {"ABXX", "ABCX"}, 2), "ABCX");
}

TEST(NearWord, no_edits_leaves_the_change_of_case) {
    EXPECT_EQ(nearest_word("on", {"ON"}, 0), "ON");
    EXPECT_EQ(nearest_word("NO", {"ON"}, 0), "");
}

}  // namespace
