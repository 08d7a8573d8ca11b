#include "kivo/session/internal/near_word.h"

#include <algorithm>

#include "kivo/toolkit/less_c_string.h"

namespace {

bool is_known(std::string_view word, const std::vector<std::string_view>& known) {
    return std::find(known.begin(), known.end(), word) != known.end();
}

}  // namespace

std::size_t edit_distance(std::string_view first, std::string_view second) {
    // The last three rows of the table whose row R, column C is the distance of the first R bytes
    // of one word from the first C bytes of the other.
    std::vector<std::size_t> before(second.size() + 1);
    std::vector<std::size_t> above(second.size() + 1);
    std::vector<std::size_t> row(second.size() + 1);
    for (std::size_t column = 0; column <= second.size(); ++column) {
        row[column] = column;
    }
    for (std::size_t r = 1; r <= first.size(); ++r) {
        before.swap(above);
        above.swap(row);
        row[0] = r;
        for (std::size_t c = 1; c <= second.size(); ++c) {
            const std::size_t replaced = above[c - 1] + (first[r - 1] == second[c - 1] ? 0 : 1);
            row[c] = std::min({above[c] + 1, row[c - 1] + 1, replaced});
            const bool is_swap =
                r > 1 && c > 1 && first[r - 1] == second[c - 2] && first[r - 2] == second[c - 1];
            if (is_swap) {
                row[c] = std::min(row[c], before[c - 2] + 1);
            }
        }
    }
    return row[second.size()];
}

bool equals_but_for_case(std::string_view first, std::string_view second) {
    return LESS_C_STRING::compare(first, second) == 0;
}

std::string_view nearest_word(std::string_view word, const std::vector<std::string_view>& known,
                              std::size_t most_edits) {
    if (is_known(word, known)) {
        return {};
    }
    std::string_view nearest;
    std::size_t fewest = most_edits + 1;
    for (const std::string_view candidate : known) {
        if (equals_but_for_case(word, candidate)) {
            return candidate;
        }
        // Words of very different lengths are not compared: a word may be as long as a file.
        const std::size_t longer = std::max(word.size(), candidate.size());
        if (longer - std::min(word.size(), candidate.size()) >= fewest) {
            continue;
        }
        const std::size_t edits = edit_distance(word, candidate);
        if (edits < fewest && edits < longer) {
            fewest = edits;
            nearest = candidate;
        }
    }
    return nearest;
}
