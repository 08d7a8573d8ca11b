#include "tools/doc/table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(DocTableTest, WideWordsMayBeBrokenAfterTheirUnderscores) {
    EXPECT_EQ(code_cell("DATA_WIDTH"), "<code>DATA_WIDTH</code>");
    EXPECT_EQ(code_cell("UNDERFLOW_CHECKING"), "<code>UNDERFLOW_<wbr/>CHECKING</code>");
    EXPECT_EQ(code_cell("A_B <\nALMOST_EMPTY_LEVEL_"),
              "<code>A_B &lt; ALMOST_<wbr/>EMPTY_<wbr/>LEVEL_</code>");
    EXPECT_EQ(text_cell("counter_info.xml:1:2"), "counter_<wbr/>info.xml:1:2");
    EXPECT_EQ(code_cell(""), "");
    EXPECT_EQ(text_cell(""), "");
}

TEST(DocTableTest, WordsThatHaveNoSuchPlaceMayBeBrokenAnywhere) {
    const std::string word(25, 'a');
    EXPECT_EQ(code_cell(word), "<code class=\"long\">" + word + "</code>");
    EXPECT_EQ(text_cell(word), "<span class=\"long\">" + word + "</span>");
    EXPECT_EQ(code_cell(word.substr(1)), "<code>" + word.substr(1) + "</code>");
}

TEST(DocTableTest, CellsNameTheirColumnForPagesThatShowRowsAsBlocks) {
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
