#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "tools/lint/lint.h"

// What a parameter or port may be, whatever else is set.
struct ValueFacts {
    const KIVO_OBJ_INFO* object = nullptr;
    std::vector<std::string> list;
    std::unordered_set<std::string> texts;     // the items of the list
    std::unordered_set<std::int64_t> numbers;  // those that are constant numbers
    std::optional<std::int64_t> least;
    std::optional<std::int64_t> greatest;
    bool has_open_item = false;  // an item that is no constant number
    bool has_rules = false;

    bool is_text() const { return object->obj_type == KIVO_OBJ_STRING_PARAMETER; }
    // Whether the ranges that always hold admit it; ranges that admit nothing are told of as such.
    bool admits(std::int64_t value) const;
    // Those ranges, in words. REQUIRES: there is one.
    std::string range() const;
};

// The facts of the objects of one description.
class FactsOfValues {
public:
    explicit FactsOfValues(const Lint& lint) : lint_(lint) {}

    // Null for a name that no object has.
    const ValueFacts* find(std::string_view name);

    // The number that a text is, when it names nothing.
    std::optional<std::int64_t> constant(std::string_view text) const;

private:
    void add_list(ValueFacts& facts) const;
    void add_range(const KIVO_RULE_ELEMENT& rule, ValueFacts& facts) const;

    const Lint& lint_;
    std::map<std::string, ValueFacts, std::less<>> facts_;
};

// Whether the element stands in a wizard map or among what is given to all of them.
bool is_in_map(const DocumentElement& element);
