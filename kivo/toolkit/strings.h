#pragma once

#include <string>

// These functions are reachable through kivo_static alone; libkivo.so does not export them.

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
