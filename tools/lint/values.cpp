#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "tools/findings/notes.h"
#include "tools/lint/rooms.h"
#include "tools/lint/slots.h"
#include "tools/lint/value_facts.h"
#include "tools/text/text_steps.h"
#include "tools/text/whole_number.h"

namespace {

// clang-format off
constexpr LintRow kNotInList = {
    "value-not-in-list", "the list of {} does not hold {}"};
constexpr LintRow kOtherCase = {
    "value-not-in-list", "the list of {} holds {} in another letter case"};
constexpr LintRow kOutOfRange = {
    "value-out-of-range", "{} is outside the range of {}, which is always {}"};
constexpr LintRow kIndexedOutOfRange = {
    "value-out-of-range", "{}, the value with this index, is outside the range of {}, which is always {}"};
constexpr LintRow kEmptyRange = {
    "empty-range", "no value is in this range: MIN {} lies above MAX {}"};
constexpr LintRow kIndexWithoutList = {
    "index-without-list", "{} has no list of values of which DEFAULT_VALUE_INDEX could name one"};
constexpr LintRow kIndexOutsideList = {
    "default-index", "the list of {} has {} values, counted from 0: none has this index"};
constexpr LintRow kDefaultIgnored = {
    "default-ignored", "DEFAULT_VALUE does not count beside {}: the default is {}"};
constexpr LintRow kIndexInMap = {
    "default-ignored", "DEFAULT_VALUE_INDEX presets nothing in a map: write the value as VALUE"};
constexpr LintRow kNumberExpected = {
    "number-expected", "a number is needed here, and {} is {}"};
constexpr LintRow kOtherType = {
    "other-type", "{} {} is of TYPE {} here and declared as {}"};
// clang-format on

struct TypeRow {
    KIVO_OBJ_TYPE type;
    std::string_view word;
};

// clang-format off
constexpr TypeRow kTypes[] = {
    { KIVO_OBJ_BIDIR_PORT,        "BIDIR"   },
    { KIVO_OBJ_BURIED_PORT,       "BURIED"  },
    { KIVO_OBJ_INPUT_PORT,        "INPUT"   },
    { KIVO_OBJ_INTEGER_PARAMETER, "INTEGER" },
    { KIVO_OBJ_OUTPUT_PORT,       "OUTPUT"  },
    { KIVO_OBJ_STRING_PARAMETER,  "STRING"  },
};
// clang-format on

// A text that gives an object a value.
struct Given {
    const Spot& spot;
    const DocumentText& text;
    std::size_t begin;
    std::size_t size;

    std::string_view value() const { return text.text.substr(begin, size); }
    Place place() const { return spot.document.place(text, begin, begin + size); }
};

Given all_of(const Spot& spot, const DocumentText& text) {
    if (is_blank(text.text)) {
        return {spot, text, 0, 0};
    }
    const std::string_view value = trimmed(text.text);
    return {spot, text, static_cast<std::size_t>(value.data() - text.text.data()), value.size()};
}

const DocumentText& text_of(const Giver& giver) {
    return giver.attribute != nullptr ? giver.attribute->value : giver.element->text;
}

class Values {
public:
    explicit Values(Lint& lint) : lint_(lint), facts_(lint) {}

    void pass(const Spot& spot) {
        const bool is_object =
            spot.context == Context::kParameter || spot.context == Context::kPort;
        if (is_object) {
            is_in_map(spot.element) ? pass_mapped(spot) : pass_declared(spot);
        } else if (spot.context == Context::kForceValue) {
            pass_force(spot);
        } else if (form_of(spot.context) == Form::kRange) {
            pass_range(spot);
        }
    }

private:
    // What a value given to a parameter of type STRING is: itself, but for the value of an object.
    std::optional<std::string> text_value(const ValueFacts& facts, std::string_view text) const;

    void pass_declared(const Spot& spot);
    void pass_mapped(const Spot& spot);
    bool is_of_other_type(const Spot& spot, const ValueFacts& facts);
    void pass_force(const Spot& spot);
    void pass_range(const Spot& spot);
    void pass_index(const Spot& spot, const ValueFacts& facts, const DocumentText& index);
    void pass_ignored_default(const Spot& spot, const ValueFacts& facts);
    bool may_be_number(std::string_view text);
    void check_number(const Given& given);
    void check_numbers(const Spot& spot, std::initializer_list<std::string_view> words);
    void check(const ValueFacts& facts, const Given& given);
    void check_list(const ValueFacts& facts, const Given& given);
    void check_range(const ValueFacts& facts, const Given& given, std::string_view value,
                     const LintRow& row);

    Lint& lint_;
    FactsOfValues facts_;
};

std::optional<std::string> Values::text_value(const ValueFacts& facts,
                                              std::string_view text) const {
    const std::string_view bare = trimmed(text);
    if (bare.size() >= 2 && bare.front() == '"' && bare.find('"', 1) == bare.size() - 1) {
        return std::string(bare.substr(1, bare.size() - 2));
    }
    return facts.texts.count(std::string(bare)) != 0 ||
                   lint_.info().get_kivo_obj(std::string(bare)) == nullptr
               ? std::optional(std::string(bare))
               : std::nullopt;
}

// What a macro is, and a parameter without a list, is not known for certain; a hidden parameter is
// known when nothing forces it.
bool Values::may_be_number(std::string_view text) {
    const ValueFacts* const facts = facts_.find(text);
    const bool is_certain = facts != nullptr &&
                            facts->object->obj_type == KIVO_OBJ_HIDDEN_PARAMETER &&
                            !facts->has_rules;
    return facts != nullptr && !is_certain &&
           (!facts->is_text() || facts->list.empty() || !facts->numbers.empty());
}

void Values::check_number(const Given& given) {
    const KIVO_EVALUATION is = lint_.session().evaluate(given.value());
    const bool is_text = is.kind == KIVO_VALUE_KIND::kText && !whole_number<std::int64_t>(is.value);
    if ((is_text || is.kind == KIVO_VALUE_KIND::kTruth) && !may_be_number(given.value())) {
        lint_.post(kNumberExpected, given.spot.element, given.place(), quoted(given.value()),
                   is_text ? "a text" : "a condition");
    }
}

// In those attributes or sub-elements that are there.
void Values::check_numbers(const Spot& spot, std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        for (const Giver& giver : givers_of(spot, {word})) {
            const Given given = all_of(spot, text_of(giver));
            if (!given.value().empty()) {
                check_number(given);
            }
        }
    }
}

void Values::check(const ValueFacts& facts, const Given& given) {
    if (!given.value().empty()) {
        if (!facts.is_text()) {
            check_number(given);
        }
        check_list(facts, given);
        check_range(facts, given, given.value(), kOutOfRange);
    }
}

void Values::check_list(const ValueFacts& facts, const Given& given) {
    if (facts.list.empty()) {
        return;
    }
    std::optional<std::string> text = std::string(given.value());
    bool is_held = false;
    if (facts.is_text()) {
        text = text_value(facts, given.value());
        is_held = !text || facts.texts.count(*text) != 0;
    } else {
        // An item that is no constant may be any number.
        const auto number = facts_.constant(given.value());
        is_held = !number || facts.has_open_item || facts.numbers.count(*number) != 0;
    }
    if (is_held) {
        return;
    }
    const std::string& shown = *text;
    // Looking at all items for each of many values would cost their product.
    constexpr std::size_t kMostItems = 200;
    std::vector<std::string_view> items;
    if (facts.list.size() <= kMostItems) {
        items.assign(facts.list.begin(), facts.list.end());
    }
    const bool differs_in_case = std::any_of(
        items.begin(), items.end(),
        [&shown](std::string_view item) { return LESS_C_STRING::compare(item, shown) == 0; });
    Finding& finding = lint_.post(differs_in_case ? kOtherCase : kNotInList, given.spot.element,
                                  given.place(), facts.object->name, quoted(shown));
    add_likely_word(finding, shown, items);
}

void Values::check_range(const ValueFacts& facts, const Given& given, std::string_view value,
                         const LintRow& row) {
    const auto number = facts_.constant(value);
    if (number && !facts.admits(*number)) {
        lint_.post(row, given.spot.element, given.place(), value, facts.object->name,
                   facts.range());
    }
}

// The attribute that gives an object its default is looked at where it counts.
void Values::pass_declared(const Spot& spot) {
    const ValueFacts* const facts = facts_.find(spot.element.value_of("NAME"));
    if (facts == nullptr) {
        return;
    }
    const DocumentAttribute* const value = spot.element.attribute("VALUE");
    const DocumentAttribute* const fallback = spot.element.attribute("DEFAULT_VALUE");
    const DocumentAttribute* const index = spot.element.attribute("DEFAULT_VALUE_INDEX");
    if (spot.context == Context::kPort) {
        check_numbers(spot, {"WIDTH", "WIDTH2D"});
        if (fallback != nullptr && fallback->value.text == facts->object->default_value) {
            check(*facts, all_of(spot, fallback->value));
        }
        return;
    }
    if (!kivo_is_parameter(facts->object->obj_type)) {
        return;
    }
    if (index != nullptr) {
        pass_index(spot, *facts, index->value);
    }
    if (fallback != nullptr) {
        pass_ignored_default(spot, *facts);
    }
    if (facts->object->default_index >= 0) {
        return;
    }
    if (fallback != nullptr && value == nullptr &&
        fallback->value.text == facts->object->default_value) {
        check(*facts, all_of(spot, fallback->value));
    } else if (value != nullptr && value->value.text == facts->object->default_value) {
        // Of a list the first item is the default.
        Given given = all_of(spot, value->value);
        given.size = trimmed(given.value().substr(0, given.value().find(';'))).size();
        check(*facts, given);
    }
}

void Values::pass_index(const Spot& spot, const ValueFacts& facts, const DocumentText& text) {
    const auto index = whole_number<std::int32_t>(trimmed(text.text));
    if (!index || *index < 0 || *index != facts.object->default_index) {
        return;
    }
    const Given given = all_of(spot, text);
    if (facts.list.empty()) {
        lint_.post(kIndexWithoutList, spot.element, given.place(), facts.object->name);
    } else if (static_cast<std::size_t>(*index) >= facts.list.size()) {
        lint_.post(kIndexOutsideList, spot.element, given.place(), facts.object->name,
                   facts.list.size());
    } else {
        check_range(facts, given, facts.list[static_cast<std::size_t>(*index)], kIndexedOutOfRange);
    }
}

void Values::pass_ignored_default(const Spot& spot, const ValueFacts& facts) {
    const DocumentText& text = spot.element.attribute("DEFAULT_VALUE")->value;
    const bool has_value = spot.element.attribute("VALUE") != nullptr;
    const bool has_index = facts.object->default_index >= 0;
    if ((!has_value && !has_index) || is_blank(text.text)) {
        return;
    }
    const std::size_t index = has_index ? static_cast<std::size_t>(facts.object->default_index) : 0;
    const std::string counts = facts.list.empty()          ? facts.object->value_array
                               : index < facts.list.size() ? facts.list[index]
                                                           : facts.list.front();
    if (trimmed(text.text) == trimmed(counts)) {
        return;
    }
    Finding& finding = lint_.post(kDefaultIgnored, spot.element, spot.document.place(text),
                                  has_index ? "DEFAULT_VALUE_INDEX" : "VALUE", quoted(counts));
    const auto item = std::find(facts.list.begin(), facts.list.end(), trimmed(text.text));
    if (item != facts.list.end()) {
        finding.notes.push_back({"write DEFAULT_VALUE_INDEX=\"" +
                                     std::to_string(item - facts.list.begin()) + "\" for this one",
                                 finding.place});
    }
}

// What no TYPE names is told of by the library, and so is a TYPE that is none.
bool Values::is_of_other_type(const Spot& spot, const ValueFacts& facts) {
    const DocumentAttribute* const type = spot.element.attribute("TYPE");
    const TypeRow* declared = nullptr;
    bool is_known = false;
    for (const TypeRow& row : kTypes) {
        declared = row.type == facts.object->obj_type ? &row : declared;
        is_known = is_known || (type != nullptr && row.word == type->value.text);
    }
    if (declared == nullptr || !is_known || type->value.text == declared->word) {
        return false;
    }
    lint_.post(kOtherType, spot.element, spot.document.place(type->value), spot.element.tag,
               quoted(facts.object->name), type->value.text, declared->word);
    return true;
}

void Values::pass_mapped(const Spot& spot) {
    const ValueFacts* const facts = facts_.find(spot.element.value_of("NAME"));
    if (facts == nullptr || is_of_other_type(spot, *facts)) {
        return;
    }
    const DocumentAttribute* const value = spot.element.attribute("VALUE");
    const DocumentAttribute* const preset =
        value != nullptr ? value : spot.element.attribute("DEFAULT_VALUE");
    if (spot.context == Context::kParameter && preset != nullptr) {
        check(*facts, all_of(spot, preset->value));
    }
    const DocumentAttribute* const index = spot.element.attribute("DEFAULT_VALUE_INDEX");
    if (index != nullptr && preset == nullptr) {
        lint_.post(kIndexInMap, spot.element, spot.document.place(*index));
    }
}

void Values::pass_force(const Spot& spot) {
    const ValueFacts* const facts = facts_.find(spot.element.parent->value_of("NAME"));
    if (facts == nullptr) {
        return;
    }
    for (const std::string_view word : {"V", "ELSE"}) {
        const std::vector<Giver> givers = givers_of(spot, slot_of(spot.context, word));
        if (givers.empty()) {
            continue;
        }
        check(*facts, all_of(spot, text_of(givers.back())));
    }
}

void Values::pass_range(const Spot& spot) {
    check_numbers(spot, {"MAX", "MIN", "THEN", "TO", "V"});
    const std::vector<Giver> givers = givers_of(spot, slot_of(spot.context, "MIN"));
    const auto least = facts_.constant(text_in(spot, "MIN"));
    const auto greatest = facts_.constant(text_in(spot, "MAX"));
    if (!givers.empty() && least && greatest && *least > *greatest) {
        lint_.post(kEmptyRange, spot.element, spot.document.place(text_of(givers.back())), *least,
                   *greatest);
    }
}

}  // namespace

void find_wrong_values(Lint& lint) {
    Values values(lint);
    lint.for_each([&values](const Spot& spot) { values.pass(spot); });
}
