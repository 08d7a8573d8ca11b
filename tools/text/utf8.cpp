#include "tools/text/utf8.h"

#include <algorithm>
#include <cassert>

namespace {

bool is_continuation(char letter) {
    return (static_cast<unsigned char>(letter) & 0xC0) == 0x80;
}

// What the first byte of a sequence says, 0 when it begins none.
std::size_t length_told_by(unsigned char first) {
    return first < 0x80                    ? 1
           : first < 0xC2 || first >= 0xF5 ? 0
           : first < 0xE0                  ? 2
           : first < 0xF0                  ? 3
                                           : 4;
}

}  // namespace

std::size_t utf8_length(std::string_view text) {
    assert(!text.empty());
    const std::size_t length = length_told_by(static_cast<unsigned char>(text[0]));
    if (length <= 1 || text.size() < length) {
        return length <= 1 ? length : 0;
    }
    const std::string_view rest = text.substr(1, length - 1);
    if (!std::all_of(rest.begin(), rest.end(), is_continuation)) {
        return 0;
    }
    const std::uint32_t code = utf8_code(text.substr(0, length));
    const bool is_overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
    return is_overlong || is_surrogate || code > 0x10FFFF ? 0 : length;
}

std::size_t utf8_step(std::string_view text) {
    assert(!text.empty());
    return std::max<std::size_t>(utf8_length(text), 1);
}

std::uint32_t utf8_code(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1) {
        return first;
    }
    std::uint32_t code = first & (0xFFU >> (sequence.size() + 1));
    for (const char letter : sequence.substr(1)) {
        code = (code << 6) | (static_cast<unsigned char>(letter) & 0x3FU);
    }
    return code;
}
