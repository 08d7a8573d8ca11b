#include <memory>
#include <utility>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr MessageText kUnknownAttribute = {
    MessageId::kRangeAttribute,
    "Attribute {word} is not a recognized attribute for object {object}"};
// Says "parameters" for ports too; hosts match on the text.
constexpr MessageText kUnknownSubTag = {
    MessageId::kRangeSubTag,
    "Sub tag {word} is not a recognized sub-tag for parameters "};
constexpr MessageText kUnknownInValueRule = {
    MessageId::kValueRuleSubTag,
    "Unrecognized sub tag {word} of VALUE_RULE "};
// Names PORT for every kind of object; hosts match on the text.
constexpr MessageText kNotAdmitted = {
    MessageId::kObjectSubTag,
    "Sub tag {word} is not a valid sub tag of PORT "};
// clang-format on

// Which words a range takes, as attributes or sub-elements, as bits.
enum Words : std::uint32_t {
    kValue = 1,           // a value and its alternative
    kPlainValue = 2,      // a value alone
    kLimits = 4,          // the limits
    kLimitsAndValue = 8,  // both
    kAnyWords = 15,
};

struct RangeRow {
    std::string_view word;
    std::string KIVO_RULE_ELEMENT::*field;
    std::uint32_t words;
};

// clang-format off
constexpr RangeRow kRangeWords[] = {
    { "ELSE",     &KIVO_RULE_ELEMENT::text2, kValue                                 },
    { "IF",       &KIVO_RULE_ELEMENT::text3, kAnyWords                              },
    { "MAX",      &KIVO_RULE_ELEMENT::text1, kLimits | kLimitsAndValue              },
    { "MIN",      &KIVO_RULE_ELEMENT::text2, kLimits | kLimitsAndValue              },
    { "THEN",     &KIVO_RULE_ELEMENT::text1, kValue | kPlainValue | kLimitsAndValue },
    { "TO",       &KIVO_RULE_ELEMENT::text1, kValue | kPlainValue | kLimitsAndValue },
    { "V",        &KIVO_RULE_ELEMENT::text1, kValue | kPlainValue | kLimitsAndValue },
    { "WHEN",     &KIVO_RULE_ELEMENT::text3, kAnyWords                              },
    { "WHEN_CMD", &KIVO_RULE_ELEMENT::text3, kAnyWords                              },
};
// clang-format on

void gather_range_words(std::uint32_t taken, std::vector<std::string>& words) {
    for (const RangeRow& row : kRangeWords) {
        if ((row.words & taken) != 0) {
            words.emplace_back(row.word);
        }
    }
}

struct OriginRow {
    std::string_view tag;
    KIVO_RULE_ORIGIN origin;
};

// clang-format off
constexpr OriginRow kOrigins[] = {
    { "CONSTANT_RANGE", KIVO_ORIGIN_CONSTANT_RANGE },
    { "FORCE_RANGE",    KIVO_ORIGIN_FORCE_RANGE    },
    { "FORCE_VALUE",    KIVO_ORIGIN_FORCE_VALUE    },
    { "STATE",          KIVO_ORIGIN_STATE          },
};
// clang-format on

KIVO_RULE_ORIGIN origin_of(std::string_view tag) {
    for (const OriginRow& row : kOrigins) {
        if (tag == row.tag) {
            return row.origin;
        }
    }
    return KIVO_ORIGIN_UNKNOWN;
}

// Reads one STATE, FORCE_VALUE, FORCE_RANGE or CONSTANT_RANGE. The kind is tested as it stands when
// each attribute and sub-element is reached: after a WHEN_CMD no ELSE, MIN or MAX is accepted.
class RangeReader {
public:
    RangeReader(KIVO_OBJ_INFO& object, std::int32_t kind)
        : object_(object), kind_(kind), element_(std::make_unique<KIVO_RULE_ELEMENT>()) {}

    void read(KIVO_XML_ELEMENT& range, const MessagePoster& poster) {
        for (const auto& [name, value] : range.attributes()) {
            const Words taken = words_of_attributes();
            if (!take(taken, name, value)) {
                poster.post(
                    unknown_attribute(kUnknownAttribute, range, name, {gather_range_words, taken}));
            }
        }
        for (KIVO_XML_ELEMENT& sub : range.sub_elements()) {
            const Words taken = words_of_sub_elements();
            if (!take(taken, sub.tag_name(), sub.text())) {
                poster.post(
                    unknown_sub_tag(kUnknownSubTag, range, sub, {gather_range_words, taken}));
            }
        }
        if (!element_->text1.empty()) {
            element_->rule_kind = final_kind(range.tag_name());
            element_->mark = range.mark();
            element_->origin = origin_of(range.tag_name());
            KIVO_ITEMS::add(object_.rule_list, std::move(element_));
        }
    }

private:
    // Attributes and sub-elements differ on purpose: as sub-elements V, TO and THEN are refused in
    // every forced range, and MAX and MIN in a constant range.
    Words words_of_attributes() const {
        const bool takes_both =
            kind_ == KIVO_RULE_CONSTANT_RANGE ||
            (kind_ == KIVO_RULE_FORCED_RANGE && kivo_is_parameter(object_.obj_type));
        return takes_both ? kLimitsAndValue : words_of_sub_elements();
    }

    Words words_of_sub_elements() const {
        return kind_ == KIVO_RULE_FORCED_VALUE   ? kValue
               : kind_ == KIVO_RULE_FORCED_RANGE ? kLimits
                                                 : kPlainValue;
    }

    bool take(Words taken, std::string_view word, std::string_view text) {
        const RangeRow* const row = find_row(kRangeWords, word);
        if (row == nullptr || (row->words & taken) == 0) {
            return false;
        }
        (*element_).*row->field = text;
        if (word == "WHEN_CMD") {
            kind_ = KIVO_RULE_WHEN_CMD;
        }
        return true;
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
// "alternative". No blank stands after the condition in the inner text: hosts match on it.
std::string implication(std::string_view condition, std::string_view consequence,
                        std::string_view alternative) {
    if (alternative.empty()) {
        return compose("( ( ", condition, ") and ( ", consequence, " ) ) || ( !( ", condition,
                       " ) )");
    }
    return compose("( ( ", condition, ") and ( ", consequence, " ) ) || ( !( ", condition,
                   " ) and ( ", alternative, " ) )");
}

struct ValueRule {
    std::string_view if_text;
    std::string_view then_text;
    std::string_view else_text;
};

struct ValueRuleRow {
    std::string_view word;
    std::string_view ValueRule::*text;
};

// clang-format off
constexpr ValueRuleRow kValueRuleWords[] = {
    { "ELSE", &ValueRule::else_text },
    { "IF",   &ValueRule::if_text   },
    { "THEN", &ValueRule::then_text },
};
// clang-format on

void read_value_rule(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& rule, const MessagePoster& poster) {
    ValueRule read;
    for (KIVO_XML_ELEMENT& sub : rule.sub_elements()) {
        if (const ValueRuleRow* row = find_row(kValueRuleWords, sub.tag_name())) {
            read.*row->text = sub.text();
        } else {
            poster.post(unknown_sub_tag(kUnknownInValueRule, rule, sub, kWordsOf<kValueRuleWords>));
        }
    }
    std::string condition = read.if_text.empty() || read.then_text.empty()
                                ? std::string(rule.text())
                                : implication(read.if_text, read.then_text, read.else_text);
    if (!condition.empty()) {
        auto element =
            std::make_unique<KIVO_RULE_ELEMENT>("", "", "", KIVO_RULE_REQUIRED, rule.mark());
        element->text3 = std::move(condition);
        element->origin = KIVO_ORIGIN_VALUE_RULE;
        KIVO_ITEMS::add(object.rule_list, std::move(element));
    }
}

enum Admission { kRejected, kForcedValue, kForcedRange, kConstantRange, kValueRule };

struct AdmissionRow {
    std::string_view word;
    Admission of_port;
    Admission of_other;  // hidden parameters, and macros reached through PARAMETER_RULES
    Admission of_parameter;
};

// clang-format off
constexpr AdmissionRow kAdmissions[] = {
    { "CONSTANT_RANGE", kConstantRange, kRejected,    kRejected    },
    { "FORCE_RANGE",    kForcedRange,   kRejected,    kForcedRange },
    { "FORCE_VALUE",    kForcedValue,   kForcedValue, kForcedValue },
    { "STATE",          kForcedValue,   kRejected,    kRejected    },
    { "VALUE_RULE",     kRejected,      kRejected,    kValueRule   },
};
// clang-format on

Admission admission_of(const AdmissionRow& row, KIVO_OBJ_TYPE type) {
    return kivo_is_port(type)        ? row.of_port
           : kivo_is_parameter(type) ? row.of_parameter
                                     : row.of_other;
}

Admission admission(std::string_view tag, KIVO_OBJ_TYPE type) {
    const AdmissionRow* const row = find_row(kAdmissions, tag);
    return row == nullptr ? kRejected : admission_of(*row, type);
}

void gather_admitted(std::uint32_t type, std::vector<std::string>& words) {
    for (const AdmissionRow& row : kAdmissions) {
        if (admission_of(row, static_cast<KIVO_OBJ_TYPE>(type)) != kRejected) {
            words.emplace_back(row.word);
        }
    }
}

KnownWords words_admitted(const KIVO_OBJ_INFO& object) {
    return {gather_admitted, static_cast<std::uint32_t>(object.obj_type)};
}

}  // namespace

void process_kivo_obj_subtags(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& element,
                              const MessagePoster& poster) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        switch (admission(sub.tag_name(), object.obj_type)) {
            case kForcedValue:
                RangeReader(object, KIVO_RULE_FORCED_VALUE).read(sub, poster);
                break;
            case kForcedRange:
                RangeReader(object, KIVO_RULE_FORCED_RANGE).read(sub, poster);
                break;
            case kConstantRange:
                RangeReader(object, KIVO_RULE_CONSTANT_RANGE).read(sub, poster);
                break;
            case kValueRule:
                read_value_rule(object, sub, poster);
                break;
            case kRejected:
                poster.post(unknown_sub_tag(kNotAdmitted, element, sub, words_admitted(object)));
                break;
        }
    }
}
