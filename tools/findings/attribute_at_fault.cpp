#include "tools/findings/attribute_at_fault.h"

#include <cstddef>

#include "tools/description/start_tag.h"

namespace {

struct Row {
    std::string_view id;
    // The attribute, or what stands before its name in the text.
    std::string_view attribute;
    std::string_view before;
};

// clang-format off
constexpr Row kRows[] = {
    {"include-attribute",              "", "Attribute "},
    {"function-information-attribute", "", "Sub tag"},
    {"unknown-type",                   "TYPE", ""},
    {"unknown-type",                   "NAME", ""},
    {"parameter-type",                 "TYPE", ""},
    {"parameter-cnx-type",             "CNX_TYPE", ""},
    {"parameter-attribute",            "", "Attribute "},
    {"port-type",                      "TYPE", ""},
    {"port-cnx-type",                  "CNX_TYPE", ""},
    {"port-attribute",                 "", "Attribute "},
    {"high-probability",               "HIGH_PROBABILITY", ""},
    {"hidden-parameter-attribute",     "", "Attribute "},
    {"range-attribute",                "", "Attribute "},
    {"rule-without-data",              "ENABLED", ""},
    {"message-type",                   "TYPE", ""},
    {"vector-display-truncation",      "DISPLAY_TRUNCATION", ""},
    {"vector-attribute",               "", "Attribute "},
    {"wizard-map-attribute",           "", "Attribute "},
};
// clang-format on

std::string_view name_in(std::string_view text, const Row& row) {
    if (!row.attribute.empty()) {
        return row.attribute;
    }
    if (text.substr(0, row.before.size()) != row.before) {
        return {};
    }
    text.remove_prefix(row.before.size());
    return text.substr(0, text.find(' '));
}

// From the name to behind the quote that ends the value.
std::string_view whole(std::string_view source, const Attribute& attribute) {
    const auto begin = static_cast<std::size_t>(attribute.name.data() - source.data());
    const auto end = static_cast<std::size_t>(attribute.value.data() - source.data()) +
                     attribute.value.size() + 1;
    return source.substr(begin, end - begin);
}

}  // namespace

std::string_view attribute_at_fault(std::string_view id, std::string_view text,
                                    std::string_view source_from_place) {
    for (const Row& row : kRows) {
        if (row.id == id) {
            const Attribute attribute = find_attribute(source_from_place, name_in(text, row));
            if (!attribute.name.empty()) {
                return whole(source_from_place, attribute);
            }
        }
    }
    return {};
}
