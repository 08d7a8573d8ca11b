#include <memory>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr MessageText kUnknownElement = {
    MessageId::kRulesSubTag,
    "Sub element tag {word} is not a valid sub tag of the main tag RULES"};
constexpr MessageText kNoData = {
    MessageId::kRuleWithoutData,
    "Sub element tag {element} doesn't have any valid element data"};
// clang-format on

constexpr WordRow kElements[] = {{"CONDITION"}, {"RULE"}};
constexpr WordRow kEnabling[] = {{"ON"}};

KIVO_MESSAGE rule_without_data(const KIVO_XML_ELEMENT& element) {
    return {.says = kNoData, .mark = element.mark(), .element = element.tag_name()};
}

// A rule that is switched off is reported like one without data.
KIVO_MESSAGE disabled_rule(const KIVO_XML_ELEMENT& element, std::string_view enabled) {
    KIVO_MESSAGE message = rule_without_data(element);
    message.attribute = "ENABLED";
    message.word = enabled;
    message.known = kWordsOf<kEnabling>;
    return message;
}

}  // namespace

void KIVO_INFO::process_rules(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (find_row(kElements, element.tag_name()) == nullptr) {
            post(unknown_sub_tag(kUnknownElement, section, element, kWordsOf<kElements>));
            continue;
        }
        std::string_view enabled = "ON";
        bool is_required = true;
        for (const auto& [name, value] : element.attributes()) {
            if (name == "ENABLED") {
                enabled = value;
            } else if (name == "REQUIRED_RULE") {
                is_required = value == "ON";
            }
        }
        const std::string_view condition = element.text();
        if (find_row(kEnabling, enabled) == nullptr) {
            post(disabled_rule(element, enabled));
            continue;
        }
        if (condition.empty()) {
            post(rule_without_data(element));
            continue;
        }
        const KIVO_RULE_KIND kind = is_required ? KIVO_RULE_REQUIRED : KIVO_RULE_NOT_REQUIRED;
        KIVO_ITEMS::add(fn_rule_list, std::make_unique<KIVO_RULE_ELEMENT>("", "", condition, kind,
                                                                          element.mark()));
    }
}
