#include "kivo/toolkit/strings.h"
#include "kivo/toolkit/internal/text_view.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

std::vector<std::string> all_tokens(std::string text, const std::string& delimiters) {
    std::vector<std::string> tokens;
    while (!text.empty()) {
        tokens.push_back(dro_get_token(text, delimiters));
    }
    return tokens;
}

using Tokens = std::vector<std::string>;

// Every byte but NUL, in order.
std::string all_bytes() {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace

TEST(GetToken, takes_what_stands_before_the_first_delimiter_and_removes_both) {
    std::string text = "force -hex data";
    EXPECT_EQ(dro_get_token(text, " "), "force");
    EXPECT_EQ(text, "-hex data");
}

TEST(GetToken, without_a_delimiter_takes_all_and_leaves_nothing) {
    std::string text = "data";
    EXPECT_EQ(dro_get_token(text, " ,"), "data");
    EXPECT_EQ(text, "");
}

TEST(GetToken, delimiter_at_the_front_gives_an_empty_token) {
    std::string text = ",a";
    EXPECT_EQ(dro_get_token(text, ","), "");
    EXPECT_EQ(text, "a");
}

TEST(GetToken, each_of_several_delimiters_ends_a_token) {
    EXPECT_EQ(all_tokens("a,b c(d)", " ,()"), (Tokens{"a", "b", "c", "d"}));
}

TEST(GetToken, repeated_delimiters_give_empty_tokens) {
    EXPECT_EQ(all_tokens("a  b", " "), (Tokens{"a", "", "b"}));
    EXPECT_EQ(all_tokens(",,", ","), (Tokens{"", ""}));
}

TEST(GetToken, delimiter_at_the_end_gives_no_further_token) {
    EXPECT_EQ(all_tokens("a;", ";"), (Tokens{"a"}));
}

TEST(GetToken, tokens_are_not_trimmed) {
    EXPECT_EQ(all_tokens(" a ,\tb", ","), (Tokens{" a ", "\tb"}));
}

TEST(GetToken, empty_text_gives_an_empty_token) {
    std::string text;
    EXPECT_EQ(dro_get_token(text, ","), "");
    EXPECT_EQ(text, "");
}

TEST(GetToken, without_delimiters_takes_all) {
    std::string text = "a b";
    EXPECT_EQ(dro_get_token(text, ""), "a b");
    EXPECT_EQ(text, "");
}

TEST(NextToken, walks_a_view_like_get_token) {
    std::string_view rest = "a,,b";
    EXPECT_EQ(next_token(rest, ','), "a");
    EXPECT_EQ(next_token(rest, ','), "");
    EXPECT_EQ(next_token(rest, ','), "b");
    EXPECT_EQ(rest, "");
}

TEST(Trim, removes_the_six_white_space_characters_of_the_named_side_only) {
    const std::string blanks = " \t\n\v\f\r";
    EXPECT_EQ(trim_left(blanks + "a b" + blanks), "a b" + blanks);
    EXPECT_EQ(trim_right(blanks + "a b" + blanks), blanks + "a b");
}

TEST(Trim, text_of_white_space_only_becomes_empty) {
    EXPECT_EQ(trim_left(" \t\n\v\f\r"), "");
    EXPECT_EQ(trim_right(" \t\n\v\f\r"), "");
    EXPECT_EQ(trim_left(""), "");
    EXPECT_EQ(trim_right(""), "");
}

TEST(Trim, no_other_byte_is_white_space) {
    for (const char letter : all_bytes()) {
        const bool is_blank = std::string(" \t\n\v\f\r").find(letter) != std::string::npos;
        const std::string text(1, letter);
        EXPECT_EQ(trim_left(text), is_blank ? "" : text) << static_cast<int>(letter);
        EXPECT_EQ(trim_right(text), is_blank ? "" : text) << static_cast<int>(letter);
    }
    EXPECT_EQ(trim_left(std::string("\0a", 2)), std::string("\0a", 2));
}

TEST(LowerCase, changes_the_letters_a_to_z_and_no_other_byte) {
    EXPECT_EQ(to_lower_case("Fifo_2X[Z@]"), "fifo_2x[z@]");
    for (const char letter : all_bytes()) {
        const bool is_capital = letter >= 'A' && letter <= 'Z';
        const std::string text(1, letter);
        const std::string lower(1, static_cast<char>(letter + (is_capital ? 32 : 0)));
        EXPECT_EQ(to_lower_case(text), lower) << static_cast<int>(letter);
    }
}

TEST(LowerCase, does_not_ask_the_locale) {
    // Not every machine has such a locale; without one this repeats the plain case.
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"tr_TR.ISO-8859-9", "de_DE.ISO-8859-1", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(to_lower_case("I\xC4\xDC"), "i\xC4\xDC") << locale;
        EXPECT_EQ(trim_left("\xA0x"), "\xA0x") << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(ToInt32, reads_a_number_up_to_the_first_other_character) {
    const struct {
        const char* text;
        std::int32_t number;
    } rows[] = {
        {"", 0},
        {"0", 0},
        {"1", 1},
        {"-1", -1},
        {"+7", 7},
        {" \t\n\v\f\r42", 42},
        {"20ns", 20},
        {"-5", -5},
        {"- 5", 0},
        {"--5", 0},
        {"+-5", 0},
        {"x", 0},
        {"0x10", 0},
        {"007", 7},
        {"1.9", 1},
        {"1_000", 1},
        {"2147483647", 2147483647},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(to_int32(row.text), row.number) << '"' << row.text << '"';
    }
}

TEST(ToInt32, larger_numbers_keep_their_low_32_bits) {
    const struct {
        const char* text;
        std::int32_t number;
    } rows[] = {
        {"2147483648", std::numeric_limits<std::int32_t>::min()},
        {"-2147483649", 2147483647},
        {"4294967295", -1},
        {"4294967296", 0},
        {"4294967301", 5},
        {"-4294967301", -5},
        {"9223372036854775806", -2},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(to_int32(row.text), row.number) << '"' << row.text << '"';
    }
}

TEST(ToInt32, numbers_beyond_64_bits_stay_at_the_nearest_one) {
    for (const char* text :
         {"9223372036854775807", "9223372036854775808", "99999999999999999999"}) {
        EXPECT_EQ(to_int32(text), -1) << text;
    }
    for (const char* text :
         {"-9223372036854775808", "-9223372036854775809", "-99999999999999999999"}) {
        EXPECT_EQ(to_int32(text), 0) << text;
    }
    EXPECT_EQ(to_int32(std::string(1000000, '9')), -1);
}
