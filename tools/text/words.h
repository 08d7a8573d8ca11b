#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kivo/kivo.h"

// Numbers, lists and what the store keeps as numbers, in words for people.

// "10 ns" for 10 in the scale "ns"; the number alone in a scale that is empty or has a number
// itself.
std::string with_unit(std::int64_t time, const std::string& scale);

// What follows a time: " ns", or nothing in a scale that is empty or has a number itself.
std::string unit_of_times(const std::string& scale);

// "1 error", "2 errors".
std::string counted(std::size_t count, const std::string& noun);

// "Note: TEXT.", for a sentence of its own.
std::string as_note(const std::string& text);

// "'a', 'b', 'c'", or "none".
std::string quoted(const std::vector<std::string>& names);

// "'a', 'b' or 'c'".
// REQUIRES: !names.empty()
std::string quoted_choice(const std::vector<std::string>& names);

// "hexadecimal" and so on; "as written" without a radix.
std::string radix_name(DRO_MEMORY_RADIXES radix);
// The same for programs: "hex"; "none" without a radix.
const char* radix_id(DRO_MEMORY_RADIXES radix);

// "private", "constant" or "used port"; empty when no connection was given.
std::string connection_name(std::int32_t cnx_type);
