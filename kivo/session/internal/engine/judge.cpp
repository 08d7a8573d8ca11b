#include "kivo/session/internal/engine/judge.h"

#include <optional>

namespace kivo_session {

Value Judge::run(std::uint32_t number) {
    const Leaf& leaf = model_.leaves[number];
    culprit_ = kNone;
    needs_texts_ = false;
    Value result = Value::truth(true);
    switch (leaf.kind) {
        case LeafKind::kNeedsValue:
            result = needs_value(leaf.object);
            break;
        case LeafKind::kNotInList:
            result = is_in_list(leaf.object);
            break;
        case LeafKind::kOverridden:
            result = is_port(description_.objects[leaf.object].kind) ? is_port_granted(leaf.object)
                                                                     : is_granted(leaf.object);
            break;
        case LeafKind::kForcesDisagree:
            result = do_forces_agree(leaf.object, ElementKind::kForce);
            break;
        case LeafKind::kStatesDisagree:
            result = do_forces_agree(leaf.object, ElementKind::kState);
            break;
        case LeafKind::kPortForcesDisagree:
            result = do_forces_agree(leaf.object, ElementKind::kPortForce);
            break;
        case LeafKind::kRange:
            result = range(description_.elements[leaf.item]);
            break;
        case LeafKind::kValueRule:
            result = value_rule(description_.elements[leaf.item]);
            break;
        case LeafKind::kConstantRange:
            result = constant_range(description_.elements[leaf.item]);
            break;
        case LeafKind::kPortRange:
            result = port_range(description_.elements[leaf.item]);
            break;
        case LeafKind::kTooWide:
            result = is_narrow_enough(leaf.object);
            break;
        case LeafKind::kPortWidth:
            result = width(leaf.object, description_.objects[leaf.object].width);
            break;
        case LeafKind::kPortWidth2d:
            result = width(leaf.object, description_.objects[leaf.object].width2d);
            break;
        case LeafKind::kPortNeedsValue:
            result = has_port_value(leaf.object);
            break;
        case LeafKind::kForcedButConnected:
            result = is_force_open(leaf.object);
            break;
        case LeafKind::kRule:
            needs_texts_ = true;
            result = condition(description_.rules[leaf.item].condition);
            break;
        case LeafKind::kMessage:
            result = condition(description_.messages[leaf.item].condition);
            break;
        case LeafKind::kVector:
            result = condition(description_.vectors[leaf.item].condition);
            break;
        case LeafKind::kStimulus:
            result = condition(description_.stimuli[leaf.item].condition);
            break;
        case LeafKind::kMap:
            result = condition(description_.maps[leaf.item].condition);
            break;
        case LeafKind::kPiece:
            result = condition(description_.pieces[leaf.item].condition);
            break;
    }
    engine_.culprits_[number] = culprit_;
    return result;
}

Value Judge::condition(std::uint32_t text) {
    return text == kNone ? Value::truth(true) : engine_.condition(text);
}

Value Judge::both(Value left, Value right) {
    if (left.is_false() || right.is_false()) {
        return Value::truth(false);
    }
    if (left.is_unknown() && right.is_unknown()) {
        return Value::unknown(engine_.reasons_.united(left.reasons(), right.reasons()));
    }
    return left.is_unknown() ? left : right;
}

Value Judge::implied(Value condition, Value demand) {
    if (condition.is_false() || demand.is_true()) {
        return Value::truth(true);
    }
    if (condition.is_true()) {
        return demand;
    }
    return demand.is_unknown()
               ? Value::unknown(engine_.reasons_.united(condition.reasons(), demand.reasons()))
               : condition;
}

// Missing is what the parameter itself is not given; other reasons are told where they arise.
Value Judge::needs_value(std::uint32_t object) {
    const Value value = engine_.value(object);
    if (value.is_unknown()) {
        for (const Reason reason : engine_.reasons().reasons(value.reasons())) {
            if (reason == Reason::unset(object)) {
                return Value::truth(false);
            }
        }
    }
    return Value::truth(true);
}

Value Judge::is_in_list(std::uint32_t object) {
    needs_texts_ = true;
    const Value value = engine_.value(object);
    if (value.is_unknown()) {
        return value;
    }
    std::optional<ReasonsId> reasons;
    const Range items = description_.objects[object].items;
    for (std::uint32_t i = items.begin; i < items.end; ++i) {
        const Value item = engine_.typed(object, description_.items[i]);
        if (item == value) {
            return Value::truth(true);
        }
        if (item.is_unknown()) {
            reasons = reasons ? engine_.reasons_.united(*reasons, item.reasons()) : item.reasons();
        }
    }
    return reasons ? Value::unknown(*reasons) : Value::truth(false);
}

Value Judge::is_granted(std::uint32_t object) {
    const Given* given = engine_.given(object);
    const Value value = engine_.value(object);
    const bool is_forced = engine_.source(object) == Source::kForced;
    return Value::truth(given == nullptr || !is_forced || value.is_unknown() ||
                        value == given->value);
}

Value Judge::is_port_granted(std::uint32_t port) {
    const Given* given = engine_.given(port);
    const Value state = engine_.value(port);
    if (given == nullptr || state.is_unknown()) {
        return Value::truth(true);
    }
    const Value constant = engine_.constant(port);
    const bool is_other_constant =
        given->constant && !constant.is_unknown() && constant != *given->constant;
    return Value::truth(state == given->value && !is_other_constant);
}

// Elements with a condition that are active at once must give one value. What stands after one
// with ELSE or without condition is never reached.
Value Judge::do_forces_agree(std::uint32_t object, ElementKind kind) {
    const Range range = description_.objects[object].elements;
    std::optional<Value> first;
    bool do_agree = true;
    kind == ElementKind::kPortForce ? engine_.begin_own_force(object) : engine_.begin_own(object);
    const Engine::EndOwn end{engine_};
    for (std::uint32_t i = range.begin; i < range.end && do_agree; ++i) {
        const Element& element = description_.elements[i];
        if (element.kind != kind || !is_in_force(element)) {
            continue;
        }
        if (element.condition == kNone) {
            break;
        }
        if (engine_.condition(element.condition).is_true() && element.first != kNone) {
            const CompiledText& compiled = model_.texts[element.first];
            const Value value =
                kind == ElementKind::kState
                    ? (compiled.spoiled != kNone
                           ? engine_.spoiled_value(element.first)
                           : engine_.evaluator_.anything(compiled.program, engine_.scene_))
                    : engine_.typed(object, element.first);
            if (!value.is_unknown() && first && value != *first) {
                do_agree = false;
                culprit_ = i;
            }
            first = first || value.is_unknown() ? first : value;
        }
        if (element.second != kNone) {
            break;
        }
    }
    return Value::truth(do_agree);
}

// Whether one value is at most another; what is wrong is told of "text".
Value Judge::ordered(Value least, Value greatest, std::uint32_t text) {
    if (least.is_unknown() || greatest.is_unknown()) {
        return least.is_unknown() && greatest.is_unknown()
                   ? Value::unknown(engine_.reasons_.united(least.reasons(), greatest.reasons()))
               : least.is_unknown() ? least
                                    : greatest;
    }
    return engine_.evaluator_.at_most(least, greatest, model_.texts[text].program, engine_.scene_);
}

Value Judge::is_within(Value value, const Element& element) {
    Value result = Value::truth(true);
    if (element.first != kNone) {
        result = ordered(value, engine_.evaluate_role(element.first), element.first);
    }
    if (element.second != kNone) {
        result =
            both(result, ordered(engine_.evaluate_role(element.second), value, element.second));
    }
    return result;
}

// Whether the limits of an element are kept while "holds" is true.
Value Judge::demand(Value holds, Value value, const Element& element) {
    needs_texts_ = !holds.is_false();
    return needs_texts_ ? implied(holds, is_within(value, element)) : Value::truth(true);
}

Value Judge::range(const Element& element) {
    return is_in_force(element)
               ? demand(condition(element.condition), engine_.value(element.object), element)
               : Value::truth(true);
}

Value Judge::value_rule(const Element& element) {
    needs_texts_ = is_in_force(element);
    return needs_texts_ ? condition(element.condition) : Value::truth(true);
}

Value Judge::is_connected_port(std::uint32_t port) {
    const Value state = engine_.value(port);
    return state.is_unknown() ? state
                              : Value::truth(is_connected(static_cast<PortState>(state.low)));
}

Value Judge::is_tied_port(std::uint32_t port) {
    const Value state = engine_.value(port);
    if (state.is_unknown()) {
        return state;
    }
    const auto current = static_cast<PortState>(state.low);
    return current == PortState::kConstant  ? Value::truth(true)
           : engine_.is_open(port, current) ? Value::truth(false)
                                            : engine_.forces_port(port);
}

Value Judge::constant_range(const Element& element) {
    if (!is_in_force(element)) {
        return Value::truth(true);
    }
    const Value state = engine_.value(element.object);
    const Value is_constant =
        state.is_unknown()
            ? state
            : Value::truth(state.low == static_cast<std::int64_t>(PortState::kConstant));
    return demand(both(is_constant, condition(element.condition)), engine_.constant(element.object),
                  element);
}

// A constant must lie inside, and a port that is connected must have something to carry.
Value Judge::port_range(const Element& element) {
    if (!is_in_force(element)) {
        return Value::truth(true);
    }
    const Value holds = condition(element.condition);
    if (holds.is_false()) {
        return Value::truth(true);
    }
    const Value connected = is_connected_port(element.object);
    const Value tied = is_tied_port(element.object);
    needs_texts_ = !connected.is_false() || !tied.is_false();
    Value result = Value::truth(true);
    if (!connected.is_false() && element.first != kNone && element.second != kNone) {
        result = implied(both(holds, connected),
                         ordered(engine_.evaluate_role(element.second),
                                 engine_.evaluate_role(element.first), element.second));
    }
    if (!tied.is_false()) {
        result = both(result, implied(both(holds, tied),
                                      is_within(engine_.constant(element.object), element)));
    }
    return result;
}

Value Judge::is_narrow_enough(std::uint32_t port) {
    const Value tied = engine_.constant(port);
    const Value bits = engine_.width(port);
    // What is not known is told of the constant and of the width themselves.
    if (tied.is_unknown() || bits.is_unknown() || bits.as_whole() < 1 || bits.as_whole() > 126) {
        return Value::truth(true);
    }
    const Whole value = tied.as_whole();
    const Whole size = Whole(1) << static_cast<int>(bits.as_whole());
    return Value::truth(value < 0 ? value >= -(size / 2) : value < size);
}

Value Judge::width(std::uint32_t port, std::uint32_t text) {
    const Value connected = is_connected_port(port);
    const Value tied = is_tied_port(port);
    needs_texts_ = !connected.is_false() || !tied.is_false();
    if (!needs_texts_) {
        return Value::truth(true);
    }
    Value bits = engine_.evaluate_role(text);
    if (!bits.is_unknown()) {
        bits = Value::truth(bits.is_whole() && bits.as_whole() >= 1);
    }
    if (connected.is_true() || tied.is_true()) {
        return bits;
    }
    return implied(connected.is_unknown() ? connected : tied, bits);
}

Value Judge::has_port_value(std::uint32_t port) {
    const Value state = engine_.value(port);
    if (state.is_unknown() || is_connected(static_cast<PortState>(state.low)) ||
        description_.objects[port].default_text != kNone) {
        return Value::truth(true);
    }
    const Given* given = engine_.given(port);
    const bool has_constant =
        state.low == static_cast<std::int64_t>(PortState::kConstant) &&
        ((given != nullptr && given->constant) || !engine_.numbers_[port].is_unknown());
    if (has_constant) {
        return Value::truth(true);
    }
    return Value::truth(!engine_.forces_port(port).is_false());
}

Value Judge::is_force_open(std::uint32_t port) {
    const Value state = engine_.value(port);
    if (state.is_unknown() || !is_connected(static_cast<PortState>(state.low))) {
        return Value::truth(true);
    }
    const Engine::Outcome outcome = engine_.force_of(port, engine_.untied(port));
    culprit_ = outcome.element;
    return Value::truth(!outcome.is_forced);
}

}  // namespace kivo_session
