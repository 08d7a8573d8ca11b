#include "kivo/toolkit/xml/internal/xml_element.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/xml_text.h"

namespace {

// "name=value" of each attribute in the order of the element.
std::vector<std::string> attributes_of(KIVO_XML_ELEMENT& element) {
    std::vector<std::string> texts;
    for (const auto& [name, value] : element.attributes()) {
        texts.push_back(std::string(name) + "=" + std::string(value));
    }
    return texts;
}

std::vector<std::string> root_attributes(std::string_view document) {
    ParsedText parsed(document);
    EXPECT_TRUE(parsed.is_parsed) << document;
    return parsed.root == nullptr ? std::vector<std::string>() : attributes_of(*parsed.root);
}

std::string sub_tags(KIVO_XML_ELEMENT& element) {
    std::string tags;
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        tags.append(sub.tag_name()).append(" ");
    }
    return tags;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(XmlElement, tag_name_keeps_its_case) {
    ParsedText parsed("<RoOt/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->tag_name(), "RoOt");
}

TEST(XmlElement, names_and_texts_of_every_length_are_whole) {
    for (std::size_t length = 1; length <= 50; ++length) {
        const std::string word(length, 'w');
        ParsedText parsed("<" + word + " " + word + "='" + word + "'>" + word + "</" + word + ">");
        ASSERT_TRUE(parsed.is_parsed) << length;
        EXPECT_EQ(parsed.root->tag_name(), word);
        EXPECT_EQ(attributes_of(*parsed.root), Texts{word + "=" + word});
        EXPECT_EQ(parsed.root->text(), word);
    }
}

TEST(XmlElement, short_name_at_the_end_of_the_document_is_whole) {
    ParsedText parsed("<r a=''><e b='1'/><f/></r>");
    KIVO_XML_ELEMENT* const first = parsed.root->get_first_sub_element();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(attributes_of(*first), Texts{"b=1"});
    KIVO_XML_ELEMENT* const last = parsed.root->get_next_sub_element();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->tag_name(), "f");
    EXPECT_EQ(attributes_of(*parsed.root), Texts{"a="});
}

TEST(XmlElement, text_is_character_data_and_cdata_joined_in_document_order) {
    EXPECT_EQ(root_text("<A>one</A>"), "one");
    EXPECT_EQ(root_text("<A><![CDATA[one]]></A>"), "one");
    EXPECT_EQ(root_text("<A>one <![CDATA[<two> ]]>three</A>"), "one <two> three");
    EXPECT_EQ(root_text("<A><![CDATA[a]]><![CDATA[b]]></A>"), "ab");
    EXPECT_EQ(root_text("<A>a<X>inner</X>b<Y/>c</A>"), "abc");
}

TEST(XmlElement, element_without_text_has_the_empty_text) {
    for (const char* document : {"<A/>", "<A></A>", "<A><X>inner</X></A>", "<A><![CDATA[]]></A>",
                                 "<A><!-- a --></A>", "<A><?p i?></A>"}) {
        EXPECT_EQ(root_text(document), "") << document;
    }
}

TEST(XmlElement, text_is_not_trimmed) {
    EXPECT_EQ(root_text("<A> a </A>"), " a ");
    EXPECT_EQ(root_text("<A>\n\ta\n</A>"), "\n\ta\n");
    EXPECT_EQ(root_text("<A> a <X/> b </A>"), " a  b ");
}

TEST(XmlElement, white_space_alone_is_text_only_without_sub_elements) {
    EXPECT_EQ(root_text("<FILE>  </FILE>"), "  ");
    EXPECT_EQ(root_text("<FILE>\n\t </FILE>"), "\n\t ");
    EXPECT_EQ(root_text("<A>\n  <X/>\n  <Y/>\n</A>"), "");
    EXPECT_EQ(root_text("<A> <X/></A>"), "");
    EXPECT_EQ(root_text("<A><X/> </A>"), "");
}

TEST(XmlElement, white_space_is_judged_run_by_run) {
    EXPECT_EQ(root_text("<A>a<X/> <Y/>b</A>"), "ab");
    EXPECT_EQ(root_text("<A> <X/>a<Y/> </A>"), "a");
    EXPECT_EQ(root_text("<A> <X/> a <Y/> </A>"), " a ");
}

TEST(XmlElement, blank_runs_beside_comments_and_cdata_count_without_sub_elements) {
    EXPECT_EQ(root_text("<A> <!-- c --> </A>"), "  ");
    EXPECT_EQ(root_text("<A> <!-- c --></A>"), " ");
    EXPECT_EQ(root_text("<A><!-- c --> </A>"), " ");
    EXPECT_EQ(root_text("<A><!-- c --> <!-- d --></A>"), " ");
    EXPECT_EQ(root_text("<A>x<!-- c --> <!-- d -->y</A>"), "x y");
    EXPECT_EQ(root_text("<A>x<!-- c --> </A>"), "x ");
    EXPECT_EQ(root_text("<A> <!-- c -->x</A>"), " x");
    EXPECT_EQ(root_text("<A> <![CDATA[x]]> </A>"), " x ");
    EXPECT_EQ(root_text("<A><![CDATA[x]]> <![CDATA[y]]></A>"), "x y");
    EXPECT_EQ(root_text("<A><![CDATA[ ]]></A>"), " ");
    EXPECT_EQ(root_text("<A> <?p i?> </A>"), "  ");
    EXPECT_EQ(root_text("<A>x<?p i?> <?p i?>y</A>"), "x y");
    EXPECT_EQ(root_text("<A> <!-- <![CDATA[ --> <?p ]]> ?> </A>"), "   ");
}

TEST(XmlElement, blank_runs_beside_comments_and_cdata_are_none_with_sub_elements) {
    EXPECT_EQ(root_text("<A> <!-- c --> <X/></A>"), "");
    EXPECT_EQ(root_text("<A><X/> <!-- c --> </A>"), "");
    EXPECT_EQ(root_text("<A><X/> <!-- c -->x</A>"), "x");
    EXPECT_EQ(root_text("<A>x<!-- c --> <X/></A>"), "x");
    EXPECT_EQ(root_text("<A><![CDATA[ ]]><X/></A>"), "");
    EXPECT_EQ(root_text("<A><![CDATA[x]]> <X/> <![CDATA[y]]></A>"), "xy");
    EXPECT_EQ(root_text("<A> <?p i?> <X/></A>"), "");
}

TEST(XmlElement, markup_in_an_attribute_value_does_not_hide_blank_runs) {
    EXPECT_EQ(root_text("<A N=\"<![CDATA[\">x<!-- c --> <!-- d -->y</A>"), "x y");
    EXPECT_EQ(root_text("<A N=\"<!--\">x<!-- c --> <!-- d -->y</A>"), "x y");
    EXPECT_EQ(root_text("<A N='<?'>x<?p i?> <?p i?>y</A>"), "x y");
    EXPECT_EQ(root_text("<A N=\"-->\"> <!-- c --> </A>"), "  ");
}

TEST(XmlElement, comments_and_processing_instructions_are_nothing) {
    EXPECT_EQ(root_text("<A>a<!-- <X/> -->b<?p <Y/> ?>c</A>"), "abc");
    ParsedText parsed("<A><!-- <X/> --><Z/><?p <Y/> ?></A>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(sub_tags(*parsed.root), "Z ");
}

TEST(XmlElement, text_can_be_asked_for_again) {
    ParsedText parsed("<A>a<X/>b<Y/>c</A>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->text(), "abc");
    EXPECT_EQ(parsed.root->text(), "abc");
}

TEST(XmlElement, joined_text_of_one_element_is_not_that_of_the_next) {
    ParsedText parsed("<R><A>a<X/>b</A><A>c<X/>d</A><A>e</A><A/></R>");
    ASSERT_NE(parsed.root, nullptr);
    std::vector<std::string_view> texts;
    for (KIVO_XML_ELEMENT& sub : parsed.root->sub_elements()) {
        texts.push_back(sub.text());
    }
    EXPECT_EQ(texts, (std::vector<std::string_view>{"ab", "cd", "e", ""}));
}

TEST(XmlElement, attributes_come_in_the_order_of_their_folded_names) {
    EXPECT_EQ(root_attributes("<A b='1' C='2' a2='3' A='4' _='5'/>"),
              (Texts{"_=5", "A=4", "a2=3", "b=1", "C=2"}));
    EXPECT_EQ(root_attributes("<A WIDTH2D='1' width='2'/>"), (Texts{"width=2", "WIDTH2D=1"}));
    EXPECT_EQ(root_attributes("<A/>"), Texts());
}

TEST(XmlElement, names_that_differ_in_case_are_one_attribute) {
    EXPECT_EQ(root_attributes("<A Name='1' NAME='2'/>"), (Texts{"Name=2"}));
    EXPECT_EQ(root_attributes("<A NAME='1' x='' nAmE='2' name='3'/>"), (Texts{"NAME=3", "x="}));
}

TEST(XmlElement, repeated_name_is_one_attribute_with_the_last_value) {
    EXPECT_EQ(root_attributes("<A N='1' N='2' N='3'/>"), (Texts{"N=3"}));
}

TEST(XmlElement, every_number_of_attributes_is_ordered_and_merged) {
    for (int count = 1; count <= 40; ++count) {
        std::string document = "<A";
        Texts expected;
        for (int i = 0; i < count; ++i) {
            // Backwards, and each one twice in different spellings.
            const std::string number = std::to_string(100 + count - 1 - i);
            document += " N" + number + "='a' n" + number + "='b'";
            expected.push_back("N" + std::to_string(100 + i) + "=b");
        }
        EXPECT_EQ(root_attributes(document + "/>"), expected) << document;
    }
}

TEST(XmlElement, attributes_can_be_walked_again) {
    ParsedText parsed("<A b='1' a='2'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(attributes_of(*parsed.root), (Texts{"a=2", "b=1"}));
    EXPECT_EQ(attributes_of(*parsed.root), (Texts{"a=2", "b=1"}));
}

TEST(XmlElement, attributes_of_one_element_are_not_those_of_the_next) {
    ParsedText parsed("<R><A a='1'/><A/><A b='2'/></R>");
    ASSERT_NE(parsed.root, nullptr);
    std::vector<Texts> all;
    for (KIVO_XML_ELEMENT& sub : parsed.root->sub_elements()) {
        all.push_back(attributes_of(sub));
    }
    EXPECT_EQ(all, (std::vector<Texts>{{"a=1"}, {}, {"b=2"}}));
}

TEST(XmlElement, sub_elements_come_in_document_order) {
    ParsedText parsed("<R>t<C/><A>x<!-- --></A> <B><D/></B>u</R>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(sub_tags(*parsed.root), "C A B ");
}

TEST(XmlElement, walk_over_sub_elements_ends_with_null_and_starts_again) {
    ParsedText parsed("<R><A/><B/></R>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->get_first_sub_element()->tag_name(), "A");
    EXPECT_EQ(parsed.root->get_next_sub_element()->tag_name(), "B");
    EXPECT_EQ(parsed.root->get_next_sub_element(), nullptr);
    EXPECT_EQ(parsed.root->get_next_sub_element(), nullptr);
    EXPECT_EQ(parsed.root->get_first_sub_element()->tag_name(), "A");
}

TEST(XmlElement, element_without_sub_elements_gives_null) {
    ParsedText parsed("<R>text<!-- <A/> --></R>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_FALSE(parsed.root->has_sub_elements());
    EXPECT_EQ(parsed.root->get_first_sub_element(), nullptr);
    EXPECT_EQ(parsed.root->get_next_sub_element(), nullptr);
}

TEST(XmlElement, each_element_keeps_its_own_place_in_the_walk) {
    ParsedText parsed("<R><A><X/><Y/></A><B><Z/></B></R>");
    ASSERT_NE(parsed.root, nullptr);
    KIVO_XML_ELEMENT* sub = parsed.root->get_first_sub_element();
    EXPECT_TRUE(parsed.root->has_sub_elements());
    EXPECT_EQ(sub_tags(*sub), "X Y ");
    sub = parsed.root->get_next_sub_element();
    EXPECT_EQ(sub->tag_name(), "B");
    EXPECT_EQ(sub_tags(*sub), "Z ");
}

TEST(XmlElement, mark_is_the_place_of_the_opening_bracket) {
    const std::string document = "\xEF\xBB\xBF<R>\n  <A/>text<B\n N='1'></B></R>";
    ParsedText parsed(document);
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->mark().offset, 0u);
    EXPECT_EQ(parsed.root->get_first_sub_element()->mark().offset, 6u);
    EXPECT_EQ(parsed.root->get_next_sub_element()->mark().offset, 14u);
}
