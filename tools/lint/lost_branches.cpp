#include "tools/lint/rooms.h"
#include "tools/lint/slots.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kThenWithoutIf = {
    "then-without-if", "THEN has no IF before it: it applies always"};
constexpr LintRow kDroppedThen = {
    "then-without-if", "THEN has no IF beside it and is dropped"};
constexpr LintRow kMessageThenWithoutIf = {
    "then-without-if", "THEN has no IF beside it: it is always shown"};
constexpr LintRow kElseWithoutThen = {
    "else-without-then", "ELSE has no THEN before it and never applies"};
constexpr LintRow kElseWithoutIf = {
    "else-without-if", "ELSE has no condition beside it and never applies"};
constexpr LintRow kShownElseWithoutIf = {
    "else-without-if", "ELSE has no IF before it and is never shown"};
constexpr LintRow kIfWithoutThen = {
    "if-without-then", "IF has no THEN after it and is dropped"};
// clang-format on

bool is_stimulus(std::string_view tag) {
    return tag == "STIM" || tag == "VECTOR";
}

// The IF of a vector or of conditional text that what comes next belongs to, while its
// sub-elements are passed in order.
class Branches {
public:
    Branches(Lint& lint, const Document& document) : lint_(lint), document_(document) {}

    bool has_if() const { return if_ != nullptr; }
    bool has_then() const { return has_then_; }

    void begin(const DocumentElement& condition) {
        end(condition);
        if_ = &condition;
        ended_by_ = nullptr;
    }

    // Nothing after the element belongs to the IF any more.
    void end(const DocumentElement& by) {
        report_lonely_if(&by);
        if (if_ != nullptr) {
            ended_by_ = &by;
        }
        if_ = nullptr;
        has_then_ = false;
    }

    void finish() { report_lonely_if(nullptr); }

    void take_then(const DocumentElement& part) {
        if (if_ == nullptr) {
            post(kThenWithoutIf, part);
        }
        has_then_ = true;
    }

    void take_alternative() { has_alternative_of_ = if_; }

    void post(const LintRow& row, const DocumentElement& part) {
        Finding& finding = lint_.post(row, part, document_.place(part));
        if (if_ == nullptr && ended_by_ != nullptr) {
            finding.notes.push_back({"the IF before it ends here", document_.place(*ended_by_)});
        }
    }

private:
    // One that lost its THEN to another element is told there.
    void report_lonely_if(const DocumentElement* by) {
        if (if_ == nullptr || has_then_ || has_alternative_of_ == if_) {
            return;
        }
        const bool is_told_at_then = by != nullptr && by->tag != "IF" && has_later_then(*by);
        if (!is_told_at_then) {
            lint_.post(kIfWithoutThen, *if_, document_.place(*if_));
        }
    }

    // Whether a THEN comes before the next IF.
    static bool has_later_then(const DocumentElement& from) {
        for (const DocumentElement* at = from.next; at != nullptr && at->tag != "IF";
             at = at->next) {
            if (at->tag == "THEN") {
                return true;
            }
        }
        return false;
    }

    Lint& lint_;
    const Document& document_;
    const DocumentElement* if_ = nullptr;
    const DocumentElement* ended_by_ = nullptr;
    const DocumentElement* has_alternative_of_ = nullptr;
    bool has_then_ = false;
};

void check_vector(Lint& lint, const Spot& spot) {
    Branches branches(lint, spot.document);
    for (const DocumentElement& sub : spot.element.sub_elements()) {
        if (sub.tag == "IF") {
            branches.begin(sub);
        } else if (is_stimulus(sub.tag)) {
            branches.end(sub);
        } else if (sub.tag == "THEN") {
            branches.take_then(sub);
        } else if (sub.tag == "ELSE") {
            if (!branches.has_then()) {
                branches.post(kElseWithoutThen, sub);
                branches.take_alternative();
            }
            branches.end(sub);
        }
    }
    branches.finish();
}

void check_sequence(Lint& lint, const Spot& spot) {
    Branches branches(lint, spot.document);
    for (const DocumentElement& sub : spot.element.sub_elements()) {
        const bool has_parts = sub.first_sub != nullptr;
        if (sub.tag == "IF") {
            branches.begin(sub);
        } else if (sub.tag == "T" || sub.tag == "TEXT") {
            branches.end(sub);
        } else if (sub.text.text.empty() && !has_parts) {
            continue;
        } else if (sub.tag == "THEN") {
            branches.take_then(sub);
        } else if (sub.tag == "ELSE") {
            if (!branches.has_if()) {
                branches.post(kShownElseWithoutIf, sub);
            }
            branches.take_alternative();
            if (!has_parts) {
                branches.end(sub);
            }
        }
    }
    branches.finish();
}

const DocumentElement* find_sub_element(const DocumentElement& element, std::string_view tag) {
    for (const DocumentElement& sub : element.sub_elements()) {
        if (sub.tag == tag) {
            return &sub;
        }
    }
    return nullptr;
}

void check_value_rule(Lint& lint, const Spot& spot) {
    // Else they are overridden by the text.
    if (!is_blank(spot.element.text.text)) {
        return;
    }
    const auto post = [&](const LintRow& row, std::string_view tag) {
        const DocumentElement& part = *find_sub_element(spot.element, tag);
        lint.post(row, part, spot.document.place(part));
    };
    const bool has_if = !text_in(spot, "IF").empty();
    const bool has_then = !text_in(spot, "THEN").empty();
    const bool has_else = !text_in(spot, "ELSE").empty();
    if (has_if && !has_then) {
        post(kIfWithoutThen, "IF");
    } else if (has_then && !has_if) {
        post(kDroppedThen, "THEN");
    } else if (has_else && !has_if) {
        post(kElseWithoutIf, "ELSE");
    }
}

void check_message(Lint& lint, const Spot& spot) {
    if (!spot.element.text.text.empty() || !givers_of(spot, slot_of(spot.context, "IF")).empty()) {
        return;
    }
    if (const DocumentElement* const part = find_sub_element(spot.element, "THEN")) {
        lint.post(kMessageThenWithoutIf, *part, spot.document.place(*part));
    }
    if (const DocumentElement* const part = find_sub_element(spot.element, "ELSE")) {
        lint.post(kElseWithoutIf, *part, spot.document.place(*part));
    }
}

void check_force(Lint& lint, const Spot& spot) {
    const std::vector<Giver> alternatives = givers_of(spot, slot_of(spot.context, "ELSE"));
    if (!alternatives.empty() && givers_of(spot, slot_of(spot.context, "IF")).empty()) {
        lint.post(kElseWithoutIf, spot.element, alternatives.back().place(spot.document));
    }
}

}  // namespace

void find_lost_branches(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        switch (form_of(spot.context)) {
            case Form::kVector:
                return check_vector(lint, spot);
            case Form::kSequence:
                return check_sequence(lint, spot);
            case Form::kValueRule:
                return check_value_rule(lint, spot);
            case Form::kMessage:
                return check_message(lint, spot);
            case Form::kForce:
                return check_force(lint, spot);
            case Form::kOther:
            case Form::kMacro:
            case Form::kRange:
            case Form::kRule:
            case Form::kWizardCondition:
            case Form::kCondition:
                return;
        }
    });
}
