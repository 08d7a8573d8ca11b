#pragma once

#include <string_view>

// Steps through a text of which "rest" is what is left.

constexpr std::string_view kBlanks = " \t\r\n";

// Takes what stands before the first of the letters, all of it when there is none.
inline std::string_view taken_until(std::string_view& rest, std::string_view ends) {
    const std::string_view taken = rest.substr(0, rest.find_first_of(ends));
    rest.remove_prefix(taken.size());
    return taken;
}

// Takes the next line, without its end.
inline std::string_view taken_line(std::string_view& rest) {
    const std::string_view line = taken_until(rest, "\n");
    rest.remove_prefix(rest.empty() ? 0 : 1);
    return line;
}

// Takes the blanks before anything else.
inline std::string_view taken_blanks(std::string_view& rest) {
    const std::string_view taken = rest.substr(0, rest.find_first_not_of(kBlanks));
    rest.remove_prefix(taken.size());
    return taken;
}

inline void skip_blanks(std::string_view& rest) {
    taken_blanks(rest);
}

// Without the blanks around it; a part of the same text.
inline std::string_view trimmed(std::string_view text) {
    skip_blanks(text);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

inline bool is_blank(std::string_view text) {
    return text.find_first_not_of(kBlanks) == std::string_view::npos;
}
