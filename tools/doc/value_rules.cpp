#include "tools/doc/value_rules.h"

#include "tools/doc/html.h"
#include "tools/doc/table.h"
#include "tools/text/text_escape.h"

namespace {

// A condition in one line, over however many its author wrote it.
std::string condition_code(const std::string& condition) {
    return code_cell(join_lines(condition));
}

std::string when(const std::string& condition) {
    return condition.empty() ? std::string() : " when " + condition_code(condition);
}

std::string otherwise(const std::string& value) {
    return value.empty() ? std::string() : ", otherwise " + code_cell(value);
}

std::string range(const KIVO_RULE_ELEMENT& rule) {
    return rule.text2.empty() ? "at most " + code_cell(rule.text1)
                              : code_cell(rule.text2) + " to " + code_cell(rule.text1);
}

// The second text is the value otherwise or the lower limit; which of them is not recorded.
std::string by_command(const KIVO_RULE_ELEMENT& rule) {
    const std::string second = rule.text2.empty() ? "" : " or " + code_cell(rule.text2);
    return code_cell(rule.text1) + second + " by command " + condition_code(rule.text3);
}

std::string sentence(const KIVO_RULE_ELEMENT& rule, bool is_port) {
    switch (rule.rule_kind) {
        case KIVO_RULE_WHEN_CMD:
            return by_command(rule);
        case KIVO_RULE_FORCED_RANGE:
        case KIVO_RULE_PORT_RANGE:
            return "range " + range(rule) + when(rule.text3);
        case KIVO_RULE_CONSTANT_RANGE:
            return "constant " + range(rule) + when(rule.text3);
        case KIVO_RULE_FORCED_VALUE:
        case KIVO_RULE_PORT_VALUE: {
            const bool is_state = is_port && rule.rule_kind == KIVO_RULE_FORCED_VALUE;
            return (is_state ? "state " : "value ") + code_cell(rule.text1) + when(rule.text3) +
                   otherwise(rule.text2);
        }
        default:
            return "requires " + condition_code(rule.text3);
    }
}

}  // namespace

std::string value_rule_list(KIVO_OBJ_INFO& object) {
    HtmlWriter list;
    object.reset_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = object.get_next_rule_element()) {
        const HtmlScope item(list, "li");
        list.markup(sentence(*rule, kivo_is_port(object.obj_type)));
    }
    return list.empty() ? std::string() : "<ul class=\"rules\">" + list.result() + "</ul>";
}
