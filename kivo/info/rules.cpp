#include "kivo/info/internal/reader.h"

void KIVO_INFO::process_rules(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        const std::string_view tag = element.tag_name();
        if (tag != "RULE" && tag != "CONDITION") {
            post({KIVO_MESSAGE_ID::kRulesSubTag, element.mark(),
                  compose("Sub element tag ", tag,
                          " is not a valid sub tag of the main tag RULES")});
            continue;
        }
        bool is_enabled = true;
        bool is_required = true;
        for (const auto& [name, value] : element.attributes()) {
            if (name == "ENABLED") {
                is_enabled = value == "ON";
            } else if (name == "REQUIRED_RULE") {
                is_required = value == "ON";
            }
        }
        const std::string_view condition = element.text();
        if (condition.empty() || !is_enabled) {
            post({KIVO_MESSAGE_ID::kRuleWithoutData, element.mark(),
                  compose("Sub element tag ", tag, " doesn't have any valid element data")});
            continue;
        }
        fn_rule_list.add_at_tail(new KIVO_RULE_ELEMENT(
            "", "", condition, is_required ? KIVO_RULE_REQUIRED : KIVO_RULE_NOT_REQUIRED,
            element.mark()));
    }
}
