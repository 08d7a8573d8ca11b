#include "kivo/toolkit/internal/text_view.h"

#include <limits>

bool is_white_space(char letter) {
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

std::string_view trim_left_view(std::string_view text) {
    while (!text.empty() && is_white_space(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string_view trim_right_view(std::string_view text) {
    while (!text.empty() && is_white_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view next_token(std::string_view& rest, char delimiter) {
    const std::size_t end = rest.find(delimiter);
    const std::string_view token = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return token;
}

std::int32_t to_int32(std::string_view text) {
    constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
    text = trim_left_view(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    std::int64_t number = 0;
    for (const char letter : text) {
        if (letter < '0' || letter > '9') {
            break;
        }
        const std::int64_t digit = letter - '0';
        // Counted downwards when negative, since the lowest number has no positive counterpart.
        if (negative ? number < (kMin + digit) / 10 : number > (kMax - digit) / 10) {
            number = negative ? kMin : kMax;
            break;
        }
        number = number * 10 + (negative ? -digit : digit);
    }
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
}
