#include "tools/description/default_value.h"

#include <fmt/format.h>

#include <cstddef>
#include <string_view>
#include <utility>

#include "tools/text/text_steps.h"

namespace {

std::string_view without_outer_blanks(std::string_view text) {
    skip_blanks(text);
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

}  // namespace

std::vector<std::string> list_items(const std::string& list) {
    std::vector<std::string> items;
    for (std::string_view rest = list; !rest.empty();) {
        const std::string_view item = without_outer_blanks(taken_until(rest, ";"));
        if (!item.empty()) {
            items.emplace_back(item);
        }
        rest.remove_prefix(rest.empty() ? 0 : 1);
    }
    return items;
}

std::optional<std::string> default_of(const KIVO_OBJ_INFO& object) {
    if (object.default_index < 0) {
        return object.default_value;
    }
    std::vector<std::string> items = list_items(object.value_array);
    const auto index = static_cast<std::size_t>(object.default_index);
    return index < items.size() ? std::optional(std::move(items[index])) : std::nullopt;
}

std::string missing_default(const KIVO_OBJ_INFO& object) {
    return fmt::format("index {} (the list has no such item)", object.default_index);
}
