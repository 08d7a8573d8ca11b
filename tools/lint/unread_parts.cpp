#include <algorithm>

#include "tools/lint/rooms.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kUnknownElement = {
    "unknown-element", "{} in {} is not read"};
constexpr LintRow kUnknownAttribute = {
    "unknown-attribute", "the attribute {} of {} is not read"};
constexpr LintRow kUnreadCondition = {
    "unread-condition", "the attribute {} of {} is not read: {} applies always"};
constexpr LintRow kUnreadText = {
    "unread-text", "the text of {} is not read"};
constexpr LintRow kOverriddenText = {
    "overridden", "the text of {} is not read because it has {}"};
constexpr LintRow kOverriddenElement = {
    "overridden", "{} is not read because {} has {}"};
constexpr LintRow kOverriddenAttribute = {
    "overridden", "the attribute {} of {} is not read because it has {}"};
constexpr LintRow kNotFirst = {
    "overridden", "{} is not read because it is not the first in {}"};
constexpr LintRow kAfterCommand = {
    "overridden", "{} is not read after WHEN_CMD"};
// clang-format on

constexpr std::string_view kTextOfItsOwn = "a text of its own";

// Attributes that belong to XML and not to the description.
bool is_of_xml(std::string_view name) {
    return name == "xmlns" || name.substr(0, 6) == "xmlns:" || name.substr(0, 4) == "xsi:" ||
           name.substr(0, 4) == "xml:";
}

void check_attributes(Lint& lint, const Spot& spot) {
    if (rule_of(spot.context).of_attributes == Telling::kAlways) {
        return;
    }
    const DocumentElement& element = spot.element;
    for (std::size_t index = 0; index < element.attribute_count; ++index) {
        const DocumentAttribute& attribute = element.attributes[index];
        if (find_attribute_rule(spot.context, attribute.name) != nullptr ||
            is_of_xml(attribute.name)) {
            continue;
        }
        const Place place = spot.document.place(attribute);
        if (is_condition_word(attribute.name)) {
            lint.post(kUnreadCondition, element, place, attribute.name, element.tag, element.tag);
        } else {
            Finding& finding =
                lint.post(kUnknownAttribute, element, place, attribute.name, element.tag);
            add_likely_word(finding, attribute.name, attributes_in(spot.context));
        }
    }
}

// Texts that a message says are not read are left to it.
void check_text(Lint& lint, const Spot& spot) {
    const DocumentElement& element = spot.element;
    if (rule_of(spot.context).text == Meaning::kNotRead && !is_blank(element.text.text)) {
        Finding& finding =
            lint.post(kUnreadText, element, spot.document.place(element.text), element.tag);
        if (spot.context == Context::kCommands) {
            finding.notes.push_back({"a command stands in STIM or VECTOR", finding.place});
        }
    }
}

void post_unknown(Lint& lint, const Spot& spot, const DocumentElement& sub) {
    Finding& finding =
        lint.post(kUnknownElement, sub, spot.document.place(sub), sub.tag, spot.element.tag);
    add_likely_word(finding, sub.tag, tags_in(spot.context));
}

void check_sub_elements(Lint& lint, const Spot& spot) {
    // Of text and elements side by side in conditional text the library says that it reads neither.
    const bool is_told = spot.context == Context::kSequencePart && !spot.element.text.text.empty();
    if (rule_of(spot.context).of_sub_elements != Telling::kNever || is_told) {
        return;
    }
    for (const DocumentElement& sub : spot.element.sub_elements()) {
        if (context_in(spot.context, sub.tag) == Context::kUnread) {
            post_unknown(lint, spot, sub);
        }
    }
}

void post_overridden_elements(Lint& lint, const Spot& spot) {
    for (const DocumentElement& sub : spot.element.sub_elements()) {
        lint.post(kOverriddenElement, sub, spot.document.place(sub), sub.tag, spot.element.tag,
                  kTextOfItsOwn);
    }
}

bool has_sub_element_with_text(const DocumentElement& element, std::string_view tag) {
    for (const DocumentElement& sub : element.sub_elements()) {
        if (sub.tag == tag && !sub.text.text.empty()) {
            return true;
        }
    }
    return false;
}

void check_message(Lint& lint, const Spot& spot) {
    if (!spot.element.text.text.empty()) {
        post_overridden_elements(lint, spot);
    }
}

void check_value_rule(Lint& lint, const Spot& spot) {
    const DocumentElement& rule = spot.element;
    if (is_blank(rule.text.text)) {
        return;
    }
    if (has_sub_element_with_text(rule, "IF") && has_sub_element_with_text(rule, "THEN")) {
        lint.post(kOverriddenText, rule, spot.document.place(rule.text), rule.tag, "IF and THEN");
        return;
    }
    for (const DocumentElement& sub : rule.sub_elements()) {
        if (context_in(spot.context, sub.tag) != Context::kUnread) {
            lint.post(kOverriddenElement, sub, spot.document.place(sub), sub.tag, rule.tag,
                      kTextOfItsOwn);
        }
    }
}

void check_wizard_condition(Lint& lint, const Spot& spot) {
    const DocumentAttribute* const attribute = spot.element.attribute("CONDITION");
    if (attribute != nullptr && !spot.element.text.text.empty()) {
        lint.post(kOverriddenAttribute, spot.element, spot.document.place(*attribute),
                  attribute->name, spot.element.tag, kTextOfItsOwn);
    }
}

void check_macro(Lint& lint, const Spot& spot) {
    const DocumentElement& macro = spot.element;
    if (macro.first_sub == nullptr) {
        return;
    }
    const DocumentAttribute* const definition = macro.attribute("DEFINITION");
    if (definition != nullptr && macro.first_sub->tag == "DEFINITION") {
        lint.post(kOverriddenAttribute, macro, spot.document.place(*definition), definition->name,
                  macro.tag, "an element DEFINITION");
    }
    for (const DocumentElement* sub = macro.first_sub->next; sub != nullptr; sub = sub->next) {
        if (sub->tag == "DEFINITION") {
            lint.post(kNotFirst, *sub, spot.document.place(*sub), sub->tag, macro.tag);
        } else {
            post_unknown(lint, spot, *sub);
        }
    }
}

// Of all but a hidden parameter the library says it.
void check_hidden_force(Lint& lint, const Spot& spot) {
    if (spot.context != Context::kHiddenForceValue) {
        return;
    }
    bool has_command = spot.element.attribute("WHEN_CMD") != nullptr;
    for (const DocumentElement& sub : spot.element.sub_elements()) {
        has_command = has_command || sub.tag == "WHEN_CMD";
        if (has_command && sub.tag == "ELSE") {
            lint.post(kAfterCommand, sub, spot.document.place(sub), sub.tag);
        }
    }
}

}  // namespace

void find_unread_parts(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        check_attributes(lint, spot);
        check_text(lint, spot);
        check_sub_elements(lint, spot);
        switch (form_of(spot.context)) {
            case Form::kMessage:
                return check_message(lint, spot);
            case Form::kValueRule:
                return check_value_rule(lint, spot);
            case Form::kWizardCondition:
                return check_wizard_condition(lint, spot);
            case Form::kMacro:
                return check_macro(lint, spot);
            case Form::kForce:
                return check_hidden_force(lint, spot);
            case Form::kOther:
            case Form::kRange:
            case Form::kRule:
            case Form::kVector:
            case Form::kSequence:
            case Form::kCondition:
                return;
        }
    });
}
