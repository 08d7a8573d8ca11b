#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// A pattern of bits, most significant first, as a text: "0", "1" and the digits of multi-valued
// logic "X", "Z", "U", "W", "L", "H" and "-", one character for each bit.

// The radixes of patterns, each by the number of bits that one of its digits stands for.
enum PatternRadix : unsigned {
    PATTERN_BINARY = 1,
    PATTERN_OCTAL = 3,
    PATTERN_HEX = 4,
};

// The number of bits in as few digits as hold "size" bits.
std::size_t whole_digits(std::size_t size, PatternRadix radix);

// Reads digits in either letter case, single "_" between them allowed; a multi-valued digit gives
// as many bits of its kind as any digit. Nothing when there is no digit or a stray character.
std::optional<std::string> read_pattern(std::string_view text, PatternRadix radix);

// Writes the pattern in upper case, extended to whole digits. Nothing when the bits of a digit
// are partly multi-valued.
std::optional<std::string> write_pattern(std::string bits, PatternRadix radix);

// Brings a pattern to "size" bits. In front it is extended with "0", or with its own first digit
// when that is multi-valued, and shortened by the same. False when other bits would be lost, which
// leaves it alone.
// REQUIRES: !bits.empty() && size > 0
bool resize_pattern(std::string& bits, std::size_t size);

// True when no bit is multi-valued, so that the pattern is a number.
bool is_number_pattern(std::string_view bits);
