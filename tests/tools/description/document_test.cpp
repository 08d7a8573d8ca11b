#include "tools/description/document.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/tools/program.h"

namespace {

// A document with its source in a folder of its own.
class Parsed {
public:
    explicit Parsed(const std::string& text)
        : source(folder_.write("a.xml", text)), document(source, "a.xml") {}

private:
    TemporaryFolder folder_;

public:
    SourceText source;
    Document document;
};

std::string from(const Parsed& parsed, std::size_t offset, std::size_t size) {
    return std::string(parsed.source.text().substr(offset, size));
}

const DocumentElement& root_of(const Parsed& parsed) {
    const DocumentElement* const root = parsed.document.root();
    EXPECT_NE(root, nullptr);
    return *root;
}

// The source of each byte of a text, one after the other, "|" between them, and of its end.
std::string bytes_in_source(const Parsed& parsed, const DocumentText& text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.text.size(); ++at) {
        const std::size_t begin = parsed.document.source_offset(text, at);
        const std::size_t end = parsed.document.source_offset(text, at + 1);
        bytes += from(parsed, begin, end - begin) + '|';
    }
    return bytes + from(parsed, parsed.document.source_offset(text, text.text.size()), 1);
}

std::string part(const Parsed& parsed, const Place& place) {
    const auto begin = parsed.source.offset(place.start->line, place.start->column);
    const auto end = parsed.source.offset(place.end->line, place.end->column);
    return from(parsed, *begin, *end - *begin);
}

TEST(Document, elements_lie_in_the_order_of_the_file) {
    const Parsed parsed("<?xml version='1.0'?><!-- a --><ROOT><A><B/><C>x</C></A>\n<D/></ROOT>\n");
    std::string tags;
    for (const DocumentElement& element : parsed.document.elements()) {
        tags += std::string(element.tag) + ' ';
        EXPECT_EQ(from(parsed, element.offset, element.tag.size() + 1),
                  '<' + std::string(element.tag));
    }
    EXPECT_EQ(tags, "ROOT A B C D ");
}

TEST(Document, sub_elements_are_walked_and_know_their_parent) {
    const Parsed parsed("<ROOT><A><B/><C/></A><D/></ROOT>");
    const DocumentElement& root = root_of(parsed);
    std::string tags;
    for (const DocumentElement& sub : root.sub_elements()) {
        EXPECT_EQ(sub.parent, &root);
        tags += sub.tag;
        for (const DocumentElement& below : sub.sub_elements()) {
            EXPECT_EQ(below.parent, &sub);
            tags += below.tag;
        }
    }
    EXPECT_EQ(tags, "ABCD");
    EXPECT_EQ(root.parent, nullptr);
}

TEST(Document, texts_are_what_the_library_reads) {
    const Parsed parsed("<ROOT> <A>a<B> </B>b<![CDATA[&]]></A> <C/><D>\r\n&lt;</D></ROOT>");
    std::string texts;
    for (const DocumentElement& element : parsed.document.elements()) {
        texts += std::string(element.tag) + '"' + std::string(element.text.text) + "\" ";
    }
    EXPECT_EQ(texts, "ROOT\"\" A\"ab&\" B\" \" C\"\" D\"\n<\" ");
}

TEST(Document, attributes_are_found_as_the_library_finds_them) {
    const Parsed parsed("<ROOT A='1' name='2' NAME='3' B='4' b='5'/>");
    const DocumentElement& root = root_of(parsed);
    EXPECT_EQ(root.attribute_count, 5U);
    EXPECT_EQ(root.value_of("A"), "1");
    EXPECT_EQ(root.value_of("NAME"), "");
    EXPECT_EQ(root.value_of("name"), "3");
    EXPECT_EQ(root.value_of("B"), "5");
    EXPECT_EQ(root.attribute("C"), nullptr);
    EXPECT_EQ(from(parsed, root.attributes[1].name_offset, 4), "name");
}

TEST(Document, elements_know_whose_they_are) {
    const Parsed parsed("<ROOT><A NAME='1'><B><C/></B><D NAME='2'/></A><E/></ROOT>");
    std::string names;
    for (const DocumentElement& element : parsed.document.elements()) {
        names += std::string(element.tag) + ':';
        names += element.owner_name == nullptr ? "" : element.owner_name->value.text;
        names += ' ';
    }
    EXPECT_EQ(names, "ROOT: A:1 B:1 C:1 D:2 E: ");
}

TEST(Document, a_text_that_the_parser_refuses_has_no_elements) {
    EXPECT_EQ(Parsed("<ROOT><A></ROOT>").document.root(), nullptr);
    EXPECT_EQ(Parsed("").document.root(), nullptr);
    EXPECT_EQ(Parsed("<!-- nothing -->").document.root(), nullptr);
}

TEST(Document, every_byte_of_a_text_is_found_in_the_source) {
    const Parsed parsed("<ROOT>a&lt;b\r\nc&#176;d&#x2014;&nope;&#;&amp</ROOT>");
    EXPECT_EQ(bytes_in_source(parsed, root_of(parsed).text),
              "a|&lt;|b|\r\n|c||&#176;|d|||&#x2014;|&|n|o|p|e|;|&|#|;|&|a|m|p|<");
}

TEST(Document, every_byte_of_a_value_is_found_in_the_source) {
    const Parsed parsed("<ROOT A='&quot;1\r\n\t&apos;'/>");
    const DocumentText& value = root_of(parsed).attributes[0].value;
    EXPECT_EQ(value.text, "\"1  '");
    EXPECT_EQ(bytes_in_source(parsed, value), "&quot;|1|\r\n|\t|&apos;|'");
}

TEST(Document, texts_of_several_runs_are_found_in_the_source) {
    const Parsed parsed("<ROOT>a<!-- b -->c<![CDATA[&lt;]]>&lt;</ROOT>");
    const DocumentText& text = root_of(parsed).text;
    EXPECT_EQ(text.text, "ac&lt;<");
    EXPECT_EQ(from(parsed, parsed.document.source_offset(text, 1), 1), "c");
    EXPECT_EQ(from(parsed, parsed.document.source_offset(text, 2), 4), "&lt;");
    EXPECT_EQ(from(parsed, parsed.document.source_offset(text, 6), 7), "&lt;</R");
    EXPECT_EQ(from(parsed, parsed.document.source_offset(text, 7), 3), "</R");
}

TEST(Document, places_may_be_asked_for_in_any_order) {
    const Parsed parsed("<ROOT>&lt;&lt;&lt;x</ROOT>");
    const DocumentText& text = root_of(parsed).text;
    EXPECT_EQ(parsed.document.source_offset(text, 3), 18U);
    EXPECT_EQ(parsed.document.source_offset(text, 1), 10U);
    EXPECT_EQ(parsed.document.source_offset(text, 2), 14U);
}

TEST(Document, places_of_parts_end_with_their_line) {
    const Parsed parsed("<ROOT A='  b &amp; c '>\n  x\n  y\n</ROOT>");
    const DocumentElement& root = root_of(parsed);
    const Document& document = parsed.document;
    EXPECT_EQ(part(parsed, document.place(root)), "<ROOT");
    EXPECT_EQ(part(parsed, document.place(root.attributes[0])), "A");
    EXPECT_EQ(part(parsed, document.place(root.attributes[0].value)), "b &amp; c");
    EXPECT_EQ(part(parsed, document.place(root.text)), "x");
    EXPECT_EQ(part(parsed, document.place(root.text, 7, 8)), "y");
    EXPECT_EQ(document.place(root.text, 7, 8).start->line, 3);
}

TEST(Document, places_end_with_their_run) {
    const Parsed parsed("<ROOT>a b<A/>c d</ROOT>");
    const DocumentText& text = root_of(parsed).text;
    EXPECT_EQ(text.text, "a bc d");
    EXPECT_EQ(part(parsed, parsed.document.place(text)), "a b");
    EXPECT_EQ(part(parsed, parsed.document.place(text, 2, 4)), "b");
    EXPECT_EQ(part(parsed, parsed.document.place(text, 3, 6)), "c d");
}

TEST(Document, places_of_empty_texts_are_where_they_would_stand) {
    const Parsed parsed("<ROOT A=''> </ROOT>");
    const DocumentElement& root = root_of(parsed);
    EXPECT_EQ(parsed.document.place(root.attributes[0].value).start->column, 10);
    EXPECT_EQ(parsed.document.place(root.text).start->column, 12);
}

TEST(Document, deep_documents_take_no_stack) {
    std::string text;
    for (int depth = 0; depth < 200000; ++depth) {
        text += "<A>";
    }
    text = "<ROOT>" + text;
    for (int depth = 0; depth < 200000; ++depth) {
        text += "</A>";
    }
    const Parsed parsed(text + "</ROOT>");
    EXPECT_EQ(parsed.document.elements().size(), 200001U);
}

TEST(Document, a_byte_order_mark_and_other_encodings_do_not_shift_places) {
    const Parsed marked("\xEF\xBB\xBF<ROOT>a</ROOT>");
    EXPECT_EQ(marked.document.place(root_of(marked).text).start->column, 7);
    using namespace std::string_literals;
    const Parsed wide("\xFF\xFE<\0R\0>\0a\0<\0/\0R\0>\0"s);
    EXPECT_EQ(wide.document.place(root_of(wide).text).start->column, 4);
}

}  // namespace
