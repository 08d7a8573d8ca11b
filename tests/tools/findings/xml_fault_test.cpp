#include "tools/findings/xml_fault.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/extent.h"
#include "tools/findings/catalogue.h"

namespace {

struct Case {
    std::string text;
    std::string id;    // empty: well-formed
    std::string part;  // where the fault is
};

// clang-format off
const std::vector<Case> kCases = {
    {"<R>a & b</R>", "xml-raw-ampersand", "&"},
    {"<R>a&b c</R>", "xml-raw-ampersand", "&"},
    {"<R>&1;</R>", "xml-raw-ampersand", "&"},
    {"<R A='x&&y'/>", "xml-raw-ampersand", "&"},
    {"<R>&", "xml-not-well-formed", "&"},
    {"<R>&amp;&lt;&gt;&quot;&apos;</R>", "", ""},
    {"<R><!-- & --><![CDATA[&]]><?p & ?></R>", "", ""},

    {"<R A='x < y'/>", "xml-raw-less-than", "<"},
    {"<R A='x<y'/>", "xml-raw-less-than", "<"},
    {"<R>x < y</R>", "xml-raw-less-than", "<"},
    {"<R A='x &lt; y'><![CDATA[<]]></R>", "", ""},
    {"<R A='x' <P/></R>", "xml-not-well-formed", "<"},

    {"<R>&nbsp;</R>", "xml-undeclared-entity", "&nbsp;"},
    {"<R B='&lt;&amp;&nbsp;'/>", "xml-undeclared-entity", "&nbsp;"},
    {"<!DOCTYPE R [<!ENTITY nbsp ' '>]><R A='&nbsp;'>&nbsp;</R>", "", ""},
    {"<!DOCTYPE R [<!ENTITY a ' '>]><R A='&a;&b;'/>", "xml-undeclared-entity", "&b;"},
    {"<!DOCTYPE R [<!ENTITY % a ' '>]><R A='&a;'/>", "xml-undeclared-entity", "&a;"},

    {"<R A='1' B='2' A='3'/>", "xml-repeated-attribute", "A"},
    {"<R A='1' B='2' a='3'/>", "", ""},

    {"<R>\x01</R>", "xml-control-character", "\x01"},
    {"<R A='\x1F'/>", "xml-control-character", "\x1F"},
    {"<R>\xEF\xBF\xBF</R>", "xml-control-character", "\xEF\xBF\xBF"},
    {"<R>\t\r\n\x7F\xC2\x85\xEF\xBF\xBD</R>", "", ""},

    {"<R>&#1;</R>", "xml-bad-character-reference", "&#1;"},
    {"<R A='&#65;&#x1F;'/>", "xml-bad-character-reference", "&#x1F;"},
    {"<R>&#xD800;</R>", "xml-bad-character-reference", "&#xD800;"},
    {"<R>&#99999999999999999999;</R>", "xml-bad-character-reference", "&#99999999999999999999;"},
    {"<R>&#;</R>", "xml-bad-character-reference", "&#"},
    {"<R>&#xZ;</R>", "xml-bad-character-reference", "&#"},
    {"<R A='&#9;'>&#65;&#x10FFFF;</R>", "", ""},

    {"<R>\xE9</R>", "xml-bad-utf8", "\xE9"},
    {"<R A='\xC3'/>", "xml-bad-utf8", "\xC3"},
    {"<?xml version='1.0' encoding='UTF-8'?><R>\xFF</R>", "xml-bad-utf8", "\xFF"},
    {"<?xml version='1.0'?><R>\xC0\x80</R>", "xml-bad-utf8", "\xC0"},
    {"<R>\xC3\xA4\xF0\x9F\x98\x80</R>", "", ""},
    {"<?xml version='1.0' encoding='ISO-8859-1'?><R>\xE9</R>", "", ""},
    {"<?xml version='1.0' encoding='windows-1252'?><R>\x80\xE9</R>", "", ""},
    {"<?xml version='1.0' encoding='Shift_JIS'?><\x83\x65 \x83\x65='\x83\x5C'/>", "", ""},

    {"<R><!-- a -- b --></R>", "xml-comment-hyphens", "--"},
    {"<!-- a --- b --><R/>", "xml-comment-hyphens", "--"},
    {"<!-- &x-- b --><R/>", "xml-comment-hyphens", "--"},
    {"<R A='--'>--<!-- - - -->--</R>", "", ""},

    {"\n<?xml version='1.0'?><R/>", "xml-not-well-formed", "<"},
    {"<R>]]></R>", "xml-not-well-formed", "]]>"},
    {"<R>]] ></R>", "", ""},
    {"<R><P></R>", "xml-not-well-formed", "R"},
    {"<R/>text", "xml-not-well-formed", "t"},
    {"<R", "xml-not-well-formed", "<"},
    {"<R>", "xml-not-well-formed", ""},
    {"</R>", "xml-not-well-formed", "/"},
    {"<?xml version='1.0' encoding='UTF-16'?><R/>", "xml-not-well-formed", "U"},
    {"<!DOCTYPE R [<!ENTITY f SYSTEM '/dev/zero'>]><R A='&f;'/>", "xml-not-well-formed", "&"},

    {"", "", ""},
    {"<!-- nothing -->", "", ""},
    {"<R xmlns:a='b' c:d=''><e:f/></R>", "", ""},
    {"<?xml version='1.0'?>\n<!DOCTYPE R>\n<R/>\n<!-- end -->\n", "", ""},
};
// clang-format on

TEST(XmlFault, each_kind_is_known_at_its_place) {
    for (const Case& row : kCases) {
        const auto fault = find_xml_fault(row.text, SourceEncoding::kDeclared);
        ASSERT_EQ(fault.has_value(), !row.id.empty()) << row.text << (fault ? fault->text : "");
        if (fault) {
            EXPECT_EQ(fault->id, row.id) << row.text;
            EXPECT_EQ(row.text.substr(fault->begin, fault->end - fault->begin), row.part)
                << row.text;
            EXPECT_NE(find_message(fault->id), nullptr) << fault->id;
        }
    }
}

TEST(XmlFault, the_first_fault_counts) {
    const auto fault = find_xml_fault("<R>\n&nbsp;\n& <P></R>", SourceEncoding::kDeclared);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->id, "xml-undeclared-entity");
    EXPECT_EQ(fault->begin, 4U);
}

TEST(XmlFault, a_text_that_is_known_to_be_utf_8_is_read_as_such_whatever_it_declares) {
    const std::string text = "<?xml version='1.0' encoding='UTF-16'?><R>\xC3\xA4</R>";
    EXPECT_FALSE(find_xml_fault(text, SourceEncoding::kConverted));
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?><R>\xE4</R>";
    const auto fault = find_xml_fault(latin, SourceEncoding::kUtf8);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->id, "xml-bad-utf8");
}

TEST(XmlFault, the_texts_name_what_is_meant) {
    EXPECT_EQ(find_xml_fault("<R>&deg;</R>", SourceEncoding::kDeclared)->text,
              "entity \"deg\" is not declared; write the character itself, or \"&amp;deg;\" for "
              "this text");
    EXPECT_EQ(find_xml_fault("<R>\xE9</R>", SourceEncoding::kDeclared)->text,
              "byte 0xE9 is not UTF-8; save the file as UTF-8");
    EXPECT_EQ(find_xml_fault("<R>\x01</R>", SourceEncoding::kDeclared)->text,
              "character U+0001 is not allowed in XML; remove it");
}

// A document type that declares a chain of entities, each made of the last.
std::string chain(std::size_t length, std::size_t width) {
    std::string text = "<!DOCTYPE R [<!ENTITY e0 '0123456789'>";
    for (std::size_t i = 1; i < length; ++i) {
        text += "<!ENTITY e" + std::to_string(i) + " '";
        for (std::size_t k = 0; k < width; ++k) {
            text += "&e" + std::to_string(i - 1) + ";";
        }
        text += "'>";
    }
    return text + "]>";
}

TEST(XmlFault, entities_in_entities_are_no_fault) {
    EXPECT_FALSE(
        find_xml_fault(chain(100, 1) + "<R A='&e99;'>&e99;</R>", SourceEncoding::kDeclared));
    EXPECT_FALSE(find_xml_fault(chain(4, 10) + "<R A='&e3;'>&e3;</R>", SourceEncoding::kDeclared));
}

TEST(XmlFault, entities_that_grow_without_bounds_are_not_expanded) {
    for (const std::string use : {"<R A='&e19;'/>", "<R>&e19;</R>"}) {
        const auto fault = find_xml_fault(chain(20, 10) + use, SourceEncoding::kDeclared);
        ASSERT_TRUE(fault) << use;
        EXPECT_EQ(fault->id, "xml-entity-expansion") << use;
    }
}

TEST(XmlFault, entities_that_are_nested_too_deeply_are_not_expanded) {
    for (const std::string use : {"<R A='&e99999;'/>", "<R>&e99999;</R>", "<R/>"}) {
        const auto fault = find_xml_fault(chain(100000, 1) + use, SourceEncoding::kDeclared);
        ASSERT_TRUE(fault) << use;
        EXPECT_EQ(fault->id, "xml-entity-expansion") << use;
    }
}

TEST(XmlFault, an_entity_of_itself_is_not_expanded) {
    const std::string declaration = "<!DOCTYPE R [<!ENTITY a '&b;'><!ENTITY b '&a;'>]>";
    for (const std::string use : {"<R A='&a;'/>", "<R>&a;</R>"}) {
        const auto fault = find_xml_fault(declaration + use, SourceEncoding::kDeclared);
        ASSERT_TRUE(fault) << use;
        EXPECT_EQ(fault->text, "the entity refers to itself; write the text itself") << use;
    }
}

TEST(XmlFault, what_entities_in_texts_hold_must_be_well_formed) {
    const auto with_entity = [](const std::string& value) {
        return find_xml_fault("<!DOCTYPE R [<!ENTITY e '" + value + "'>]><R>&e;</R>",
                              SourceEncoding::kDeclared);
    };
    EXPECT_FALSE(with_entity("<a/>x"));
    EXPECT_TRUE(with_entity("<a>"));
    EXPECT_TRUE(with_entity("</R>"));
    EXPECT_TRUE(with_entity("&#60;"));
}

TEST(XmlFault, other_files_are_not_fetched) {
    const std::string file = "file:///dev/zero";
    EXPECT_FALSE(
        find_xml_fault("<!DOCTYPE R SYSTEM '" + file + "'><R>&a;</R>", SourceEncoding::kDeclared));
    EXPECT_FALSE(find_xml_fault("<!DOCTYPE R [<!ENTITY % p SYSTEM '" + file + "'>%p;]><R>&a;</R>",
                                SourceEncoding::kDeclared));
    EXPECT_FALSE(find_xml_fault("<!DOCTYPE R [<!ENTITY a SYSTEM '" + file + "'>]><R>&a;</R>",
                                SourceEncoding::kDeclared));
}

TEST(XmlFault, deep_elements_need_no_stack) {
    std::string text;
    for (std::size_t i = 0; i < kVeryMany; ++i) {
        text += "<A>";
    }
    on_small_stack([&] {
        const auto fault = find_xml_fault(text, SourceEncoding::kDeclared);
        ASSERT_TRUE(fault);
        EXPECT_EQ(fault->begin, text.size());
    });
}

TEST(XmlFault, every_example_of_the_catalogue_gives_its_warning) {
    std::size_t warnings = 0;
    for (const MessageDescription& row : message_catalogue()) {
        if (row.id.substr(0, 4) != "xml-" || row.id == "xml-syntax") {
            continue;
        }
        ++warnings;
        const auto fault = find_xml_fault(row.example, SourceEncoding::kDeclared);
        ASSERT_TRUE(fault) << row.id;
        EXPECT_EQ(fault->id, row.id);
    }
    EXPECT_EQ(warnings, 10U);
}

TEST(XmlFault, an_encoding_that_cannot_be_is_told) {
    const std::string as_utf8 = "<?xml version='1.0' encoding='UTF-8'?><R/>";
    const std::string as_utf16 = "<?xml version='1.0' encoding='utf-16'?><R/>";
    const std::string as_other = "<?xml version='1.0' encoding='windows-1252'?><R/>";
    EXPECT_EQ(find_xml_fault(as_utf8, SourceEncoding::kConverted)->text,
              "the file is not in the encoding that it declares; correct the declaration");
    EXPECT_EQ(find_xml_fault(as_utf16, SourceEncoding::kUtf8)->begin, 0);
    EXPECT_FALSE(find_xml_fault(as_utf8, SourceEncoding::kUtf8));
    EXPECT_FALSE(find_xml_fault(as_utf16, SourceEncoding::kConverted));
    for (const SourceEncoding any : {SourceEncoding::kUtf8, SourceEncoding::kConverted}) {
        EXPECT_FALSE(find_xml_fault(as_other, any));
        EXPECT_FALSE(find_xml_fault("<R/>", any));
    }
}

TEST(XmlFault, a_second_byte_order_mark_is_a_character) {
    const std::string text = "\xEF\xBB\xBF<R/>";
    EXPECT_EQ(find_xml_fault(text, SourceEncoding::kUtf8)->begin, 0);
    EXPECT_TRUE(find_xml_fault(text, SourceEncoding::kConverted));
    EXPECT_FALSE(find_xml_fault(text, SourceEncoding::kDeclared));
}

}  // namespace
