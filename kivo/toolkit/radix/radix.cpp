#include "kivo/toolkit/radix/radix.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "kivo/toolkit/radix/internal/big_number.h"
#include "kivo/toolkit/radix/internal/bit_pattern.h"

namespace {

// What a failed conversion gives is nothing.
using Text = std::optional<std::string>;

// Zero is never negative.
struct Number {
    bool negative = false;
    BigNumber magnitude;
};

// A decimal in its normal form, before it is worth the arithmetic.
struct Decimal {
    bool negative = false;
    std::string_view digits;
};

struct FixedPoint {
    bool is_signed = false;
    std::size_t integer_bits = 0;
    std::size_t fraction_bits = 0;

    std::size_t size() const { return integer_bits + fraction_bits; }
};

// A description comes from a file, where a few digits would otherwise ask for gigabytes, and each
// value of a wave for a part of a second.
constexpr std::size_t kMaxFixedPointBits = 65536;

bool is_decimal(DRO_MEMORY_RADIXES radix) {
    return radix == DRO_RADIX_SIGNED || radix == DRO_RADIX_UNSIGNED;
}

std::optional<PatternRadix> to_pattern_radix(DRO_MEMORY_RADIXES radix) {
    switch (radix) {
        case DRO_RADIX_BINARY:
            return PATTERN_BINARY;
        case DRO_RADIX_OCTAL:
            return PATTERN_OCTAL;
        case DRO_RADIX_HEX:
            return PATTERN_HEX;
        case DRO_RADIX_SIGNED:
        case DRO_RADIX_UNSIGNED:
        case DRO_RADIX_FIXED_POINT:
        case DRO_RADIX_NONE:
            break;
    }
    return std::nullopt;
}

bool are_digits(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view without_leading_zeros(std::string_view digits) {
    return digits.substr(std::min(digits.find_first_not_of('0'), digits.size() - 1));
}

bool consume_sign(std::string_view& text, bool is_signed) {
    if (!is_signed || text.empty() || text.front() != '-') {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

std::optional<Decimal> read_decimal(std::string_view text, DRO_MEMORY_RADIXES radix) {
    const bool negative = consume_sign(text, radix == DRO_RADIX_SIGNED);
    if (!are_digits(text)) {
        return std::nullopt;
    }
    const std::string_view digits = without_leading_zeros(text);
    return Decimal{negative && digits != "0", digits};
}

std::string write_decimal(const Decimal& decimal) {
    std::string text(decimal.negative ? "-" : "");
    return text.append(decimal.digits);
}

std::string write_number(const Number& number) {
    return write_decimal({number.negative, number.magnitude.to_decimal()});
}

Number to_number(const Decimal& decimal) {
    return {decimal.negative, BigNumber::from_decimal(decimal.digits)};
}

// Every digit but the first takes more than three bits, so that a number far too long is known
// without any arithmetic.
bool is_surely_longer(std::string_view digits, std::size_t width) {
    return digits.size() - 1 > width / 3;
}

std::size_t signed_length(const Number& number) {
    BigNumber magnitude = number.magnitude;
    if (number.negative) {
        magnitude.decrement();
    }
    return magnitude.bit_length() + 1;
}

bool fits(const Number& number, bool is_signed, std::size_t width) {
    return (is_signed ? signed_length(number) : number.magnitude.bit_length()) <= width;
}

void flip(std::string& bits) {
    for (char& bit : bits) {
        bit = bit == '0' ? '1' : '0';
    }
}

// In two's complement, where -n is the complement of n - 1.
// REQUIRES: the number fits
std::string number_to_bits(Number number, std::size_t width) {
    assert(fits(number, number.negative, width));
    if (!number.negative) {
        return number.magnitude.to_bits(width);
    }
    number.magnitude.decrement();
    std::string bits = number.magnitude.to_bits(width);
    flip(bits);
    return bits;
}

Number bits_to_number(std::string bits, bool is_signed) {
    if (!is_signed || bits.front() == '0') {
        return {false, BigNumber::from_bits(bits)};
    }
    flip(bits);
    Number number{true, BigNumber::from_bits(bits)};
    number.magnitude.increment();
    return number;
}

Text decimal_to_bits(const Decimal& decimal, bool is_signed, std::size_t width) {
    if (is_surely_longer(decimal.digits, width)) {
        return std::nullopt;
    }
    const Number number = to_number(decimal);
    if (!fits(number, is_signed, width)) {
        return std::nullopt;
    }
    return number_to_bits(number, width);
}

// As few bits as hold the number, a negative one in whole digits.
std::string decimal_to_shortest_bits(const Decimal& decimal, PatternRadix out_radix) {
    const Number number = to_number(decimal);
    if (!number.negative) {
        return number_to_bits(number, std::max<std::size_t>(number.magnitude.bit_length(), 1));
    }
    return number_to_bits(number, whole_digits(signed_length(number), out_radix));
}

Text decimal_to_decimal(const Decimal& decimal, DRO_MEMORY_RADIXES in_radix,
                        DRO_MEMORY_RADIXES out_radix, unsigned width) {
    const bool loses_sign = decimal.negative && out_radix == DRO_RADIX_UNSIGNED;
    if (width == 0) {
        return loses_sign ? std::nullopt : Text(write_decimal(decimal));
    }
    if (is_surely_longer(decimal.digits, width)) {
        return std::nullopt;
    }
    const Number number = to_number(decimal);
    const bool needs_sign_bit = in_radix == DRO_RADIX_SIGNED || out_radix == DRO_RADIX_SIGNED;
    if (!fits(number, needs_sign_bit, width)) {
        return std::nullopt;
    }
    return loses_sign ? BigNumber::from_bits(number_to_bits(number, width)).to_decimal()
                      : write_decimal(decimal);
}

Text read_bits(std::string_view text, PatternRadix radix) {
    constexpr std::string_view kBinaryPrefix = "0b";
    if (radix == PATTERN_BINARY && text.starts_with(kBinaryPrefix)) {
        text.remove_prefix(kBinaryPrefix.size());
    }
    return read_pattern(text, radix);
}

Text bits_to_decimal(const std::string& bits, DRO_MEMORY_RADIXES out_radix) {
    if (!is_number_pattern(bits)) {
        return std::nullopt;
    }
    return write_number(bits_to_number(bits, out_radix == DRO_RADIX_SIGNED));
}

Text pattern_to_decimal(std::string bits, DRO_MEMORY_RADIXES out_radix, unsigned width) {
    // Of the padding one bit matters: it says that the number is not negative.
    if (width != 0 && !resize_pattern(bits, std::min<std::size_t>(width, bits.size() + 1))) {
        return std::nullopt;
    }
    return bits_to_decimal(bits, out_radix);
}

Text pattern_to_pattern(std::string bits, PatternRadix out_radix, unsigned width) {
    if (width != 0 && !resize_pattern(bits, width)) {
        return std::nullopt;
    }
    return write_pattern(std::move(bits), out_radix);
}

Text convert_decimal(std::string_view in, DRO_MEMORY_RADIXES in_radix, DRO_MEMORY_RADIXES out_radix,
                     unsigned width) {
    const std::optional<Decimal> decimal = read_decimal(in, in_radix);
    if (!decimal) {
        return std::nullopt;
    }
    const std::optional<PatternRadix> out_pattern = to_pattern_radix(out_radix);
    if (!out_pattern) {
        return decimal_to_decimal(*decimal, in_radix, out_radix, width);
    }
    Text bits = width == 0 ? decimal_to_shortest_bits(*decimal, *out_pattern)
                           : decimal_to_bits(*decimal, in_radix == DRO_RADIX_SIGNED, width);
    return bits ? write_pattern(std::move(*bits), *out_pattern) : std::nullopt;
}

Text convert(std::string_view in, DRO_MEMORY_RADIXES in_radix, DRO_MEMORY_RADIXES out_radix,
             unsigned width) {
    const std::optional<PatternRadix> in_pattern = to_pattern_radix(in_radix);
    const std::optional<PatternRadix> out_pattern = to_pattern_radix(out_radix);
    if ((!in_pattern && !is_decimal(in_radix)) || (!out_pattern && !is_decimal(out_radix))) {
        return std::nullopt;
    }
    if (!in_pattern) {
        return convert_decimal(in, in_radix, out_radix, width);
    }
    Text bits = read_bits(in, *in_pattern);
    if (!bits) {
        return std::nullopt;
    }
    return out_pattern ? pattern_to_pattern(std::move(*bits), *out_pattern, width)
                       : pattern_to_decimal(std::move(*bits), out_radix, width);
}

std::optional<std::size_t> read_bit_count(std::string_view text) {
    if (!are_digits(text)) {
        return std::nullopt;
    }
    std::size_t count = 0;
    for (const char digit : text) {
        count = count * 10 + static_cast<std::size_t>(digit - '0');
        if (count > kMaxFixedPointBits) {
            return std::nullopt;
        }
    }
    return count;
}

std::optional<FixedPoint> read_description(std::string_view text) {
    const bool is_signed = text.starts_with('s');
    text.remove_prefix(is_signed ? 1 : 0);
    const std::size_t point = text.find('.');
    if (point == std::string_view::npos) {
        return std::nullopt;
    }
    const std::optional<std::size_t> integer_bits = read_bit_count(text.substr(0, point));
    const std::optional<std::size_t> fraction_bits = read_bit_count(text.substr(point + 1));
    if (!integer_bits || !fraction_bits) {
        return std::nullopt;
    }
    const FixedPoint format{is_signed, *integer_bits, *fraction_bits};
    const bool lacks_sign_bit = is_signed && format.integer_bits == 0;
    if (format.size() == 0 || format.size() > kMaxFixedPointBits || lacks_sign_bit) {
        return std::nullopt;
    }
    return format;
}

Text fixed_point_to_bits(std::string_view text, const FixedPoint& format) {
    const bool negative = consume_sign(text, format.is_signed);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view fraction = point == text.size() ? "0" : text.substr(point + 1);
    if (!are_digits(text.substr(0, point)) || !are_digits(fraction)) {
        return std::nullopt;
    }
    const std::string_view integer = without_leading_zeros(text.substr(0, point));
    if (is_surely_longer(integer, format.integer_bits)) {
        return std::nullopt;
    }
    const BigNumber whole = BigNumber::from_decimal(integer);
    // One bit more than the format keeps tells the nearer step, and in a tie the outer one.
    const std::string bits = whole.to_bits(whole.bit_length()) +
                             decimal_fraction_to_bits(fraction, format.fraction_bits + 1);
    Number number{negative,
                  BigNumber::from_bits(std::string_view(bits).substr(0, bits.size() - 1))};
    if (bits.back() == '1') {
        number.magnitude.increment();
    }
    number.negative = negative && !number.magnitude.is_zero();
    if (!fits(number, format.is_signed, format.size())) {
        return std::nullopt;
    }
    return number_to_bits(std::move(number), format.size());
}

Text pattern_to_bits(std::string_view text, PatternRadix radix, const FixedPoint& format) {
    Text bits = read_bits(text, radix);
    if (!bits || !is_number_pattern(*bits)) {
        return std::nullopt;
    }
    // Only what completes the first digit of a full pattern is not counted as a part of it.
    if (bits->size() > whole_digits(format.size(), radix) ||
        !resize_pattern(*bits, format.size())) {
        return std::nullopt;
    }
    return bits;
}

// The bits that the text stands for in the format, whatever its radix.
Text to_fixed_size_bits(std::string_view in, DRO_MEMORY_RADIXES in_radix,
                        const FixedPoint& format) {
    if (in_radix == DRO_RADIX_FIXED_POINT) {
        return fixed_point_to_bits(in, format);
    }
    if (const std::optional<PatternRadix> in_pattern = to_pattern_radix(in_radix)) {
        return pattern_to_bits(in, *in_pattern, format);
    }
    const std::optional<Decimal> decimal =
        is_decimal(in_radix) ? read_decimal(in, in_radix) : std::nullopt;
    return decimal ? decimal_to_bits(*decimal, in_radix == DRO_RADIX_SIGNED, format.size())
                   : std::nullopt;
}

std::string write_fixed_point(const std::string& bits, const FixedPoint& format) {
    const Number number = bits_to_number(bits, format.is_signed);
    const std::string magnitude = number.magnitude.to_bits(format.size());
    const std::string_view steps = magnitude;
    const std::string integer =
        BigNumber::from_bits(steps.substr(0, format.integer_bits)).to_decimal();
    const std::string fraction = bit_fraction_to_decimal(steps.substr(format.integer_bits));
    std::string text = write_decimal({number.negative, integer});
    return fraction.empty() ? text : text + "." + fraction;
}

Text convert_fixed_point(std::string_view in, DRO_MEMORY_RADIXES in_radix,
                         DRO_MEMORY_RADIXES out_radix, std::string_view description) {
    const std::optional<FixedPoint> format = read_description(description);
    if (!format || (in_radix != DRO_RADIX_FIXED_POINT && out_radix != DRO_RADIX_FIXED_POINT)) {
        return std::nullopt;
    }
    Text bits = to_fixed_size_bits(in, in_radix, *format);
    if (!bits) {
        return std::nullopt;
    }
    if (out_radix == DRO_RADIX_FIXED_POINT) {
        return write_fixed_point(*bits, *format);
    }
    if (const std::optional<PatternRadix> out_pattern = to_pattern_radix(out_radix)) {
        return write_pattern(std::move(*bits), *out_pattern);
    }
    return is_decimal(out_radix) ? bits_to_decimal(*bits, out_radix) : std::nullopt;
}

// Only here is "*out" written, when "in", which may be the same string, has been read.
bool store(Text text, std::string* out) {
    if (!text) {
        return false;
    }
    *out = std::move(*text);
    return true;
}

}  // namespace

bool dro_radix_conversion(const std::string& in, std::string* out, DRO_MEMORY_RADIXES in_radix,
                          DRO_MEMORY_RADIXES out_radix, unsigned width) {
    assert(out != nullptr);
    return store(convert(in, in_radix, out_radix, width), out);
}

bool dro_radix_conversion_fixed_point(const std::string& in, std::string* out,
                                      DRO_MEMORY_RADIXES in_radix, DRO_MEMORY_RADIXES out_radix,
                                      const std::string& description) {
    assert(out != nullptr);
    return store(convert_fixed_point(in, in_radix, out_radix, description), out);
}
