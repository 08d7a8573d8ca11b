#include "tools/doc/html.h"

#include <gtest/gtest.h>

namespace {

TEST(HtmlTest, EscapesWhatMarkupIsMadeOf) {
    EXPECT_EQ(escape_html("a<b>&\"'"), "a&lt;b&gt;&amp;&quot;&#39;");
}

TEST(HtmlTest, ShowsControlCharactersAndBytesThatAreNotUtf8) {
    EXPECT_EQ(escape_html(std::string_view("\0\x1B\x7F\xFF", 4)), "\\x00\\x1B\\x7F\\xFF");
    EXPECT_EQ(escape_html("\u202Ea\u0085"), "\\u202Ea\\u0085");
}

TEST(HtmlTest, KeepsOtherCharacters) {
    EXPECT_EQ(escape_html("\u00D7 \u4E2D \U0001F600"), "\u00D7 \u4E2D \U0001F600");
}

TEST(HtmlTest, LineBreaksAndTabsAreBlanks) {
    EXPECT_EQ(escape_html("a\n\t\r\nb\n"), "a b ");
    EXPECT_EQ(escape_html("\nb"), " b");
    EXPECT_EQ(escape_html(""), "");
}

TEST(HtmlTest, AttributesCannotBeLeft) {
    HtmlWriter html;
    html.element("a", {{"href", "\" onclick=\"x"}}, "<b>");
    EXPECT_EQ(html.result(), "<a href=\"&quot; onclick=&quot;x\">&lt;b&gt;</a>");
}

TEST(HtmlTest, ElementsCloseInOrder) {
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
