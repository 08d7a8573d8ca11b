#include "tools/text/text_width.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/text/text_escape.h"

namespace {

using Lines = std::vector<std::string>;

std::vector<std::string> texts_of(const std::vector<TextCell>& cells) {
    std::vector<std::string> texts;
    for (const TextCell& cell : cells) {
        texts.emplace_back(cell.text);
    }
    return texts;
}

struct WidthRow {
    const char* text;
    std::size_t width;
};

// clang-format off
constexpr WidthRow kWidths[] = {
    { "",                          0 },
    { "abc",                       3 },
    { "\u00E4\u20AC",              2 },
    { "\u5E45",                    2 },  // an ideograph
    { "\uFF21\uFF22",              4 },  // letters of full width
    { "\uFF71",                    1 },  // a kana of half width
    { "\uD55C",                    2 },  // a syllable, and the same of three parts
    { "\u1112\u1161\u11AB",        2 },
    { "\U0001F600",                2 },
    { "e\u0301",                   1 },  // combining accents
    { "e\u0301\u0323",             1 },
    { "\u2764\uFE0F",              1 },  // a variation selector
    { "\u25B8\u2500\u2026",        3 },
};

// Measured as escape_text shows them.
constexpr WidthRow kEscapedWidths[] = {
    { "\t",                        2 },
    { "\x1B[1m",                   7 },
    { "\xC2\x9B",                  6 },
    { "\u200B",                    6 },
    { "\xE9",                      4 },
    { "a\xFF\u5E45",               7 },
    { "\xE5\xB9",                  8 },
};
// clang-format on

TEST(TextWidth, wide_characters_take_two_columns_and_combining_ones_none) {
    for (const WidthRow& row : kWidths) {
        EXPECT_EQ(text_width(row.text), row.width) << row.text;
    }
}

TEST(TextWidth, what_is_escaped_is_measured_as_it_is_shown) {
    for (const WidthRow& row : kEscapedWidths) {
        EXPECT_EQ(text_width(row.text), row.width) << escape_text(row.text);
        EXPECT_EQ(text_width(escape_text(row.text)), row.width) << escape_text(row.text);
    }
}

TEST(TextWidth, cells_keep_combining_characters_with_their_letter) {
    EXPECT_EQ(texts_of(text_cells("ae\u0301\u5E45")), (Lines{"a", "e\u0301", "\u5E45"}));
    EXPECT_EQ(texts_of(text_cells("\u0301a")), (Lines{"\u0301", "a"}));
    EXPECT_EQ(texts_of(text_cells("")), Lines());
    EXPECT_EQ(text_cells("\u5E45")[0].width, 2U);
}

TEST(TextWidth, the_start_that_fits_ends_between_characters) {
    EXPECT_EQ(start_within("abc", 2), "ab");
    EXPECT_EQ(start_within("abc", 3), "abc");
    EXPECT_EQ(start_within("abc", 9), "abc");
    EXPECT_EQ(start_within("abc", 0), "");
    EXPECT_EQ(start_within("a\u5E45\u5E45", 4), "a\u5E45");
    EXPECT_EQ(start_within("ae\u0301b", 2), "ae\u0301");
}

TEST(TextWidth, the_end_that_fits_begins_between_characters) {
    EXPECT_EQ(end_within("abc", 2), "bc");
    EXPECT_EQ(end_within("abc", 3), "abc");
    EXPECT_EQ(end_within("abc", 0), "");
    EXPECT_EQ(end_within("\u5E45\u5E45z", 4), "\u5E45z");
    EXPECT_EQ(end_within("ae\u0301b", 1), "b");
    EXPECT_EQ(end_within("ae\u0301b", 2), "e\u0301b");
}

TEST(TextWidth, a_shortened_text_ends_with_its_mark) {
    EXPECT_EQ(shortened_to("abcd", 4), "abcd");
    EXPECT_EQ(shortened_to("abcde", 4), "abc\u2026");
    EXPECT_EQ(shortened_to("abcde", 4, "~"), "abc~");
    EXPECT_EQ(shortened_to("\u5E45\u5E45\u5E45", 4), "\u5E45\u2026");
    EXPECT_EQ(shortened_to("\u5E45", 1), "\u2026");
}

TEST(TextWidth, text_is_broken_at_blanks) {
    EXPECT_EQ(wrap_text("", 5), (Lines{""}));
    EXPECT_EQ(wrap_text("ab cd ef", 5), (Lines{"ab cd", "ef"}));
    EXPECT_EQ(wrap_text("ab cd ef", 2), (Lines{"ab", "cd", "ef"}));
    EXPECT_EQ(wrap_text("longer than", 5), (Lines{"longer", "than"}));
    EXPECT_EQ(wrap_text("a  b", 9), (Lines{"a  b"}));
}

TEST(TextWidth, text_is_broken_by_its_columns) {
    EXPECT_EQ(wrap_text("\u5E45\u5E45 \u5E45", 6), (Lines{"\u5E45\u5E45", "\u5E45"}));
    EXPECT_EQ(wrap_text("e\u0301e\u0301 e\u0301", 4), (Lines{"e\u0301e\u0301 e\u0301"}));
}

TEST(TextWidth, a_word_wider_than_a_line_is_broken_where_it_may_be) {
    EXPECT_EQ(wrap_text("AUTO;BLOCK;REGISTERS", 11), (Lines{"AUTO;BLOCK;", "REGISTERS"}));
    EXPECT_EQ(wrap_text("a 10,20,30", 6), (Lines{"a", "10,20,", "30"}));
    EXPECT_EQ(wrap_text("\u5E45\u5E45\u5E45", 5), (Lines{"\u5E45\u5E45", "\u5E45"}));
    EXPECT_EQ(wrap_text("A;UNBREAKABLE;B", 5), (Lines{"A;", "UNBREAKABLE;", "B"}));
    // A list that fits into a line of its own is not broken.
    EXPECT_EQ(wrap_text("one A;B;C", 6), (Lines{"one", "A;B;C"}));
}

}  // namespace
