#include "kivo/session/internal/search/span_engine.h"

#include <algorithm>
#include <utility>

namespace kivo_session {

namespace {

constexpr std::uint8_t kMayBeForced = 1;
constexpr std::uint8_t kMayBeFree = 2;

bool may_hold(const Span& condition) {
    return condition.may_be_true || condition.is_unknown();
}

bool may_fail(const Span& condition) {
    return condition.may_be_false || condition.is_unknown();
}

bool may_be_state(const Span& state, PortState wanted) {
    const auto number = static_cast<Whole>(wanted);
    return state.may_be_whole && state.least <= number && number <= state.greatest;
}

Span state_span(PortState state) {
    const auto number = static_cast<Whole>(state);
    return Span::whole(number, number);
}

// True or not, and not known whatever the reason.
Span undecided() {
    Span span = Span::truth(true, true);
    span.may_fault = span.may_run_time = true;
    return span;
}

Span negated(Span truth) {
    std::swap(truth.may_be_true, truth.may_be_false);
    return truth;
}

}  // namespace

SpanEngine::SpanEngine(const Engine& engine, const Cone& above)
    : engine_(engine),
      model_(engine.model()),
      description_(*model_.description),
      evaluator_(model_.code, engine.words(), engine.reasons(), *this),
      slots_(std::size_t{2} * model_.object_count(), kNone) {
    for (std::uint32_t i = 0; i < above.nodes.size(); ++i) {
        slots_[above.nodes[i]] = i;
    }
    spans_.resize(above.nodes.size());
    asked_.resize(above.nodes.size());
    numbers_.resize(above.nodes.size());
    force_.resize(above.nodes.size());
    is_free_.resize(above.nodes.size());
    is_constant_open_.resize(above.nodes.size());
}

void SpanEngine::free(std::uint32_t object, Span asked) {
    const std::uint32_t slot = slots_[object];
    asked_[slot] = std::move(asked);
    is_free_[slot] = 1;
}

std::shared_ptr<const Plan> SpanEngine::plan(std::vector<std::uint32_t> leaves,
                                             std::vector<std::uint32_t> faultless,
                                             const std::vector<std::uint32_t>& nodes) const {
    auto plan = std::make_shared<Plan>();
    plan->leaves = std::move(leaves);
    plan->faultless = std::move(faultless);
    std::vector<std::uint8_t> is_known(slots_.size());
    const auto add = [&](std::uint32_t node) {
        if (slots_[node] != kNone && is_known[node] == 0) {
            is_known[node] = 1;
            plan->order.push_back(node);
        }
    };
    std::for_each(nodes.begin(), nodes.end(), add);
    for (const std::uint32_t leaf : plan->leaves) {
        for (const std::uint32_t node : model_.leaf_inputs.of(leaf)) {
            add(node);
        }
    }
    for (const std::uint32_t object : plan->faultless) {
        add(object);
        if (is_port(description_.objects[object].kind)) {
            add(model_.constant_node(object));
        }
    }
    for (std::size_t i = 0; i < plan->order.size(); ++i) {
        for (const std::uint32_t input : model_.inputs.of(plan->order[i])) {
            add(input);
        }
    }
    sort_by_rank(model_, plan->order);
    return plan;
}

Outlook SpanEngine::look(const Plan& plan) {
    for (const std::uint32_t node : plan.order) {
        update(node);
    }
    Outlook outlook;
    for (const std::uint32_t leaf : plan.leaves) {
        const Standing standing = standing_of(leaf);
        if (!standing.may_be_good) {
            return {false, true, {}, {}};
        }
        if (standing.may_be_bad) {
            outlook.may_be_bad = true;
            outlook.open_leaves.push_back(leaf);
        }
    }
    for (const std::uint32_t object : plan.faultless) {
        if (value(object).may_fault || description_.objects[object].default_fault != kNone ||
            (is_port(description_.objects[object].kind) && constant(object).may_fault)) {
            outlook.may_be_bad = true;
            outlook.open_nodes.push_back(object);
        }
    }
    return outlook;
}

Span SpanEngine::value(std::uint32_t object) const {
    return slots_[object] == kNone ? Span::of(engine_.value(object), engine_.reasons())
                                   : spans_[slots_[object]];
}

Span SpanEngine::constant(std::uint32_t port) const {
    const std::uint32_t slot = slots_[model_.constant_node(port)];
    return slot == kNone ? Span::of(engine_.constant(port), engine_.reasons()) : spans_[slot];
}

Span SpanEngine::asked(std::uint32_t object) const {
    return slots_[object] == kNone ? Span::of(engine_.asked(object), engine_.reasons())
                                   : asked_[slots_[object]];
}

Span SpanEngine::parameter(std::uint32_t index) const {
    return index == own_ ? own_value_ : value(index);
}

Span SpanEngine::port_state(std::uint32_t port) const {
    return port == own_ ? own_value_ : value(port);
}

Span SpanEngine::port_constant(std::uint32_t port) const {
    return port == own_ ? own_constant_ : constant(port);
}

Span SpanEngine::macro_value(std::uint32_t macro) const {
    return value(macro);
}

bool SpanEngine::is_expanded(std::uint32_t macro) const {
    return expanded_ != nullptr && expanded_[macro] != 0;
}

const Program& SpanEngine::macro_program(std::uint32_t macro) const {
    return model_.macros[macro];
}

void SpanEngine::update(std::uint32_t node) {
    const std::uint32_t object = node % model_.object_count();
    const ObjectKind kind = description_.objects[object].kind;
    ++evaluations_;
    if (model_.is_cyclic[model_.components.component_of[node]] != 0) {
        Span& span = spans_[slots_[node]];
        span = Span::anything();
        if (is_free_[slots_[node]] == 0) {
            asked_[slots_[node]] = span;
        }
        numbers_[slots_[node]] = span;
        force_[slots_[node]] = kMayBeForced | kMayBeFree;
        return;
    }
    if (node != object) {
        return is_port(kind) ? evaluate_constant(object) : void();
    }
    if (kind == ObjectKind::kMacro) {
        if (!model_.is_value_macro(object)) {
            return;
        }
        const std::uint32_t text = description_.objects[object].default_text;
        const std::uint32_t expansion = model_.expansion[object];
        expanded_ = expansion == kNone ? nullptr : model_.macro_flags[expansion].data();
        spans_[slots_[object]] =
            model_.is_spoiled(text) ? Span::fault() : evaluator_.anything(model_.macros[object]);
        expanded_ = nullptr;
        return;
    }
    is_port(kind) ? evaluate_state(object) : evaluate_parameter(object);
}

void SpanEngine::begin_own(std::uint32_t object) {
    if (is_port(description_.objects[object].kind)) {
        own_constant_ = asked_constant(object, asked(object));
    }
    own_value_ = asked(object);
    own_ = object;
    const std::uint32_t expansion = model_.expansion[object];
    expanded_ = expansion == kNone ? nullptr : model_.macro_flags[expansion].data();
}

void SpanEngine::begin_own_force(std::uint32_t port) {
    Span constant = unforced_constant(port);
    begin_own(port);
    own_value_ = value(port);
    own_constant_ = std::move(constant);
}

void SpanEngine::end_own() {
    own_ = kNone;
    expanded_ = nullptr;
}

Span SpanEngine::condition(std::uint32_t text) {
    if (text == kNone) {
        return Span::truth(true, false);
    }
    ++evaluations_;
    if (model_.is_spoiled(text)) {
        return Span::fault();
    }
    const CompiledText& compiled = model_.texts[text];
    Span decided = evaluator_.condition(compiled.program);
    if (compiled.implication == kNone) {
        return decided;
    }
    const Branches& branches = model_.implications[compiled.implication];
    const Span first = evaluator_.condition(branches.consequence);
    const Span second = branches.alternative.is_empty()
                            ? Span::truth(true, false)
                            : evaluator_.condition(branches.alternative);
    Span result;
    if (decided.may_be_true) {
        result.add(first);
    }
    if (decided.may_be_false) {
        result.add(second);
    }
    if (decided.is_unknown()) {
        result.add(Span::truth(first.may_be_true && second.may_be_true,
                               first.may_be_false && second.may_be_false));
        result.add_unknown(decided);
        result.add_unknown(first);
        result.add_unknown(second);
    }
    return result;
}

Span SpanEngine::typed(std::uint32_t object, std::uint32_t text) {
    ++evaluations_;
    if (model_.is_spoiled(text)) {
        return Span::fault();
    }
    const Program& program = model_.texts[text].program;
    switch (description_.objects[object].kind) {
        case ObjectKind::kString: {
            Span span = evaluator_.value(program);
            if (span.is_number() || span.may_be_true || span.may_be_false) {
                Span texts = Span::any_text();
                texts.add_unknown(span);
                return texts;
            }
            return span;
        }
        case ObjectKind::kHidden:
            return evaluator_.value(program);
        default:
            return evaluator_.whole(program);
    }
}

template <class ValueOf>
SpanEngine::Outcome SpanEngine::walk(std::uint32_t object, ElementKind kind, const Span& base,
                                     ValueOf value_of) {
    const Range range = description_.objects[object].elements;
    Outcome outcome;
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const Element& element = description_.elements[i];
        if (element.kind != kind || element.first == kNone || !engine_.is_in_force(element)) {
            continue;
        }
        const Span holds = condition(element.condition);
        outcome.value.add_unknown(holds);
        if (may_hold(holds)) {
            outcome.value.add(value_of(element.first));
            outcome.may_be_forced = outcome.may_be_forced || holds.may_be_true;
        }
        if (!may_fail(holds)) {
            return outcome;
        }
        if (element.second != kNone) {
            outcome.value.add(value_of(element.second));
            outcome.may_be_forced = true;
            return outcome;
        }
    }
    outcome.may_be_free = true;
    outcome.value.add(base);
    return outcome;
}

Span SpanEngine::evaluated_asked(std::uint32_t object) {
    if (engine_.given(object) != nullptr) {
        return Span::of(engine_.asked(object), engine_.reasons());
    }
    const std::uint32_t text = engine_.asked_text(object);
    if (text == kNone) {
        return Span::of(engine_.asked(object), engine_.reasons());
    }
    asked_[slots_[object]] = Span::fault();
    begin_own(object);
    Span span = typed(object, text);
    end_own();
    return span;
}

void SpanEngine::evaluate_parameter(std::uint32_t object) {
    const std::uint32_t slot = slots_[object];
    if (is_free_[slot] == 0) {
        asked_[slot] = evaluated_asked(object);
    }
    if (object == pinned_) {
        spans_[slot] = asked_[slot];
        force_[slot] = kMayBeFree;
        return;
    }
    begin_own(object);
    Outcome outcome = walk(object, ElementKind::kForce, asked_[slot],
                           [this, object](std::uint32_t text) { return typed(object, text); });
    end_own();
    spans_[slot] = std::move(outcome.value);
    force_[slot] = static_cast<std::uint8_t>((outcome.may_be_forced ? kMayBeForced : 0) |
                                             (outcome.may_be_free ? kMayBeFree : 0));
}

Span SpanEngine::evaluated_state(std::uint32_t text) {
    ++evaluations_;
    return model_.is_spoiled(text) ? Span::fault()
                                   : evaluator_.anything(model_.texts[text].program);
}

void SpanEngine::evaluate_state(std::uint32_t port) {
    const std::uint32_t slot = slots_[port];
    if (is_free_[slot] == 0) {
        asked_[slot] = Span::of(engine_.asked(port), engine_.reasons());
    }
    Outcome outcome;
    if (port == pinned_) {
        outcome.value = asked_[slot];
    } else {
        begin_own(port);
        outcome = walk(port, ElementKind::kState, asked_[slot],
                       [this](std::uint32_t text) { return evaluated_state(text); });
        end_own();
    }
    numbers_[slot] = Span::nothing();
    if (outcome.value.is_text()) {
        // A whole number in place of a state.
        numbers_[slot] = Span::whole(kLeastWhole, kGreatestWhole);
        outcome.value.texts.clear();
        outcome.value.is_any_text = false;
        outcome.value.add(state_span(PortState::kConstant));
    }
    spans_[slot] = std::move(outcome.value);
}

Span SpanEngine::asked_constant(std::uint32_t port, const Span& state) {
    Span result;
    result.add_unknown(state);
    if (state.may_be_whole && (state.least != 3 || state.greatest != 3)) {
        result.may_run_time = true;
    }
    if (!may_be_state(state, PortState::kConstant)) {
        return result;
    }
    const Given* given = engine_.given(port);
    const std::uint32_t slot = slots_[port];
    const bool is_free = slot != kNone && is_free_[slot] != 0;
    if (is_free && is_constant_open_[slot] != 0) {
        result.add(Span::whole(kLeastWhole, kGreatestWhole));
    }
    if (given != nullptr && given->constant) {
        result.add(Span::of(*given->constant, engine_.reasons()));
        if (!is_free) {
            return result;
        }
    }
    const std::uint32_t text = description_.objects[port].default_text;
    result.add(text == kNone ? Span::whole(0, 0) : typed(port, text));
    return result;
}

Span SpanEngine::unforced_constant(std::uint32_t port) {
    const std::uint32_t slot = slots_[port];
    const Span state = value(port);
    Span result = asked_constant(port, state);
    if (slot != kNone) {
        result.add(numbers_[slot]);
    } else {
        result.add(Span::of(engine_.number_in_place(port), engine_.reasons()));
    }
    return result;
}

void SpanEngine::evaluate_constant(std::uint32_t port) {
    const Span state = value(port);
    const bool is_input = description_.objects[port].kind == ObjectKind::kInput;
    Span result;
    result.add_unknown(state);
    const bool may_be_open = may_be_state(state, PortState::kUsed) ||
                             may_be_state(state, PortState::kVariable) ||
                             (!is_input && may_be_state(state, PortState::kUnused));
    result.may_run_time = result.may_run_time || may_be_open;
    if (may_be_state(state, PortState::kConstant) ||
        (is_input && may_be_state(state, PortState::kUnused))) {
        begin_own_force(port);
        const Outcome outcome =
            walk(port, ElementKind::kPortForce, unforced_constant(port),
                 [this, port](std::uint32_t text) { return typed(port, text); });
        end_own();
        result.add(outcome.value);
    }
    spans_[slots_[model_.constant_node(port)]] = std::move(result);
}

Span SpanEngine::judged(std::uint32_t number) {
    const Leaf& leaf = model_.leaves[number];
    ++evaluations_;
    if (model_.has_spoiled_text[number] != 0) {
        return undecided();
    }
    const auto element = [&]() -> const Element& { return description_.elements[leaf.item]; };
    switch (leaf.kind) {
        case LeafKind::kNeedsValue:
            return Span::truth(true, value(leaf.object).may_fault);
        case LeafKind::kNotInList:
            return is_in_list(leaf.object);
        case LeafKind::kOverridden:
            return is_port(description_.objects[leaf.object].kind) ? is_port_granted(leaf.object)
                                                                   : is_granted(leaf.object);
        case LeafKind::kForcesDisagree:
            return do_forces_agree(leaf.object, ElementKind::kForce);
        case LeafKind::kStatesDisagree:
            return do_forces_agree(leaf.object, ElementKind::kState);
        case LeafKind::kPortForcesDisagree:
            return do_forces_agree(leaf.object, ElementKind::kPortForce);
        case LeafKind::kRange:
            return engine_.is_in_force(element())
                       ? implied(condition(element().condition),
                                 is_within(value(leaf.object), element()))
                       : Span::truth(true, false);
        case LeafKind::kValueRule:
            return engine_.is_in_force(element()) ? condition(element().condition)
                                                  : Span::truth(true, false);
        case LeafKind::kConstantRange: {
            if (!engine_.is_in_force(element())) {
                return Span::truth(true, false);
            }
            const Span state = value(leaf.object);
            Span is_constant;
            is_constant.add_unknown(state);
            is_constant.add(Span::truth(may_be_state(state, PortState::kConstant),
                                        state.may_be_whole && state.least < 3));
            return implied(evaluator_.both(is_constant, condition(element().condition)),
                           is_within(constant(leaf.object), element()));
        }
        case LeafKind::kTooWide:
            return is_narrow_enough(leaf.object);
        case LeafKind::kPortWidth:
            return width(leaf.object, description_.objects[leaf.object].width);
        case LeafKind::kPortWidth2d:
            return width(leaf.object, description_.objects[leaf.object].width2d);
        case LeafKind::kRule:
            return condition(description_.rules[leaf.item].condition);
        case LeafKind::kMessage:
            return condition(description_.messages[leaf.item].condition);
        case LeafKind::kVector:
            return condition(description_.vectors[leaf.item].condition);
        case LeafKind::kStimulus:
            return condition(description_.stimuli[leaf.item].condition);
        case LeafKind::kMap:
            return condition(description_.maps[leaf.item].condition);
        case LeafKind::kPiece:
            return condition(description_.pieces[leaf.item].condition);
        case LeafKind::kPortRange:
        case LeafKind::kPortNeedsValue:
        case LeafKind::kForcedButConnected:
            break;
    }
    return undecided();  // no errors: tried value by value
}

Span SpanEngine::is_in_list(std::uint32_t object) {
    const Span effective = value(object);
    const Range items = description_.objects[object].items;
    Span result;
    result.add_unknown(effective);
    bool may_be_in = false;
    bool is_surely_in = false;
    std::vector<WordId> known;  // words that are in the list for certain
    bool has_any_text = false;
    for (std::uint32_t i = items.begin; i < items.end; ++i) {
        const Span item = typed(object, description_.items[i]);
        result.add_unknown(item);
        has_any_text = has_any_text || item.is_any_text;
        if (item.texts.size() == 1 && !item.is_unknown()) {
            known.push_back(item.texts[0]);
        }
        may_be_in =
            may_be_in || std::any_of(item.texts.begin(), item.texts.end(), [&](WordId word) {
                return effective.is_any_text ||
                       std::binary_search(effective.texts.begin(), effective.texts.end(), word);
            });
        if (item.may_be_whole && effective.may_be_whole && item.least <= effective.greatest &&
            effective.least <= item.greatest) {
            may_be_in = true;
            is_surely_in = is_surely_in ||
                           (item.least == item.greatest && !item.is_unknown() &&
                            effective.least == effective.greatest && effective.least == item.least);
        }
    }
    may_be_in = may_be_in || (has_any_text && effective.is_text());
    const bool may_be_out =
        (effective.may_be_whole && !is_surely_in) || effective.is_any_text ||
        effective.may_be_real || effective.may_be_true || effective.may_be_false ||
        std::any_of(effective.texts.begin(), effective.texts.end(), [&](WordId word) {
            return std::find(known.begin(), known.end(), word) == known.end();
        });
    result.add(Span::truth(may_be_in, may_be_out));
    return result;
}

Span SpanEngine::is_granted(std::uint32_t object) {
    const std::uint32_t slot = slots_[object];
    if (slot == kNone) {
        return undecided();
    }
    const bool is_asked = is_free_[slot] != 0 || engine_.given(object) != nullptr;
    if (!is_asked || (force_[slot] & kMayBeForced) == 0) {
        return Span::truth(true, false);
    }
    const Span same = evaluator_.compared(Operator::kEqual, value(object), asked(object));
    const bool may_be_kept =
        (force_[slot] & kMayBeFree) != 0 || value(object).is_unknown() || same.may_be_true;
    return Span::truth(may_be_kept, same.may_be_false || same.is_unknown());
}

Span SpanEngine::is_port_granted(std::uint32_t port) {
    const std::uint32_t slot = slots_[port];
    const bool is_free = slot != kNone && is_free_[slot] != 0;
    if (!is_free && engine_.given(port) == nullptr) {
        return Span::truth(true, false);
    }
    const Span state = value(port);
    const Span wanted = asked(port);
    const bool may_be_same = state.is_unknown() || !state.may_be_whole ||
                             (state.least <= wanted.greatest && wanted.least <= state.greatest);
    const bool is_surely_same = state.may_be_whole && !state.is_unknown() &&
                                state.least == state.greatest && wanted.least == wanted.greatest &&
                                state.least == wanted.least;
    const Given* given = engine_.given(port);
    const bool has_constant = given != nullptr && given->constant;
    return Span::truth(may_be_same, !is_surely_same || has_constant);
}

// Decided only where at most one element can be active.
Span SpanEngine::do_forces_agree(std::uint32_t object, ElementKind kind) {
    const Range range = description_.objects[object].elements;
    std::size_t active = 0;
    kind == ElementKind::kPortForce ? begin_own_force(object) : begin_own(object);
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const Element& element = description_.elements[i];
        if (element.kind != kind || !engine_.is_in_force(element)) {
            continue;
        }
        if (element.condition == kNone) {
            break;
        }
        active += condition(element.condition).may_be_true ? 1 : 0;
        if (element.second != kNone) {
            break;
        }
    }
    end_own();
    return Span::truth(true, active > 1);
}

Span SpanEngine::limit(std::uint32_t text) {
    ++evaluations_;
    return evaluator_.number(model_.texts[text].program);
}

Span SpanEngine::is_within(const Span& value, const Element& element) {
    Span result = Span::truth(true, false);
    if (element.first != kNone) {
        result = evaluator_.compared(Operator::kAtMost, value, limit(element.first));
    }
    if (element.second != kNone) {
        result = evaluator_.both(
            result, evaluator_.compared(Operator::kAtMost, limit(element.second), value));
    }
    return result;
}

Span SpanEngine::implied(Span condition, const Span& demand) const {
    return evaluator_.either(negated(std::move(condition)), demand);
}

Span SpanEngine::is_connected_port(std::uint32_t port) const {
    return evaluator_.as_condition(Span::port(port));
}

Span SpanEngine::is_tied_port(std::uint32_t port) {
    const Span state = value(port);
    const bool is_input = description_.objects[port].kind == ObjectKind::kInput;
    const bool may_be_unused = may_be_state(state, PortState::kUnused);
    Span result;
    result.add_unknown(state);
    result.add(Span::truth(may_be_state(state, PortState::kConstant),
                           may_be_state(state, PortState::kUsed) ||
                               may_be_state(state, PortState::kVariable) ||
                               (may_be_unused && !is_input)));
    if (may_be_unused && is_input) {
        result.add(forces_port(port));
    }
    return result;
}

Span SpanEngine::forces_port(std::uint32_t port) {
    begin_own_force(port);
    const Outcome outcome = walk(port, ElementKind::kPortForce, Span::truth(false, true),
                                 [](std::uint32_t) { return Span::truth(true, false); });
    end_own();
    return outcome.value;
}

Span SpanEngine::is_narrow_enough(std::uint32_t port) {
    const Span tied = constant(port);
    if (!tied.may_be_whole) {
        return Span::truth(true, false);
    }
    const std::uint32_t text = description_.objects[port].width;
    const Span bits =
        text == kNone ? Span::whole(1, 1) : evaluator_.whole(model_.texts[text].program);
    ++evaluations_;
    if (!bits.may_be_whole) {
        return Span::truth(true, false);
    }
    const auto size_of = [](Whole width) {
        return Whole(1) << static_cast<int>(std::clamp<Whole>(width, 1, 126));
    };
    const Whole smallest = size_of(bits.least);
    const Whole largest = size_of(bits.greatest);
    const bool may_be_too_wide = tied.greatest >= smallest || tied.least < -(smallest / 2);
    const bool is_sure =
        !bits.is_unknown() && !tied.is_unknown() && bits.least >= 1 && bits.greatest <= 126;
    const bool may_fit = !is_sure || (tied.least < largest && tied.greatest >= -(largest / 2));
    return Span::truth(may_fit, may_be_too_wide);
}

Span SpanEngine::width(std::uint32_t port, std::uint32_t text) {
    const Span connected = is_connected_port(port);
    const Span tied = is_tied_port(port);
    ++evaluations_;
    return implied(evaluator_.either(connected, tied),
                   evaluator_.is_size(model_.texts[text].program));
}

}  // namespace kivo_session
