#include "tools/lint/slots.h"

#include <algorithm>

#include "kivo/kivo.h"

namespace {

// clang-format off
const std::vector<Slot> kOfForces = {
    {"THEN", "TO", "V"},
    {"ELSE"},
    {"IF", "WHEN", "WHEN_CMD"},
};
const std::vector<Slot> kOfRanges = {
    {"MAX", "THEN", "TO", "V"},
    {"MIN"},
    {"IF", "WHEN", "WHEN_CMD"},
};
const std::vector<Slot> kOfValueRules = { {"IF"}, {"THEN"}, {"ELSE"} };
const std::vector<Slot> kOfMessages = { {"IF", "WHEN"}, {"TEXT", "THEN"}, {"ELSE"} };
const std::vector<Slot> kOfOthers = {};
// clang-format on

const Slot kEmptySlot;

bool has(const Slot& slot, std::string_view word) {
    return std::find(slot.begin(), slot.end(), word) != slot.end();
}

}  // namespace

const std::vector<Slot>& slots_of(Context context) {
    switch (form_of(context)) {
        case Form::kForce:
            return kOfForces;
        case Form::kRange:
            return kOfRanges;
        case Form::kValueRule:
            return kOfValueRules;
        case Form::kMessage:
            return kOfMessages;
        case Form::kOther:
        case Form::kMacro:
        case Form::kRule:
        case Form::kVector:
        case Form::kWizardCondition:
        case Form::kSequence:
        case Form::kCondition:
            break;
    }
    return kOfOthers;
}

const Slot& slot_of(Context context, std::string_view word) {
    for (const Slot& slot : slots_of(context)) {
        if (has(slot, word)) {
            return slot;
        }
    }
    return kEmptySlot;
}

std::vector<Giver> givers_of(const Spot& spot, const Slot& slot) {
    std::vector<Giver> givers;
    const DocumentElement& element = spot.element;
    for (std::size_t index = 0; index < element.attribute_count; ++index) {
        const DocumentAttribute& attribute = element.attributes[index];
        if (has(slot, attribute.name) &&
            find_attribute_rule(spot.context, attribute.name) != nullptr) {
            givers.push_back({&attribute, nullptr});
        }
    }
    std::stable_sort(givers.begin(), givers.end(), [](const Giver& left, const Giver& right) {
        return LESS_C_STRING::compare(left.word(), right.word()) < 0;
    });
    for (const DocumentElement& sub : element.sub_elements()) {
        if (has(slot, sub.tag) && context_in(spot.context, sub.tag) != Context::kUnread) {
            givers.push_back({nullptr, &sub});
        }
    }
    return givers;
}

std::string_view text_in(const Spot& spot, std::string_view word) {
    const std::vector<Giver> givers = givers_of(spot, slot_of(spot.context, word));
    return givers.empty() ? std::string_view() : givers.back().text();
}
