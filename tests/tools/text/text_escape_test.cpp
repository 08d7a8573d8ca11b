#include "tools/text/text_escape.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(TextEscape, plain_text_and_utf_8_stay_as_they_are) {
    for (const std::string text : {"", "a b", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(escape_text(text), text);
    }
}

TEST(TextEscape, control_characters_become_visible) {
    EXPECT_EQ(escape_text(std::string_view("\0\x1F\x7F", 3)), "\\x00\\x1F\\x7F");
    EXPECT_EQ(escape_text("\n\r\t\033"), "\\n\\r\\t\\x1B");
    EXPECT_EQ(escape_text("\xC2\x80\xC2\x9B\xC2\x9F"), "\\u0080\\u009B\\u009F");
}

TEST(TextEscape, characters_that_reorder_or_hide_text_become_visible) {
    EXPECT_EQ(escape_text("\xE2\x80\xAE\xE2\x81\xA6\xE2\x80\x8B"), "\\u202E\\u2066\\u200B");
    EXPECT_EQ(escape_text("\xEF\xBB\xBF"), "\\uFEFF");
    EXPECT_EQ(escape_text("\xEF\xBF\xB9\xF3\xA0\x81\x81"), "\\uFFF9\\uE0041");
}

TEST(TextEscape, characters_that_no_xml_may_hold_become_visible) {
    EXPECT_EQ(escape_text("\xEF\xBF\xBD\xEF\xBF\xBE\xEF\xBF\xBF"), "\xEF\xBF\xBD\\uFFFE\\uFFFF");
}

TEST(TextEscape, bytes_that_are_not_utf_8_become_visible) {
    EXPECT_EQ(escape_text("\xE9"), "\\xE9");
    EXPECT_EQ(escape_text("\xC3"), "\\xC3");
    EXPECT_EQ(escape_text("\x9B"), "\\x9B");
    EXPECT_EQ(escape_text("\xC0\x80"), "\\xC0\\x80");
    EXPECT_EQ(escape_text("\xE0\x80\x80"), "\\xE0\\x80\\x80");
    EXPECT_EQ(escape_text("\xED\xA0\x80"), "\\xED\\xA0\\x80");
    EXPECT_EQ(escape_text("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80");
    EXPECT_EQ(escape_text("\xE2\x82"), "\\xE2\\x82");
}

TEST(TextEscape, line_breaks_are_joined_and_other_blanks_kept) {
    EXPECT_EQ(join_lines("\n  a  b \n\t c\n"), "a  b c");
    EXPECT_EQ(join_lines("a"), "a");
    EXPECT_EQ(join_lines(" \n "), "");
    EXPECT_EQ(join_lines(""), "");
}

}  // namespace
