#include "kivo/toolkit/xml/internal/xml_parser.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/support/extent.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/xml_text.h"

namespace {

using namespace std::string_literals;

using Messages = std::vector<std::string>;

Messages messages_of(std::string_view document) {
    return ParsedText(document).messages();
}

// An 8-bit text in units of 2 or 4 bytes.
std::string widened(std::string_view text, std::size_t unit_size, bool big_endian) {
    std::string wide;
    for (const char letter : text) {
        const std::string zeros(unit_size - 1, '\0');
        wide += big_endian ? zeros + letter : letter + zeros;
    }
    return wide;
}

// How many elements below the root can be walked, whatever their nesting.
std::size_t count_elements(KIVO_XML_ELEMENT* root) {
    std::size_t count = 0;
    std::vector<KIVO_XML_ELEMENT*> open{root};
    KIVO_XML_ELEMENT* next = root->get_first_sub_element();
    while (!open.empty()) {
        if (next == nullptr) {
            open.pop_back();
            next = open.empty() ? nullptr : open.back()->get_next_sub_element();
            continue;
        }
        ++count;
        open.push_back(next);
        next = next->get_first_sub_element();
    }
    return count;
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string whole;
    whole.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        whole += text;
    }
    return whole;
}

}  // namespace

TEST(XmlParser, new_parser_has_neither_root_nor_messages) {
    KIVO_XML_SAX_PARSER parser;
    EXPECT_EQ(parser.root_element(), nullptr);
    EXPECT_FALSE(parser.error_handler().has_error_messages());
    EXPECT_EQ(parser.error_handler().get_next_error_message(), "");
}

TEST(XmlParser, well_formed_document_gives_a_root_and_no_message) {
    ParsedText parsed(
        "<?xml version=\"1.0\"?>\n<!-- c -->\n<ROOT><A/></ROOT>\n<!-- d -->\n<?p i?>\n");
    EXPECT_TRUE(parsed.is_parsed);
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->tag_name(), "ROOT");
    EXPECT_FALSE(parsed.parser.error_handler().has_error_messages());
}

TEST(XmlParser, document_without_an_element_parses_well_and_has_no_root) {
    for (const std::string& document :
         {""s, " "s, "\n\t\r\n"s, "<!-- c -->"s, "<?xml version='1.0'?>"s, "\xEF\xBB\xBF"s,
          "\xFE\xFF"s, "\xFF\xFE"s, "<!DOCTYPE ROOT>"s, " <!-- c --> <?p i?> "s}) {
        ParsedText parsed(document);
        EXPECT_TRUE(parsed.is_parsed) << document;
        EXPECT_EQ(parsed.root, nullptr) << document;
        EXPECT_EQ(parsed.messages(), Messages()) << document;
    }
}

TEST(XmlParser, source_that_cannot_be_read_fails) {
    class Unreadable : public KIVO_XML_SAX_INPUT_SOURCE {
        bool read_text(TextBuffer&) override { return false; }
    };
    Unreadable source;
    KIVO_XML_SAX_PARSER parser;
    EXPECT_FALSE(parser.parse(source));
    EXPECT_FALSE(parser.has_text());
    EXPECT_EQ(parser.root_element(), nullptr);
    EXPECT_TRUE(parser.error_handler().has_error_messages());
}

TEST(XmlParser, messages_can_be_read_again_after_a_reset) {
    ParsedText parsed("<A N='1' N='2'/>");
    KIVO_XML_SAX_ERROR_HANDLER& errors = parsed.parser.error_handler();
    const std::string message = errors.get_next_error_message();
    EXPECT_NE(message, "");
    EXPECT_EQ(errors.get_next_error_message(), "");
    EXPECT_EQ(errors.get_next_error_message(), "");
    errors.reset_error_message_list();
    EXPECT_EQ(errors.get_next_error_message(), message);
}

TEST(XmlParser, second_root_fails) {
    ParsedText parsed("<A/>\n  <B/><C/>");
    EXPECT_FALSE(parsed.is_parsed);
    EXPECT_EQ(parsed.root, nullptr);
    EXPECT_EQ(parsed.messages(), (Messages{"line 2, column 3: second root element"}));
}

TEST(XmlParser, text_outside_the_root_fails) {
    for (const std::string& document : {"x<A/>"s, "<A/>x"s, "<!-- c --> x <A/>"s, "x"s,
                                        "<A/><![CDATA[x]]>"s, "<![CDATA[]]><A/>"s, "&#65;"s}) {
        ParsedText parsed(document);
        EXPECT_FALSE(parsed.is_parsed) << document;
        EXPECT_EQ(parsed.root, nullptr) << document;
        const Messages messages = parsed.messages();
        ASSERT_EQ(messages.size(), 1u) << document;
        EXPECT_NE(messages[0].find("text outside the root element"), std::string::npos)
            << messages[0];
    }
}

TEST(XmlParser, malformed_documents_fail_with_a_message_of_one_line_that_names_the_place) {
    const std::regex form("line [0-9]+, column [0-9]+ of d/x\\.xml: [^\n]+");
    for (const char* document : {"<",
                                 "<>",
                                 "</A>",
                                 "<A",
                                 "<A>",
                                 "<A></B>",
                                 "<A><B></A></B>",
                                 "<A/",
                                 "<A N/>",
                                 "<A N=/>",
                                 "<A N=1/>",
                                 "<A N='1/>",
                                 "<A N='1\"/>",
                                 "<A><!-- c </A>",
                                 "<A><![CDATA[x</A>",
                                 "<A><?p i</A>",
                                 "<!DOCTYPE A",
                                 "<!DOCTYPE A [<A/>",
                                 "<A><!X></A>",
                                 "<A></A",
                                 "<1A/>",
                                 "<A>\n\n</B>\n",
                                 "<?",
                                 "<!",
                                 "<!-",
                                 "<!--",
                                 "<![CDATA[",
                                 "< A/>"}) {
        ParsedText parsed(document, "d/x.xml");
        EXPECT_FALSE(parsed.is_parsed) << document;
        EXPECT_EQ(parsed.root, nullptr) << document;
        const Messages messages = parsed.messages();
        ASSERT_EQ(messages.size(), 1u) << document;
        EXPECT_TRUE(std::regex_match(messages[0], form)) << document << " gives " << messages[0];
    }
}

TEST(XmlParser, message_names_the_line_of_the_fault) {
    EXPECT_EQ(messages_of("<A>\n  <B></C>\n</A>").size(), 1u);
    EXPECT_EQ(messages_of("<A>\n  <B></C>\n</A>")[0].rfind("line 2, column ", 0), 0u);
    EXPECT_EQ(messages_of("<A>\r\n\r<B N></B>\n</A>")[0].rfind("line 3, column ", 0), 0u);
}

TEST(XmlParser, repeated_attribute_parses_with_one_message_for_each_name) {
    ParsedText parsed("<R>\n <A N='1' M='2' N='3' N='4' M='5'/></R>", "f.xml");
    EXPECT_TRUE(parsed.is_parsed);
    EXPECT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.messages(),
              (Messages{"line 2, column 17 of f.xml: attribute N is given more than once",
                        "line 2, column 29 of f.xml: attribute M is given more than once"}));
}

TEST(XmlParser, attributes_that_differ_in_case_bring_no_message) {
    EXPECT_EQ(messages_of("<A N='1' n='2'/>"), Messages());
}

TEST(XmlParser, repeated_attributes_among_many_are_told_in_document_order) {
    std::string document = "<A";
    for (int i = 0; i < 30; ++i) {
        document += " n" + std::to_string(i) + "=''";
    }
    const std::string column = std::to_string(document.size() + 2);
    const Messages messages = messages_of(document + " n7='' n3='' n7=''/>");
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0], "line 1, column " + column + ": attribute n7 is given more than once");
    EXPECT_NE(messages[1].find("attribute n3 "), std::string::npos);
}

namespace {

// Every third element is walked into, every second one's attributes are read.
void walk_in_part(KIVO_XML_ELEMENT& element, int depth, int& count) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        ++count;
        if (count % 2 == 0) {
            sub.attributes();
        }
        if (count % 3 == 0 && depth < 3) {
            walk_in_part(sub, depth + 1, count);
        }
    }
}

Messages messages_of_one_walk(const std::string& document, bool walks_whole) {
    MemorySource source(document);
    KIVO_XML_SAX_PARSER parser;
    parser.walk_once();
    EXPECT_TRUE(parser.parse(source)) << document;
    EXPECT_FALSE(parser.error_handler().has_error_messages()) << document;
    int count = 0;
    if (walks_whole) {
        walk_in_part(*parser.root_element(), 0, count);
    } else if (KIVO_XML_ELEMENT* first = parser.root_element()->get_first_sub_element()) {
        first->attributes();
    }
    parser.end_walk();
    Messages messages;
    for (const auto& message : parser.error_handler().messages()) {
        messages.push_back(message.text);
    }
    return messages;
}

}  // namespace

TEST(XmlParser, one_walk_finds_what_a_look_at_the_whole_document_finds) {
    const std::string filling(1100000, ' ');  // a document so large that it shrinks as it is walked
    for (const std::string& blanks : {""s, filling}) {
        std::string document = "<R a='' a=''>" + blanks;
        for (int i = 0; i < 40; ++i) {
            document += "<A n='' m='' n=''>";
            document += i % 4 == 0 ? "text" : "<B b='' b=''/><C><D d='' D='' d=''/>x</C>";
            document += "</A>\n";
        }
        document += "</R>";
        const Messages expected = messages_of(document);
        EXPECT_EQ(expected.size(), 1u + 40 + 30 * 2);
        EXPECT_EQ(messages_of_one_walk(document, true), expected);
        EXPECT_EQ(messages_of_one_walk(document, false), expected);
    }
}

TEST(XmlParser, large_document_shrinks_as_it_is_walked_however_deep_its_elements_are) {
    const std::string filling(1100000, ' ');
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<D>";
    }
    for (int i = 0; i < 100000; ++i) {
        deep += "</D>";
    }
    std::string document = "<R>" + filling;
    for (int i = 0; i < 6; ++i) {
        document += "<S><E><F/></E>" + deep + "<E><F n='' n=''/></E></S>";
    }
    document += "</R>";
    EXPECT_EQ(messages_of_one_walk(document, true).size(), 6u);
    EXPECT_EQ(messages_of_one_walk(document, false).size(), 6u);
}

TEST(XmlParser, bytes_of_8_bit_documents_pass_through) {
    std::string bytes;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        bytes += static_cast<char>(byte);
    }
    for (const char* encoding : {"UTF-8", "ISO-8859-1", "windows-1252", "Shift_JIS", "nonsense"}) {
        const std::string document =
            "<?xml version=\"1.0\" encoding=\""s + encoding + "\"?><A>" + bytes + "</A>";
        EXPECT_EQ(root_text(document), bytes) << encoding;
    }
    EXPECT_EQ(root_text("<A>" + bytes + "</A>"), bytes);
    ParsedText parsed("<A N='" + bytes + "'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes()[0].value, bytes);
}

TEST(XmlParser, utf8_byte_order_mark_is_skipped) {
    EXPECT_EQ(root_text("\xEF\xBB\xBF<A>x</A>"), "x");
    const Messages messages = messages_of("\xEF\xBB\xBF<A N='1' N='2'/>");
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].rfind("line 1, column 10:", 0), 0u) << messages[0];
}

TEST(XmlParser, utf16_and_utf32_documents_become_utf8_in_both_byte_orders) {
    const std::string document = "<?xml version='1.0' encoding='UTF-16'?><A>x&#xE4;</A>";
    EXPECT_EQ(root_text("\xFE\xFF" + widened(document, 2, true)), "x\xC3\xA4");
    EXPECT_EQ(root_text("\xFF\xFE" + widened(document, 2, false)), "x\xC3\xA4");
    EXPECT_EQ(root_text("\0\0\xFE\xFF"s + widened(document, 4, true)), "x\xC3\xA4");
    EXPECT_EQ(root_text("\xFF\xFE\0\0"s + widened(document, 4, false)), "x\xC3\xA4");
    for (const bool big_endian : {true, false}) {
        EXPECT_EQ(root_text(widened(document, 2, big_endian)), "x\xC3\xA4") << big_endian;
        EXPECT_EQ(root_text(widened(document, 4, big_endian)), "x\xC3\xA4") << big_endian;
    }
}

TEST(XmlParser, characters_of_utf16_documents_become_utf8) {
    EXPECT_EQ(root_text("\xFE\xFF\0<\0A\0>\0\xE4\x20\xAC\xD8\x3D\xDE\0\0<\0/\0A\0>"s),
              "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(XmlParser, character_references_become_utf8) {
    EXPECT_EQ(root_text("<A>&#65;&#x41;&#x7f;</A>"), "AA\x7F");
    EXPECT_EQ(root_text("<A>&#228;&#xE4;&#x20ac;&#x1F600;</A>"),
              "\xC3\xA4\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(root_text("<?xml version='1.0' encoding='ISO-8859-1'?><A>\xE4&#228;</A>"),
              "\xE4\xC3\xA4");
    ParsedText parsed("<A N='&#228;'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes()[0].value, "\xC3\xA4");
}

TEST(XmlParser, the_five_entities_of_xml_are_known) {
    EXPECT_EQ(root_text("<A>&lt;&gt;&amp;&quot;&apos;</A>"), "<>&\"'");
    EXPECT_EQ(root_text("<A>&amp;lt;</A>"), "&lt;");
}

TEST(XmlParser, other_entities_stay_as_they_are_written) {
    for (const char* text : {"&nbsp;", "&unknown;", "&", "& ", "&;", "&lt", "&#;", "&#x;", "&#12",
                             "&#xZ;", "&#1x;", "&LT;"}) {
        EXPECT_EQ(root_text("<A>"s + text + "</A>"), text) << text;
        ParsedText parsed("<A N='"s + text + "'/>");
        ASSERT_NE(parsed.root, nullptr) << text;
        EXPECT_EQ(parsed.root->attributes()[0].value, text) << text;
    }
}

TEST(XmlParser, document_type_declaration_is_skipped_and_expands_nothing) {
    EXPECT_EQ(root_text("<!DOCTYPE A [<!ENTITY e \"value\"><!ATTLIST A N CDATA \"1\">]><A>&e;</A>"),
              "&e;");
    ParsedText parsed("<!DOCTYPE A SYSTEM \"no.dtd\" [<!ATTLIST A N CDATA \"1\">]>\n<A/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_TRUE(parsed.root->attributes().empty());
    EXPECT_EQ(parsed.messages(), Messages());
}

TEST(XmlParser, line_ends_in_text_become_line_feeds) {
    EXPECT_EQ(root_text("<A>a\r\nb\rc\nd</A>"), "a\nb\nc\nd");
    EXPECT_EQ(root_text("<A><![CDATA[a\r\nb\rc\nd]]></A>"), "a\nb\nc\nd");
    EXPECT_EQ(root_text("<A>\r\n</A>"), "\n");
    EXPECT_EQ(root_text("<A>&#13;</A>"), "\r");
}

TEST(XmlParser, white_space_in_attribute_values_becomes_blanks) {
    ParsedText parsed("<A N='a\tb\nc\r\nd\re f'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes()[0].value, "a b c d e f");
}

TEST(XmlParser, references_to_white_space_in_attribute_values_stay_what_they_are) {
    ParsedText parsed("<A N='&#10;&#9; &#13;'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes()[0].value, "\n\t \r");
}

TEST(XmlParser, nul_byte_fails_wherever_it_stands) {
    const std::string document = "<A N='1'>text<!-- c --></A>";
    for (std::size_t at = 2; at <= document.size(); ++at) {
        std::string broken = document;
        broken.insert(at, 1, '\0');
        ParsedText parsed(broken);
        EXPECT_FALSE(parsed.is_parsed) << at;
        EXPECT_EQ(parsed.messages(),
                  (Messages{"line 1, column " + std::to_string(at + 1) + ": NUL byte"}));
    }
    EXPECT_FALSE(ParsedText(std::string(1, '\0')).is_parsed);
}

TEST(XmlParser, reference_to_nul_fails) {
    for (const char* reference :
         {"&#0;", "&#x0;", "&#000;", "&#x00;", "&#4294967296;", "&#x100000000;"}) {
        EXPECT_FALSE(ParsedText("<A>x"s + reference + "</A>").is_parsed) << reference;
        EXPECT_FALSE(ParsedText("<A N='x"s + reference + "'/>").is_parsed) << reference;
    }
    EXPECT_EQ(messages_of("<A>\nx&#0;</A>"),
              (Messages{"line 2, column 2: character reference to NUL"}));
}

TEST(XmlParser, what_looks_like_a_reference_to_nul_where_there_are_none_is_text) {
    EXPECT_EQ(root_text("<A><![CDATA[&#0;]]></A>"), "&#0;");
    EXPECT_EQ(root_text("<A>x<!-- &#0; -->y</A>"), "xy");
    EXPECT_EQ(root_text("<A>x<?p &#0; ?>y</A>"), "xy");
    EXPECT_EQ(root_text("<A>&amp;#0;</A>"), "&#0;");
    EXPECT_FALSE(ParsedText("<A><![CDATA[&#0;]]>&#0;</A>").is_parsed);
}

TEST(XmlParser, reference_to_nul_is_found_after_what_only_looks_like_markup) {
    for (const char* document : {
             "<A N='<!--&#0;x' M='-->'/>",
             "<A N='<!--'>&#0;</A>",
             "<A N='<![CDATA['>&#0;<B M=']]>'/></A>",
             "<A N=\"<?'\" M='&#0;?>'/>",
             "<A N='<!DOCTYPE x'>&#0;</A>",
             "<A N='>'>&#0;</A>",
         }) {
        EXPECT_FALSE(ParsedText(document).is_parsed) << document;
        EXPECT_NE(messages_of(document).at(0).find("character reference to NUL"), std::string::npos)
            << document;
    }
}

TEST(XmlParser, document_type_declaration_is_skipped_whatever_it_declares) {
    for (const char* declaration : {
             "<!DOCTYPE A>",
             "<!DOCTYPE A SYSTEM '&#0;>'>",
             "<!DOCTYPE A [<!ENTITY e '&#0;'>]>",
             "<!DOCTYPE A [<!ENTITY e \"<!-- ' &#0;\"> <!-- ' &#0; > --> <?p ' &#0; > ?>]>",
             "<!DOCTYPE A [<![IGNORE[ &#0; <![INCLUDE[ ' ]]> > ]]>]>",
         }) {
        EXPECT_EQ(root_text(declaration + "<A>x&e;</A>"s), "x&e;") << declaration;
        EXPECT_FALSE(ParsedText(declaration + "<A>&#0;</A>"s).is_parsed) << declaration;
    }
    EXPECT_FALSE(ParsedText("<!DOCTYPE A [<!ENTITY e '&#0;'>").is_parsed);
}

TEST(XmlParser, blanks_beside_a_comment_count_whatever_an_attribute_before_holds) {
    ParsedText parsed("<A N='<!--'><B> <!-- x --><!-- y --></B></A>");
    ASSERT_NE(parsed.root, nullptr);
    KIVO_XML_ELEMENT* const sub = parsed.root->get_first_sub_element();
    ASSERT_NE(sub, nullptr);
    EXPECT_EQ(sub->text(), " ");
}

TEST(XmlParser, deeply_nested_elements_are_built_walked_and_destroyed) {
    on_small_stack([] {
        ParsedText parsed(repeated("<A>", kVeryMany) + repeated("</A>", kVeryMany));
        ASSERT_NE(parsed.root, nullptr);
        EXPECT_EQ(count_elements(parsed.root), kVeryMany - 1);
    });
}

TEST(XmlParser, very_many_elements_that_are_not_closed_fail) {
    on_small_stack([] {
        ParsedText parsed(repeated("<A>", kVeryMany));
        EXPECT_FALSE(parsed.is_parsed);
        EXPECT_EQ(parsed.messages().size(), 1u);
    });
}

TEST(XmlParser, very_many_siblings_are_walked) {
    ParsedText parsed("<R>" + repeated("<A/>", kVeryMany) + "</R>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(count_elements(parsed.root), kVeryMany);
}

TEST(XmlParser, a_hundred_thousand_attributes_are_ordered) {
    constexpr int kCount = 100000;
    std::string document = "<A";
    for (int i = kCount; i-- > 0;) {
        document += " n" + std::to_string(kCount + i) + "=''";
    }
    ParsedText parsed(document + "/>");
    ASSERT_NE(parsed.root, nullptr);
    const auto& attributes = parsed.root->attributes();
    ASSERT_EQ(attributes.size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(attributes.front().name, "n100000");
    EXPECT_EQ(attributes.back().name, "n199999");
    EXPECT_EQ(parsed.messages(), Messages());
}

TEST(XmlParser, a_hundred_thousand_times_the_same_attribute_brings_one_message) {
    ParsedText parsed("<A" + repeated(" n=''", 100000) + "/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes().size(), 1u);
    EXPECT_EQ(parsed.messages().size(), 1u);
}

TEST(XmlParser, attribute_value_of_two_megabytes_is_whole) {
    const std::string value = repeated("0123456789ABCDEF", 128 * 1024);
    ParsedText parsed("<A N='" + value + "'/>");
    ASSERT_NE(parsed.root, nullptr);
    EXPECT_EQ(parsed.root->attributes()[0].value, value);
}

TEST(XmlParser, hostile_repetitions_cost_no_more_than_their_length) {
    // Each of them is quadratic for a reader that starts over at every mark.
    constexpr std::size_t kCount = 300000;
    for (const char* piece : {"&#0", "&#00000", "<![CDATA[", "<!--", "<?", "<!", " <!-- --> ", "&",
                              "<![CDATA[&#0;]]>", "<!-- &#0; -->", " ?", "!", "]]>"}) {
        ParsedText open("<A>" + repeated(piece, kCount));
        EXPECT_FALSE(open.is_parsed) << piece;
        ParsedText value("<A N='" + repeated(piece, kCount) + "'/>");
        EXPECT_LE(value.messages().size(), 1u) << piece;
    }
}
