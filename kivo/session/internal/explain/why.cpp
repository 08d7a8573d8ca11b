#include "kivo/session/internal/explain/why.h"

#include <algorithm>

#include "kivo/session/internal/engine/leaf_rows.h"
#include "kivo/session/internal/explain/explainer.h"
#include "kivo/session/internal/search/target.h"
#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

namespace {

KIVO_TRUTH truth_of(Value value) {
    return value.is_unknown() ? KIVO_TRUTH::kUnknown
           : value.is_true()  ? KIVO_TRUTH::kYes
                              : KIVO_TRUTH::kNo;
}

class WhyWriter {
public:
    explicit WhyWriter(Engine& engine)
        : engine_(engine),
          model_(engine.model()),
          description_(*model_.description),
          reporter_(engine),
          explainer_(engine) {}

    KIVO_WHY run(const KIVO_SUBJECT& subject) {
        const Target target = target_of(model_, subject);
        why_.subject = subject;
        why_.is_known = target.is_known();
        if (target.leaf != kNone) {
            tell_leaf(target.leaf);
        } else if (target.text != kNone || target.cycle != kNone) {
            tell_fault(target);
        } else if (target.object != kNone) {
            tell_value(target.object);
        }
        why_.operands = explainer_.finish();
        return std::move(why_);
    }

private:
    void tell_leaf(std::uint32_t number);
    void tell_leaf_kind(const Leaf& leaf, std::uint32_t number);
    void tell_fault(const Target& target);
    void tell_value(std::uint32_t object);
    void tell_condition(std::uint32_t text);
    void tell_range(const Element& element, Aspect aspect);
    void tell_list(std::uint32_t object);
    void tell_forces(std::uint32_t object, ElementKind kind);
    bool does_limit_matter(std::uint32_t text, std::uint32_t object, Aspect aspect, bool is_most);

    void add(std::uint32_t object, Aspect aspect) {
        const std::uint32_t operand = explainer_.operand(object, aspect);
        const auto known = std::find(why_.decided_by.begin(), why_.decided_by.end(), operand);
        if (known == why_.decided_by.end()) {
            why_.decided_by.push_back(operand);
        }
    }
    KIVO_BRANCH explain(std::uint32_t text) {
        return explainer_.explain(text, why_.expression, why_.decided_by);
    }

    Engine& engine_;
    const Model& model_;
    const Description& description_;
    Reporter reporter_;
    Explainer explainer_;
    KIVO_WHY why_;
};

void WhyWriter::tell_leaf(std::uint32_t number) {
    const Leaf& leaf = model_.leaves[number];
    const Value result = engine_.result(number);
    const bool has_row = leaf.kind <= LeafKind::kMessage;
    why_.holds = truth_of(result);
    why_.mark = reporter_.mark_of(number);
    if (has_row) {
        KIVO_VERDICT verdict = reporter_.verdict(number, result.is_unknown());
        why_.id = std::move(verdict.id);
        why_.text = is_told(engine_, number) ? std::move(verdict.text) : std::string();
    }
    if (leaf.kind == LeafKind::kMessage) {
        // The rule that a message tells of is met while it is not shown.
        why_.holds = result.is_unknown()        ? KIVO_TRUTH::kUnknown
                     : is_told(engine_, number) ? KIVO_TRUTH::kNo
                                                : KIVO_TRUTH::kYes;
    }
    tell_leaf_kind(leaf, number);
}

void WhyWriter::tell_leaf_kind(const Leaf& leaf, std::uint32_t number) {
    switch (leaf.kind) {
        case LeafKind::kNeedsValue:
            return add(leaf.object, Aspect::kValue);
        case LeafKind::kNotInList:
            return tell_list(leaf.object);
        case LeafKind::kOverridden:
            add(leaf.object, Aspect::kValue);
            if (engine_.is_tied(leaf.object)) {
                add(leaf.object, Aspect::kConstant);
            }
            return add(leaf.object, Aspect::kAsked);
        case LeafKind::kForcesDisagree:
            return tell_forces(leaf.object, ElementKind::kForce);
        case LeafKind::kStatesDisagree:
            return tell_forces(leaf.object, ElementKind::kState);
        case LeafKind::kPortForcesDisagree:
            return tell_forces(leaf.object, ElementKind::kPortForce);
        case LeafKind::kRange:
            return tell_range(description_.elements[leaf.item], Aspect::kValue);
        case LeafKind::kConstantRange:
        case LeafKind::kPortRange:
            return tell_range(description_.elements[leaf.item], Aspect::kConstant);
        case LeafKind::kValueRule:
            return tell_condition(description_.elements[leaf.item].condition);
        case LeafKind::kTooWide:
            add(leaf.object, Aspect::kConstant);
            return void(explain(description_.objects[leaf.object].width));
        case LeafKind::kPortWidth:
        case LeafKind::kPortWidth2d: {
            const Object& port = description_.objects[leaf.object];
            const std::uint32_t text =
                leaf.kind == LeafKind::kPortWidth ? port.width : port.width2d;
            why_.rule = reporter_.rule_text(text) + " is at least 1";
            add(leaf.object, Aspect::kValue);
            return void(explain(text));
        }
        case LeafKind::kPortNeedsValue:
            return add(leaf.object, Aspect::kValue);
        case LeafKind::kForcedButConnected:
            add(leaf.object, Aspect::kValue);
            if (const std::uint32_t culprit = engine_.culprit(number); culprit != kNone) {
                tell_condition(description_.elements[culprit].condition);
            }
            return;
        case LeafKind::kRule:
            return tell_condition(description_.rules[leaf.item].condition);
        case LeafKind::kMessage:
            return tell_condition(description_.messages[leaf.item].condition);
        case LeafKind::kVector:
            return tell_condition(description_.vectors[leaf.item].condition);
        case LeafKind::kStimulus:
            return tell_condition(description_.stimuli[leaf.item].condition);
        case LeafKind::kMap:
            return tell_condition(description_.maps[leaf.item].condition);
        case LeafKind::kPiece:
            return tell_condition(description_.pieces[leaf.item].condition);
    }
}

void WhyWriter::tell_condition(std::uint32_t text) {
    if (text != kNone) {
        why_.rule = reporter_.rule_text(text);
        why_.branch = explain(text);
    }
}

// Whether a limit is broken or cannot be judged; both matter to what holds.
bool WhyWriter::does_limit_matter(std::uint32_t text, std::uint32_t object, Aspect aspect,
                                  bool is_most) {
    const Value value =
        aspect == Aspect::kConstant ? engine_.constant(object) : engine_.value(object);
    const Value limit = engine_.evaluate_text(text);
    if (!value.is_whole() || !limit.is_whole() || why_.holds != KIVO_TRUTH::kNo) {
        return true;
    }
    return is_most ? value.as_whole() > limit.as_whole() : value.as_whole() < limit.as_whole();
}

void WhyWriter::tell_range(const Element& element, Aspect aspect) {
    why_.rule = reporter_.limits_text(element);
    add(element.object, aspect);
    const bool is_kept_apart = element.first != kNone && element.second != kNone;
    const bool most =
        element.first != kNone && does_limit_matter(element.first, element.object, aspect, true);
    const bool least =
        element.second != kNone && does_limit_matter(element.second, element.object, aspect, false);
    // Neither is broken: the range itself is empty.
    const bool is_empty = is_kept_apart && !most && !least;
    if (most || is_empty) {
        explain(element.first);
    }
    if (least || is_empty) {
        explain(element.second);
    }
    if (element.condition != kNone) {
        why_.rule += " if " + reporter_.rule_text(element.condition);
        explain(element.condition);
    }
}

void WhyWriter::tell_list(std::uint32_t object) {
    const Range items = description_.objects[object].items;
    add(object, Aspect::kValue);
    for (std::uint32_t i = items.begin; i < items.end; ++i) {
        const std::uint32_t text = description_.items[i];
        why_.rule +=
            (i == items.begin ? "one of " : ", ") + std::string(description_.texts[text].text);
    }
}

void WhyWriter::tell_forces(std::uint32_t object, ElementKind kind) {
    const Range range = description_.objects[object].elements;
    add(object, kind == ElementKind::kPortForce ? Aspect::kConstant : Aspect::kValue);
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const Element& element = description_.elements[i];
        const bool is_active = element.kind == kind && engine_.is_in_force(element) &&
                               element.condition != kNone &&
                               engine_.evaluate_text(element.condition).is_true();
        if (is_active) {
            why_.rule += (why_.rule.empty() ? "" : "; ") + reporter_.rule_text(element.condition);
            explain(element.condition);
        }
    }
}

void WhyWriter::tell_fault(const Target& target) {
    const std::vector<KIVO_VERDICT> verdicts = reporter_.verdicts();
    const auto found = std::find_if(
        verdicts.begin(), verdicts.end(),
        [&](const KIVO_VERDICT& verdict) { return verdict.subject.number == target.number; });
    why_.id = "fault";
    why_.holds = found == verdicts.end() ? KIVO_TRUTH::kYes : KIVO_TRUTH::kUnknown;
    if (found != verdicts.end()) {
        why_.text = found->text;
        why_.mark = found->mark;
    }
    if (target.text != kNone) {
        why_.rule = description_.texts[target.text].text;
        explain(target.text);
    } else {
        add(target.cycle, Aspect::kValue);
    }
}

void WhyWriter::tell_value(std::uint32_t object) {
    const Object& each = description_.objects[object];
    why_.id = "value";
    why_.mark = each.mark;
    why_.holds = engine_.value(object).is_unknown() ? KIVO_TRUTH::kUnknown : KIVO_TRUTH::kYes;
    why_.text = std::string(each.name) + " is " + reporter_.effective_text(object);
    add(object, Aspect::kValue);
    if (is_port(each.kind) && engine_.is_tied(object)) {
        add(object, Aspect::kConstant);
    }
}

}  // namespace

KIVO_WHY why_of(Engine& engine, const KIVO_SUBJECT& subject) {
    engine.collect_garbage();
    return WhyWriter(engine).run(subject);
}

}  // namespace kivo_session
