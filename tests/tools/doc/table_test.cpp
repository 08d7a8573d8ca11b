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

}  // namespace
