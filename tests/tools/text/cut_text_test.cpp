#include "tools/text/cut_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(CutText, a_text_up_to_the_limit_stays_whole) {
    for (const std::string text : {"", "a", "1234567890"}) {
        EXPECT_EQ(cut_text(text, 10).shown, text);
        EXPECT_EQ(cut_text(text, 10).left_out, 0U);
    }
    EXPECT_EQ(cut_text("1234567890a", 10).shown, "1234567890");
    EXPECT_EQ(cut_text("1234567890a", 10).left_out, 1U);
}

TEST(CutText, a_longer_one_is_cut_after_a_word_if_one_ends_near) {
    EXPECT_EQ(cut_text("one, two, three", 12).shown, "one, two, ");
    EXPECT_EQ(cut_text("one, two, three", 12).left_out, 5U);
    const std::string word(300, 'a');
    EXPECT_EQ(cut_text("b " + word, 200).shown.size(), 200U);
}

TEST(CutText, characters_stay_whole_and_count_once) {
    const std::string text = "a\u00E4\u20AC\U0001F600b";
    EXPECT_EQ(cut_text(text, 2).shown, "a");
    EXPECT_EQ(cut_text(text, 2).left_out, 4U);
    EXPECT_EQ(cut_text(text, 3).shown, "a\u00E4");
    EXPECT_EQ(cut_text(text, 9).shown, "a\u00E4\u20AC");
    EXPECT_EQ(cut_text(text, 10).left_out, 1U);
}

TEST(CutText, bytes_that_are_no_characters_are_cut_anywhere) {
    EXPECT_EQ(cut_text(std::string(20, '\x80'), 10).shown.size(), 10U);
    EXPECT_EQ(cut_text(std::string(20, '\x80'), 10).left_out, 10U);
}

TEST(CutText, what_is_missing_is_counted_in_words) {
    EXPECT_EQ(and_more(1, "value"), "... and 1 more value");
    EXPECT_EQ(and_more(20, "value"), "... and 20 more values");
}

}  // namespace
