#include "kivo/toolkit/xml/internal/line_table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string place(std::string_view text, std::size_t offset) {
    const LineTable::Position at = LineTable(text).locate(offset);
    return std::to_string(at.line) + ":" + std::to_string(at.column);
}

}  // namespace

TEST(LineTable, table_of_nothing_has_one_line) {
    EXPECT_EQ(LineTable().locate(0).line, 1);
    EXPECT_EQ(LineTable().locate(0).column, 1);
    EXPECT_EQ(place("", 0), "1:1");
}

TEST(LineTable, lines_and_columns_count_from_1) {
    EXPECT_EQ(place("ab\ncd", 0), "1:1");
    EXPECT_EQ(place("ab\ncd", 1), "1:2");
    EXPECT_EQ(place("ab\ncd", 3), "2:1");
    EXPECT_EQ(place("ab\ncd", 4), "2:2");
}

TEST(LineTable, line_end_belongs_to_the_line_that_it_ends) {
    EXPECT_EQ(place("ab\ncd", 2), "1:3");
    EXPECT_EQ(place("ab\r\ncd", 3), "1:4");
}

TEST(LineTable, end_of_the_text_is_a_place) {
    EXPECT_EQ(place("ab\ncd", 5), "2:3");
    EXPECT_EQ(place("ab\n", 3), "2:1");
}

TEST(LineTable, column_beyond_32_bits_is_the_largest_that_there_is) {
    constexpr std::size_t kLargest = 2147483647;
    EXPECT_EQ(LineTable().locate(kLargest - 1).column, 2147483647);
    EXPECT_EQ(LineTable().locate(kLargest).column, 2147483647);
    EXPECT_EQ(LineTable().locate(0xFFFFFFFE).column, 2147483647);
    EXPECT_EQ(LineTable("a\n").locate(kLargest + 1).column, 2147483647);
    EXPECT_EQ(LineTable("a\n").locate(kLargest + 1).line, 2);
}

TEST(LineTable, all_three_line_ends_count_once) {
    EXPECT_EQ(place("a\nb", 2), "2:1");
    EXPECT_EQ(place("a\r\nb", 3), "2:1");
    EXPECT_EQ(place("a\rb", 2), "2:1");
    EXPECT_EQ(place("a\n\rb", 3), "3:1");
    EXPECT_EQ(place("a\r\r\nb", 4), "3:1");
    EXPECT_EQ(place("\n\n\nb", 3), "4:1");
    EXPECT_EQ(place("a\r", 2), "2:1");
}

TEST(LineTable, columns_count_bytes) {
    EXPECT_EQ(place("\xC3\xA4x", 2), "1:3");
}

TEST(LineTable, finds_its_way_among_many_lines) {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        text += "x\n";
    }
    const LineTable table(text);
    EXPECT_EQ(table.locate(0).line, 1);
    EXPECT_EQ(table.locate(99999).line, 50000);
    EXPECT_EQ(table.locate(99999).column, 2);
    EXPECT_EQ(table.locate(text.size()).line, 100001);
}
