#include "tools/doc/names.h"

#include <algorithm>

#include "tools/text/letters.h"

namespace {

// Whether a name can stand in an id, and in a link to it, as it is.
bool is_plain(std::string_view name) {
    return !name.empty() && !is_digit(name.front()) &&
           std::all_of(name.begin(), name.end(),
                       [](char letter) { return is_letter_or_digit(letter) || letter == '_'; });
}

}  // namespace

std::string PageNames::add(std::string_view kind, const std::string& name) {
    // A number cannot be another one's plain name.
    std::string id =
        std::string(kind) + '-' + (is_plain(name) ? name : std::to_string(++unwritable_));
    ids_.emplace(name, id);
    return id;
}

const std::string* PageNames::find(std::string_view name) const {
    const auto found = ids_.find(name);
    return found == ids_.end() ? nullptr : &found->second;
}

std::size_t length_of_name(std::string_view text) {
    if (text.empty() || !can_begin_name(text.front())) {
        return 0;
    }
    const auto* const end = std::find_if_not(text.begin(), text.end(), can_be_in_name);
    return static_cast<std::size_t>(end - text.begin());
}

bool stands_out(std::string_view name) {
    const bool is_shouted = name.size() > 1 && std::all_of(name.begin(), name.end(), is_capital);
    return is_shouted || std::any_of(name.begin(), name.end(),
                                     [](char letter) { return letter == '_' || is_digit(letter); });
}
