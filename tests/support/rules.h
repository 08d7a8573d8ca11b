#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "kivo/kivo.h"

using Messages = std::vector<std::string>;

// A rule element by value, so that comparisons print both sides.
struct Rule {
    std::string text1;
    std::string text2;
    std::string text3;
    std::int32_t kind;

    bool operator==(const Rule&) const = default;
};

inline void PrintTo(const Rule& rule, std::ostream* out) {
    *out << "{\"" << rule.text1 << "\", \"" << rule.text2 << "\", \"" << rule.text3 << "\", "
         << rule.kind << "}";
}

// The elements of a list from its start to its end, whatever stands in it. Leaves the list reset.
inline std::vector<Rule> rules_of(KIVO_OBJ_LIST& list) {
    std::vector<Rule> rules;
    list.reset();
    while (KIVO_OBJ* item = list.get_next_value()) {
        const auto& element = dynamic_cast<KIVO_RULE_ELEMENT&>(*item);
        rules.push_back({element.text1, element.text2, element.text3, element.rule_kind});
    }
    list.reset();
    return rules;
}

// The rule elements of an object; of a null object one that equals nothing a reader makes.
inline std::vector<Rule> rules_of(KIVO_OBJ_INFO* object) {
    return object == nullptr ? std::vector<Rule>{{"no object", "", "", -1}}
                             : rules_of(object->rule_list);
}
