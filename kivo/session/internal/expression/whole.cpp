#include "kivo/session/internal/expression/whole.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

namespace kivo_session {

namespace {

constexpr Whole kLeast = static_cast<Whole>(static_cast<UnsignedWhole>(1) << 127);

bool is_digit(char letter) {
    return letter >= '0' && letter <= '9';
}

std::string_view without_sign(std::string_view text) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    return text;
}

// Nothing for what is out of range or no number. REQUIRES: any other is whole
std::optional<Whole> whole_of(double real) {
    // Both limits are exact as doubles; NaN fails both comparisons.
    if (!(real >= -0x1p127 && real < 0x1p127)) {
        return std::nullopt;
    }
    assert(std::trunc(real) == real);
    return static_cast<Whole>(real);
}

// The nearest whole number when "real" counts as it, else "real" itself.
double snap(double real) {
    const double nearest = std::nearbyint(real);
    return std::fabs(real - nearest) <= 0x1p-48 * std::max(1.0, std::fabs(nearest)) ? nearest
                                                                                    : real;
}

}  // namespace

std::optional<Whole> whole_from_text(std::string_view text) {
    if (!is_decimal(text)) {
        return std::nullopt;
    }
    // Gathered below zero: there is room for one number more.
    Whole whole = 0;
    for (const char digit : without_sign(text)) {
        if (__builtin_mul_overflow(whole, static_cast<Whole>(10), &whole) ||
            __builtin_sub_overflow(whole, static_cast<Whole>(digit - '0'), &whole)) {
            return std::nullopt;
        }
    }
    if (text.front() == '-') {
        return whole;
    }
    return whole == kLeast ? std::nullopt : std::optional<Whole>(-whole);
}

bool is_decimal(std::string_view text) {
    const std::string_view digits = without_sign(text);
    return !digits.empty() && std::all_of(digits.begin(), digits.end(), is_digit);
}

bool is_canonical_decimal(std::string_view text) {
    if (!is_decimal(text) || text.front() == '+') {
        return false;
    }
    const std::string_view digits = without_sign(text);
    return digits.front() != '0' || text == "0";
}

std::string to_text(Whole whole) {
    char digits[40];
    char* const end = digits + sizeof(digits);
    char* begin = end;
    auto rest = static_cast<UnsignedWhole>(whole);
    if (whole < 0) {
        rest = 0 - rest;
    }
    do {
        *--begin = static_cast<char>('0' + static_cast<int>(rest % 10));
        rest /= 10;
    } while (rest != 0);
    if (whole < 0) {
        *--begin = '-';
    }
    return std::string(begin, end);
}

std::string to_text(double real) {
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof(digits), real);
    return std::string(digits, result.ptr);
}

std::optional<Whole> checked_power(Whole base, Whole exponent) {
    assert(exponent >= 0);
    Whole power = 1;
    // The powers of these three never leave the range, however large the exponent.
    if (base >= -1 && base <= 1) {
        return base == -1 && exponent % 2 == 0 ? 1 : exponent == 0 ? 1 : base;
    }
    for (; exponent > 0; --exponent) {
        if (__builtin_mul_overflow(power, base, &power)) {
            return std::nullopt;
        }
    }
    return power;
}

std::optional<Whole> snapped(double real) {
    const double whole = snap(real);
    return whole == std::nearbyint(whole) ? whole_of(whole) : std::nullopt;
}

std::optional<Whole> whole_above(double real) {
    return whole_of(std::ceil(snap(real)));
}

std::optional<Whole> whole_below(double real) {
    return whole_of(std::floor(snap(real)));
}

int compare(Whole left, double right) {
    const double snapped_right = snap(right);
    const double below = std::floor(snapped_right);
    const std::optional<Whole> whole = whole_of(below);
    if (!whole) {
        return snapped_right > 0 ? -1 : 1;
    }
    if (left != *whole) {
        return left < *whole ? -1 : 1;
    }
    return snapped_right > below ? -1 : 0;
}

int compare(double left, double right) {
    const double first = snap(left);
    const double second = snap(right);
    return first < second ? -1 : first > second ? 1 : 0;
}

}  // namespace kivo_session
