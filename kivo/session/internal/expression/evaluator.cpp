#include "kivo/session/internal/expression/evaluator.h"

#include <cmath>
#include <optional>

namespace kivo_session {

namespace {

constexpr const char* kStateWords[] = {"UNUSED", "USED", "VARIABLE", "CONSTANT"};

bool holds(Operator comparison, int order) {
    switch (comparison) {
        case Operator::kEqual:
            return order == 0;
        case Operator::kUnlike:
            return order != 0;
        case Operator::kLess:
            return order < 0;
        case Operator::kAtMost:
            return order <= 0;
        case Operator::kGreater:
            return order > 0;
        default:
            return order >= 0;
    }
}

bool is_equality(Operator comparison) {
    return comparison == Operator::kEqual || comparison == Operator::kUnlike;
}

// REQUIRES: both are numbers
int order_of(Value left, Value right) {
    if (left.is_whole() && right.is_whole()) {
        const Whole first = left.as_whole();
        const Whole second = right.as_whole();
        return first < second ? -1 : first > second ? 1 : 0;
    }
    if (left.is_whole()) {
        return compare(left.as_whole(), right.as_real());
    }
    if (right.is_whole()) {
        return -compare(right.as_whole(), left.as_real());
    }
    return compare(left.as_real(), right.as_real());
}

// Quotient and remainder of most numbers are those of 32 bits, which take a fraction of the time.
struct Division {
    std::int64_t quotient;
    std::int64_t remainder;
};

// REQUIRES: right is neither 0 nor -1
Division divide(std::int64_t left, std::int64_t right) {
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

const char* word_of(PortState state) {
    return kStateWords[static_cast<std::size_t>(state)];
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

void Evaluator::apply_function(Function function, std::uint32_t count, std::uint32_t offset) {
    const std::size_t first = top_ - count;
    Value result;
    if (function == Function::kMin || function == Function::kMax) {
        result = choose(function, stack_.data() + first, count, offset);
    } else {
        result = as_number(as_operand(stack_[first]), offset);
        if (!result.is_unknown()) {
            result = function_of(function, result, offset);
        }
    }
    top_ = first;
    push(result);
}

Value Evaluator::function_of(Function function, Value operand, std::uint32_t offset) {
    switch (function) {
        case Function::kCeil:
        case Function::kFloor: {
            if (operand.is_whole()) {
                return operand;
            }
            const std::optional<Whole> whole = function == Function::kCeil
                                                   ? whole_above(operand.as_real())
                                                   : whole_below(operand.as_real());
            return whole ? Value::whole(*whole) : fault(FaultId::kTooLarge, offset);
        }
        case Function::kAbs:
            if (operand.is_whole()) {
                return operand.as_whole() < 0 ? signed_value(Operator::kMinus, operand, offset)
                                              : operand;
            }
            return Value::real(std::fabs(operand.as_real()));
        case Function::kLog:
        case Function::kLog2: {
            const double real = operand.as_real();
            if (real <= 0) {
                return fault(FaultId::kDomain, offset);
            }
            return Value::real(function == Function::kLog ? std::log(real) : std::log2(real));
        }
        case Function::kMin:
        case Function::kMax:
            break;
    }
    return operand;
}

Value Evaluator::choose(Function function, const Value* operands, std::uint32_t count,
                        std::uint32_t offset) {
    // Of unknown operands the reasons are told before the types of the others are looked at.
    for (const bool is_typed : {false, true}) {
        Value unknown;
        bool has_unknown = false;
        for (std::uint32_t i = 0; i < count; ++i) {
            const Value operand = as_operand(operands[i]);
            const Value number = is_typed ? as_number(operand, offset) : operand;
            if (number.is_unknown()) {
                unknown = has_unknown ? united(unknown, number) : number;
                has_unknown = true;
            }
        }
        if (has_unknown) {
            return unknown;
        }
    }
    Value chosen;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Value operand = as_number(as_operand(operands[i]), offset);
        const int order = i == 0 ? 0 : order_of(operand, chosen);
        if (i == 0 || (function == Function::kMin ? order < 0 : order > 0)) {
            chosen = operand;
        }
    }
    return chosen;
}

void Evaluator::apply_operator(Operator operation, std::uint32_t offset,
                               std::uint32_t state_words) {
    if (!is_binary(operation)) {
        Value& operand = stack_[top_ - 1];
        operand = operation == Operator::kNot ? negated(operand, offset)
                                              : signed_value(operation, operand, offset);
        return;
    }
    const Value right = stack_[--top_];
    Value& left = stack_[top_ - 1];
    switch (operation) {
        case Operator::kOr:
            left = either(left, right, offset);
            return;
        case Operator::kAnd:
            left = both(left, right, offset);
            return;
        case Operator::kEqual:
        case Operator::kUnlike:
        case Operator::kLess:
        case Operator::kAtMost:
        case Operator::kGreater:
        case Operator::kAtLeast:
            if (left.kind == ValueKind::kPort && (state_words & kRightStateWord) != 0) {
                left = compared_states(operation, left, right);
            } else if (right.kind == ValueKind::kPort && (state_words & kLeftStateWord) != 0) {
                left = compared_states(operation, right, left);
            } else {
                left = compared(operation, left, right, offset);
            }
            return;
        default:
            left = calculated(operation, left, right, offset);
            return;
    }
}

Value Evaluator::both(Value left, Value right, std::uint32_t offset) {
    left = as_condition(left, offset);
    right = as_condition(right, offset);
    if (left.is_false() || right.is_false()) {
        return Value::truth(false);
    }
    return left.is_true() && right.is_true() ? left : united(left, right);
}

Value Evaluator::either(Value left, Value right, std::uint32_t offset) {
    left = as_condition(left, offset);
    right = as_condition(right, offset);
    if (left.is_true() || right.is_true()) {
        return Value::truth(true);
    }
    return left.is_false() && right.is_false() ? left : united(left, right);
}

Value Evaluator::negated(Value operand, std::uint32_t offset) {
    operand = as_condition(operand, offset);
    return operand.is_unknown() ? operand : Value::truth(operand.is_false());
}

Value Evaluator::compared(Operator operation, Value left, Value right, std::uint32_t offset) {
    left = as_operand(left);
    right = as_operand(right);
    if (left.is_unknown() || right.is_unknown()) {
        return united(left, right);
    }
    if (left.is_truth()) {
        return compared_truth(operation, left, right, offset);
    }
    if (right.is_truth()) {
        return compared_truth(operation, right, left, offset);
    }
    if (left.is_text() && right.is_text()) {
        return is_equality(operation)
                   ? Value::truth(holds(operation, left.word() == right.word() ? 0 : 1))
                   : fault(FaultId::kIllTyped, offset);
    }
    if (left.is_text() || right.is_text()) {
        const Value text = left.is_text() ? left : right;
        if (is_equality(operation) && !is_canonical_decimal(scene_->words->text(text.word()))) {
            return Value::truth(operation == Operator::kUnlike);
        }
        left = as_number(left, offset);
        right = as_number(right, offset);
        if (left.is_unknown() || right.is_unknown()) {
            return united(left, right);
        }
    }
    return Value::truth(holds(operation, order_of(left, right)));
}

Value Evaluator::compared_states(Operator operation, Value port, Value word) {
    const Value state = state_of(port.port_index());
    if (state.is_unknown()) {
        return state;
    }
    const bool is_same =
        scene_->words->text(word.word()) == word_of(static_cast<PortState>(state.low));
    return Value::truth(holds(operation, is_same ? 0 : 1));
}

Value Evaluator::compared_truth(Operator operation, Value truth, Value other,
                                std::uint32_t offset) {
    std::optional<bool> second;
    if (other.is_truth()) {
        second = other.is_true();
    } else if (other.is_text()) {
        second = truth_of_text(scene_->words->text(other.word()));
    }
    if (!is_equality(operation) || !second) {
        return fault(FaultId::kIllTyped, offset);
    }
    return Value::truth(holds(operation, truth.is_true() == *second ? 0 : 1));
}

Value Evaluator::calculated(Operator operation, Value left, Value right, std::uint32_t offset) {
    left = as_operand(left);
    right = as_operand(right);
    if (left.is_unknown() || right.is_unknown()) {
        return united(left, right);
    }
    left = as_number(left, offset);
    right = as_number(right, offset);
    if (left.is_unknown() || right.is_unknown()) {
        return united(left, right);
    }
    switch (operation) {
        case Operator::kPower:
            return power(left, right, offset);
        case Operator::kDivide:
            if (left.is_whole() && right.is_whole()) {
                return divided(operation, left, right, offset);
            }
            break;
        case Operator::kRemainder:
        case Operator::kModulo:
        case Operator::kQuotient:
            return divided(operation, left, right, offset);
        default:
            break;
    }
    if (left.is_whole() && right.is_whole()) {
        return calculated_whole(operation, left.as_whole(), right.as_whole(), offset);
    }
    return calculated_real(operation, left.as_real(), right.as_real(), offset);
}

Value Evaluator::calculated_whole(Operator operation, Whole left, Whole right,
                                  std::uint32_t offset) {
    Whole result = 0;
    const bool is_too_large =
        operation == Operator::kAdd        ? __builtin_add_overflow(left, right, &result)
        : operation == Operator::kSubtract ? __builtin_sub_overflow(left, right, &result)
                                           : __builtin_mul_overflow(left, right, &result);
    return is_too_large ? fault(FaultId::kTooLarge, offset) : Value::whole(result);
}

Value Evaluator::calculated_real(Operator operation, double left, double right,
                                 std::uint32_t offset) {
    switch (operation) {
        case Operator::kAdd:
            return checked_real(left + right, offset);
        case Operator::kSubtract:
            return checked_real(left - right, offset);
        case Operator::kMultiply:
            return checked_real(left * right, offset);
        default:
            return right == 0 ? fault(FaultId::kDivisionByZero, offset)
                              : checked_real(left / right, offset);
    }
}

// "/" of whole numbers, "%", "mod" and "div", which need whole numbers.
Value Evaluator::divided(Operator operation, Value left, Value right, std::uint32_t offset) {
    left = as_whole(left, offset);
    right = as_whole(right, offset);
    if (left.is_unknown() || right.is_unknown()) {
        return united(left, right);
    }
    const Whole dividend = left.as_whole();
    const Whole divisor = right.as_whole();
    if (divisor == 0) {
        return fault(FaultId::kDivisionByZero, offset);
    }
    // The quotient of the least number by -1 is the one that does not fit.
    Whole opposite = 0;
    const bool fits = divisor != -1 || !__builtin_sub_overflow(Whole(0), dividend, &opposite);
    if (operation == Operator::kDivide || operation == Operator::kQuotient) {
        return fits ? Value::whole(divisor == -1 ? opposite : dividend / divisor)
                    : fault(FaultId::kTooLarge, offset);
    }
    Whole remainder = divisor == -1 ? Whole(0) : dividend % divisor;
    if (operation == Operator::kModulo && remainder != 0 && (remainder < 0) != (divisor < 0)) {
        remainder += divisor;
    }
    return Value::whole(remainder);
}

Value Evaluator::power(Value left, Value right, std::uint32_t offset) {
    if (left.is_whole() && right.is_whole()) {
        if (right.as_whole() < 0) {
            return fault(FaultId::kDomain, offset);
        }
        const std::optional<Whole> result = checked_power(left.as_whole(), right.as_whole());
        return result ? Value::whole(*result) : fault(FaultId::kTooLarge, offset);
    }
    const double base = left.as_real();
    const double exponent = right.as_real();
    if (base == 0 && exponent < 0) {
        return fault(FaultId::kDivisionByZero, offset);
    }
    const double result = std::pow(base, exponent);
    return std::isnan(result) ? fault(FaultId::kDomain, offset) : checked_real(result, offset);
}

Value Evaluator::signed_value(Operator operation, Value operand, std::uint32_t offset) {
    operand = as_number(as_operand(operand), offset);
    if (operand.is_unknown() || operation == Operator::kPlus) {
        return operand;
    }
    if (!operand.is_whole()) {
        return Value::real(-operand.as_real());
    }
    return calculated_whole(Operator::kSubtract, 0, operand.as_whole(), offset);
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

Value Evaluator::checked_real(double real, std::uint32_t offset) {
    return std::isfinite(real) ? Value::real(real) : fault(FaultId::kTooLarge, offset);
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
