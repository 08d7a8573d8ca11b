#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "kivo/toolkit/radix/internal/limbs.h"

// A natural number of any length. Texts of bits are made of "0" and "1", texts of digits of "0" to
// "9", both with the most significant first; other characters are the caller's error.
class BigNumber {
public:
    static BigNumber from_bits(std::string_view bits);
    static BigNumber from_decimal(std::string_view digits);

    bool is_zero() const { return limbs_.empty(); }

    // The number of bits without leading zeros, so 0 for zero.
    std::size_t bit_length() const;

    // The number in exactly "size" bits.
    // REQUIRES: size >= bit_length()
    std::string to_bits(std::size_t size) const;

    // Without leading zeros; "0" for zero.
    std::string to_decimal() const;

    void increment();

    // REQUIRES: !is_zero()
    void decrement();

private:
    // Appends the chunk's 19 decimal digits.
    void append_chunk(std::uint64_t chunk);
    void drop_leading_zeros();

    // Least significant first; the last one is not 0.
    Limbs limbs_;
};

// The first "size" bits after the binary point of the fraction that has "digits" after its
// decimal point; what lies beyond them is cut off.
std::string decimal_fraction_to_bits(std::string_view digits, std::size_t size);

// The digits after the decimal point of the fraction that has "bits" after its binary point:
// exact, without trailing zeros, so empty for zero.
std::string bit_fraction_to_decimal(std::string_view bits);
