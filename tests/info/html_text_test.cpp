#include <gtest/gtest.h>

#include <string>

#include "kivo/kivo.h"
#include "tests/support/conditional_text.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// Title, header, introduction and closing part.
std::string parts_of(const KIVO_TEXT_OBJ* text) {
    if (text == nullptr) {
        return "no help text";
    }
    return text->title + "|" + text->header + "|" + written(text->intro) + "|" + written(text->end);
}

}  // namespace

TEST(HtmlText, store_without_a_section_has_none) {
    Loaded store("<RULES/>");
    EXPECT_EQ(store.info.html_text, nullptr);
}

TEST(HtmlText, parts) {
    struct Row {
        const char* content;
        const char* parts;
    };
    const Row rows[] = {
        {"", "||null|null"},
        {"text", "||null|null"},
        {"<TITLE>t</TITLE>", "t||null|null"},
        {"<HEADER>h</HEADER>", "|h|null|null"},
        {"<INTRO><T>x</T></INTRO>", "||[?x]|null"},
        {"<END><T>x</T></END>", "||null|[?x]"},
        {"<END><T>e</T></END><INTRO><T>i</T></INTRO><HEADER>h</HEADER><TITLE>t</TITLE>",
         "t|h|[?i]|[?e]"},
        {"<INTRO>text</INTRO><END>text</END>", "||null|null"},
        {"<INTRO/><END/>", "||null|null"},
        // Nothing is trimmed.
        {"<TITLE> a\n b </TITLE><HEADER>\t</HEADER>", " a\n b |\t|null|null"},
        {"<TITLE>a<B>b</B>c</TITLE>", "ac||null|null"},
        {"<TITLE><![CDATA[<i>a</i>]]></TITLE>", "<i>a</i>||null|null"},
        {"<TITLE>a</TITLE><TITLE>b</TITLE>", "b||null|null"},
        {"<TITLE>a</TITLE><TITLE/>", "||null|null"},
        {"<HEADER>a</HEADER><HEADER>b</HEADER>", "|b|null|null"},
        {"<INTRO><T>a</T></INTRO><INTRO><T>b</T></INTRO>", "||[?b]|null"},
        {"<END><T>a</T></END><END><T>b</T></END>", "||null|[?b]"},
        {"<INTRO><T>a</T></INTRO><INTRO/>", "||null|null"},
        {"<title>t</title><Header>h</Header><BODY><T>x</T></BODY><T>y</T>", "||null|null"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content);
        Loaded store("<HTML_TEXT>" + std::string(row.content) + "</HTML_TEXT>");
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(parts_of(store.info.html_text), row.parts);
    }
}

TEST(HtmlText, messages_of_the_parts_are_posted) {
    Loaded store("<HTML_TEXT><INTRO><IF><T>x</T></IF></INTRO><END><T>y<B/></T></END></HTML_TEXT>");
    EXPECT_EQ(store.messages(),
              (Messages{"IF tag in conditional text sequences cannot have sub-tags",
                        "Can't have conditional text as well as sub-tags at the same level T"}));
    EXPECT_EQ(parts_of(store.info.html_text), "||[]|[]");
}

TEST(HtmlText, last_section_is_the_one_held) {
    Loaded store(
        "<HTML_TEXT><TITLE>a</TITLE><INTRO><T>x</T></INTRO></HTML_TEXT>"
        "<HTML_TEXT><HEADER>b</HEADER></HTML_TEXT>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(parts_of(store.info.html_text), "|b|null|null");
}

TEST(HtmlText, empty_section_replaces_too) {
    Loaded store("<HTML_TEXT><TITLE>a</TITLE></HTML_TEXT><HTML_TEXT/>");
    EXPECT_EQ(parts_of(store.info.html_text), "||null|null");
}

TEST(HtmlText, replaced_help_text_can_still_be_looked_at) {
    Loaded store("<HTML_TEXT><TITLE>a</TITLE><INTRO><T>x</T></INTRO></HTML_TEXT>");
    const KIVO_TEXT_OBJ* first = store.info.html_text;
    EXPECT_TRUE(store.load("<HTML_TEXT><TITLE>b</TITLE></HTML_TEXT>"));
    EXPECT_NE(store.info.html_text, first);
    EXPECT_EQ(parts_of(first), "a||[?x]|null");
    EXPECT_EQ(parts_of(store.info.html_text), "b||null|null");
}

TEST(HtmlText, stays_when_the_detached_objects_are_deleted) {
    Loaded store("<HTML_TEXT><TITLE>a</TITLE><END><T>x</T></END></HTML_TEXT>");
    store.info.delete_detached_objects();
    EXPECT_EQ(parts_of(store.info.html_text), "a||null|[?x]");
}
