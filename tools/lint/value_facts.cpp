#include "tools/lint/value_facts.h"

#include <algorithm>
#include <cassert>

#include "tools/description/default_value.h"
#include "tools/text/text_steps.h"
#include "tools/text/whole_number.h"

bool ValueFacts::admits(std::int64_t value) const {
    const bool is_empty = least && greatest && *least > *greatest;
    return is_empty || ((!least || value >= *least) && (!greatest || value <= *greatest));
}

std::string ValueFacts::range() const {
    assert(least || greatest);
    return !least      ? "at most " + std::to_string(*greatest)
           : !greatest ? "at least " + std::to_string(*least)
                       : std::to_string(*least) + " to " + std::to_string(*greatest);
}

const ValueFacts* FactsOfValues::find(std::string_view name) {
    const auto known = facts_.find(name);
    if (known != facts_.end()) {
        return &known->second;
    }
    const KIVO_OBJ_INFO* const object = lint_.info().get_kivo_obj(std::string(name));
    if (object == nullptr) {
        return nullptr;
    }
    ValueFacts facts;
    facts.object = object;
    add_list(facts);
    KIVO_OBJ_LIST rules = object->rule_list;
    rules.reset();
    while (KIVO_OBJ* record = rules.get_next_value()) {
        facts.has_rules = true;
        if (const auto* rule = dynamic_cast<const KIVO_RULE_ELEMENT*>(record)) {
            add_range(*rule, facts);
        }
    }
    return &facts_.emplace(name, std::move(facts)).first->second;
}

void FactsOfValues::add_list(ValueFacts& facts) const {
    if (facts.object->value_array.find(';') == std::string::npos &&
        facts.object->default_index < 0) {
        return;
    }
    facts.list = list_items(facts.object->value_array);
    facts.texts.insert(facts.list.begin(), facts.list.end());
    for (const std::string& item : facts.list) {
        if (const auto number = constant(item)) {
            facts.numbers.insert(*number);
        } else {
            facts.has_open_item = true;
        }
    }
}

void FactsOfValues::add_range(const KIVO_RULE_ELEMENT& rule, ValueFacts& facts) const {
    const bool is_range =
        rule.origin == KIVO_ORIGIN_FORCE_RANGE || rule.origin == KIVO_ORIGIN_CONSTANT_RANGE;
    if (!is_range || !rule.text3.empty()) {
        return;
    }
    if (const auto greatest = constant(rule.text1)) {
        facts.greatest = facts.greatest ? std::min(*facts.greatest, *greatest) : *greatest;
    }
    if (const auto least = constant(rule.text2)) {
        facts.least = facts.least ? std::max(*facts.least, *least) : *least;
    }
}

std::optional<std::int64_t> FactsOfValues::constant(std::string_view text) const {
    const std::string_view bare = trimmed(text);
    const auto number = whole_number<std::int64_t>(bare);
    const bool is_sum = !number && !bare.empty() &&
                        bare.find_first_not_of("0123456789+-*/%^(). ") == std::string_view::npos;
    if (!is_sum) {
        return number;
    }
    const KIVO_EVALUATION result = lint_.session().evaluate(bare);
    return result.kind == KIVO_VALUE_KIND::kInteger ? whole_number<std::int64_t>(result.value)
                                                    : std::nullopt;
}

bool is_in_map(const DocumentElement& element) {
    return element.parent->tag == "WIZARD_MAP" || element.parent->tag == "WIZARD_DATA";
}
