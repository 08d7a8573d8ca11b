#include <string>

#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

bool is_force(const Element& element) {
    return element.kind == ElementKind::kForce || element.kind == ElementKind::kState ||
           element.kind == ElementKind::kPortForce;
}

class Elements {
public:
    explicit Elements(SenseRun& run) : run_(run), model_(run.asker.model()) {}

    void run() {
        for (const Object& object : run_.asker.description().objects) {
            pass_object(object);
        }
    }

private:
    const Element& element(std::uint32_t number) const {
        return run_.asker.description().elements[number];
    }

    void pass_object(const Object& object) {
        for (std::uint32_t i = object.elements.begin; i < object.elements.end; ++i) {
            if (const std::uint32_t earlier = blocker_of(object, i); earlier != kNone) {
                add_blocked(i, earlier);
            } else if (element(i).condition != kNone && !model_.is_spoiled(element(i).condition)) {
                pass(i);
            }
        }
    }

    // An earlier element that always decides; kNone without one. Elements of a kind stand in the
    // order in which they are asked, those of a map last.
    std::uint32_t blocker_of(const Object& object, std::uint32_t number) {
        const Element& later = element(number);
        if (!is_force(later) || later.first == kNone) {
            return kNone;
        }
        if (number == object.elements.begin) {
            for (Blocker& each : blockers_) {
                each = {};
            }
        }
        Blocker& known = blockers_[static_cast<std::size_t>(later.kind)];
        const bool is_blocked = known.element != kNone && (element(known.element).map == kNone ||
                                                           element(known.element).map == later.map);
        if (is_blocked) {
            return known.element;
        }
        if (later.condition == kNone || later.second != kNone) {
            known.element = number;
        }
        return kNone;
    }

    void add_blocked(std::uint32_t number, std::uint32_t earlier) {
        KIVO_SENSE_FINDING& finding = run_.add_element(
            "dead-rule", element(number),
            "the " + run_.name_of(element(number)) + " never counts: one before it always decides");
        finding.notes.push_back({"this one always decides", element(earlier).mark});
        run_.told_elements.insert(number);
    }

    Finding ask(WantedKind kind, const Element& each, bool is_legal) {
        Question question;
        want(question.wanted, kind, each.condition);
        question.is_legal = is_legal;
        return run_.asker.ask(question, each.map);
    }

    void pass(std::uint32_t number) {
        const Element& each = element(number);
        const CompiledText& compiled = model_.texts[each.condition];
        const bool is_implication = compiled.implication != kNone;
        if (each.kind == ElementKind::kValueRule && !is_implication) {
            return;  // a rule, not a condition of one
        }
        const Finding holds = ask(WantedKind::kHolds, each, false);
        if (holds == Finding::kNo) {
            run_.told_elements.insert(number);
            run_.add_text("dead-rule", each.condition,
                          "the condition of the " + run_.name_of(each) + " is never true");
            return;
        }
        const bool has_else =
            is_implication ? !model_.implications[compiled.implication].alternative.is_empty()
                           : is_force(each) && each.second != kNone;
        if (has_else && ask(WantedKind::kFails, each, false) == Finding::kNo) {
            run_.told_elements.insert(number);
            run_.add_text("dead-rule", each.condition,
                          "the condition of the " + run_.name_of(each) +
                              " is always true, so its ELSE never counts");
            return;
        }
        const bool is_judged =
            is_force(each) && holds == Finding::kYes && run_.told_elements.count(number) == 0;
        if (is_judged && ask(WantedKind::kHolds, each, true) == Finding::kNo) {
            run_.told_elements.insert(number);
            run_.add_text("dead-in-legal", each.condition,
                          "the condition of the " + run_.name_of(each) +
                              " is true only in configurations that are not legal");
        }
    }

    struct Blocker {
        std::uint32_t element = kNone;
    };

    SenseRun& run_;
    const Model& model_;
    Blocker blockers_[3];  // by kind: kForce, kState, kPortForce
};

}  // namespace

void judge_elements(SenseRun& run) {
    Elements(run).run();
}

void judge_rules(SenseRun& run) {
    const Model& model = run.asker.model();
    const Description& description = run.asker.description();
    for (std::uint32_t number = 0; number < model.leaves.size(); ++number) {
        const Leaf& leaf = model.leaves[number];
        const bool is_rule = leaf.kind == LeafKind::kRule;
        if (!is_rule && leaf.kind != LeafKind::kValueRule) {
            continue;
        }
        const bool is_required = is_rule ? description.rules[leaf.item].is_required
                                         : description.elements[leaf.item].is_required;
        const std::uint32_t text = is_rule ? description.rules[leaf.item].condition
                                           : description.elements[leaf.item].condition;
        if (!is_required || text == kNone) {
            continue;
        }
        Question question;
        want(question.wanted, WantedKind::kGood, number);
        const std::uint32_t map = is_rule ? kNone : description.elements[leaf.item].map;
        if (run.asker.ask(question, map) == Finding::kNo) {
            run.told_leaves.insert(number);
            run.add_text("impossible-rule", text,
                         is_rule
                             ? "no configuration meets this rule"
                             : "no configuration meets this rule of " + run.name_of(leaf.object));
        }
    }
}

}  // namespace kivo_session
