#include "kivo/toolkit/radix/internal/big_number.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace {

// From so many limbs on the conversion that splits its number is the cheaper one.
constexpr std::size_t kManyLimbs = 4096;

// A division waits for the one before it in the same walk over a number, but not for the ones of
// other walks: several walks in one keep the processor busy.
constexpr std::size_t kStepsAtOnce = 4;

std::uint64_t read_chunk(std::string_view digits) {
    std::uint64_t chunk = 0;
    for (const char digit : digits) {
        chunk = chunk * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return chunk;
}

void write_chunk(std::string& text, std::uint64_t chunk) {
    char digits[kChunkDigits];
    for (std::size_t i = kChunkDigits; i-- > 0;) {
        digits[i] = static_cast<char>('0' + chunk % 10);
        chunk /= 10;
    }
    text.append(digits, kChunkDigits);
}

// Most significant first; the first chunk takes what is short of a whole one.
Limbs read_chunks(std::string_view digits) {
    Limbs chunks;
    chunks.reserve(digits.size() / kChunkDigits + 1);
    std::size_t size = digits.size() % kChunkDigits;
    chunks.push_back(read_chunk(digits.substr(0, size)));
    for (; size < digits.size(); size += kChunkDigits) {
        chunks.push_back(read_chunk(digits.substr(size, kChunkDigits)));
    }
    return chunks;
}

std::uint64_t read_limb(std::string_view bits) {
    std::uint64_t limb = 0;
    for (const char bit : bits) {
        limb = (limb << 1) | static_cast<std::uint64_t>(bit == '1');
    }
    return limb;
}

// Writes the limb's low bits, as many as fit between "begin" and "end".
void write_limb(std::uint64_t limb, char* begin, char* end) {
    while (end != begin) {
        *--end = static_cast<char>('0' + (limb & 1));
        limb >>= 1;
    }
}

// The chunks of the number, least significant first.
Limbs divided_into_chunks(Limbs rest) {
    Limbs chunks;
    chunks.reserve(rest.size() + rest.size() / 64 + kStepsAtOnce);
    while (!rest.empty()) {
        std::array<std::uint64_t, kStepsAtOnce> remainders{};
        for (std::size_t i = rest.size(); i-- > 0;) {
            std::uint64_t limb = rest[i];
            for (std::uint64_t& remainder : remainders) {
                const Division division = divide_by_chunk(remainder, limb);
                limb = division.quotient;
                remainder = division.rest;
            }
            rest[i] = limb;
        }
        chunks.insert(chunks.end(), remainders.begin(), remainders.end());
        while (!rest.empty() && rest.back() == 0) {
            rest.pop_back();
        }
    }
    return chunks;
}

}  // namespace

BigNumber BigNumber::from_bits(std::string_view bits) {
    BigNumber number;
    number.limbs_.reserve(bits.size() / kLimbBits + 1);
    while (!bits.empty()) {
        const std::size_t size = std::min(bits.size(), kLimbBits);
        number.limbs_.push_back(read_limb(bits.substr(bits.size() - size)));
        bits.remove_suffix(size);
    }
    number.drop_leading_zeros();
    return number;
}

BigNumber BigNumber::from_decimal(std::string_view digits) {
    Limbs chunks = read_chunks(digits);
    BigNumber number;
    if (chunks.size() >= kManyLimbs) {
        std::reverse(chunks.begin(), chunks.end());
        number.limbs_ = decimal_to_binary(chunks);
        return number;
    }
    number.limbs_.reserve(chunks.size());
    for (const std::uint64_t chunk : chunks) {
        number.append_chunk(chunk);
    }
    return number;
}

std::size_t BigNumber::bit_length() const {
    if (limbs_.empty()) {
        return 0;
    }
    std::size_t length = (limbs_.size() - 1) * kLimbBits;
    for (std::uint64_t top = limbs_.back(); top != 0; top >>= 1) {
        ++length;
    }
    return length;
}

std::string BigNumber::to_bits(std::size_t size) const {
    assert(size >= bit_length());
    std::string bits(size, '0');
    std::size_t end = size;
    for (const std::uint64_t limb : limbs_) {
        const std::size_t begin = end - std::min(end, kLimbBits);
        write_limb(limb, bits.data() + begin, bits.data() + end);
        end = begin;
    }
    return bits;
}

std::string BigNumber::to_decimal() const {
    const Limbs chunks =
        limbs_.size() >= kManyLimbs ? binary_to_decimal(limbs_) : divided_into_chunks(limbs_);
    std::string digits;
    digits.reserve(chunks.size() * kChunkDigits + 1);
    std::for_each(chunks.rbegin(), chunks.rend(),
                  [&digits](std::uint64_t chunk) { write_chunk(digits, chunk); });
    digits.erase(0, digits.find_first_not_of('0'));
    return digits.empty() ? "0" : digits;
}

void BigNumber::increment() {
    for (std::uint64_t& limb : limbs_) {
        if (++limb != 0) {
            return;
        }
    }
    limbs_.push_back(1);
}

void BigNumber::decrement() {
    assert(!is_zero());
    for (std::uint64_t& limb : limbs_) {
        if (limb-- != 0) {
            break;
        }
    }
    drop_leading_zeros();
}

void BigNumber::append_chunk(std::uint64_t chunk) {
    std::uint64_t carry = chunk;
    for (std::uint64_t& limb : limbs_) {
        const Wide product = Wide{limb} * kChunk + carry;
        limb = static_cast<std::uint64_t>(product);
        carry = static_cast<std::uint64_t>(product >> kLimbBits);
    }
    if (carry != 0) {
        limbs_.push_back(carry);
    }
}

void BigNumber::drop_leading_zeros() {
    while (!limbs_.empty() && limbs_.back() == 0) {
        limbs_.pop_back();
    }
}

std::string decimal_fraction_to_bits(std::string_view digits, std::size_t size) {
    Limbs chunks;
    chunks.reserve(digits.size() / kChunkDigits + 1);
    std::string padded;
    for (std::size_t i = 0; i < digits.size(); i += kChunkDigits) {
        padded = digits.substr(i, kChunkDigits);
        padded.resize(kChunkDigits, '0');
        chunks.push_back(read_chunk(padded));
    }
    std::string bits(size, '0');
    // Every multiplication by 2^64 moves the next 64 bits in front of the point.
    std::size_t begin = 0;
    while (begin < size) {
        std::array<std::uint64_t, kStepsAtOnce> carries{};
        for (std::size_t i = chunks.size(); i-- > 0;) {
            std::uint64_t chunk = chunks[i];
            for (std::uint64_t& carry : carries) {
                const Division division = divide_by_chunk(chunk, carry);
                chunk = division.rest;
                carry = division.quotient;
            }
            chunks[i] = chunk;
        }
        for (const std::uint64_t carry : carries) {
            const std::size_t count = std::min(size - begin, kLimbBits);
            char* const limb = bits.data() + begin;
            write_limb(count == 0 ? 0 : carry >> (kLimbBits - count), limb, limb + count);
            begin += count;
        }
    }
    return bits;
}

std::string bit_fraction_to_decimal(std::string_view bits) {
    bits = bits.substr(0, bits.find_last_of('1') + 1);
    std::string padded(bits);
    padded.resize((bits.size() + kLimbBits - 1) / kLimbBits * kLimbBits, '0');
    Limbs limbs;
    limbs.reserve(padded.size() / kLimbBits);
    for (std::size_t i = 0; i < padded.size(); i += kLimbBits) {
        limbs.push_back(read_limb(std::string_view(padded).substr(i, kLimbBits)));
    }
    std::string digits;
    digits.reserve(bits.size() + kChunkDigits);
    // Every multiplication by 10^19 moves the next 19 digits in front of the point, and as
    // many factors 2 with them: the limbs run out at the end.
    while (!limbs.empty()) {
        std::uint64_t carry = 0;
        for (std::size_t i = limbs.size(); i-- > 0;) {
            const Wide product = Wide{limbs[i]} * kChunk + carry;
            limbs[i] = static_cast<std::uint64_t>(product);
            carry = static_cast<std::uint64_t>(product >> kLimbBits);
        }
        write_chunk(digits, carry);
        if (limbs.back() == 0) {
            limbs.pop_back();
        }
    }
    // A fraction of n bits has exactly n digits, since its last factor 2 takes one.
    digits.resize(bits.size());
    return digits;
}
