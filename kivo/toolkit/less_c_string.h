#pragma once

#include <algorithm>
#include <string_view>

// Orders names byte by byte as unsigned values after folding "A" to "Z" into "a" to "z"; a prefix
// comes first. Maps ordered by it treat names that differ only in letter case as one key.
struct LESS_C_STRING {
    // Lets look-ups take any text without making a std::string of it.
    using is_transparent = void;

    static constexpr unsigned char fold(char letter) {
        return static_cast<unsigned char>(letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A')
                                                                         : letter);
    }
    // Below, at or above 0 as "left" comes before, with or after "right".
    static constexpr int compare(std::string_view left, std::string_view right) {
        const std::size_t common = std::min(left.size(), right.size());
        for (std::size_t i = 0; i < common; ++i) {
            const int difference = fold(left[i]) - fold(right[i]);
            if (difference != 0) {
                return difference;
            }
        }
        return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
    }
    constexpr bool operator()(std::string_view left, std::string_view right) const {
        return compare(left, right) < 0;
    }
};
