#include "kivo/toolkit/radix/radix.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr DRO_MEMORY_RADIXES kBinary = DRO_RADIX_BINARY;
constexpr DRO_MEMORY_RADIXES kOctal = DRO_RADIX_OCTAL;
constexpr DRO_MEMORY_RADIXES kHex = DRO_RADIX_HEX;
constexpr DRO_MEMORY_RADIXES kSigned = DRO_RADIX_SIGNED;
constexpr DRO_MEMORY_RADIXES kUnsigned = DRO_RADIX_UNSIGNED;
constexpr DRO_MEMORY_RADIXES kFixed = DRO_RADIX_FIXED_POINT;

const std::string kFails = "fails, and leaves the result alone";

struct Row {
    std::string in;
    DRO_MEMORY_RADIXES in_radix;
    DRO_MEMORY_RADIXES out_radix;
    unsigned width;
    std::string expected;
};

struct FixedRow {
    std::string in;
    DRO_MEMORY_RADIXES in_radix;
    DRO_MEMORY_RADIXES out_radix;
    std::string description;
    std::string expected;
};

// The conversion's result, or kFails. An untouched result shows that a failure has left it alone.
std::string convert(const std::string& in, DRO_MEMORY_RADIXES in_radix,
                    DRO_MEMORY_RADIXES out_radix, unsigned width = 0) {
    std::string out = "untouched";
    const bool converted = dro_radix_conversion(in, &out, in_radix, out_radix, width);
    return converted ? out : out == "untouched" ? kFails : "failed and wrote " + out;
}

std::string convert_fixed(const std::string& in, DRO_MEMORY_RADIXES in_radix,
                          DRO_MEMORY_RADIXES out_radix, const std::string& description) {
    std::string out = "untouched";
    const bool converted =
        dro_radix_conversion_fixed_point(in, &out, in_radix, out_radix, description);
    return converted ? out : out == "untouched" ? kFails : "failed and wrote " + out;
}

void expect_rows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        EXPECT_EQ(row.expected, convert(row.in, row.in_radix, row.out_radix, row.width))
            << "\"" << row.in << "\" from radix " << row.in_radix << " to " << row.out_radix
            << " in " << row.width << " bits";
    }
}

void expect_rows(const std::vector<FixedRow>& rows) {
    for (const FixedRow& row : rows) {
        EXPECT_EQ(row.expected, convert_fixed(row.in, row.in_radix, row.out_radix, row.description))
            << "\"" << row.in << "\" from radix " << row.in_radix << " to " << row.out_radix
            << " as \"" << row.description << "\"";
    }
}

std::string binary_text(std::uint64_t number, unsigned bits) {
    std::string text;
    while (bits-- > 0) {
        text += (number >> bits & 1) != 0 ? '1' : '0';
    }
    return text;
}

// 0, 1, and every power of two with its neighbours, up to the largest 62-bit number.
std::vector<std::int64_t> edge_numbers() {
    std::vector<std::int64_t> numbers;
    for (unsigned bit = 0; bit < 62; ++bit) {
        for (const int offset : {-1, 0, 1}) {
            numbers.push_back((std::int64_t{1} << bit) + offset);
        }
    }
    return numbers;
}

// Digits without a pattern that a chunk boundary could hide in.
std::string long_digits(std::size_t size, unsigned base) {
    std::string digits;
    std::uint32_t state = 12345;
    for (std::size_t i = 0; i < size; ++i) {
        state = state * 1664525U + 1013904223U;
        digits += "0123456789ABCDEF"[(state >> 24) % base];
    }
    digits[0] = '1';
    return digits;
}

// clang-format off
TEST(RadixPattern, reads_either_letter_case_and_writes_upper_case) {
    expect_rows(std::vector<Row>{
        { "aBcDeF", kHex,    kHex,    0, "ABCDEF" },
        { "f",      kHex,    kBinary, 0, "1111" },
        { "1111",   kBinary, kHex,    0, "F" },
        { "xzuwlh", kHex,    kHex,    0, "XZUWLH" },
        { "xzuwlh", kBinary, kBinary, 0, "XZUWLH" },
        { "x7",     kOctal,  kOctal,  0, "X7" },
    });
}

TEST(RadixPattern, allows_underscores_between_digits) {
    expect_rows(std::vector<Row>{
        { "10_10",  kBinary, kBinary,   0, "1010" },
        { "1_0_1",  kBinary, kBinary,   0, "101" },
        { "F_F",    kHex,    kUnsigned, 0, "255" },
        { "7_7",    kOctal,  kBinary,   0, "111111" },
        { "X_-",    kHex,    kHex,      0, "X-" },
        { "_1",     kBinary, kBinary,   0, kFails },
        { "1_",     kBinary, kBinary,   0, kFails },
        { "1__1",   kBinary, kBinary,   0, kFails },
        { "_",      kHex,    kHex,      0, kFails },
        { "0b_1",   kBinary, kBinary,   0, kFails },
        { "1_0",    kSigned, kSigned,   0, kFails },
        { "1_0",    kUnsigned, kHex,    0, kFails },
    });
}

TEST(RadixPattern, binary_may_begin_with_0_b) {
    expect_rows(std::vector<Row>{
        { "0b1010", kBinary, kHex,    0, "A" },
        { "0b1010", kBinary, kBinary, 0, "1010" },
        { "0bX",    kBinary, kBinary, 0, "X" },
        { "0b1",    kHex,    kHex,    0, "0B1" },
        { "0b",     kBinary, kBinary, 0, kFails },
        { "0b0b1",  kBinary, kBinary, 0, kFails },
        { "b1",     kBinary, kBinary, 0, kFails },
        { "0B1",    kBinary, kBinary, 0, kFails },
        { "0b1",    kOctal,  kBinary, 0, kFails },
        { "0b1",    kSigned, kBinary, 0, kFails },
    });
}

TEST(RadixPattern, extends_to_whole_digits_with_zeros) {
    expect_rows(std::vector<Row>{
        { "1",         kBinary, kHex,    0, "1" },
        { "11111",     kBinary, kHex,    0, "1F" },
        { "11111",     kBinary, kOctal,  0, "37" },
        { "1111111",   kBinary, kOctal,  0, "177" },
        { "F",         kHex,    kOctal,  0, "17" },
        { "FF",        kHex,    kOctal,  0, "377" },
        { "FFF",       kHex,    kOctal,  0, "7777" },
        { "7",         kOctal,  kHex,    0, "7" },
        { "77",        kOctal,  kHex,    0, "3F" },
        { "7777",      kOctal,  kHex,    0, "FFF" },
    });
}

TEST(RadixPattern, keeps_the_width_as_written) {
    expect_rows(std::vector<Row>{
        { "F",        kHex,    kBinary,   0, "1111" },
        { "F",        kHex,    kSigned,   0, "-1" },
        { "F",        kHex,    kUnsigned, 0, "15" },
        { "0F",       kHex,    kSigned,   0, "15" },
        { "0F",       kHex,    kBinary,   0, "00001111" },
        { "0F",       kHex,    kHex,      0, "0F" },
        { "00001111", kBinary, kHex,      0, "0F" },
        { "000",      kBinary, kBinary,   0, "000" },
        { "0",        kHex,    kSigned,   0, "0" },
        { "1",        kBinary, kSigned,   0, "-1" },
        { "01",       kBinary, kSigned,   0, "1" },
        { "8",        kHex,    kSigned,   0, "-8" },
        { "17",       kOctal,  kSigned,   0, "15" },
        { "77",       kOctal,  kSigned,   0, "-1" },
        { "80000000", kHex,    kSigned,   0, "-2147483648" },
    });
}

TEST(RadixMultiValued, digit_stands_for_one_whole_digit) {
    expect_rows(std::vector<Row>{
        { "X",        kHex,    kBinary, 0, "XXXX" },
        { "X",        kOctal,  kBinary, 0, "XXX" },
        { "XXXX",     kBinary, kHex,    0, "X" },
        { "XXX",      kBinary, kOctal,  0, "X" },
        { "-",        kHex,    kBinary, 0, "----" },
        { "----",     kBinary, kHex,    0, "-" },
        { "1Z",       kHex,    kBinary, 0, "0001ZZZZ" },
        { "0001ZZZZ", kBinary, kHex,    0, "1Z" },
        { "u1w0l-hz", kBinary, kBinary, 0, "U1W0L-HZ" },
        { "XXX",      kHex,    kOctal,  0, "XXXX" },
        { "LLLLHHHH", kBinary, kHex,    0, "LH" },
    });
}

TEST(RadixMultiValued, partly_multi_valued_digit_fails) {
    expect_rows(std::vector<Row>{
        { "XXX1",  kBinary, kHex,   0, kFails },
        { "1XXX",  kBinary, kHex,   0, kFails },
        { "XXXZ",  kBinary, kHex,   0, kFails },
        { "LLLH",  kBinary, kHex,   0, kFails },
        { "X1",    kBinary, kHex,   0, kFails },
        { "1X",    kBinary, kOctal, 0, kFails },
        { "XF",    kHex,    kOctal, 0, kFails },
        { "0000XXX1", kBinary, kHex, 0, kFails },
    });
}

TEST(RadixMultiValued, short_pattern_is_extended_with_its_own_first_digit) {
    expect_rows(std::vector<Row>{
        { "X",       kBinary, kHex,    0, "X" },
        { "ZZ",      kBinary, kOctal,  0, "Z" },
        { "-",       kBinary, kHex,    0, "-" },
        { "X0000",   kBinary, kHex,    0, "X0" },
        { "X",       kHex,    kOctal,  0, "XX" },
        { "X",       kOctal,  kHex,    0, "X" },
        { "X",       kBinary, kBinary, 6, "XXXXXX" },
        { "X",       kHex,    kHex,    6, "XX" },
        { "X",       kHex,    kBinary, 3, "XXX" },
        { "X",       kHex,    kBinary, 1, "X" },
        { "X1",      kBinary, kBinary, 1, kFails },
        { "XZ",      kBinary, kBinary, 1, kFails },
        { "X0",      kHex,    kBinary, 4, kFails },
        { "0X",      kBinary, kBinary, 1, "X" },
    });
}

TEST(RadixMultiValued, has_no_decimal_or_fixed_point_form) {
    for (const char* const digit : { "X", "Z", "U", "W", "L", "H", "-", "1X", "X1", "x" }) {
        for (const DRO_MEMORY_RADIXES radix : { kBinary, kOctal, kHex }) {
            EXPECT_EQ(kFails, convert(digit, radix, kSigned)) << digit;
            EXPECT_EQ(kFails, convert(digit, radix, kUnsigned)) << digit;
            EXPECT_EQ(kFails, convert(digit, radix, kUnsigned, 64)) << digit;
            EXPECT_EQ(kFails, convert_fixed(digit, radix, kFixed, "8.8")) << digit;
        }
        EXPECT_EQ(kFails, convert(digit, kUnsigned, kBinary)) << digit;
        EXPECT_EQ(kFails, convert(digit, kSigned, kBinary)) << digit;
        EXPECT_EQ(kFails, convert_fixed(digit, kFixed, kBinary, "s8.8")) << digit;
    }
}

TEST(RadixDecimal, without_width_gives_as_few_digits_as_hold_it) {
    expect_rows(std::vector<Row>{
        { "10",  kUnsigned, kHex,    0, "A" },
        { "10",  kSigned,   kHex,    0, "A" },
        { "8",   kSigned,   kBinary, 0, "1000" },
        { "8",   kUnsigned, kOctal,  0, "10" },
        { "0",   kSigned,   kBinary, 0, "0" },
        { "0",   kUnsigned, kHex,    0, "0" },
        { "000", kUnsigned, kOctal,  0, "0" },
        { "-0",  kSigned,   kBinary, 0, "0" },
        { "1",   kSigned,   kBinary, 0, "1" },
        { "16",  kSigned,   kHex,    0, "10" },
        { "255", kUnsigned, kHex,    0, "FF" },
        { "256", kUnsigned, kHex,    0, "100" },
    });
}

TEST(RadixDecimal, negative_gives_the_shortest_twos_complement_in_whole_digits) {
    expect_rows(std::vector<Row>{
        { "-1",   kSigned, kBinary, 0, "1" },
        { "-1",   kSigned, kHex,    0, "F" },
        { "-1",   kSigned, kOctal,  0, "7" },
        { "-2",   kSigned, kBinary, 0, "10" },
        { "-3",   kSigned, kBinary, 0, "101" },
        { "-4",   kSigned, kOctal,  0, "4" },
        { "-5",   kSigned, kOctal,  0, "73" },
        { "-8",   kSigned, kHex,    0, "8" },
        { "-9",   kSigned, kHex,    0, "F7" },
        { "-009", kSigned, kHex,    0, "F7" },
        { "-128", kSigned, kHex,    0, "80" },
        { "-129", kSigned, kHex,    0, "F7F" },
    });
}

TEST(RadixDecimal, decimal_to_decimal_keeps_the_number) {
    expect_rows(std::vector<Row>{
        { "255",  kUnsigned, kSigned,   0, "255" },
        { "255",  kSigned,   kUnsigned, 0, "255" },
        { "007",  kSigned,   kSigned,   0, "7" },
        { "-007", kSigned,   kSigned,   0, "-7" },
        { "-0",   kSigned,   kSigned,   0, "0" },
        { "-00",  kSigned,   kUnsigned, 0, "0" },
        { "00",   kUnsigned, kUnsigned, 0, "0" },
        { "255",  kUnsigned, kSigned,   9, "255" },
        { "-128", kSigned,   kSigned,   8, "-128" },
        { "255",  kUnsigned, kUnsigned, 8, "255" },
        { "255",  kUnsigned, kSigned,   8, kFails },
    });
}

TEST(RadixDecimal, negative_has_no_unsigned_form_without_width) {
    expect_rows(std::vector<Row>{
        { "-1",   kSigned, kUnsigned, 0, kFails },
        { "-255", kSigned, kUnsigned, 0, kFails },
        { "-1",   kSigned, kUnsigned, 8, "255" },
        { "-128", kSigned, kUnsigned, 8, "128" },
        { "-129", kSigned, kUnsigned, 8, kFails },
    });
}

TEST(RadixDecimal, sign_is_for_signed_numbers_only) {
    expect_rows(std::vector<Row>{
        { "-1",  kUnsigned, kUnsigned, 0, kFails },
        { "-0",  kUnsigned, kUnsigned, 0, kFails },
        { "-1",  kUnsigned, kBinary,   8, kFails },
        { "+1",  kSigned,   kBinary,   0, kFails },
        { "+1",  kUnsigned, kBinary,   0, kFails },
        { "--1", kSigned,   kBinary,   0, kFails },
        { "-",   kSigned,   kBinary,   0, kFails },
        { "1-",  kSigned,   kBinary,   0, kFails },
        { "- 1", kSigned,   kBinary,   0, kFails },
        { "+1",  kHex,      kHex,      0, kFails },
    });
}

TEST(RadixWidth, pads_patterns) {
    expect_rows(std::vector<Row>{
        { "F",   kHex,      kBinary, 8,  "00001111" },
        { "F",   kHex,      kHex,    12, "00F" },
        { "F",   kHex,      kSigned, 5,  "15" },
        { "F",   kHex,      kSigned, 4,  "-1" },
        { "F",   kHex,      kSigned, 400, "15" },
        { "1",   kBinary,   kHex,    6,  "01" },
        { "5",   kUnsigned, kBinary, 8,  "00000101" },
        { "5",   kSigned,   kBinary, 8,  "00000101" },
        { "-1",  kSigned,   kBinary, 8,  "11111111" },
        { "-1",  kSigned,   kHex,    8,  "FF" },
        { "-1",  kSigned,   kHex,    5,  "1F" },
        { "-1",  kSigned,   kOctal,  4,  "17" },
        { "0",   kSigned,   kBinary, 1,  "0" },
        { "0",   kUnsigned, kBinary, 3,  "000" },
        { "-1",  kSigned,   kHex,    80, "FFFFFFFFFFFFFFFFFFFF" },
    });
}

TEST(RadixWidth, fails_when_the_value_does_not_fit) {
    expect_rows(std::vector<Row>{
        { "8",   kSigned,   kBinary,   4, kFails },
        { "8",   kSigned,   kBinary,   5, "01000" },
        { "8",   kSigned,   kSigned,   4, kFails },
        { "8",   kSigned,   kUnsigned, 4, kFails },
        { "8",   kUnsigned, kBinary,   4, "1000" },
        { "16",  kUnsigned, kBinary,   4, kFails },
        { "-8",  kSigned,   kBinary,   4, "1000" },
        { "-9",  kSigned,   kBinary,   4, kFails },
        { "1",   kSigned,   kBinary,   1, kFails },
        { "-1",  kSigned,   kBinary,   1, "1" },
        { "0F",  kHex,      kHex,      4, "F" },
        { "0F",  kHex,      kBinary,   4, "1111" },
        { "0F",  kHex,      kSigned,   4, "-1" },
        { "0F",  kHex,      kBinary,   3, kFails },
        { "0F",  kHex,      kUnsigned, 3, kFails },
        { "10",  kHex,      kHex,      4, kFails },
        { "000", kHex,      kBinary,   1, "0" },
        { "99999999999999999999999999", kUnsigned, kUnsigned, 32, kFails },
        { "99999999999999999999999999", kUnsigned, kHex,      32, kFails },
    });
}

TEST(RadixReject, anything_else) {
    expect_rows(std::vector<Row>{
        { "",      kBinary,   kHex,      0, kFails },
        { "",      kOctal,    kHex,      0, kFails },
        { "",      kHex,      kHex,      0, kFails },
        { "",      kSigned,   kHex,      0, kFails },
        { "",      kUnsigned, kUnsigned, 0, kFails },
        { " ",     kHex,      kBinary,   0, kFails },
        { " 1",    kHex,      kBinary,   0, kFails },
        { "1 ",    kHex,      kBinary,   0, kFails },
        { "1 ",    kSigned,   kBinary,   0, kFails },
        { "2",     kBinary,   kHex,      0, kFails },
        { "8",     kOctal,    kHex,      0, kFails },
        { "A",     kOctal,    kHex,      0, kFails },
        { "G",     kHex,      kHex,      0, kFails },
        { "0x1",   kBinary,   kHex,      0, kFails },
        { "A",     kSigned,   kHex,      0, kFails },
        { "1.5",   kSigned,   kHex,      0, kFails },
        { "1e3",   kUnsigned, kHex,      0, kFails },
        { "\xff",  kHex,      kHex,      0, kFails },
        { "1\xe9", kSigned,   kHex,      0, kFails },
        { "1/",    kUnsigned, kHex,      0, kFails },
        { "1:",    kUnsigned, kHex,      0, kFails },
        { "1\n",   kBinary,   kHex,      0, kFails },
    });
}
// clang-format on

TEST(RadixReject, nul_byte_anywhere) {
    for (const DRO_MEMORY_RADIXES radix : {kBinary, kOctal, kHex, kSigned, kUnsigned}) {
        for (std::size_t at = 0; at < 3; ++at) {
            std::string text = "111";
            text[at] = '\0';
            EXPECT_EQ(kFails, convert(text, radix, kHex)) << radix << " at " << at;
            EXPECT_EQ(kFails, convert(text, radix, kSigned)) << radix << " at " << at;
            EXPECT_EQ(kFails, convert_fixed(text, radix, kFixed, "8.8")) << radix << " at " << at;
        }
    }
    EXPECT_EQ(kFails, convert_fixed(std::string("1\0", 2), kFixed, kHex, "8.8"));
    EXPECT_EQ(kFails, convert_fixed("1", kFixed, kHex, std::string("8.8\0", 4)));
}

TEST(RadixReject, radix_that_is_no_number) {
    const auto unknown = static_cast<DRO_MEMORY_RADIXES>(7);
    const auto negative = static_cast<DRO_MEMORY_RADIXES>(-1);
    for (const DRO_MEMORY_RADIXES radix : {DRO_RADIX_NONE, unknown, negative}) {
        EXPECT_EQ(kFails, convert("1", radix, kBinary)) << radix;
        EXPECT_EQ(kFails, convert("1", kBinary, radix)) << radix;
        EXPECT_EQ(kFails, convert("1", kSigned, radix)) << radix;
        EXPECT_EQ(kFails, convert("1", radix, radix)) << radix;
        EXPECT_EQ(kFails, convert_fixed("1", radix, kFixed, "4.4")) << radix;
        EXPECT_EQ(kFails, convert_fixed("1", kFixed, radix, "4.4")) << radix;
    }
}

TEST(RadixReject, fixed_point_without_description) {
    EXPECT_EQ(kFails, convert("1", kFixed, kBinary));
    EXPECT_EQ(kFails, convert("1", kBinary, kFixed));
    EXPECT_EQ(kFails, convert("1", kFixed, kFixed, 8));
}

TEST(RadixAliasing, input_and_result_may_be_the_same_string) {
    std::string text = "f_f";
    EXPECT_TRUE(dro_radix_conversion(text, &text, kHex, kBinary, 0));
    EXPECT_EQ("11111111", text);
    EXPECT_TRUE(dro_radix_conversion(text, &text, kBinary, kSigned, 0));
    EXPECT_EQ("-1", text);
    EXPECT_TRUE(dro_radix_conversion(text, &text, kSigned, kUnsigned, 100));
    EXPECT_EQ("1267650600228229401496703205375", text);
    EXPECT_TRUE(dro_radix_conversion(text, &text, kUnsigned, kHex, 0));
    EXPECT_EQ(std::string(25, 'F'), text);
    EXPECT_FALSE(dro_radix_conversion(text, &text, kHex, kHex, 99));
    EXPECT_EQ(std::string(25, 'F'), text);
}

TEST(RadixAliasing, fixed_point_input_and_result_may_be_the_same_string) {
    std::string text = "-1.250";
    EXPECT_TRUE(dro_radix_conversion_fixed_point(text, &text, kFixed, kHex, "s4.4"));
    EXPECT_EQ("EC", text);
    EXPECT_TRUE(dro_radix_conversion_fixed_point(text, &text, kHex, kFixed, "s4.4"));
    EXPECT_EQ("-1.25", text);
    EXPECT_FALSE(dro_radix_conversion_fixed_point(text, &text, kFixed, kHex, "4.4"));
    EXPECT_EQ("-1.25", text);
}

TEST(RadixNumbers, powers_of_two_and_their_neighbours_agree_with_machine_arithmetic) {
    for (const std::int64_t number : edge_numbers()) {
        const std::string positive = std::to_string(number);
        const std::string negative = std::to_string(-number);
        const std::string bits = binary_text(static_cast<std::uint64_t>(number), 64);
        const std::string negative_bits = binary_text(static_cast<std::uint64_t>(-number), 64);
        EXPECT_EQ(bits, convert(positive, kSigned, kBinary, 64));
        EXPECT_EQ(bits, convert(positive, kUnsigned, kBinary, 64));
        EXPECT_EQ(negative_bits, convert(negative, kSigned, kBinary, 64));
        EXPECT_EQ(positive, convert(bits, kBinary, kSigned));
        EXPECT_EQ(positive, convert(bits, kBinary, kUnsigned));
        EXPECT_EQ(negative, convert(negative_bits, kBinary, kSigned));
        EXPECT_EQ(std::to_string(static_cast<std::uint64_t>(-number)),
                  convert(negative, kSigned, kUnsigned, 64));
    }
}

TEST(RadixNumbers, powers_of_two_beyond_machine_arithmetic) {
    // clang-format off
    expect_rows(std::vector<Row>{
        { "18446744073709551615",  kUnsigned, kHex, 0, "FFFFFFFFFFFFFFFF" },
        { "18446744073709551616",  kUnsigned, kHex, 0, "10000000000000000" },
        { "18446744073709551617",  kUnsigned, kHex, 0, "10000000000000001" },
        { "-9223372036854775807",  kSigned,   kHex, 0, "8000000000000001" },
        { "-9223372036854775808",  kSigned,   kHex, 0, "8000000000000000" },
        { "-9223372036854775809",  kSigned,   kHex, 0, "F7FFFFFFFFFFFFFFF" },
        { "-18446744073709551616", kSigned,   kHex, 0, "F0000000000000000" },
        { "-18446744073709551617", kSigned,   kHex, 0, "EFFFFFFFFFFFFFFFF" },
        { "340282366920938463463374607431768211455", kUnsigned, kHex, 0,
          "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF" },
        { "340282366920938463463374607431768211456", kUnsigned, kHex, 0,
          "100000000000000000000000000000000" },
        { "10000000000000000000", kUnsigned, kHex, 0, "8AC7230489E80000" },
        { "9999999999999999999",  kUnsigned, kHex, 0, "8AC7230489E7FFFF" },
        { "100000000000000000000000000000000000000", kUnsigned, kHex, 0,
          "4B3B4CA85A86C47A098A224000000000" },
    });
    // clang-format on
}

TEST(RadixNumbers, decimals_come_back_from_every_radix) {
    for (const std::int64_t number : edge_numbers()) {
        for (const std::string& text : {std::to_string(number), std::to_string(-number)}) {
            for (const DRO_MEMORY_RADIXES radix : {kBinary, kOctal, kHex}) {
                EXPECT_EQ(text, convert(convert(text, kSigned, radix, 65), radix, kSigned, 65))
                    << "radix " << radix;
            }
        }
    }
}

TEST(RadixNumbers, negative_decimals_come_back_without_width) {
    for (const std::int64_t number : edge_numbers()) {
        if (number == 0) {
            continue;
        }
        const std::string text = std::to_string(-number);
        for (const DRO_MEMORY_RADIXES radix : {kBinary, kOctal, kHex}) {
            EXPECT_EQ(text, convert(convert(text, kSigned, radix), radix, kSigned)) << radix;
        }
    }
}

TEST(RadixNumbers, long_numbers_come_back) {
    for (const std::size_t size : {18, 19, 20, 37, 38, 39, 57, 1000, 9999, 100000}) {
        const std::string number = long_digits(size, 10);
        const std::string hex = convert(number, kUnsigned, kHex);
        EXPECT_TRUE(number == convert(hex, kHex, kUnsigned)) << size << " digits";
        const std::string negative = "-" + number;
        const std::string bits = convert(negative, kSigned, kBinary);
        EXPECT_TRUE(negative == convert(bits, kBinary, kSigned)) << size << " digits";
    }
}

// What is left of a number of these digits when it is divided by a prime.
std::uint64_t rest_of(const std::string& digits, unsigned radix, std::uint64_t prime) {
    std::uint64_t rest = 0;
    for (const char digit : digits) {
        const auto value = static_cast<unsigned>(digit <= '9' ? digit - '0' : digit - 'A' + 10);
        rest = (rest * radix + value) % prime;
    }
    return rest;
}

TEST(RadixNumbers, long_numbers_are_the_same_number_in_each_radix) {
    for (const std::string& number :
         {long_digits(77'000, 10), long_digits(80'000, 10), long_digits(200'003, 10),
          std::string(100'000, '9'), "1" + std::string(100'000, '0')}) {
        const std::string hex = convert(number, kUnsigned, kHex);
        for (const std::uint64_t prime : {4294967291U, 4294967279U, 998244353U}) {
            EXPECT_EQ(rest_of(hex, 16, prime), rest_of(number, 10, prime)) << number.size();
        }
        EXPECT_TRUE(number == convert(hex, kHex, kUnsigned)) << number.size();
    }
}

TEST(RadixNumbers, long_patterns_come_back) {
    for (const std::size_t size : {63, 64, 65, 1000, 1000000}) {
        const std::string bits = long_digits(size * 12, 2);
        EXPECT_TRUE(bits == convert(convert(bits, kBinary, kHex), kHex, kBinary)) << size;
        EXPECT_TRUE(bits == convert(convert(bits, kBinary, kOctal), kOctal, kBinary)) << size;
        const std::string hex = long_digits(size * 3, 16);
        EXPECT_TRUE(hex == convert(convert(hex, kHex, kOctal), kOctal, kHex)) << size;
    }
}

TEST(RadixNumbers, number_far_too_long_for_its_width_fails_at_once) {
    const std::string number(10'000'000, '9');
    EXPECT_EQ(kFails, convert(number, kUnsigned, kHex, 64));
    EXPECT_EQ(kFails, convert("-" + number, kSigned, kUnsigned, 64));
    EXPECT_EQ(kFails, convert_fixed(number, kFixed, kHex, "32.32"));
    EXPECT_EQ(kFails, convert_fixed(number, kSigned, kFixed, "32.32"));
}

// clang-format off
TEST(RadixFixedPoint, is_written_as_the_shortest_exact_decimal) {
    expect_rows(std::vector<FixedRow>{
        { "00011000", kBinary, kFixed, "4.4",  "1.5" },
        { "00100000", kBinary, kFixed, "4.4",  "2" },
        { "11111100", kBinary, kFixed, "s4.4", "-0.25" },
        { "00000000", kBinary, kFixed, "s4.4", "0" },
        { "FF",       kHex,    kFixed, "4.4",  "15.9375" },
        { "FF",       kHex,    kFixed, "s4.4", "-0.0625" },
        { "80",       kHex,    kFixed, "s4.4", "-8" },
        { "7F",       kHex,    kFixed, "s4.4", "7.9375" },
        { "F",        kHex,    kFixed, "0.4",  "0.9375" },
        { "F",        kHex,    kFixed, "4.0",  "15" },
        { "F",        kHex,    kFixed, "s4.0", "-1" },
        { "8",        kHex,    kFixed, "s1.3", "-1" },
        { "1",        kBinary, kFixed, "0.1",  "0.5" },
        { "1",        kBinary, kFixed, "s1.0", "-1" },
        { "1",        kHex,    kFixed, "0.20", "0.00000095367431640625" },
        { "1",        kHex,    kFixed, "0.64",
          "0.0000000000000000000542101086242752217003726400434970855712890625" },
        { "1",        kHex,    kFixed, "0.65",
          "0.00000000000000000002710505431213761085018632002174854278564453125" },
        { "FFFFFFFFFFFFFFFF8", kHex, kFixed, "64.4", "18446744073709551615.5" },
    });
}

TEST(RadixFixedPoint, gives_exactly_all_bits) {
    expect_rows(std::vector<FixedRow>{
        { "1.5",    kFixed, kBinary, "4.4",  "00011000" },
        { "2",      kFixed, kBinary, "4.4",  "00100000" },
        { "-0.25",  kFixed, kBinary, "s4.4", "11111100" },
        { "0",      kFixed, kBinary, "4.4",  "00000000" },
        { "-0",     kFixed, kBinary, "s4.4", "00000000" },
        { "-0.0",   kFixed, kBinary, "s4.4", "00000000" },
        { "001.50", kFixed, kBinary, "4.4",  "00011000" },
        { "0.5",    kFixed, kBinary, "0.4",  "1000" },
        { "5",      kFixed, kBinary, "4.0",  "0101" },
        { "1.5",    kFixed, kHex,    "4.4",  "18" },
        { "-1",     kFixed, kHex,    "s3.3", "38" },
        { "-1",     kFixed, kOctal,  "s4.4", "360" },
        { "1.5",    kFixed, kUnsigned, "4.4", "24" },
        { "15.5",   kFixed, kUnsigned, "4.4", "248" },
        { "15.5",   kFixed, kSigned,   "4.4", "-8" },
        { "-1",     kFixed, kUnsigned, "s4.4", "240" },
        { "-1",     kFixed, kSigned,   "s4.4", "-16" },
    });
}

TEST(RadixFixedPoint, rounds_to_the_nearest_step_and_ties_away_from_zero) {
    expect_rows(std::vector<FixedRow>{
        { "0.03",     kFixed, kBinary, "4.4",  "00000000" },
        { "0.03125",  kFixed, kBinary, "4.4",  "00000001" },
        { "0.031249999999999999999999999999999999999", kFixed, kBinary, "4.4", "00000000" },
        { "0.031250000000000000000000000000000000001", kFixed, kBinary, "4.4", "00000001" },
        { "0.09375",  kFixed, kBinary, "4.4",  "00000010" },
        { "0.5",      kFixed, kBinary, "4.0",  "0001" },
        { "1.5",      kFixed, kBinary, "4.0",  "0010" },
        { "2.5",      kFixed, kBinary, "4.0",  "0011" },
        { "2.499",    kFixed, kBinary, "4.0",  "0010" },
        { "-0.03",    kFixed, kBinary, "s4.4", "00000000" },
        { "-0.03125", kFixed, kBinary, "s4.4", "11111111" },
        { "-0.5",     kFixed, kBinary, "s4.0", "1111" },
        { "-1.5",     kFixed, kBinary, "s4.0", "1110" },
        { "-2.5",     kFixed, kBinary, "s4.0", "1101" },
        { "0.1",      kFixed, kHex,    "0.128", "1999999999999999999999999999999A" },
        { "1.9999999999", kFixed, kBinary, "4.4", "00100000" },
    });
}

TEST(RadixFixedPoint, fails_when_out_of_range_after_rounding) {
    expect_rows(std::vector<FixedRow>{
        { "15.9375",   kFixed, kBinary, "4.4",  "11111111" },
        { "15.96",     kFixed, kBinary, "4.4",  "11111111" },
        { "15.96875",  kFixed, kBinary, "4.4",  kFails },
        { "16",        kFixed, kBinary, "4.4",  kFails },
        { "7.9375",    kFixed, kBinary, "s4.4", "01111111" },
        { "7.96875",   kFixed, kBinary, "s4.4", kFails },
        { "8",         kFixed, kBinary, "s4.4", kFails },
        { "-8",        kFixed, kBinary, "s4.4", "10000000" },
        { "-8.03",     kFixed, kBinary, "s4.4", "10000000" },
        { "-8.03125",  kFixed, kBinary, "s4.4", kFails },
        { "1",         kFixed, kBinary, "0.4",  kFails },
        { "0.99",      kFixed, kBinary, "0.4",  kFails },
        { "0.5",       kFixed, kBinary, "s1.0", kFails },
        { "-1",        kFixed, kBinary, "s1.0", "1" },
        { "1000000000000000000000000", kFixed, kBinary, "4.4", kFails },
    });
}

TEST(RadixFixedPoint, equal_radixes_write_the_normal_form) {
    expect_rows(std::vector<FixedRow>{
        { "01.50", kFixed, kFixed, "4.4",  "1.5" },
        { "2.0",   kFixed, kFixed, "4.4",  "2" },
        { "-0.0",  kFixed, kFixed, "s4.4", "0" },
        { "-0.01", kFixed, kFixed, "s4.4", "0" },
        { "0.1",   kFixed, kFixed, "4.4",  "0.125" },
        { "16",    kFixed, kFixed, "4.4",  kFails },
    });
}

TEST(RadixFixedPoint, shorter_source_is_padded_in_front) {
    expect_rows(std::vector<FixedRow>{
        { "11000", kBinary,   kFixed, "4.4",  "1.5" },
        { "11000", kBinary,   kFixed, "s4.4", "1.5" },
        { "F",     kHex,      kFixed, "s4.4", "0.9375" },
        { "7",     kOctal,    kFixed, "s4.4", "0.4375" },
        { "24",    kUnsigned, kFixed, "4.4",  "1.5" },
        { "24",    kSigned,   kFixed, "s4.4", "1.5" },
        { "-4",    kSigned,   kFixed, "s4.4", "-0.25" },
        { "-4",    kSigned,   kFixed, "4.4",  "15.75" },
        { "0",     kSigned,   kFixed, "4.4",  "0" },
    });
}

TEST(RadixFixedPoint, longer_source_fails) {
    expect_rows(std::vector<FixedRow>{
        { "111111111", kBinary,   kFixed, "4.4",  kFails },
        { "000001111", kBinary,   kFixed, "4.4",  kFails },
        { "00F",       kHex,      kFixed, "4.4",  kFails },
        { "1FF",       kHex,      kFixed, "4.4",  kFails },
        { "256",       kUnsigned, kFixed, "4.4",  kFails },
        { "255",       kUnsigned, kFixed, "4.4",  "15.9375" },
        { "128",       kSigned,   kFixed, "s4.4", kFails },
        { "-128",      kSigned,   kFixed, "s4.4", "-8" },
        { "-129",      kSigned,   kFixed, "s4.4", kFails },
    });
}

TEST(RadixFixedPoint, pattern_of_whole_digits_comes_back) {
    expect_rows(std::vector<FixedRow>{
        { "0F",  kHex,   kFixed, "3.3",  "1.875" },
        { "38",  kHex,   kFixed, "s3.3", "-1" },
        { "78",  kHex,   kFixed, "s3.3", kFails },
        { "00F", kHex,   kFixed, "3.3",  kFails },
        { "360", kOctal, kFixed, "s4.4", "-1" },
        { "760", kOctal, kFixed, "s4.4", kFails },
    });
}

TEST(RadixFixedPoint, rejects_malformed_descriptions) {
    for (const char* const description :
         { "", ".", "s", "s.", "4", "4.", ".4", "s4", "s.4", "4.4.4", "4,4", "-4.4", "+4.4", "4.-4",
           " 4.4", "4.4 ", "4 .4", "u4.4", "S4.4", "ss4.4", "4.4s", "0x4.4", "0.0", "s0.4", "s0.0",
           "1048576.1", "4294967296.0", "0.18446744073709551617", "99999999999999999999.4" }) {
        EXPECT_EQ(kFails, convert_fixed("1", kBinary, kFixed, description)) << description;
        EXPECT_EQ(kFails, convert_fixed("0", kFixed, kBinary, description)) << description;
        EXPECT_EQ(kFails, convert_fixed("0", kFixed, kFixed, description)) << description;
    }
}

TEST(RadixFixedPoint, descriptions_up_to_65536_bits_are_read) {
    for (const char* const description : {"65535.0", "65536.0", "s65536.0", "32768.32768", "0.65536"}) {
        EXPECT_EQ("0", convert_fixed("0", kBinary, kFixed, description)) << description;
    }
    for (const char* const description : {"65537.0", "s65537.0", "65536.1", "32768.32769", "0.65537"}) {
        EXPECT_EQ(kFails, convert_fixed("0", kBinary, kFixed, description)) << description;
    }
}

TEST(RadixFixedPoint, rejects_malformed_numbers) {
    for (const char* const number : { "", ".", "-", "-.", "1.", ".5", "-.5", "1.5.", "1..5", "1.5.5", "1,5",
                                      "+1", "--1", "1-", "1.-5", " 1", "1 ", "1e1", "0x1", "1_0", "1.5f",
                                      "0b1", "X", "1.X", "inf", "nan", "\xff" }) {
        EXPECT_EQ(kFails, convert_fixed(number, kFixed, kBinary, "s8.8")) << number;
    }
}

TEST(RadixFixedPoint, rejects_a_sign_without_a_signed_description) {
    expect_rows(std::vector<FixedRow>{
        { "-1",    kFixed,    kBinary, "4.4",  kFails },
        { "-0",    kFixed,    kBinary, "4.4",  kFails },
        { "-0.01", kFixed,    kBinary, "4.4",  kFails },
        { "-1",    kUnsigned, kFixed,  "s4.4", kFails },
    });
}

TEST(RadixFixedPoint, needs_fixed_point_on_one_side) {
    expect_rows(std::vector<FixedRow>{
        { "1", kBinary,   kHex,      "4.4", kFails },
        { "1", kUnsigned, kUnsigned, "4.4", kFails },
        { "g", kHex,      kFixed,    "4.4", kFails },
        { "",  kHex,      kFixed,    "4.4", kFails },
        { "",  kSigned,   kFixed,    "4.4", kFails },
    });
}
// clang-format on

TEST(RadixFixedPoint, every_pattern_comes_back) {
    for (const char* const description : {"8.0", "s8.0", "4.4", "s4.4", "0.8", "s1.7"}) {
        for (std::uint64_t pattern = 0; pattern < 256; ++pattern) {
            const std::string bits = binary_text(pattern, 8);
            const std::string number = convert_fixed(bits, kBinary, kFixed, description);
            EXPECT_EQ(bits, convert_fixed(number, kFixed, kBinary, description))
                << number << " as " << description;
            EXPECT_EQ(number, convert_fixed(number, kFixed, kFixed, description)) << description;
        }
    }
}

TEST(RadixFixedPoint, long_numbers_come_back) {
    const std::string bits = long_digits(20000, 2);
    const std::string number = convert_fixed(bits, kBinary, kFixed, "s5000.15000");
    EXPECT_EQ('-', number.front());
    EXPECT_TRUE(bits == convert_fixed(number, kFixed, kBinary, "s5000.15000"));
}

}  // namespace
