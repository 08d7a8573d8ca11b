#include "tools/lint/rooms.h"
#include "tools/lint/slots.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kMacroWithoutName = {
    "macro-without-name", "the macro has no NAME: it cannot be called"};
constexpr LintRow kMacroWithoutDefinition = {
    "macro-without-definition", "the macro {} has no definition"};
constexpr LintRow kMessageWithoutText = {
    "message-without-text", "the message has no text and is never shown"};
constexpr LintRow kEmptyCondition = {
    "empty-condition", "the condition {} is empty"};
constexpr LintRow kValueMissing = {
    "value-missing", "{} has no value and is dropped"};
constexpr LintRow kRangeWithoutMax = {
    "range-without-max", "{} has no MAX and is dropped"};
// clang-format on

// Of an element in place of DEFINITION the library says that it does not know it.
bool lacks_definition(const DocumentElement& macro) {
    const DocumentElement* const first = macro.first_sub;
    return first == nullptr ? is_blank(macro.value_of("DEFINITION"))
                            : first->tag == "DEFINITION" && is_blank(first->text.text);
}

void check_macro(Lint& lint, const Spot& spot) {
    const DocumentElement& macro = spot.element;
    const Place place = spot.document.place(macro);
    const std::string_view name = macro.value_of("NAME");
    if (is_blank(name)) {
        Finding& finding = lint.post(kMacroWithoutName, macro, place);
        for (std::size_t index = 0; index < macro.attribute_count; ++index) {
            if (find_attribute_rule(spot.context, macro.attributes[index].name) == nullptr) {
                add_likely_word(finding, macro.attributes[index].name, {"NAME"});
            }
        }
    } else if (lacks_definition(macro)) {
        lint.post(kMacroWithoutDefinition, macro, place, quoted(name));
    }
}

// A message of no known type is refused, and told of.
void check_message(Lint& lint, const Spot& spot) {
    const DocumentElement& message = spot.element;
    if (message.text.text.empty() && is_blank(text_in(spot, "THEN"))) {
        lint.post(kMessageWithoutText, message, spot.document.place(message));
    }
}

void check_force(Lint& lint, const Spot& spot) {
    if (text_in(spot, "V").empty()) {
        lint.post(kValueMissing, spot.element, spot.document.place(spot.element), spot.element.tag);
    }
}

void check_range(Lint& lint, const Spot& spot) {
    if (text_in(spot, "MAX").empty()) {
        lint.post(kRangeWithoutMax, spot.element, spot.document.place(spot.element),
                  spot.element.tag);
    }
}

void post_empty(Lint& lint, const Spot& spot) {
    lint.post(kEmptyCondition, spot.element, spot.document.place(spot.element), spot.element.tag);
}

// An empty RULE or CONDITION is told of.
void check_rule(Lint& lint, const Spot& spot) {
    if (!spot.element.text.text.empty() && is_blank(spot.element.text.text)) {
        post_empty(lint, spot);
    }
}

void check_condition(Lint& lint, const Spot& spot) {
    if (is_blank(spot.element.text.text) && spot.element.first_sub == nullptr) {
        post_empty(lint, spot);
    }
}

void check_wizard_condition(Lint& lint, const Spot& spot) {
    if (is_blank(spot.element.text.text) && is_blank(spot.element.value_of("CONDITION"))) {
        post_empty(lint, spot);
    }
}

void check_condition_attributes(Lint& lint, const Spot& spot) {
    const DocumentElement& element = spot.element;
    for (std::size_t index = 0; index < element.attribute_count; ++index) {
        const DocumentAttribute& attribute = element.attributes[index];
        const AttributeRule* const rule = find_attribute_rule(spot.context, attribute.name);
        if (rule != nullptr && rule->meaning == Meaning::kCondition &&
            is_blank(attribute.value.text)) {
            lint.post(kEmptyCondition, element, spot.document.place(attribute), attribute.name);
        }
    }
}

}  // namespace

void find_incomplete_parts(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        switch (form_of(spot.context)) {
            case Form::kMacro:
                return check_macro(lint, spot);
            case Form::kMessage:
                return check_message(lint, spot);
            case Form::kForce:
                check_force(lint, spot);
                return check_condition_attributes(lint, spot);
            case Form::kRange:
                check_range(lint, spot);
                return check_condition_attributes(lint, spot);
            case Form::kRule:
                return check_rule(lint, spot);
            case Form::kCondition:
            case Form::kValueRule:
                return check_condition(lint, spot);
            case Form::kWizardCondition:
                return check_wizard_condition(lint, spot);
            case Form::kOther:
            case Form::kVector:
            case Form::kSequence:
                return;
        }
    });
}
