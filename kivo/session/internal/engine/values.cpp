#include <algorithm>
#include <utility>

#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

namespace {

// Replaces a value; true when it is another one.
bool replace(Value& place, Value value) {
    if (place == value) {
        return false;
    }
    place = value;
    return true;
}

}  // namespace

void Engine::begin_own(std::uint32_t object) {
    const bool is_port_object = is_port(model_->description->objects[object].kind);
    if (is_port_object) {
        scene_.own_constant = asked_constant(object, asked_[object]);
    }
    (is_port_object ? scene_.own_port : scene_.own_parameter) = object;
    scene_.own_value = asked_[object];
    expand_macros(object);
}

// While a cycle is worked out the values of its macros are those of the last round.
void Engine::expand_macros(std::uint32_t object) {
    const std::uint32_t expansion = model_->expansion[object];
    scene_.expanded_macros = expansion == kNone ? nullptr : model_->macro_flags[expansion].data();
}

// There the port's state is the one that takes effect; only its constant is the asked-for one.
void Engine::begin_own_force(std::uint32_t port) {
    const Value constant = unforced_constant(port);
    begin_own(port);
    scene_.own_value = values_[port];
    scene_.own_constant = constant;
}

void Engine::end_own() {
    scene_.own_parameter = kNoNode;
    scene_.own_port = kNoNode;
    scene_.expanded_macros = nullptr;
}

Value Engine::spoiled_value(std::uint32_t text) {
    return spoiled_[model_->texts[text].spoiled];
}

Value Engine::untied(std::uint32_t port) {
    return Value::unknown(reasons_.of(Reason::run_time(port)));
}

Value Engine::condition(std::uint32_t text) {
    const CompiledText& compiled = model_->texts[text];
    if (compiled.spoiled != kNone) {
        return spoiled_value(text);
    }
    const Value decided = evaluator_.condition(compiled.program, scene_);
    if (compiled.implication == kNone) {
        return decided;
    }
    const Branches& branches = model_->implications[compiled.implication];
    const auto alternative = [&] {
        return branches.alternative.is_empty() ? Value::truth(true)
                                               : evaluator_.condition(branches.alternative, scene_);
    };
    if (decided.is_true()) {
        return evaluator_.condition(branches.consequence, scene_);
    }
    if (decided.is_false()) {
        return alternative();
    }
    const Value first = evaluator_.condition(branches.consequence, scene_);
    const Value second = alternative();
    if (!first.is_unknown() && first == second) {
        return first;
    }
    ReasonsId reasons = decided.reasons();
    for (const Value branch : {first, second}) {
        reasons = branch.is_unknown() ? reasons_.united(reasons, branch.reasons()) : reasons;
    }
    return Value::unknown(reasons);
}

// A value text in the type of its object.
Value Engine::typed(std::uint32_t object, std::uint32_t text) {
    const CompiledText& compiled = model_->texts[text];
    if (compiled.spoiled != kNone) {
        return spoiled_value(text);
    }
    switch (model_->description->objects[object].kind) {
        case ObjectKind::kString: {
            const Value value = evaluator_.value(compiled.program, scene_);
            return value.is_unknown() || value.is_text()
                       ? value
                       : Value::text(words_.intern(text_of(value)));
        }
        case ObjectKind::kHidden:
            return evaluator_.value(compiled.program, scene_);
        default:
            return evaluator_.whole(compiled.program, scene_);
    }
}

std::string Engine::text_of(Value value) const {
    switch (value.kind) {
        case ValueKind::kTruth:
            return value.is_true() ? "true" : "false";
        case ValueKind::kInteger:
        case ValueKind::kBig:
            return to_text(value.as_whole());
        case ValueKind::kReal:
            return to_text(value.as_real());
        case ValueKind::kText:
            return std::string(words_.text(value.word()));
        case ValueKind::kUnknown:
        case ValueKind::kPort:
            break;
    }
    return {};
}

template <class ValueOf>
Engine::Outcome Engine::walk(std::uint32_t object, ElementKind kind, Value base, ValueOf value_of) {
    struct Undecided {
        Value condition;
        Value value;  // if it holds
    };
    const Range range = model_->description->objects[object].elements;
    std::vector<Undecided> undecided;
    Outcome outcome;
    outcome.value = base;
    const auto end = [&](std::uint32_t element, std::uint32_t text) {
        outcome.value = value_of(text);
        outcome.is_forced = true;
        outcome.element = element;
    };
    for (std::uint32_t i = range.begin; i < range.end && !outcome.is_forced; ++i) {
        const Element& element = model_->description->elements[i];
        if (element.kind != kind || element.first == kNone || !is_in_force(element)) {
            continue;
        }
        const Value holds =
            element.condition == kNone ? Value::truth(true) : condition(element.condition);
        if (holds.is_true()) {
            end(i, element.first);
            continue;
        }
        if (holds.is_unknown()) {
            undecided.push_back({holds, value_of(element.first)});
        }
        if (element.second != kNone) {
            end(i, element.second);
        }
    }
    // The last choice first: where both sides of it agree, it is none.
    for (; !undecided.empty(); undecided.pop_back()) {
        const auto& [holds, value] = undecided.back();
        if (!value.is_unknown() && value == outcome.value) {
            continue;
        }
        ReasonsId reasons = holds.reasons();
        for (const Value side : {value, outcome.value}) {
            reasons = side.is_unknown() ? reasons_.united(reasons, side.reasons()) : reasons;
        }
        outcome.value = Value::unknown(reasons);
    }
    return outcome;
}

Value Engine::forces_port(std::uint32_t port) {
    begin_own_force(port);
    const EndOwn end{*this};
    return walk(port, ElementKind::kPortForce, Value::truth(false),
                [](std::uint32_t) { return Value::truth(true); })
        .value;
}

std::uint32_t Engine::asked_text(std::uint32_t object) const {
    const std::uint32_t preset =
        presets_[object] == kNone ? kNone : model_->description->presets[presets_[object]].value;
    return preset == kNone ? model_->description->objects[object].default_text : preset;
}

bool Engine::is_preset(std::uint32_t object) const {
    return presets_[object] != kNone &&
           (is_port(model_->description->objects[object].kind) ||
            model_->description->presets[presets_[object]].value != kNone);
}

std::optional<bool> Engine::truth_of(Value value) const {
    if (value.kind == ValueKind::kPort) {
        value = values_[value.port_index()];
        return value.is_unknown() ? std::nullopt
                                  : std::optional(is_connected(static_cast<PortState>(value.low)));
    }
    if (value.is_truth()) {
        return value.is_true();
    }
    if (value.is_whole()) {
        return value.as_whole() != 0;
    }
    if (value.kind == ValueKind::kReal) {
        return compare(Whole(0), value.as_real()) != 0;
    }
    if (!value.is_text()) {
        return std::nullopt;
    }
    const std::string_view text = words_.text(value.word());
    return text.empty() ? false : truth_of_text(text);
}

Value Engine::asked_value(std::uint32_t object) {
    if (const Given* asked = given(object)) {
        sources_[object] = Source::kGiven;
        return asked->value;
    }
    const Object& each = model_->description->objects[object];
    const std::uint32_t text = asked_text(object);
    sources_[object] = is_preset(object) ? Source::kPreset : Source::kDefault;
    if (text == kNone) {
        return each.kind == ObjectKind::kInteger
                   ? Value::unknown(reasons_.of(Reason::unset(object)))
                   : Value::text(words_.intern(""));
    }
    // What is asked for cannot be made from itself.
    asked_[object] = Value::unknown(reasons_.of(Reason::cycle()));
    begin_own(object);
    const EndOwn end{*this};
    return typed(object, text);
}

bool Engine::evaluate_parameter(std::uint32_t object) {
    const Value asked = asked_value(object);
    if (replace(asked_[object], asked)) {
        mark_judged(object);
    }
    const bool is_default_missing = model_->description->objects[object].default_fault != kNone &&
                                    sources_[object] == Source::kDefault;
    evaluator_.forget_own_reads();
    Outcome outcome{asked};
    if (object != pinned_) {
        begin_own(object);
        const EndOwn end{*this};
        outcome = walk(object, ElementKind::kForce, asked,
                       [this, object](std::uint32_t text) { return typed(object, text); });
    }
    is_default_missed_[object] =
        is_default_missing && (!outcome.is_forced || evaluator_.has_read_own()) ? 1 : 0;
    if (outcome.is_forced) {
        sources_[object] = Source::kForced;
    }
    return replace(values_[object], outcome.value);
}

bool Engine::evaluate_macro(std::uint32_t object) {
    const std::uint32_t text = model_->description->objects[object].default_text;
    if (model_->texts[text].spoiled != kNone) {
        return replace(values_[object], spoiled_value(text));
    }
    expand_macros(object);
    const Value value = evaluator_.anything(model_->macros[object], scene_);
    scene_.expanded_macros = nullptr;
    // A port that the macro stands for may have changed although it is the same port.
    return replace(values_[object], value) || value.kind == ValueKind::kPort;
}

Value Engine::asked_state(std::uint32_t port) {
    if (const Given* asked = given(port)) {
        sources_[port] = Source::kGiven;
        return asked->value;
    }
    const bool has_preset = is_preset(port);
    sources_[port] = has_preset ? Source::kPreset : Source::kDefault;
    return Value::integer(has_preset ? model_->description->presets[presets_[port]].usage
                                     : model_->description->objects[port].usage);
}

bool Engine::evaluate_state(std::uint32_t port) {
    if (replace(asked_[port], asked_state(port))) {
        mark_judged(port);
    }
    const auto state_of = [this](std::uint32_t text) {
        const CompiledText& compiled = model_->texts[text];
        return compiled.spoiled != kNone ? spoiled_value(text)
                                         : evaluator_.anything(compiled.program, scene_);
    };
    Outcome outcome{asked_[port]};
    if (port != pinned_) {
        begin_own(port);
        const EndOwn end{*this};
        outcome = walk(port, ElementKind::kState, asked_[port], state_of);
    }
    if (outcome.is_forced) {
        sources_[port] = Source::kForced;
    }
    // A whole number in place of a state stands for a constant.
    const bool is_number = outcome.value.is_text();
    const bool is_new_number =
        replace(numbers_[port],
                is_number ? Value::whole(*whole_from_text(words_.text(outcome.value.word())))
                          : untied(port));
    const Value state =
        is_number ? Value::integer(static_cast<std::int64_t>(PortState::kConstant)) : outcome.value;
    return replace(values_[port], state) || is_new_number;
}

bool Engine::is_tied(std::uint32_t port) const {
    return !constants_[port].is_unknown();
}

Value Engine::asked_constant(std::uint32_t port, Value state) {
    const auto constant = static_cast<std::int64_t>(PortState::kConstant);
    if (state.is_unknown() || state.low != constant) {
        return state.is_unknown() ? state : untied(port);
    }
    if (const Given* asked = given(port); asked != nullptr && asked->constant) {
        return *asked->constant;
    }
    const std::uint32_t text = model_->description->objects[port].default_text;
    if (text == kNone) {
        return Value::integer(0);
    }
    expand_macros(port);
    const Value value = typed(port, text);
    scene_.expanded_macros = nullptr;
    return value;
}

Value Engine::unforced_constant(std::uint32_t port) {
    return numbers_[port].is_unknown() ? asked_constant(port, values_[port]) : numbers_[port];
}

bool Engine::is_open(std::uint32_t port, PortState state) const {
    return is_connected(state) || (state == PortState::kUnused &&
                                   model_->description->objects[port].kind != ObjectKind::kInput);
}

bool Engine::evaluate_constant(std::uint32_t port) {
    const Value state = values_[port];
    if (state.is_unknown()) {
        return replace(constants_[port], state);
    }
    if (is_open(port, static_cast<PortState>(state.low))) {
        return replace(constants_[port], untied(port));
    }
    return replace(constants_[port], force_of(port, unforced_constant(port)).value);
}

Engine::Outcome Engine::force_of(std::uint32_t port, Value base) {
    begin_own_force(port);
    const EndOwn end{*this};
    return walk(port, ElementKind::kPortForce, base,
                [this, port](std::uint32_t text) { return typed(port, text); });
}

// Whether a text belongs to those in which the name of its object means what was asked for: its
// rules that force something, and what is asked for itself. The items of its list do not.
bool Engine::reads_own(std::uint32_t text) const {
    const SourceText& source = model_->description->texts[text];
    const std::string_view element = source.element;
    if (source.object == kNone || element == "STATE" || element == "FORCE_VALUE") {
        return source.object != kNone;
    }
    const Object& object = model_->description->objects[source.object];
    const auto items = model_->description->items.begin();
    return is_parameter(object.kind) && element == "PARAMETER" &&
           (text == object.default_text ||
            std::find(items + object.items.begin, items + object.items.end, text) ==
                items + object.items.end);
}

void Engine::begin_own_text(std::uint32_t text) {
    if (!reads_own(text)) {
        return;
    }
    const SourceText& source = model_->description->texts[text];
    const bool is_port_force = std::string_view(source.element) == "FORCE_VALUE" &&
                               is_port(model_->description->objects[source.object].kind);
    is_port_force ? begin_own_force(source.object) : begin_own(source.object);
}

Value Engine::evaluate_text(std::uint32_t text) {
    begin_own_text(text);
    const EndOwn end{*this};
    return evaluate_role(text);
}

Value Engine::condition_of(std::uint32_t text) {
    const CompiledText& compiled = model_->texts[text];
    if (compiled.spoiled != kNone) {
        return spoiled_value(text);
    }
    begin_own_text(text);
    const EndOwn end{*this};
    return evaluator_.condition(compiled.program, scene_);
}

Value Engine::is_at_most(std::uint32_t least, std::uint32_t greatest) {
    const Value left = evaluate_text(least);
    const Value right = evaluate_text(greatest);
    if (left.is_unknown() || right.is_unknown()) {
        return left.is_unknown() ? left : right;
    }
    return evaluator_.at_most(left, right, model_->texts[least].program, scene_);
}

std::vector<Value> Engine::trace(std::uint32_t text, const Program& program) {
    std::vector<Value> values;
    begin_own_text(text);
    const EndOwn end{*this};
    evaluator_.trace(program, scene_, values);
    return values;
}

Engine::Forcing Engine::forcing(std::uint32_t object, ElementKind kind) {
    const Range range = model_->description->objects[object].elements;
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const Element& element = model_->description->elements[i];
        if (element.kind != kind || element.first == kNone || !is_in_force(element)) {
            continue;
        }
        if (element.condition == kNone || evaluate_text(element.condition).is_true()) {
            return {i, false};
        }
        if (element.second != kNone) {
            return {i, true};
        }
    }
    return {};
}

Value Engine::evaluate_role(std::uint32_t text) {
    const SourceText& source = model_->description->texts[text];
    const CompiledText& compiled = model_->texts[text];
    if (compiled.spoiled != kNone) {
        return spoiled_value(text);
    }
    switch (source.role) {
        case TextRole::kWholeValue:
            return evaluator_.whole(compiled.program, scene_);
        case TextRole::kLimit:
            return evaluator_.number(compiled.program, scene_);
        case TextRole::kWidth:
            return evaluator_.size(compiled.program, scene_);
        case TextRole::kTextValue:
        case TextRole::kUntypedValue:
            return evaluator_.value(compiled.program, scene_);
        case TextRole::kStateValue:
        case TextRole::kMacro:
            return evaluator_.anything(compiled.program, scene_);
        case TextRole::kCondition:
        case TextRole::kValueRule:
            break;
    }
    return condition(text);
}

Value Engine::width(std::uint32_t port) {
    const std::uint32_t text = model_->description->objects[port].width;
    if (text == kNone) {
        return Value::integer(1);
    }
    const CompiledText& compiled = model_->texts[text];
    return compiled.spoiled != kNone ? spoiled_value(text)
                                     : evaluator_.whole(compiled.program, scene_);
}

Value Engine::evaluate(const Program& program, const Code& code, bool as_condition) {
    scene_.local_code = &code;
    const Value value =
        as_condition ? evaluator_.condition(program, scene_) : evaluator_.value(program, scene_);
    scene_.local_code = nullptr;
    return value;
}

Value Engine::unknown(std::vector<Reason> reasons) {
    std::sort(reasons.begin(), reasons.end());
    reasons.erase(std::unique(reasons.begin(), reasons.end()), reasons.end());
    return Value::unknown(reasons_.intern(std::move(reasons)));
}

}  // namespace kivo_session
