#pragma once

#include <cstdint>
#include <string_view>

// Steps through a text over views, for code that walks it once and keeps no copy.

bool is_white_space(char letter);
std::string_view trim_left_view(std::string_view text);
std::string_view trim_right_view(std::string_view text);

// Returns what stands before the first delimiter and removes it and the delimiter from "rest";
// without a delimiter returns all and leaves "rest" empty.
std::string_view next_token(std::string_view& rest, char delimiter);

// Reads a number as strtol does in base 10 (leading white space and a sign allowed, stops at the
// first other character, no digits give 0, saturates at 64 bits) and keeps its low 32 bits.
std::int32_t to_int32(std::string_view text);
