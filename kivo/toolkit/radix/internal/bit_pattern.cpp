#include "kivo/toolkit/radix/internal/bit_pattern.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <utility>

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";
constexpr std::string_view kMultiValued = "XZUWLH-";

constexpr std::uint8_t kNotADigit = 0xFF;
using Codes = std::array<std::uint8_t, 256>;

constexpr void add_code(Codes& codes, char letter, std::size_t code) {
    codes[static_cast<unsigned char>(letter)] = static_cast<std::uint8_t>(code);
    if (letter >= 'A' && letter <= 'Z') {
        codes[static_cast<unsigned char>(letter - 'A' + 'a')] = static_cast<std::uint8_t>(code);
    }
}

// For each character its index in kDigits, or after those the one in kMultiValued.
constexpr Codes make_codes(unsigned digit_bits) {
    Codes codes{};
    for (std::uint8_t& code : codes) {
        code = kNotADigit;
    }
    for (std::size_t i = 0; i < std::size_t{1} << digit_bits; ++i) {
        add_code(codes, kDigits[i], i);
    }
    for (std::size_t i = 0; i < kMultiValued.size(); ++i) {
        add_code(codes, kMultiValued[i], kDigits.size() + i);
    }
    return codes;
}

template <unsigned kDigitBits>
constexpr Codes kCodes = make_codes(kDigitBits);

using DigitText = std::array<char, PATTERN_HEX>;

// The bits of each code as a hexadecimal digit; the other radixes use the last ones.
constexpr auto kDigitTexts = [] {
    std::array<DigitText, kDigits.size() + kMultiValued.size()> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (std::size_t bit = 0; bit < PATTERN_HEX; ++bit) {
            texts[i][bit] = i >= kDigits.size()
                                ? kMultiValued[i - kDigits.size()]
                                : static_cast<char>('0' + (i >> (PATTERN_HEX - 1 - bit) & 1));
        }
    }
    return texts;
}();

bool is_number_bit(char bit) {
    return bit == '0' || bit == '1';
}

template <unsigned kDigitBits>
std::optional<std::string> read_digits(std::string_view text) {
    std::string bits(text.size() * kDigitBits, '\0');
    char* end = bits.data();
    bool after_digit = false;
    for (const char letter : text) {
        const std::uint8_t code = kCodes<kDigitBits>[static_cast<unsigned char>(letter)];
        if (code != kNotADigit) {
            const DigitText& digit = kDigitTexts[code];
            std::memcpy(end, digit.data() + (digit.size() - kDigitBits), kDigitBits);
            end += kDigitBits;
        } else if (letter != '_' || !after_digit) {
            return std::nullopt;
        }
        after_digit = code != kNotADigit;
    }
    if (!after_digit) {
        return std::nullopt;
    }
    bits.resize(static_cast<std::size_t>(end - bits.data()));
    return bits;
}

// REQUIRES: bits.size() is a multiple of kDigitBits
template <unsigned kDigitBits>
std::optional<std::string> write_digits(std::string_view bits) {
    assert(bits.size() % kDigitBits == 0);
    std::string text(bits.size() / kDigitBits, '\0');
    const char* group = bits.data();
    for (char& digit : text) {
        // "0" and "1" differ in their last bit, from all others in more.
        unsigned value = 0;
        unsigned all = 0;
        for (unsigned i = 0; i < kDigitBits; ++i) {
            const unsigned bit = static_cast<unsigned char>(group[i]) ^ unsigned { '0' };
            value = value << 1 | (bit & 1);
            all |= bit;
        }
        if (all <= 1) {
            digit = kDigits[value];
        } else if (std::count(group, group + kDigitBits, *group) == kDigitBits) {
            digit = *group;
        } else {
            return std::nullopt;
        }
        group += kDigitBits;
    }
    return text;
}

}  // namespace

std::size_t whole_digits(std::size_t size, PatternRadix radix) {
    return (size + radix - 1) / radix * radix;
}

std::optional<std::string> read_pattern(std::string_view text, PatternRadix radix) {
    switch (radix) {
        case PATTERN_BINARY:
            return read_digits<PATTERN_BINARY>(text);
        case PATTERN_OCTAL:
            return read_digits<PATTERN_OCTAL>(text);
        case PATTERN_HEX:
            return read_digits<PATTERN_HEX>(text);
    }
    return std::nullopt;
}

std::optional<std::string> write_pattern(std::string bits, PatternRadix radix) {
    if (radix == PATTERN_BINARY) {
        return bits;
    }
    resize_pattern(bits, whole_digits(bits.size(), radix));
    return radix == PATTERN_OCTAL ? write_digits<PATTERN_OCTAL>(bits)
                                  : write_digits<PATTERN_HEX>(bits);
}

bool resize_pattern(std::string& bits, std::size_t size) {
    assert(!bits.empty() && size > 0);
    const char filler = bits.front() == '1' ? '0' : bits.front();
    if (bits.size() <= size) {
        bits.insert(0, size - bits.size(), filler);
        return true;
    }
    const std::size_t excess = bits.size() - size;
    // A multi-valued pattern must keep one digit of its filler, which stands for those dropped.
    const std::size_t same = filler == '0' ? excess : excess + 1;
    if (bits.find_first_not_of(filler) < same) {
        return false;
    }
    bits.erase(0, excess);
    return true;
}

bool is_number_pattern(std::string_view bits) {
    return std::all_of(bits.begin(), bits.end(), is_number_bit);
}
