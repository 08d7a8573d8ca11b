#include "tools/text/xml_escape.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlEscape, markup_stands_for_itself) {
    EXPECT_EQ(escape_xml(""), "");
    EXPECT_EQ(escape_xml("a b \u00E9"), "a b \u00E9");
    EXPECT_EQ(escape_xml("<a b='c' d=\"e\">&amp;"),
              "&lt;a b=&#39;c&#39; d=&quot;e&quot;&gt;&amp;amp;");
}

TEST(XmlEscape, what_xml_cannot_hold_becomes_visible) {
    EXPECT_EQ(escape_xml("\x1B[31m\xE9\n"), "\\x1B[31m\\xE9\\n");
}

}  // namespace
