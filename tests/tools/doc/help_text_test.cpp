#include "tools/doc/help_text.h"

#include "tests/support/extent.h"
#include "tests/tools/doc/page_fixture.h"
#include "tests/tools/program.h"

namespace {

class HelpTextTest : public PageTest {
protected:
    std::string introduction(const std::string& pieces) {
        make_from("<HTML_TEXT><INTRO>" + pieces + "</INTRO></HTML_TEXT>");
        std::ostringstream out;
        for (const pugi::xml_node& node : section("introduction").children()) {
            if (std::string(node.name()) != "h2" && node.type() == pugi::node_element) {
                node.print(out, "", pugi::format_raw);
            }
        }
        std::string markup = out.str();
        std::erase(markup, '\n');
        return markup;
    }
};

TEST_F(HelpTextTest, plain_pieces_are_paragraphs) {
    EXPECT_EQ(introduction("<T>one</T><T>two\n   lines</T>"), "<p>one</p><p>two lines</p>");
}

TEST_F(HelpTextTest, blank_lines_separate_paragraphs) {
    EXPECT_EQ(introduction("<T>\n one\n \n\n two\n</T>"), "<p>one</p><p>two</p>");
}

TEST_F(HelpTextTest, markup_in_a_text_is_shown_as_text) {
    EXPECT_EQ(introduction("<T>&lt;b&gt;bold&lt;/b&gt;</T>"), "<p>&lt;b&gt;bold&lt;/b&gt;</p>");
}

TEST_F(HelpTextTest, conditions_stand_before_their_texts) {
    EXPECT_EQ(introduction("<IF>A</IF><THEN>x</THEN><ELSE>y</ELSE>"),
              "<div class=\"branch\"><p class=\"condition\">If <code>A</code></p><p>x</p></div>"
              "<div class=\"branch\"><p class=\"condition\">Otherwise</p><p>y</p></div>");
}

TEST_F(HelpTextTest, a_text_that_only_holds_otherwise) {
    EXPECT_EQ(introduction("<IF>A</IF><ELSE>y</ELSE>"),
              "<div class=\"branch\"><p class=\"condition\">Unless <code>A</code></p>"
              "<p>y</p></div>");
}

TEST_F(HelpTextTest, a_condition_without_texts_is_not_shown) {
    EXPECT_EQ(introduction("<IF>A</IF><T>z</T>"), "<p>z</p>");
}

TEST_F(HelpTextTest, nested_texts_stand_in_their_branch) {
    EXPECT_EQ(introduction("<IF>A</IF><THEN><T>x</T><IF>B</IF><THEN>y</THEN></THEN><ELSE>z</ELSE>"),
              "<div class=\"branch\"><p class=\"condition\">If <code>A</code></p><p>x</p>"
              "<div class=\"branch\"><p class=\"condition\">If <code>B</code></p><p>y</p></div>"
              "</div>"
              "<div class=\"branch\"><p class=\"condition\">Otherwise</p><p>z</p></div>");
}

TEST_F(HelpTextTest, deep_nesting_needs_no_stack) {
    std::string text = "<T>bottom</T>";
    std::string front;
    std::string back;
    for (std::size_t level = 0; level < kVeryMany; ++level) {
        front += "<IF>A</IF><THEN>";
        back += "</THEN>";
    }
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "deep_info.xml",
        with_sections("<HTML_TEXT><INTRO>" + front + text + back + "</INTRO></HTML_TEXT>"));
    Description description(path);
    std::string deep;
    on_small_stack([&] { deep = make_page(description.info(), path, {}); });
    std::size_t branches = 0;
    for (std::size_t at = deep.find("\"branch\""); at != std::string::npos;
         at = deep.find("\"branch\"", at + 1)) {
        ++branches;
    }
    EXPECT_EQ(branches, kVeryMany);
    EXPECT_NE(deep.find("<p>bottom</p>"), std::string::npos);
}

}  // namespace
