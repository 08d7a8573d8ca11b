#include "kivo/toolkit/xml/internal/encoding.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using namespace std::string_literals;

std::string converted(const std::string& text) {
    TextBuffer buffer = make_text_buffer(text.size());
    std::memcpy(buffer.data.get(), text.data(), text.size());
    EXPECT_NO_THROW(convert_to_utf8(buffer));
    EXPECT_EQ(buffer.data[buffer.size], '\0');
    return std::string(buffer.view());
}

const std::string kReplacement = "\xEF\xBF\xBD";

}  // namespace

TEST(Encoding, new_buffer_ends_with_a_nul_that_is_not_counted) {
    const TextBuffer buffer = make_text_buffer(3);
    ASSERT_NE(buffer.data, nullptr);
    EXPECT_EQ(buffer.size, 3u);
    EXPECT_EQ(buffer.view().size(), 3u);
    EXPECT_EQ(buffer.data[3], '\0');
}

TEST(Encoding, knows_the_mark_of_utf8) {
    EXPECT_EQ(utf8_mark_length("\xEF\xBB\xBF<A/>"), 3u);
    EXPECT_EQ(utf8_mark_length("\xEF\xBB"), 0u);
    EXPECT_EQ(utf8_mark_length("<A/>"), 0u);
    EXPECT_EQ(utf8_mark_length(""), 0u);
}

TEST(Encoding, eight_bit_texts_stay_as_they_are) {
    for (const std::string& text :
         {""s, "<"s, "<A/>"s, "\xE4\xF6"s, "\xEF\xBB\xBF<A/>"s, "\xFF"s, "a\0b"s}) {
        EXPECT_EQ(converted(text), text);
    }
}

TEST(Encoding, utf16_and_utf32_with_a_mark_become_utf8_without_it) {
    EXPECT_EQ(converted("\xFE\xFF\0<\0\xE4"s), "<\xC3\xA4");
    EXPECT_EQ(converted("\xFF\xFE<\0\xE4\0"s), "<\xC3\xA4");
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\0\0<\0\0\0\xE4"s), "<\xC3\xA4");
    EXPECT_EQ(converted("\xFF\xFE\0\0<\0\0\0\xE4\0\0\0"s), "<\xC3\xA4");
}

TEST(Encoding, utf16_and_utf32_are_known_by_their_first_bytes) {
    EXPECT_EQ(converted("\0<\0A"s), "<A");
    EXPECT_EQ(converted("<\0A\0"s), "<A");
    EXPECT_EQ(converted("\0\0\0<\0\0\0A"s), "<A");
    EXPECT_EQ(converted("<\0\0\0A\0\0\0"s), "<A");
}

TEST(Encoding, mark_alone_is_an_empty_text) {
    EXPECT_EQ(converted("\xFE\xFF"s), "");
    EXPECT_EQ(converted("\xFF\xFE"s), "");
    EXPECT_EQ(converted("\0\0\xFE\xFF"s), "");
    EXPECT_EQ(converted("\xFF\xFE\0\0"s), "");
}

TEST(Encoding, characters_at_the_edges_of_each_length) {
    EXPECT_EQ(converted("\xFE\xFF\0\x7F"s), "\x7F");
    EXPECT_EQ(converted("\xFE\xFF\0\x80"s), "\xC2\x80");
    EXPECT_EQ(converted("\xFE\xFF\x07\xFF"s), "\xDF\xBF");
    EXPECT_EQ(converted("\xFE\xFF\x08\x00"s), "\xE0\xA0\x80");
    EXPECT_EQ(converted("\xFE\xFF\xFF\xFF"s), "\xEF\xBF\xBF");
    EXPECT_EQ(converted("\xFE\xFF\xD8\x00\xDC\x00"s), "\xF0\x90\x80\x80");
    EXPECT_EQ(converted("\xFE\xFF\xDB\xFF\xDF\xFF"s), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\x10\xFF\xFF"s), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(converted("\xFF\xFE\x3D\xD8\x00\xDE"s), "\xF0\x9F\x98\x80");
}

TEST(Encoding, units_that_stand_for_no_character_are_replaced) {
    EXPECT_EQ(converted("\xFE\xFF\xD8\x00\0x"s), kReplacement + "x");
    EXPECT_EQ(converted("\xFE\xFF\xDC\x00\0x"s), kReplacement + "x");
    EXPECT_EQ(converted("\xFE\xFF\xDC\x00\xD8\x00"s), kReplacement + kReplacement);
    EXPECT_EQ(converted("\xFE\xFF\xD8\x00"s), kReplacement);
    EXPECT_EQ(converted("\xFE\xFF\xD8\x00\xD8\x00\xDC\x00"s), kReplacement + "\xF0\x90\x80\x80");
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\x11\0\0"s), kReplacement);
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\0\xD8\0"s), kReplacement);
}

TEST(Encoding, cut_off_unit_at_the_end_is_replaced) {
    EXPECT_EQ(converted("\xFE\xFF\0<\0"s), "<" + kReplacement);
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\0\0<\0"s), "<" + kReplacement);
    EXPECT_EQ(converted("\0\0\xFE\xFF\0\0\0<\0\0\0"s), "<" + kReplacement);
    EXPECT_EQ(converted("\xFE\xFF\xD8\x00\xDC"s), kReplacement + kReplacement);
}

TEST(Encoding, longest_characters_fit) {
    std::string text = "\xFE\xFF";
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        text += "\xFF\xFD";
        expected += kReplacement;
    }
    EXPECT_EQ(converted(text), expected);
    text = "\0\0\xFE\xFF"s;
    expected.clear();
    for (int i = 0; i < 1000; ++i) {
        text += "\0\x01\0\0"s;
        expected += "\xF0\x90\x80\x80";
    }
    EXPECT_EQ(converted(text), expected);
}
