#include "tools/doc/value_rules.h"

#include "tools/doc/cell.h"
#include "tools/doc/html.h"
#include "tools/doc/implication.h"
#include "tools/text/text_escape.h"

namespace {

// Of one object: nobody looks at more.
constexpr std::size_t kMostRules = 500;

// Says what a rule says; its names link.
class RuleSentence {
public:
    explicit RuleSentence(const PageNames& names) : names_(names) {}

    std::string of(const KIVO_RULE_ELEMENT& rule, bool is_port) const;
    std::string requirement(const std::string& condition) const;

private:
    std::string code(std::string_view text) const {
        return expression_cell(names_, join_lines(text));
    }
    std::string when(std::string_view condition) const {
        return condition.empty() ? std::string() : " when " + code(condition);
    }
    std::string otherwise(std::string_view value) const {
        return value.empty() ? std::string() : ", otherwise " + code(value);
    }
    std::string range(const KIVO_RULE_ELEMENT& rule) const {
        return rule.text2.empty() ? "at most " + code(rule.text1)
                                  : code(rule.text2) + " to " + code(rule.text1);
    }
    std::string value(const KIVO_RULE_ELEMENT& rule) const {
        return code(rule.text1) + when(rule.text3) + otherwise(rule.text2);
    }
    std::string by_origin(const KIVO_RULE_ELEMENT& rule) const;

    const PageNames& names_;
};

// The kind of a rule with WHEN_CMD does not say what it is.
std::string RuleSentence::by_origin(const KIVO_RULE_ELEMENT& rule) const {
    switch (rule.origin) {
        case KIVO_ORIGIN_FORCE_RANGE:
            return "range " + range(rule) + when(rule.text3);
        case KIVO_ORIGIN_CONSTANT_RANGE:
            return "constant " + range(rule) + when(rule.text3);
        case KIVO_ORIGIN_STATE:
            return "state " + value(rule);
        default:
            return "value " + value(rule);
    }
}

std::string RuleSentence::requirement(const std::string& condition) const {
    if (const auto parts = implication_of(condition)) {
        return code(parts->consequence) + when(parts->condition) + otherwise(parts->alternative);
    }
    return code(condition);
}

std::string RuleSentence::of(const KIVO_RULE_ELEMENT& rule, bool is_port) const {
    switch (rule.rule_kind) {
        case KIVO_RULE_WHEN_CMD:
            return by_origin(rule);
        case KIVO_RULE_FORCED_RANGE:
        case KIVO_RULE_PORT_RANGE:
            return "range " + range(rule) + when(rule.text3);
        case KIVO_RULE_CONSTANT_RANGE:
            return "constant " + range(rule) + when(rule.text3);
        case KIVO_RULE_FORCED_VALUE:
        case KIVO_RULE_PORT_VALUE: {
            const bool is_state = is_port && rule.rule_kind == KIVO_RULE_FORCED_VALUE;
            return (is_state ? "state " : "value ") + value(rule);
        }
        default:
            return "requires " + requirement(rule.text3);
    }
}

}  // namespace

std::string value_rule_list(const PageNames& names, KIVO_OBJ_INFO& object) {
    const RuleSentence sentence(names);
    HtmlWriter list;
    object.reset_rule_list();
    std::size_t count = 0;
    while (const KIVO_RULE_ELEMENT* rule = object.get_next_rule_element()) {
        if (++count > kMostRules) {
            continue;
        }
        const HtmlScope item(list, "li");
        list.markup(sentence.of(*rule, kivo_is_port(object.obj_type)));
    }
    if (count > kMostRules) {
        const HtmlScope item(list, "li");
        list.markup(more_markup(count - kMostRules, "rule"));
    }
    return list.empty() ? std::string() : "<ul class=\"rules\">" + list.result() + "</ul>";
}

std::string requirement(const PageNames& names, const std::string& condition) {
    return RuleSentence(names).requirement(condition);
}
