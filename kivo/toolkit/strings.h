#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Returns the characters of "text" before the first one that is a delimiter and removes them and
// that one delimiter from "text"; without a delimiter returns all and leaves "text" empty. A
// delimiter at the front gives an empty token. Every call on a non-empty text shortens it.
std::string dro_get_token(std::string& text, const std::string& delimiters);

// Copies without the leading or trailing blanks, tabs, line feeds, vertical tabs, form feeds and
// carriage returns, whatever the process's locale.
std::string trim_left(const std::string& text);
std::string trim_right(const std::string& text);

// A copy with the letters "A" to "Z" in lower case, whatever the process's locale.
std::string to_lower_case(const std::string& text);

// The same over views, for code that walks a text once and keeps no copy.
std::string_view next_token(std::string_view& rest, char delimiter);
std::string_view trim_left_view(std::string_view text);
std::string_view trim_right_view(std::string_view text);
bool is_white_space(char letter);

// Reads a number as strtol does in base 10 (leading white space and a sign allowed, stops at the
// first other character, no digits give 0, saturates at 64 bits) and keeps its low 32 bits.
std::int32_t to_int32(std::string_view text);
