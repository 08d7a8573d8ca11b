#pragma once

#include <cstdint>
#include <string>

enum DRO_MEMORY_RADIXES : std::int32_t {
    DRO_RADIX_BINARY = 0,
    DRO_RADIX_SIGNED = 1,
    DRO_RADIX_UNSIGNED = 2,
    DRO_RADIX_HEX = 3,
    DRO_RADIX_OCTAL = 4,
    DRO_RADIX_FIXED_POINT = 5,
    DRO_RADIX_NONE = 6,
};

// Reachable through kivo_static alone; libkivo.so does not export them.

// Writes the number "in", read in radix "in_radix", to "*out" in radix "out_radix". Numbers of any
// length convert, through the bit pattern that they stand for. "width" is a number of bits, 0 for
// the width as written. True when converted; else "*out" is left alone. "in" and "*out" may be the
// same string. Fixed point needs a description and fails here.
// REQUIRES: out != nullptr
bool dro_radix_conversion(const std::string& in, std::string* out, DRO_MEMORY_RADIXES in_radix,
                          DRO_MEMORY_RADIXES out_radix, unsigned width);

// The same where one side is fixed point. "description" is "I.F", the bits before and after the
// point, unsigned unless it begins with "s", where the sign bit is counted in I. Reading a number
// rounds to the nearest step, ties away from zero. A description of no bits, or of more than
// 65,536, is malformed and fails. REQUIRES: out != nullptr
bool dro_radix_conversion_fixed_point(const std::string& in, std::string* out,
                                      DRO_MEMORY_RADIXES in_radix, DRO_MEMORY_RADIXES out_radix,
                                      const std::string& description);
