#include "tools/doc/table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(DocTable, cells_name_their_column_for_pages_that_show_rows_as_blocks) {
    HtmlTable table("some", "Some", {"A", "B", "C", "D", "E", "F"});
    table.add_row({"1", "2", "3", "", "5", "6"});
    HtmlWriter html;
    table.write(html);
    EXPECT_NE(html.result().find("<table class=\"some many\">"), std::string::npos);
    EXPECT_NE(html.result().find("<td data-label=\"C\">3</td>"), std::string::npos);
    HtmlTable few("some", "Some", {"A", "B", "C", "D"});
    few.add_row({"1", "2", "3", "4"});
    HtmlWriter other;
    few.write(other);
    EXPECT_NE(other.result().find("<table class=\"some\">"), std::string::npos);
}

TEST(DocTable, of_very_many_rows_the_first_are_shown_and_the_rest_counted) {
    HtmlTable table("some", "Some", {"A"});
    for (std::size_t row = 0; row < HtmlTable::kMostRows; ++row) {
        table.add_row({std::to_string(row)});
    }
    HtmlWriter full;
    table.write(full);
    EXPECT_EQ(full.result().find("more row"), std::string::npos);
    table.add_row({"beyond"});
    table.add_row({"beyond"});
    HtmlWriter html;
    table.write(html);
    EXPECT_NE(html.result().find(">19999<"), std::string::npos);
    EXPECT_EQ(html.result().find("beyond"), std::string::npos);
    EXPECT_NE(html.result().find("<p class=\"note\">... and 2 more rows</p>"), std::string::npos);
}

}  // namespace
