#include "tools/doc/cell.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(DocCell, wide_words_may_be_broken_after_their_underscores) {
    EXPECT_EQ(code_cell("DATA_WIDTH"), "<code>DATA_WIDTH</code>");
    EXPECT_EQ(code_cell("UNDERFLOW_CHECKING"), "<code>UNDERFLOW_<wbr/>CHECKING</code>");
    EXPECT_EQ(code_cell("A_B <\nALMOST_EMPTY_LEVEL_"),
              "<code>A_B &lt; ALMOST_<wbr/>EMPTY_<wbr/>LEVEL_</code>");
    EXPECT_EQ(text_cell("counter_info.xml:1:2"), "counter_<wbr/>info.xml:1:2");
    EXPECT_EQ(code_cell(""), "");
    EXPECT_EQ(text_cell(""), "");
}

TEST(DocCell, words_that_have_no_such_place_may_be_broken_anywhere) {
    const std::string word(25, 'a');
    EXPECT_EQ(code_cell(word), "<code class=\"long\">" + word + "</code>");
    EXPECT_EQ(text_cell(word), "<span class=\"long\">" + word + "</span>");
    EXPECT_EQ(code_cell(word.substr(1)), "<code>" + word.substr(1) + "</code>");
}

// Of a page with a few things to link to.
PageNames some_names() {
    PageNames names;
    names.add("parameter", "DEPTH");
    names.add("port", "write");
    names.add("port", "used_words");
    names.add("port", "data-in");
    return names;
}

std::string link(const std::string& id, const std::string& text) {
    return "<a href=\"#" + id + "\">" + text + "</a>";
}

TEST(DocCell, names_in_expressions_link_to_what_has_them) {
    const PageNames names = some_names();
    EXPECT_EQ(expression_cell(names, "(DEPTH-1) gt write"),
              "<code>(" + link("parameter-DEPTH", "DEPTH") + "-1) gt " +
                  link("port-write", "write") + "</code>");
    EXPECT_EQ(command_cell(names, "force write 1"),
              "<code>force " + link("port-write", "write") + " 1</code>");
}

TEST(DocCell, texts_in_quotes_and_parts_of_other_names_do_not_link) {
    const PageNames names = some_names();
    EXPECT_EQ(expression_cell(names, "A == \"DEPTH or write\""),
              "<code>A == &quot;DEPTH or write&quot;</code>");
    EXPECT_EQ(expression_cell(names, "MAX_DEPTH depth DEPTH2"),
              "<code>MAX_DEPTH depth DEPTH2</code>");
}

TEST(DocCell, in_prose_only_names_link_that_no_word_is) {
    const PageNames names = some_names();
    EXPECT_EQ(prose(names, "Write and write up to DEPTH words; see used_words."),
              "Write and write up to " + link("parameter-DEPTH", "DEPTH") + " words; see " +
                  link("port-used_words", "used_words") + ".");
}

TEST(DocCell, names_that_no_id_can_have_get_numbers) {
    PageNames names;
    EXPECT_EQ(names.add("port", "data-in"), "port-1");
    EXPECT_EQ(names.add("port", "\xC3\xA4"), "port-2");
    EXPECT_EQ(names.add("port", "3"), "port-3");
    EXPECT_EQ(names.add("port", ""), "port-4");
    EXPECT_EQ(names.add("port", "_3"), "port-_3");
    ASSERT_NE(names.find("\xC3\xA4"), nullptr);
    EXPECT_EQ(*names.find("\xC3\xA4"), "port-2");
    EXPECT_EQ(names.find("absent"), nullptr);
}

TEST(DocCell, of_two_things_of_one_name_the_first_is_meant) {
    PageNames names;
    names.add("port", "burst");
    EXPECT_EQ(names.add("waveform", "burst"), "waveform-burst");
    EXPECT_EQ(*names.find("burst"), "port-burst");
}

std::string in_group(const std::string& digits) {
    return "<span class=\"group\">" + digits + "</span>";
}

TEST(DocCell, long_numbers_stand_in_groups_that_copying_leaves_out) {
    const PageNames none;
    EXPECT_EQ(expression_cell(none, "131072"), "<code>131" + in_group("072") + "</code>");
    EXPECT_EQ(expression_cell(none, "-1048576"),
              "<code>-1" + in_group("048") + in_group("576") + "</code>");
    EXPECT_EQ(expression_cell(none, "4096 A12345 1.23456 \"123456\""),
              "<code>4096 A12345 1.23456 &quot;123456&quot;</code>");
    EXPECT_EQ(command_cell(none, "force -bin d 00001111"), "<code>force -bin d 00001111</code>");
}

TEST(DocCell, of_a_very_long_text_the_beginning_is_shown_and_the_rest_counted) {
    const PageNames none;
    std::string text;
    while (text.size() < 20000) {
        text += "a234567 ";
    }
    const std::string whole = "<code>" + text + "</code>";
    EXPECT_EQ(expression_cell(none, text), whole);
    const std::string more = " <em class=\"note\">... and 9 more characters</em>";
    EXPECT_EQ(expression_cell(none, text + "b23456789"), whole + more);
    EXPECT_EQ(code_cell(text + "b23456789"), whole + more);
    EXPECT_EQ(text_cell(text + "b23456789"), text + more);
    EXPECT_EQ(prose(none, text + "b23456789"), text + more);
}

TEST(DocCell, times_have_groups_and_their_unit) {
    EXPECT_EQ(time_cell(400, "ns"), "400 ns");
    EXPECT_EQ(time_cell(20000, "ns"), "20" + in_group("000") + " ns");
    EXPECT_EQ(time_cell(20000, "10 ns"), "20" + in_group("000"));
}

}  // namespace
