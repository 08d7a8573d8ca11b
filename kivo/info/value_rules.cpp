#include <memory>
#include <utility>

#include "kivo/info/internal/reader.h"

namespace {

bool is_one_of(std::string_view word, std::initializer_list<std::string_view> words) {
    for (const std::string_view known : words) {
        if (word == known) {
            return true;
        }
    }
    return false;
}

bool is_value_word(std::string_view word) {
    return is_one_of(word, {"V", "TO", "THEN"});
}

bool is_condition_word(std::string_view word) {
    return is_one_of(word, {"IF", "WHEN", "WHEN_CMD"});
}

// Reads one STATE, FORCE_VALUE, FORCE_RANGE or CONSTANT_RANGE. The kind is tested as it stands when
// each attribute and sub-element is reached: behind a WHEN_CMD no ELSE, MIN or MAX is accepted.
class RangeReader {
public:
    RangeReader(KIVO_OBJ_INFO& object, std::int32_t kind)
        : object_(object), kind_(kind), element_(std::make_unique<KIVO_RULE_ELEMENT>()) {}

    void read(KIVO_XML_ELEMENT& range, KIVO_MESSAGE_LIST& messages) {
        MessageCollector collector(messages, range.mark());
        for (const auto& [name, value] : range.attributes()) {
            if (!take_attribute(name, value)) {
                collector.add(KIVO_MESSAGE_ID::kRangeAttribute, "Attribute ", name,
                              " is not a recognized attribute for object ", object_.name);
            }
        }
        for (KIVO_XML_ELEMENT& sub : range.sub_elements()) {
            if (!take_sub_element(sub.tag_name(), sub.text())) {
                MessageCollector(messages, sub.mark())
                    .add(KIVO_MESSAGE_ID::kRangeSubTag, "Sub tag ", sub.tag_name(),
                         " is not a recognized sub-tag for parameters ");
            }
        }
        if (!element_->text1.empty()) {
            element_->rule_kind = final_kind(range.tag_name());
            element_->mark = range.mark();
            object_.add_rule(element_.release());
        }
    }

private:
    // Attributes and sub-elements differ on purpose: as sub-elements V, TO and THEN are refused in
    // every forced range, and MAX and MIN in a constant range.
    bool take_attribute(std::string_view name, std::string_view value) {
        const bool is_forced_range = kind_ == KIVO_RULE_FORCED_RANGE;
        if (is_value_word(name) && (!is_forced_range || kivo_is_parameter(object_.obj_type))) {
            element_->text1 = value;
            return true;
        }
        return take_limit(name, value, is_forced_range || kind_ == KIVO_RULE_CONSTANT_RANGE) ||
               take_common(name, value);
    }

    bool take_sub_element(std::string_view tag, std::string_view text) {
        const bool is_forced_range = kind_ == KIVO_RULE_FORCED_RANGE;
        if (is_value_word(tag) && !is_forced_range) {
            element_->text1 = text;
            return true;
        }
        return take_limit(tag, text, is_forced_range) || take_common(tag, text);
    }

    bool take_limit(std::string_view word, std::string_view text, bool has_limits) {
        if (!has_limits || (word != "MAX" && word != "MIN")) {
            return false;
        }
        (word == "MAX" ? element_->text1 : element_->text2) = text;
        return true;
    }

    bool take_common(std::string_view word, std::string_view text) {
        if (is_condition_word(word)) {
            element_->text3 = text;
            kind_ = word == "WHEN_CMD" ? static_cast<std::int32_t>(KIVO_RULE_WHEN_CMD) : kind_;
            return true;
        }
        if (word == "ELSE" && kind_ == KIVO_RULE_FORCED_VALUE) {
            element_->text2 = text;
            return true;
        }
        return false;
    }

    std::int32_t final_kind(std::string_view tag) const {
        if (kivo_is_port(object_.obj_type) && tag == "FORCE_VALUE") {
            return KIVO_RULE_PORT_VALUE;
        }
        if (kivo_is_port(object_.obj_type) && tag == "FORCE_RANGE") {
            return KIVO_RULE_PORT_RANGE;
        }
        return kind_;
    }

    KIVO_OBJ_INFO& object_;
    std::int32_t kind_;
    std::unique_ptr<KIVO_RULE_ELEMENT> element_;
};

// The condition that holds when "condition" is false or "consequence" holds, and otherwise
// "alternative". No blank stands behind the condition in the inner text: hosts match on it.
std::string implication(std::string_view condition, std::string_view consequence,
                        std::string_view alternative) {
    if (alternative.empty()) {
        return compose("( ( ", condition, ") and ( ", consequence, " ) ) || ( !( ", condition,
                       " ) )");
    }
    return compose("( ( ", condition, ") and ( ", consequence, " ) ) || ( !( ", condition,
                   " ) and ( ", alternative, " ) )");
}

void read_value_rule(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& rule, KIVO_MESSAGE_LIST& messages) {
    std::string_view if_text;
    std::string_view then_text;
    std::string_view else_text;
    for (KIVO_XML_ELEMENT& sub : rule.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        if (tag == "IF") {
            if_text = sub.text();
        } else if (tag == "THEN") {
            then_text = sub.text();
        } else if (tag == "ELSE") {
            else_text = sub.text();
        } else {
            MessageCollector(messages, sub.mark())
                .add(KIVO_MESSAGE_ID::kValueRuleSubTag, "Unrecognized sub tag ", tag,
                     " of VALUE_RULE ");
        }
    }
    std::string condition = if_text.empty() || then_text.empty()
                                ? std::string(rule.text())
                                : implication(if_text, then_text, else_text);
    if (!condition.empty()) {
        auto element =
            std::make_unique<KIVO_RULE_ELEMENT>("", "", "", KIVO_RULE_REQUIRED, rule.mark());
        element->text3 = std::move(condition);
        object.add_rule(element.release());
    }
}

enum Admission { kRejected, kValue, kForcedRange, kConstantRange, kValueRule };

struct AdmissionRow {
    std::string_view tag;
    Admission of_port;
    Admission of_other;  // hidden parameters, and macros reached through PARAMETER_RULES
    Admission of_parameter;
};

// clang-format off
constexpr AdmissionRow kAdmissions[] = {
    { "CONSTANT_RANGE", kConstantRange, kRejected, kRejected    },
    { "FORCE_RANGE",    kForcedRange,   kRejected, kForcedRange },
    { "FORCE_VALUE",    kValue,         kValue,    kValue       },
    { "STATE",          kValue,         kRejected, kRejected    },
    { "VALUE_RULE",     kRejected,      kRejected, kValueRule   },
};
// clang-format on

Admission admission(std::string_view tag, KIVO_OBJ_TYPE type) {
    for (const AdmissionRow& row : kAdmissions) {
        if (tag == row.tag) {
            return kivo_is_port(type)        ? row.of_port
                   : kivo_is_parameter(type) ? row.of_parameter
                                             : row.of_other;
        }
    }
    return kRejected;
}

}  // namespace

void process_kivo_obj_subtags(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& element,
                              KIVO_MESSAGE_LIST& messages) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        switch (admission(sub.tag_name(), object.obj_type)) {
            case kValue:
                RangeReader(object, KIVO_RULE_FORCED_VALUE).read(sub, messages);
                break;
            case kForcedRange:
                RangeReader(object, KIVO_RULE_FORCED_RANGE).read(sub, messages);
                break;
            case kConstantRange:
                RangeReader(object, KIVO_RULE_CONSTANT_RANGE).read(sub, messages);
                break;
            case kValueRule:
                read_value_rule(object, sub, messages);
                break;
            case kRejected:
                // The message names PORT for every kind; hosts match on it.
                MessageCollector(messages, sub.mark())
                    .add(KIVO_MESSAGE_ID::kObjectSubTag, "Sub tag ", sub.tag_name(),
                         " is not a valid sub tag of PORT ");
                break;
        }
    }
}
