#include "tools/description/source_text.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "kivo/toolkit/xml/internal/line_table.h"
#include "tests/tools/program.h"

namespace {

class SourceTextTest : public testing::Test {
protected:
    SourceText source(const std::string& content) {
        return SourceText(folder_.write("a.xml", content));
    }

    TemporaryFolder folder_;
};

// What a place covers, cut out of its source by bytes.
std::string covered(const SourceText& source, std::size_t begin) {
    const Place place = source.place("a", begin);
    EXPECT_EQ(place.start->line, place.end->line);
    const auto end = source.offset(place.end->line, place.end->column);
    return std::string(source.text().substr(begin, *end - begin));
}

TEST_F(SourceTextTest, a_file_that_is_not_there_is_empty) {
    EXPECT_EQ(SourceText(folder_.path("none")).text(), "");
}

TEST_F(SourceTextTest, lines_end_as_for_the_library) {
    const std::string text = "a\nbc\r\nd\re\n\r\n\rf";
    const SourceText file = source(text);
    const LineTable lines(text);
    for (std::size_t offset = 0; offset <= text.size(); ++offset) {
        const Position position = *file.place("a", offset, offset).start;
        const LineTable::Position expected = lines.locate(offset);
        EXPECT_EQ(position.line, expected.line) << offset;
        EXPECT_EQ(position.column, expected.column) << offset;
        EXPECT_EQ(file.offset(position.line, position.column), offset);
    }
}

TEST_F(SourceTextTest, no_offset_is_beyond_the_text) {
    const SourceText file = source("ab\nc");
    EXPECT_EQ(file.offset(2, 2), 4U);
    EXPECT_EQ(file.offset(2, 3), std::nullopt);
    EXPECT_EQ(file.offset(3, 1), std::nullopt);
    EXPECT_EQ(file.offset(0, 1), std::nullopt);
    EXPECT_EQ(file.offset(1, 0), std::nullopt);
}

TEST_F(SourceTextTest, characters_are_counted_beside_bytes) {
    const SourceText file = source("\xC3\xA4\xF0\x9F\x98\x80\xFFx\n\xC3\xA4y");
    const Position x = *file.place("a", 7).start;
    EXPECT_EQ(std::tuple(x.line, x.column, x.character), std::tuple(1, 8, 4));
    const Position y = *file.place("a", 11).start;
    EXPECT_EQ(std::tuple(y.line, y.column, y.character), std::tuple(2, 3, 2));
}

TEST_F(SourceTextTest, characters_of_a_long_line_are_counted_right) {
    std::string text(4095, 'a');
    for (int i = 0; i < 5000; ++i) {
        text += "\xE2\x82\xAC";
    }
    const SourceText file = source(text);
    for (const int count : {0, 1, 2, 1365, 1366, 4999}) {
        const Position position =
            *file.place("a", 4095 + static_cast<std::size_t>(count) * 3).start;
        EXPECT_EQ(position.character, 4096 + count);
    }
}

TEST_F(SourceTextTest, a_place_ends_after_what_stands_there) {
    const std::string text = "<PORT NAME='a'></PORT><!-- c -->\xC3\xA4-b &x\n";
    const SourceText file = source(text);
    EXPECT_EQ(covered(file, 0), "<PORT");
    EXPECT_EQ(covered(file, text.find("NAME")), "NAME");
    EXPECT_EQ(covered(file, text.find("</")), "</PORT");
    EXPECT_EQ(covered(file, text.find("<!--")), "<!--");
    EXPECT_EQ(covered(file, text.find('=')), "=");
    EXPECT_EQ(covered(file, text.find("\xC3\xA4")), "\xC3\xA4-b");
    EXPECT_EQ(covered(file, text.find('\n')), "");
    EXPECT_EQ(covered(file, text.size()), "");
}

TEST_F(SourceTextTest, a_byte_order_mark_does_not_count) {
    const SourceText file = source("\xEF\xBB\xBF<R/>");
    EXPECT_EQ(file.text(), "<R/>");
    EXPECT_EQ(file.encoding(), SourceEncoding::kUtf8);
    EXPECT_EQ(source("<R/>").encoding(), SourceEncoding::kDeclared);
}

TEST_F(SourceTextTest, a_wide_text_is_read_as_utf_8) {
    const SourceText file = source(std::string("\xFE\xFF\0<\0\xE4", 6));
    EXPECT_EQ(file.text(), "<\xC3\xA4");
    EXPECT_EQ(file.encoding(), SourceEncoding::kConverted);
}

TEST_F(SourceTextTest, an_excerpt_is_cut_between_characters) {
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "\xE2\x82\xAC";
    }
    const Place place = source(text).place("a", 150);
    EXPECT_EQ((place.excerpt->before.size() - 3) % 3, 0U);
    EXPECT_EQ((place.excerpt->from.size() - 3) % 3, 0U);
    EXPECT_EQ(place.excerpt->before.substr(0, 3), "...");
}

}  // namespace
