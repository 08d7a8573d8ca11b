#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

// The number that a text of digits, with "-" before them for a signed type, stands for; nothing for
// any other text, and for a number that the type does not hold.
template <class Number>
std::optional<Number> whole_number(std::string_view text) {
    Number number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}
