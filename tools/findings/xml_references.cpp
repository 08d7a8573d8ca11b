#include "tools/findings/xml_references.h"

#include <algorithm>

#include "kivo/kivo.h"
#include "tools/description/source_text.h"

namespace {

std::uint32_t digits_value(std::string_view digits, std::uint32_t base) {
    std::uint32_t value = 0;
    for (const char digit : digits) {
        const auto lower = std::uint32_t{LESS_C_STRING::fold(digit)};
        value = value * base + (lower >= 'a' ? lower - 'a' + 10 : lower - '0');
        value = std::min(value, 0x110000U);
    }
    return value;
}

}  // namespace

bool is_xml_character(std::uint32_t code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

std::string_view reference_at(std::string_view text, std::size_t begin) {
    const std::size_t start = begin + 1;
    const bool is_number = text.substr(start, 1) == "#";
    const std::size_t end = end_of_name(text, start + (is_number ? 1 : 0));
    return text.substr(end, 1) == ";" ? text.substr(start, end - start) : std::string_view();
}

bool is_allowed_reference(std::string_view reference) {
    const bool is_hexadecimal = reference.substr(1, 1) == "x";
    return is_xml_character(
        digits_value(reference.substr(is_hexadecimal ? 2 : 1), is_hexadecimal ? 16 : 10));
}

std::size_t start_of_reference(std::string_view text, std::size_t at) {
    std::size_t start = at;
    while (start > 0 && (is_name_letter(text[start - 1]) || text[start - 1] == '#')) {
        --start;
    }
    return start > 0 && text[start - 1] == '&' ? start - 1 : std::string_view::npos;
}
