#include <unordered_set>

#include "tools/lint/rooms.h"
#include "tools/lint/value_facts.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kEmptyItem = {
    "list-item", "an item of the list of {} is empty and does not count"};
constexpr LintRow kItemTwice = {
    "list-item", "the list of {} has {} already"};
constexpr LintRow kItemOutOfRange = {
    "value-out-of-range", "{} in the list is outside the range of {}, which is always {}"};
constexpr LintRow kNoDefault = {
    "no-default", "{} has no default: it is unknown until somebody sets it"};
// clang-format on

// One entry between the separators of a list.
struct Item {
    std::string_view text;  // without the blanks around it
    std::size_t begin;
    std::size_t end;
};

class Defaults {
public:
    explicit Defaults(Lint& lint) : lint_(lint), facts_(lint) {}

    void pass(const Spot& spot) {
        if (spot.context != Context::kParameter || is_in_map(spot.element)) {
            return;
        }
        const ValueFacts* const facts = facts_.find(spot.element.value_of("NAME"));
        if (facts == nullptr || !kivo_is_parameter(facts->object->obj_type)) {
            return;
        }
        pass_missing(spot, *facts);
        const DocumentAttribute* const list = spot.element.attribute("VALUE");
        if (!facts->list.empty() && list != nullptr &&
            list->value.text == facts->object->value_array) {
            pass_list(spot, *facts, list->value);
        }
    }

private:
    // A text without a default is empty, a number is unknown.
    void pass_missing(const Spot& spot, const ValueFacts& facts) {
        const KIVO_OBJ_INFO& object = *facts.object;
        if (spot.element.attribute("TYPE") != nullptr && !facts.is_text() &&
            is_blank(object.value_array) && is_blank(object.default_value) &&
            object.default_index < 0 && !is_always_forced(object) && told_.insert(&object).second) {
            lint_.post(kNoDefault, spot.element, spot.document.place(spot.element), object.name);
        }
    }

    static bool is_always_forced(const KIVO_OBJ_INFO& object) {
        KIVO_OBJ_LIST rules = object.rule_list;
        rules.reset();
        while (KIVO_OBJ* record = rules.get_next_value()) {
            const auto* const rule = dynamic_cast<const KIVO_RULE_ELEMENT*>(record);
            if (rule != nullptr && rule->origin == KIVO_ORIGIN_FORCE_VALUE &&
                (rule->text3.empty() || !rule->text2.empty())) {
                return true;
            }
        }
        return false;
    }

    void pass_list(const Spot& spot, const ValueFacts& facts, const DocumentText& list) {
        const std::int32_t chosen = facts.object->default_index;
        const std::size_t by_default = chosen < 0 ? 0 : static_cast<std::size_t>(chosen);
        std::unordered_set<std::string> seen;
        std::size_t index = 0;
        for (std::size_t begin = 0; begin <= list.text.size();) {
            const Item item = item_at(list.text, begin);
            begin = item.end + 1;
            if (item.text.empty()) {
                // The separator that makes it one.
                const std::size_t at = item.begin > 0 ? item.begin - 1 : item.end;
                lint_.post(kEmptyItem, spot.element, spot.document.place(list, at, at + 1),
                           facts.object->name);
                continue;
            }
            check(spot, facts, list, item, seen);
            // The default is looked at where it is chosen.
            if (index++ != by_default) {
                check_range(spot, facts, list, item);
            }
        }
    }

    static Item item_at(std::string_view list, std::size_t begin) {
        const std::size_t end = std::min(list.find(';', begin), list.size());
        return {trimmed(list.substr(begin, end - begin)), begin, end};
    }

    static Place place_of(const Spot& spot, const DocumentText& list, const Item& item) {
        const auto begin = static_cast<std::size_t>(item.text.data() - list.text.data());
        return spot.document.place(list, begin, begin + item.text.size());
    }

    void check(const Spot& spot, const ValueFacts& facts, const DocumentText& list,
               const Item& item, std::unordered_set<std::string>& seen) {
        const auto number = facts.is_text() ? std::nullopt : facts_.constant(item.text);
        const std::string key = number ? std::to_string(*number) : std::string(item.text);
        if (!seen.insert(key).second) {
            lint_.post(kItemTwice, spot.element, place_of(spot, list, item), facts.object->name,
                       quoted(item.text));
        }
    }

    void check_range(const Spot& spot, const ValueFacts& facts, const DocumentText& list,
                     const Item& item) {
        const auto number = facts_.constant(item.text);
        if (number && !facts.admits(*number)) {
            lint_.post(kItemOutOfRange, spot.element, place_of(spot, list, item), item.text,
                       facts.object->name, facts.range());
        }
    }

    Lint& lint_;
    FactsOfValues facts_;
    std::unordered_set<const KIVO_OBJ_INFO*> told_;  // to have no default
};

}  // namespace

void find_wrong_defaults(Lint& lint) {
    Defaults defaults(lint);
    lint.for_each([&defaults](const Spot& spot) { defaults.pass(spot); });
}
