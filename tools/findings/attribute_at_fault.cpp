#include "tools/findings/attribute_at_fault.h"

#include <cstddef>

#include "tools/description/start_tag.h"

std::string_view attribute_at_fault(std::string_view name, std::string_view source_from_place) {
    const Attribute attribute = find_attribute(source_from_place, name);
    if (attribute.name.empty()) {
        return {};
    }
    const char* const source = source_from_place.data();
    const auto begin = static_cast<std::size_t>(attribute.name.data() - source);
    // To after the quote that ends the value.
    const std::size_t end =
        static_cast<std::size_t>(attribute.value.data() - source) + attribute.value.size() + 1;
    return source_from_place.substr(begin, end - begin);
}
