// Converts numbers there and back: two radixes, a width and a fixed-point description stand before
// the number.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>

#include "fuzz/support/byte_reader.h"
#include "fuzz/support/expect.h"
#include "kivo/kivo.h"

namespace {

using Text = std::optional<std::string>;

constexpr DRO_MEMORY_RADIXES kRadixes[] = {DRO_RADIX_BINARY, DRO_RADIX_SIGNED, DRO_RADIX_UNSIGNED,
                                           DRO_RADIX_HEX, DRO_RADIX_OCTAL};

Text convert(const std::string& in, DRO_MEMORY_RADIXES from, DRO_MEMORY_RADIXES to,
             unsigned width) {
    std::string out = "untouched";
    const bool is_converted = dro_radix_conversion(in, &out, from, to, width);
    expect(is_converted || out == "untouched", "a failed conversion writes nothing", in);
    std::string same = in;
    expect(dro_radix_conversion(same, &same, from, to, width) == is_converted,
           "in and out may be one", in);
    expect_same(same, is_converted ? out : in, "in and out may be one");
    return is_converted ? Text(out) : std::nullopt;
}

Text convert_fixed(const std::string& in, DRO_MEMORY_RADIXES from, DRO_MEMORY_RADIXES to,
                   const std::string& description) {
    std::string out = "untouched";
    const bool is_converted = dro_radix_conversion_fixed_point(in, &out, from, to, description);
    expect(is_converted || out == "untouched", "a failed conversion writes nothing", in);
    return is_converted ? Text(out) : std::nullopt;
}

bool is_decimal(DRO_MEMORY_RADIXES radix) {
    return radix == DRO_RADIX_SIGNED || radix == DRO_RADIX_UNSIGNED;
}

// A number in its normal form is in it already.
void check_normal_form(const std::string& in, DRO_MEMORY_RADIXES radix, unsigned width) {
    if (const Text normal = convert(in, radix, radix, width)) {
        const Text again = convert(*normal, radix, radix, width);
        expect(again.has_value(), "the normal form is a number", *normal);
        expect_same(*normal, *again, "the normal form has itself as normal form");
    }
}

// With a width, every pattern and every number that fits come back as they were. Digits of
// multi-valued logic come back when the other radix has them whole, so only failing is allowed.
void check_there_and_back(const std::string& in, DRO_MEMORY_RADIXES from, DRO_MEMORY_RADIXES to,
                          unsigned width) {
    const Text there = convert(in, from, to, width);
    const Text normal = convert(in, from, from, width);
    const bool changes_sign = is_decimal(from) && is_decimal(to) && from != to;
    if (width == 0 || !there || !normal || changes_sign) {
        return;
    }
    const Text back = convert(*there, to, from, width);
    expect(back.has_value(), "what was converted converts back", in + " by way of " + *there);
    expect_same(*normal, *back, "there and back is the same number");
}

// Fixed point and the plain bits are two ways to write one number.
void check_fixed_point(const std::string& in, DRO_MEMORY_RADIXES from,
                       const std::string& description) {
    const Text shown = convert_fixed(in, from, DRO_RADIX_FIXED_POINT, description);
    if (!shown) {
        return;
    }
    const Text bits = convert_fixed(*shown, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY, description);
    expect(bits.has_value(), "what is shown in fixed point can be read", *shown);
    const Text direct = convert(in, from, DRO_RADIX_BINARY, static_cast<unsigned>(bits->size()));
    expect(direct.has_value(), "what fits the format fits its bits", in);
    expect_same(*bits, *direct, "fixed point stands for the bits that it was made from");
    const Text again = convert_fixed(*bits, DRO_RADIX_BINARY, DRO_RADIX_FIXED_POINT, description);
    expect(again.has_value(), "the bits of a format have a form in it", *bits);
    expect_same(*shown, *again, "there and back is the same number");
}

// Rounding happens once.
void check_reading_fixed_point(const std::string& in, const std::string& description) {
    const Text bits = convert_fixed(in, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY, description);
    const Text normal =
        convert_fixed(in, DRO_RADIX_FIXED_POINT, DRO_RADIX_FIXED_POINT, description);
    expect(bits.has_value() == normal.has_value(), "a number is read or not", in);
    if (normal) {
        const Text again =
            convert_fixed(*normal, DRO_RADIX_FIXED_POINT, DRO_RADIX_BINARY, description);
        expect(again.has_value(), "a normal form can be read", *normal);
        expect_same(*bits, *again, "a rounded number is not rounded again");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteReader bytes(data, size);
    const DRO_MEMORY_RADIXES from = kRadixes[bytes.below(std::size(kRadixes))];
    const DRO_MEMORY_RADIXES to = kRadixes[bytes.below(std::size(kRadixes))];
    const unsigned width = bytes.byte();
    const std::string description = bytes.line();
    const std::string in = bytes.rest();
    check_normal_form(in, from, 0);
    check_normal_form(in, from, width);
    convert(in, from, to, 0);
    check_there_and_back(in, from, to, width);
    check_fixed_point(in, from, description);
    check_reading_fixed_point(in, description);
    return 0;
}
