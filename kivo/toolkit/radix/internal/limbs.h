#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

// Numbers as limbs, least significant first, in one of two bases.

using Limbs = std::vector<std::uint64_t>;

__extension__ typedef unsigned __int128 Wide;

constexpr std::size_t kLimbBits = 64;

// Decimals are cut into the largest chunks that fit a limb.
constexpr std::size_t kChunkDigits = 19;
constexpr std::uint64_t kChunk = 10'000'000'000'000'000'000U;

struct Division {
    std::uint64_t quotient;
    std::uint64_t rest;
};

// The division below needs a divisor whose top bit is set.
static_assert(kChunk >> (kLimbBits - 1) == 1);
constexpr auto kReciprocal = static_cast<std::uint64_t>(~Wide{0} / kChunk);

// Divides high * 2^64 + low by kChunk. Multiplying by the reciprocal and correcting the estimate
// takes a fraction of the time of the compiler's 128-bit division, which is a function call.
// REQUIRES: high < kChunk
inline Division divide_by_chunk(std::uint64_t high, std::uint64_t low) {
    assert(high < kChunk);
    const Wide number = (Wide{high} << kLimbBits) | low;
    const Wide estimate = Wide{kReciprocal} * high + number;
    std::uint64_t quotient = static_cast<std::uint64_t>(estimate >> kLimbBits) + 1;
    std::uint64_t rest = low - quotient * kChunk;
    // Half of all estimates are too high, which a branch would guess wrong as often.
    const std::uint64_t too_high =
        rest > static_cast<std::uint64_t>(estimate) ? ~std::uint64_t{0} : 0;
    quotient += too_high;
    rest += too_high & kChunk;
    if (rest >= kChunk) {
        ++quotient;
        rest -= kChunk;
    }
    return {quotient, rest};
}

// The two bases: what a limb and a carry make of a sum, a difference and a product.
struct BinaryBase {
    static Division split(Wide number) {
        return {static_cast<std::uint64_t>(number >> kLimbBits),
                static_cast<std::uint64_t>(number)};
    }
    // What is to be added to a difference below zero.
    static constexpr Wide kBase = Wide{1} << kLimbBits;
};

struct DecimalBase {
    // REQUIRES: number < kChunk * 2^64, as every limb times limb plus two limbs is
    static Division split(Wide number) {
        assert(number >> kLimbBits < kChunk);
        return divide_by_chunk(static_cast<std::uint64_t>(number >> kLimbBits),
                               static_cast<std::uint64_t>(number));
    }
    static constexpr Wide kBase = kChunk;
};

// The same number, "from" being its limbs in one base, in the other. Costs less than the square of
// the length: 1.6 is its exponent.
Limbs binary_to_decimal(const Limbs& from);
Limbs decimal_to_binary(const Limbs& from);
