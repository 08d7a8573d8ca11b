#include "tools/doc/html.h"

#include <gtest/gtest.h>

namespace {

TEST(Html, escapes_what_markup_is_made_of) {
    EXPECT_EQ(escape_html("a<b>&\"'"), "a&lt;b&gt;&amp;&quot;&#39;");
}

TEST(Html, shows_control_characters_and_bytes_that_are_not_utf_8) {
    EXPECT_EQ(escape_html(std::string_view("\0\x1B\x7F\xFF", 4)), "\\x00\\x1B\\x7F\\xFF");
    EXPECT_EQ(escape_html("\u202Ea\u0085"), "\\u202Ea\\u0085");
}

TEST(Html, keeps_other_characters) {
    EXPECT_EQ(escape_html("\u00D7 \u4E2D \U0001F600"), "\u00D7 \u4E2D \U0001F600");
}

TEST(Html, line_breaks_and_tabs_are_blanks) {
    EXPECT_EQ(escape_html("a\n\t\r\nb\n"), "a b ");
    EXPECT_EQ(escape_html("\nb"), " b");
    EXPECT_EQ(escape_html(""), "");
}

TEST(Html, attributes_cannot_be_left) {
    HtmlWriter html;
    html.element("a", {{"href", "\" onclick=\"x"}}, "<b>");
    EXPECT_EQ(html.result(), "<a href=\"&quot; onclick=&quot;x\">&lt;b&gt;</a>");
}

TEST(Html, elements_close_in_order) {
    HtmlWriter html;
    {
        const HtmlScope outer(html, "div");
        const HtmlScope inner(html, "p", {{"class", "x"}});
        html.text("t");
        html.void_element("br", {});
    }
    EXPECT_EQ(html.result(), "<div><p class=\"x\">t<br/>\n</p>\n</div>\n");
}

}  // namespace
