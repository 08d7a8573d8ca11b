#include "kivo/toolkit/strings.h"

#include "kivo/toolkit/internal/text_view.h"
#include "kivo/toolkit/less_c_string.h"

std::string dro_get_token(std::string& text, const std::string& delimiters) {
    const std::size_t end = text.find_first_of(delimiters);
    std::string token = text.substr(0, end);
    text.erase(0, end == std::string::npos ? end : end + 1);
    return token;
}

std::string trim_left(const std::string& text) {
    return std::string(trim_left_view(text));
}

std::string trim_right(const std::string& text) {
    return std::string(trim_right_view(text));
}

std::string to_lower_case(const std::string& text) {
    std::string lower = text;
    for (char& letter : lower) {
        letter = static_cast<char>(LESS_C_STRING::fold(letter));
    }
    return lower;
}
