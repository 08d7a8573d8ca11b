#include "kivo/session/internal/expression/evaluator.h"

#include <cassert>
#include <cmath>
#include <optional>

// What functions and operators give, once the evaluator's loop has found that they are not among
// the most common.
namespace kivo_session {

namespace {

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
    assert(left.is_number() && right.is_number());
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

}  // namespace

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

Value Evaluator::checked_real(double real, std::uint32_t offset) {
    return std::isfinite(real) ? Value::real(real) : fault(FaultId::kTooLarge, offset);
}

}  // namespace kivo_session
