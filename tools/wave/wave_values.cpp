#include "tools/wave/wave_values.h"

#include <algorithm>
#include <memory>
#include <string_view>

namespace {

constexpr const char* kAnyPort = "";

// The digits of multi-valued logic as VCD has them; 0 for any other character.
char bit_of(char digit) {
    switch (digit) {
        case '0':
        case 'L':
        case 'l':
            return '0';
        case '1':
        case 'H':
        case 'h':
            return '1';
        case 'Z':
        case 'z':
            return 'z';
        case 'X':
        case 'x':
        case 'U':
        case 'u':
        case 'W':
        case 'w':
        case '-':
            return 'x';
        default:
            return 0;
    }
}

std::string_view without_prefix(std::string_view text) {
    return text.substr(0, 2) == "0b" ? text.substr(2) : text;
}

DRO_MEMORY_RADIXES radix_of_values(bool is_binary) {
    return is_binary ? DRO_RADIX_BINARY : DRO_RADIX_SIGNED;
}

bool has_only(std::string_view text, char wanted) {
    return std::all_of(text.begin(), text.end(), [=](char letter) { return letter == wanted; });
}

}  // namespace

BitConverter::BitConverter() {
    formats_.add_vector_display_format(kAnyPort, DRO_RADIX_BINARY, "");
}

BitConverter::~BitConverter() {
    delete formats_.display_format_map.look_up(kAnyPort);
}

std::string BitConverter::bits_of(const std::string& value, bool is_binary) const {
    const std::string written =
        is_binary ? value : formats_.format_display_string(kAnyPort, value, DRO_RADIX_SIGNED);
    std::string bits;
    for (const char digit : without_prefix(written)) {
        // The library lets it stand between digits only.
        if (digit == '_') {
            continue;
        }
        const char bit = bit_of(digit);
        if (bit == 0) {
            return {};
        }
        bits += bit;
    }
    return bits;
}

bool fit_bits(std::string& bits, std::size_t width, bool is_negative, bool truncate_low) {
    if (bits.empty()) {
        bits.assign(width, 'x');
        return false;
    }
    if (bits.size() <= width) {
        const char first = bits.front();
        const char fill = first == 'x' || first == 'z' ? first : is_negative ? '1' : '0';
        bits.insert(0, width - bits.size(), fill);
        return true;
    }
    const std::size_t surplus = bits.size() - width;
    const std::string high = bits.substr(0, surplus);
    const bool is_spare =
        is_negative ? has_only(high, '1') && bits[surplus] == '1' : has_only(high, '0');
    if (is_spare || !truncate_low) {
        bits.erase(0, surplus);
    } else {
        bits.resize(width);
    }
    return is_spare;
}

std::string shown_value(const KIVO_VECTOR_OBJ& vector, const std::string& port,
                        const std::string& value, bool is_binary) {
    std::string shown = vector.format_display_string(port, value, radix_of_values(is_binary));
    if (is_binary && shown == value && vector.get_vector_display_format(port) == DRO_RADIX_BINARY) {
        shown = without_prefix(shown);
    }
    return shown;
}

bool is_beyond_fixed_point(const KIVO_VECTOR_OBJ& vector, const std::string& port,
                           const std::string& value, bool is_binary) {
    if (vector.get_vector_display_format(port) != DRO_RADIX_FIXED_POINT) {
        return false;
    }
    // The library leaves alone what it cannot convert, and never writes a number with a zero in
    // front or with the prefix of a binary one.
    const bool has_sign = !value.empty() && (value.front() == '-' || value.front() == '+');
    const std::string longer = is_binary ? value : std::string(value).insert(has_sign ? 1 : 0, "0");
    return vector.format_display_string(port, longer, radix_of_values(is_binary)) == longer;
}
