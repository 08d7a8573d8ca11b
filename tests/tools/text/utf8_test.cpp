#include "tools/text/utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Utf8, well_formed_sequences_have_their_length) {
    struct Row {
        const char* text;
        std::size_t length;
        std::uint32_t code;
    };
    // clang-format off
    constexpr Row kRows[] = {
        { "a",                1, 0x61 },
        { "\x7F",             1, 0x7F },
        { "\xC2\x80",         2, 0x80 },
        { "\xDF\xBF",         2, 0x7FF },
        { "\xE0\xA0\x80",     3, 0x800 },
        { "\xED\x9F\xBF",     3, 0xD7FF },
        { "\xEE\x80\x80",     3, 0xE000 },
        { "\xEF\xBF\xBF",     3, 0xFFFF },
        { "\xF0\x90\x80\x80", 4, 0x10000 },
        { "\xF4\x8F\xBF\xBF", 4, 0x10FFFF },
    };
    // clang-format on
    for (const Row& row : kRows) {
        const std::string text = row.text;
        EXPECT_EQ(utf8_length(text + "z"), row.length) << row.code;
        EXPECT_EQ(utf8_step(text + "z"), row.length) << row.code;
        EXPECT_EQ(utf8_code(text), row.code);
        for (std::size_t size = 1; size < text.size(); ++size) {
            EXPECT_EQ(utf8_length(text.substr(0, size)), 0U) << row.code << " " << size;
            EXPECT_EQ(utf8_step(text.substr(0, size)), 1U) << row.code << " " << size;
        }
    }
}

TEST(Utf8, everything_else_has_none) {
    for (const char* const text :
         {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
          "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC2z",
          "\xE2\x82z"}) {
        EXPECT_EQ(utf8_length(text), 0U) << testing::PrintToString(text);
        EXPECT_EQ(utf8_step(text), 1U) << testing::PrintToString(text);
    }
}

}  // namespace
