#pragma once

#include <algorithm>
#include <string_view>

// Steps through a text of which "rest" is what is left.

constexpr std::string_view kBlanks = " \t\r\n";

// Takes what stands before the first of the letters, all of it when there is none.
inline std::string_view taken_until(std::string_view& rest, std::string_view ends) {
    const std::string_view taken = rest.substr(0, rest.find_first_of(ends));
    rest.remove_prefix(taken.size());
    return taken;
}

inline void skip_blanks(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}
