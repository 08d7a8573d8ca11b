#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kivo_session {

// A whole number of 128 bits, two's complement.
__extension__ typedef __int128 Whole;
__extension__ typedef unsigned __int128 UnsignedWhole;

// The number of an optional sign and decimal digits; nothing when anything else stands there or it
// does not fit.
std::optional<Whole> whole_from_text(std::string_view text);

// Whether a text is a sign and decimal digits, of a number of any size.
bool is_decimal(std::string_view text);

// Whether a text is a whole number as this library writes it: "-" or nothing, no leading zeros.
bool is_canonical_decimal(std::string_view text);

std::string to_text(Whole whole);

// The shortest decimal that gives the same number back, whatever the process's locale.
std::string to_text(double real);

// Nothing when the result does not fit.
std::optional<Whole> checked_power(Whole base, Whole exponent);  // REQUIRES: exponent >= 0

// The whole number that a real one stands for: exact results of roots and logarithms are a little
// beside it. Nothing when none is near or it does not fit.
std::optional<Whole> snapped(double real);

// What ceil and floor give; nothing when it does not fit.
std::optional<Whole> whole_above(double real);
std::optional<Whole> whole_below(double real);

// -1, 0 or 1; exact, and a real beside a whole number counts as it.
int compare(Whole left, double right);
int compare(double left, double right);

}  // namespace kivo_session
