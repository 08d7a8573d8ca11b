#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

// What has an ELSE is told of as dead; what is not decided is a matter of taste too.
void judge(SenseRun& run, std::uint32_t text, std::uint32_t map, const std::string& what) {
    if (text == kNone || run.asker.model().is_spoiled(text) ||
        run.asker.model().texts[text].implication != kNone) {
        return;
    }
    Question question;
    want(question.wanted, WantedKind::kFails, text);
    if (run.asker.is_never(question, map)) {
        run.add_text("always-condition", text, what + " is always true");
    }
}

}  // namespace

void judge_always(SenseRun& run) {
    const Description& description = run.asker.description();
    for (std::uint32_t i = 0; i < description.elements.size(); ++i) {
        const Element& element = description.elements[i];
        const bool has_else = element.second != kNone && element.kind <= ElementKind::kPortForce;
        if (!has_else && run.told_elements.count(i) == 0) {
            judge(run, element.condition, element.map,
                  element.kind == ElementKind::kValueRule
                      ? "this rule of " + run.name_of(element.object)
                      : "the condition of the " + run.name_of(element));
        }
    }
    for (const Rule& rule : description.rules) {
        judge(run, rule.condition, kNone, "this rule");
    }
    for (const Message& message : description.messages) {
        if (message.otherwise.empty()) {
            judge(run, message.condition, kNone, "the condition of this message");
        }
    }
}

}  // namespace kivo_session
