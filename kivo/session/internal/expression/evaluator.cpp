#include "kivo/session/internal/expression/evaluator.h"

#include <cassert>
#include <optional>

namespace kivo_session {

namespace {

// Quotient and remainder of most numbers are those of 32 bits, which take a fraction of the time.
struct Division {
    std::int64_t quotient;
    std::int64_t remainder;
};

// REQUIRES: right is neither 0 nor -1
Division divide(std::int64_t left, std::int64_t right) {
    assert(right != 0 && right != -1);
    if (((left | right) >> 32) == 0) {
        const auto dividend = static_cast<std::uint32_t>(left);
        const auto divisor = static_cast<std::uint32_t>(right);
        return {dividend / divisor, dividend % divisor};
    }
    return {left / right, left % right};
}

// Almost everything that rules are made of, whole numbers of 64 bits and truths: false for anything
// else, with "left" unchanged. Values are read and written in parts: a copy of what was just
// written in parts has to wait for it.
inline bool apply_to_common(Operator operation, Value& left, const Value& right) {
    const std::int64_t first = left.low;
    const std::int64_t second = right.low;
    const auto give = [&left](std::int64_t low) {
        left.low = low;
        return true;
    };
    const auto give_truth = [&left](bool truth) {
        left.low = truth ? 1 : 0;
        left.kind = ValueKind::kTruth;
        return true;
    };
    if (left.kind == ValueKind::kTruth && right.kind == ValueKind::kTruth) {
        return (operation == Operator::kAnd && give(first & second)) ||
               (operation == Operator::kOr && give(first | second));
    }
    if (left.kind != ValueKind::kInteger || right.kind != ValueKind::kInteger) {
        return false;
    }
    std::int64_t result = 0;
    // A quotient by -1 may not fit.
    const bool is_simple_divisor = second != 0 && second != -1;
    switch (operation) {
        case Operator::kEqual:
            return give_truth(first == second);
        case Operator::kUnlike:
            return give_truth(first != second);
        case Operator::kLess:
            return give_truth(first < second);
        case Operator::kAtMost:
            return give_truth(first <= second);
        case Operator::kGreater:
            return give_truth(first > second);
        case Operator::kAtLeast:
            return give_truth(first >= second);
        case Operator::kAdd:
            return !__builtin_add_overflow(first, second, &result) && give(result);
        case Operator::kSubtract:
            return !__builtin_sub_overflow(first, second, &result) && give(result);
        case Operator::kMultiply:
            return !__builtin_mul_overflow(first, second, &result) && give(result);
        case Operator::kDivide:
        case Operator::kQuotient:
            return is_simple_divisor && give(divide(first, second).quotient);
        case Operator::kRemainder:
            return is_simple_divisor && give(divide(first, second).remainder);
        default:
            return false;
    }
}

}  // namespace

std::optional<bool> truth_of_text(std::string_view text) {
    if (text == "ON" || text == "TRUE") {
        return true;
    }
    return text == "OFF" || text == "FALSE" ? std::optional(false) : std::nullopt;
}

Value Evaluator::anything(const Program& program, const Scene& scene) {
    scene_ = &scene;
    return run(program);
}

Value Evaluator::value(const Program& program, const Scene& scene) {
    const Value result = anything(program, scene);
    return result.kind == ValueKind::kPort ? as_condition(result, program.offset) : result;
}

Value Evaluator::condition(const Program& program, const Scene& scene) {
    const Value result = anything(program, scene);
    return result.is_truth() ? result : as_condition(result, program.offset);
}

Value Evaluator::number(const Program& program, const Scene& scene) {
    return as_number(as_operand(anything(program, scene)), program.offset);
}

Value Evaluator::whole(const Program& program, const Scene& scene) {
    return as_whole(as_operand(anything(program, scene)), program.offset);
}

Value Evaluator::size(const Program& program, const Scene& scene) {
    const Value value = as_operand(anything(program, scene));
    const bool is_number_text =
        value.is_text() && is_canonical_decimal(scene.words->text(value.word()));
    const bool is_whole_real = value.kind == ValueKind::kReal &&
                               (snapped(value.as_real()) || !whole_above(value.as_real()));
    return is_number_text || is_whole_real ? as_whole(value, program.offset) : value;
}

Value Evaluator::at_most(Value least, Value greatest, const Program& program, const Scene& scene) {
    scene_ = &scene;
    frame_.text = program.text;
    return compared(Operator::kAtMost, least, greatest, program.offset);
}

// An instruction leaves at most one value.
void Evaluator::make_room(const Program& program) {
    const std::size_t needed = top_ + (program.end - program.begin) + 1;
    if (stack_.size() < needed) {
        stack_.resize(2 * needed);
    }
}

// Into the loop of run(): the call would cost as much as most instructions do.
[[gnu::always_inline]] inline void Evaluator::step(const Instruction& instruction) {
    switch (instruction.action) {
        case Action::kConstant:
            return push(instruction.index < frame_.code->constants.size()
                            ? frame_.code->constants[instruction.index]
                            : fault(FaultId::kTooLarge, instruction.offset));
        case Action::kValue:
            if (instruction.index == scene_->own_parameter) {
                has_read_own_ = true;
                return push(scene_->own_value);
            }
            return push(scene_->parameters[instruction.index]);
        case Action::kPort:
            return push(Value::port(instruction.index));
        case Action::kArgument:
            return push(stack_[frame_.arguments + instruction.index]);
        case Action::kMacro:
            if (scene_->expanded_macros != nullptr &&
                scene_->expanded_macros[instruction.index] != 0) {
                return call(scene_->macros[instruction.index], 0);
            }
            return push(scene_->macro_values[instruction.index]);
        case Action::kCall:
            return call(scene_->macros[instruction.index], instruction.count);
        case Action::kFunction:
            return apply_function(static_cast<Function>(instruction.what), instruction.count,
                                  instruction.offset);
        case Action::kOperator:
            if (instruction.count == 2 && apply_to_common(static_cast<Operator>(instruction.what),
                                                          stack_[top_ - 2], stack_[top_ - 1])) {
                --top_;
                return;
            }
            return apply_operator(static_cast<Operator>(instruction.what), instruction.offset,
                                  instruction.index);
    }
}

template <class Note>
Value Evaluator::run(const Program& program, Note note) {
    top_ = 0;
    frames_.clear();
    steps_ = 0;
    const Code* code = scene_->local_code != nullptr ? scene_->local_code : scene_->code;
    frame_ = {code, program.begin, program.end, program.text, 0};
    make_room(program);
    for (;; note()) {
        if (frame_.at != frame_.end) {
            if (++steps_ > kMostSteps) {
                frame_.text = program.text;
                return fault(FaultId::kTooManySteps, 0);
            }
            step(frame_.code->instructions[frame_.at++]);
            continue;
        }
        const Value& result = stack_[top_ - 1];
        if (frames_.empty()) {
            frame_.text = program.text;
            return result;
        }
        stack_[frame_.arguments] = result;
        top_ = frame_.arguments + 1;
        frame_ = frames_.back();
        frames_.pop_back();
    }
}

Value Evaluator::run(const Program& program) {
    return run(program, [] {});
}

void Evaluator::trace(const Program& program, const Scene& scene, std::vector<Value>& values) {
    scene_ = &scene;
    run(program, [&] {
        // Macros are one expression each.
        if (frames_.empty() && values.size() < frame_.at - program.begin) {
            values.push_back(stack_[top_ - 1]);
        }
    });
}

void Evaluator::call(const Program& macro, std::uint32_t arguments) {
    if (arguments == 0) {
        push(Value());  // the place of the result
        arguments = 1;
    }
    frames_.push_back(frame_);
    frame_ = {scene_->code, macro.begin, macro.end, macro.text,
              static_cast<std::uint32_t>(top_) - arguments};
    make_room(macro);
}

Value Evaluator::as_condition(Value value, std::uint32_t offset) {
    switch (value.kind) {
        case ValueKind::kUnknown:
        case ValueKind::kTruth:
            return value;
        case ValueKind::kInteger:
            return Value::truth(value.low != 0);
        case ValueKind::kBig:
            return Value::truth(true);
        case ValueKind::kReal:
            return Value::truth(compare(Whole(0), value.as_real()) != 0);
        case ValueKind::kText: {
            const std::string_view text = scene_->words->text(value.word());
            const std::optional<bool> truth = text.empty() ? false : truth_of_text(text);
            return truth ? Value::truth(*truth) : fault(FaultId::kIllTyped, offset);
        }
        case ValueKind::kPort: {
            const Value state = state_of(value.port_index());
            return state.is_unknown()
                       ? state
                       : Value::truth(is_connected(static_cast<PortState>(state.low)));
        }
    }
    return value;
}

Value Evaluator::as_number(Value value, std::uint32_t offset) {
    if (value.is_unknown() || value.is_number()) {
        return value;
    }
    if (!value.is_text() || !is_canonical_decimal(scene_->words->text(value.word()))) {
        return fault(FaultId::kIllTyped, offset);
    }
    const std::optional<Whole> whole = whole_from_text(scene_->words->text(value.word()));
    return whole ? Value::whole(*whole) : fault(FaultId::kTooLarge, offset);
}

Value Evaluator::as_whole(Value value, std::uint32_t offset) {
    value = as_number(value, offset);
    if (value.kind != ValueKind::kReal) {
        return value;
    }
    const std::optional<Whole> whole = snapped(value.as_real());
    if (whole) {
        return Value::whole(*whole);
    }
    // One that does not even fit when it is rounded is whole: reals that large have no fraction.
    return fault(whole_above(value.as_real()) ? FaultId::kIllTyped : FaultId::kTooLarge, offset);
}

Value Evaluator::as_operand(Value value) const {
    return value.kind == ValueKind::kPort ? constant_of(value.port_index()) : value;
}

Value Evaluator::state_of(std::uint32_t port) const {
    return port == scene_->own_port ? scene_->own_value : scene_->port_states[port];
}

Value Evaluator::constant_of(std::uint32_t port) const {
    return port == scene_->own_port ? scene_->own_constant : scene_->port_constants[port];
}

Value Evaluator::fault(FaultId id, std::uint32_t offset) {
    return Value::unknown(scene_->reasons->of(Reason::fault(id, frame_.text, offset)));
}

Value Evaluator::united(Value left, Value right) {
    if (!left.is_unknown()) {
        return right;
    }
    if (!right.is_unknown()) {
        return left;
    }
    return Value::unknown(scene_->reasons->united(left.reasons(), right.reasons()));
}

}  // namespace kivo_session
