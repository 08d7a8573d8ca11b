#include "kivo/session/internal/search/span_evaluator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "kivo/session/internal/expression/evaluator.h"

namespace kivo_session {

namespace {

constexpr double kLeastReal = std::numeric_limits<double>::lowest();
constexpr double kGreatestReal = std::numeric_limits<double>::max();

// Reals beside a whole number count as it: what is compared is a little wider than it looks.
double widened(double real, double direction) {
    return real + direction * 0x1p-46 * std::max(1.0, std::fabs(real));
}

// Logarithms and powers are exact to a few last bits only.
double loosened(double real, double direction) {
    return real + direction * 0x1p-48 * std::fabs(real);
}

bool is_equality(Operator comparison) {
    return comparison == Operator::kEqual || comparison == Operator::kUnlike;
}

void add_equality(Operator operation, bool may_be_same, bool may_differ, Span& result) {
    const bool is_equal = operation == Operator::kEqual;
    result.add(
        Span::truth(is_equal ? may_be_same : may_differ, is_equal ? may_differ : may_be_same));
}

// The limits of the numbers in a span, as those that order them.
template <class Number>
struct Limits {
    Number least;
    Number greatest;
};

template <class Number>
void add_order(Operator operation, Limits<Number> left, Limits<Number> right, Span& result) {
    const bool may_be_less = left.least < right.greatest;
    const bool may_be_greater = left.greatest > right.least;
    const bool may_be_same = left.least <= right.greatest && right.least <= left.greatest;
    switch (operation) {
        case Operator::kEqual:
        case Operator::kUnlike:
            return add_equality(operation, may_be_same, may_be_less || may_be_greater, result);
        case Operator::kLess:
            return result.add(Span::truth(may_be_less, may_be_same || may_be_greater));
        case Operator::kAtMost:
            return result.add(Span::truth(may_be_less || may_be_same, may_be_greater));
        case Operator::kGreater:
            return result.add(Span::truth(may_be_greater, may_be_same || may_be_less));
        default:
            return result.add(Span::truth(may_be_greater || may_be_same, may_be_less));
    }
}

// All numbers of a span as reals.
Limits<double> reals_of(const Span& span) {
    Limits<double> limits{kGreatestReal, kLeastReal};
    if (span.may_be_whole) {
        limits = {static_cast<double>(span.least), static_cast<double>(span.greatest)};
    }
    if (span.may_be_real) {
        limits.least = std::min(limits.least, span.least_real);
        limits.greatest = std::max(limits.greatest, span.greatest_real);
    }
    return limits;
}

Span numbers_of(const Span& span) {
    Span numbers;
    if (span.may_be_whole) {
        numbers.add(Span::whole(span.least, span.greatest));
    }
    if (span.may_be_real) {
        numbers.add(Span::real(span.least_real, span.greatest_real));
    }
    return numbers;
}

// What does not fit is a fault.
void add_real(double least, double greatest, Span& result) {
    if (!(least >= kLeastReal && greatest <= kGreatestReal)) {
        result.may_fault = true;
        least = least >= kLeastReal ? least : kLeastReal;
        greatest = greatest <= kGreatestReal ? greatest : kGreatestReal;
    }
    result.add(Span::real(least, greatest));
}

}  // namespace

Span SpanEvaluator::anything(const Program& program) {
    stack_.clear();
    frames_.clear();
    frame_ = {program.begin, program.end, 0};
    for (std::uint32_t steps = 0;;) {
        if (frame_.at != frame_.end) {
            if (++steps > Evaluator::kMostSteps) {
                return Span::fault();
            }
            step(code_.instructions[frame_.at++]);
            continue;
        }
        if (frames_.empty()) {
            return stack_.empty() ? Span::anything() : stack_.back();
        }
        stack_[frame_.arguments] = stack_.back();
        stack_.resize(frame_.arguments + 1);
        frame_ = frames_.back();
        frames_.pop_back();
    }
}

Span SpanEvaluator::value(const Program& program) {
    const Span result = anything(program);
    return result.is_port ? as_condition(result) : result;
}

Span SpanEvaluator::condition(const Program& program) {
    return as_condition(anything(program));
}

Span SpanEvaluator::number(const Program& program) {
    return as_number(as_operand(anything(program)));
}

Span SpanEvaluator::is_size(const Program& program) {
    const Span bits = as_operand(anything(program));
    Span result;
    result.add_unknown(bits);
    if (bits.may_be_whole) {
        result.add(Span::truth(bits.greatest >= 1, bits.least < 1));
    }
    if (bits.may_be_real || bits.is_text()) {
        result.add(Span::truth(true, true));
        result.may_fault = true;
    }
    if (bits.may_be_true || bits.may_be_false) {
        result.add(Span::truth(false, true));
    }
    return result;
}

Span SpanEvaluator::whole(const Program& program) {
    return as_whole(as_operand(anything(program)));
}

void SpanEvaluator::step(const Instruction& instruction) {
    switch (instruction.action) {
        case Action::kConstant:
            stack_.push_back(instruction.index < code_.constants.size()
                                 ? Span::of(code_.constants[instruction.index], reasons_)
                                 : Span::fault());
            return;
        case Action::kValue:
            stack_.push_back(names_.parameter(instruction.index));
            return;
        case Action::kPort:
            stack_.push_back(Span::port(instruction.index));
            return;
        case Action::kArgument:
            stack_.push_back(Span(stack_[frame_.arguments + instruction.index]));
            return;
        case Action::kMacro:
            if (names_.is_expanded(instruction.index)) {
                return call(names_.macro_program(instruction.index), 0);
            }
            stack_.push_back(names_.macro_value(instruction.index));
            return;
        case Action::kCall:
            return call(names_.macro_program(instruction.index), instruction.count);
        case Action::kFunction:
            return apply_function(static_cast<Function>(instruction.what), instruction.count);
        case Action::kOperator:
            return apply_operator(static_cast<Operator>(instruction.what), instruction.index);
    }
}

void SpanEvaluator::call(const Program& macro, std::uint32_t arguments) {
    if (arguments == 0) {
        stack_.emplace_back();  // the place of the result
        arguments = 1;
    }
    frames_.push_back(frame_);
    frame_ = {macro.begin, macro.end, static_cast<std::uint32_t>(stack_.size()) - arguments};
}

void SpanEvaluator::apply_operator(Operator operation, std::uint32_t state_words) {
    if (!is_binary(operation)) {
        Span& operand = stack_.back();
        if (operation == Operator::kNot) {
            operand = as_condition(operand);
            std::swap(operand.may_be_true, operand.may_be_false);
            return;
        }
        const Span number = as_number(as_operand(operand));
        operand = operation == Operator::kPlus ? number : negative(number);
        return;
    }
    const Span right = std::move(stack_.back());
    stack_.pop_back();
    Span& left = stack_.back();
    switch (operation) {
        case Operator::kOr:
            left = either(left, right);
            return;
        case Operator::kAnd:
            left = both(left, right);
            return;
        case Operator::kEqual:
        case Operator::kUnlike:
        case Operator::kLess:
        case Operator::kAtMost:
        case Operator::kGreater:
        case Operator::kAtLeast:
            if (left.is_port && (state_words & kRightStateWord) != 0) {
                left = compared_states(operation, left, right);
            } else if (right.is_port && (state_words & kLeftStateWord) != 0) {
                left = compared_states(operation, right, left);
            } else {
                left = compared(operation, left, right);
            }
            return;
        default:
            left = calculated(operation, as_operand(left), as_operand(right));
            return;
    }
}

Span SpanEvaluator::both(const Span& first, const Span& second) const {
    const Span left = as_condition(first);
    const Span right = as_condition(second);
    Span result =
        Span::truth(left.may_be_true && right.may_be_true, left.may_be_false || right.may_be_false);
    const bool left_open = left.may_be_true || left.is_unknown();
    const bool right_open = right.may_be_true || right.is_unknown();
    result.may_fault = (left.may_fault && right_open) || (right.may_fault && left_open);
    result.may_run_time = (left.may_run_time && right_open) || (right.may_run_time && left_open);
    return result;
}

Span SpanEvaluator::either(const Span& first, const Span& second) const {
    const auto negated = [](Span span) {
        std::swap(span.may_be_true, span.may_be_false);
        return span;
    };
    return negated(both(negated(as_condition(first)), negated(as_condition(second))));
}

// A text that stands for a number is compared once more as that number, and no deeper.
// NOLINTNEXTLINE(misc-no-recursion)
Span SpanEvaluator::compared(Operator operation, Span left, Span right) const {
    Span result;
    left = as_operand(left);
    right = as_operand(right);
    result.add_unknown(left);
    result.add_unknown(right);
    compare_truths(operation, left, right, result);
    compare_truths(operation, right, left, result);
    if (left.is_text() && right.is_text()) {
        compare_texts(operation, left, right, result);
    }
    // NOLINTNEXTLINE(misc-no-recursion)
    const auto compare_mixed = [&](const Span& text, const Span& number) {
        if (!text.is_text() || !number.is_number()) {
            return;
        }
        if (text.is_any_text) {
            result.add(Span::truth(true, true));
            result.may_fault = true;
        }
        for (const WordId word : text.texts) {
            const Span meant = as_number(Span::text(word));
            if (meant.may_be_whole) {
                result.add(compared(operation, meant, numbers_of(number)));
                // Which side is which matters to what is not symmetric.
                result.add(compared(operation, numbers_of(number), meant));
            } else if (is_equality(operation)) {
                add_equality(operation, false, true, result);
                // Digits that 128 bits do not hold.
                result.may_fault = result.may_fault || is_canonical_decimal(words_.text(word));
            } else {
                result.may_fault = true;
            }
        }
    };
    compare_mixed(left, right);
    compare_mixed(right, left);
    if (left.may_be_whole && right.may_be_whole) {
        add_order<Whole>(operation, {left.least, left.greatest}, {right.least, right.greatest},
                         result);
    }
    if ((left.may_be_real && right.is_number()) || (right.may_be_real && left.is_number())) {
        const Limits<double> first = reals_of(left);
        const Limits<double> second = reals_of(right);
        add_order<double>(operation, {widened(first.least, -1), widened(first.greatest, 1)},
                          {widened(second.least, -1), widened(second.greatest, 1)}, result);
    }
    return result;
}

Span SpanEvaluator::compared_states(Operator operation, const Span& port, const Span& word) const {
    const Span state = names_.port_state(port.port_index);
    Span result;
    result.add_unknown(state);
    if (state.may_be_whole) {
        const std::string_view wanted = words_.text(word.texts[0]);
        for (std::uint8_t number = 0; number < 4; ++number) {
            if (wanted == word_of(static_cast<PortState>(number))) {
                add_order<Whole>(operation, {state.least, state.greatest}, {number, number},
                                 result);
            }
        }
    }
    return result;
}

void SpanEvaluator::compare_texts(Operator operation, const Span& left, const Span& right,
                                  Span& result) const {
    if (!is_equality(operation)) {
        result.may_fault = true;
        return;
    }
    if (left.is_any_text || right.is_any_text) {
        return result.add(Span::truth(true, true));
    }
    const bool may_be_same = std::any_of(left.texts.begin(), left.texts.end(), [&](WordId word) {
        return std::binary_search(right.texts.begin(), right.texts.end(), word);
    });
    const bool may_differ =
        left.texts.size() > 1 || right.texts.size() > 1 || left.texts != right.texts;
    add_equality(operation, may_be_same, may_differ, result);
}

void SpanEvaluator::compare_truths(Operator operation, const Span& truth, const Span& other,
                                   Span& result) const {
    if (!truth.may_be_true && !truth.may_be_false) {
        return;
    }
    bool may_be_true = other.may_be_true;
    bool may_be_false = other.may_be_false;
    bool may_fault = other.is_number() || other.is_any_text;
    for (const WordId word : other.texts) {
        const std::optional<bool> meant = truth_of_text(words_.text(word));
        may_be_true = may_be_true || meant == true;
        may_be_false = may_be_false || meant == false;
        may_fault = may_fault || !meant;
    }
    if (other.is_any_text) {
        may_be_true = may_be_false = true;
    }
    if (!may_be_true && !may_be_false && !may_fault) {
        return;
    }
    if (!is_equality(operation)) {
        result.may_fault = true;
        return;
    }
    result.may_fault = result.may_fault || may_fault;
    add_equality(
        operation, (truth.may_be_true && may_be_true) || (truth.may_be_false && may_be_false),
        (truth.may_be_true && may_be_false) || (truth.may_be_false && may_be_true), result);
}

Span SpanEvaluator::calculated(Operator operation, const Span& first, const Span& second) const {
    const Span left = as_number(first);
    const Span right = as_number(second);
    Span result;
    result.add_unknown(left);
    result.add_unknown(right);
    if (!left.is_number() || !right.is_number()) {
        return result;
    }
    const bool is_division = operation == Operator::kRemainder || operation == Operator::kModulo ||
                             operation == Operator::kQuotient;
    if (is_division) {
        divide(operation, as_whole(left), as_whole(right), result);
        return result;
    }
    if (left.may_be_whole && right.may_be_whole) {
        calculate_whole(operation, left, right, result);
    }
    if (left.may_be_real || right.may_be_real) {
        calculate_real(operation, left, right, result);
    }
    return result;
}

void SpanEvaluator::calculate_whole(Operator operation, const Span& left, const Span& right,
                                    Span& result) const {
    bool fault = false;
    switch (operation) {
        case Operator::kAdd:
            result.add(Span::whole(saturated_sum(left.least, right.least, &fault),
                                   saturated_sum(left.greatest, right.greatest, &fault)));
            break;
        case Operator::kSubtract:
            result.add(Span::whole(saturated_difference(left.least, right.greatest, &fault),
                                   saturated_difference(left.greatest, right.least, &fault)));
            break;
        case Operator::kMultiply: {
            const auto corners = {saturated_product(left.least, right.least, &fault),
                                  saturated_product(left.least, right.greatest, &fault),
                                  saturated_product(left.greatest, right.least, &fault),
                                  saturated_product(left.greatest, right.greatest, &fault)};
            result.add(Span::whole(std::min(corners), std::max(corners)));
            break;
        }
        case Operator::kPower:
            return raise(left, right, result);
        default:
            return divide(operation, left, right, result);
    }
    result.may_fault = result.may_fault || fault;
}

void SpanEvaluator::calculate_real(Operator operation, const Span& left, const Span& right,
                                   Span& result) const {
    const Limits<double> first = reals_of(left);
    const Limits<double> second = reals_of(right);
    const auto add_corners = [&](auto of) {
        const auto corners = {of(first.least, second.least), of(first.least, second.greatest),
                              of(first.greatest, second.least),
                              of(first.greatest, second.greatest)};
        add_real(std::min(corners), std::max(corners), result);
    };
    switch (operation) {
        case Operator::kAdd:
            return add_real(first.least + second.least, first.greatest + second.greatest, result);
        case Operator::kSubtract:
            return add_real(first.least - second.greatest, first.greatest - second.least, result);
        case Operator::kMultiply:
            return add_corners([](double one, double other) { return one * other; });
        case Operator::kDivide:
            if (second.least > 0 || second.greatest < 0) {
                return add_corners([](double one, double other) { return one / other; });
            }
            break;
        default:
            break;
    }
    // Powers of reals and divisors around 0 are rare.
    result.may_fault = true;
    result.add(Span::real(kLeastReal, kGreatestReal));
}

void SpanEvaluator::divide(Operator operation, const Span& left, const Span& right,
                           Span& result) const {
    result.add_unknown(left);
    result.add_unknown(right);
    if (!left.may_be_whole || !right.may_be_whole) {
        return;
    }
    const bool has_zero = right.least <= 0 && right.greatest >= 0;
    result.may_fault =
        result.may_fault || has_zero || (left.least == kLeastWhole && right.least <= -1);
    const auto add_for = [&](Whole least, Whole greatest) {  // divisors of one sign
        if (least > greatest) {
            return;
        }
        const auto quotient = [](Whole dividend, Whole divisor) {
            return divisor != -1             ? dividend / divisor
                   : dividend == kLeastWhole ? kGreatestWhole
                                             : -dividend;
        };
        const auto corners = {quotient(left.least, least), quotient(left.least, greatest),
                              quotient(left.greatest, least), quotient(left.greatest, greatest)};
        if (operation == Operator::kDivide || operation == Operator::kQuotient) {
            return result.add(Span::whole(std::min(corners), std::max(corners)));
        }
        const bool is_modulo = operation == Operator::kModulo;
        // Within one round of the divisor the remainder rises with the dividend.
        const bool is_one_sign = left.least >= 0 || left.greatest <= 0;
        if (least == greatest && is_one_sign && least != -1 &&
            quotient(left.least, least) == quotient(left.greatest, least) &&
            (!is_modulo ||
             ((left.least > 0) == (least > 0) && left.least != 0 && left.greatest != 0))) {
            return result.add(Span::whole(left.least % least, left.greatest % least));
        }
        const Whole size = least > 0 ? greatest - 1 : -(least + 1);  // of the greatest remainder
        if (is_modulo) {
            return result.add(least > 0 ? Span::whole(0, size) : Span::whole(-size, 0));
        }
        result.add(Span::whole(left.least >= 0 ? 0 : std::max(-size, left.least),
                               left.greatest <= 0 ? 0 : std::min(size, left.greatest)));
    };
    add_for(right.least, std::min<Whole>(right.greatest, -1));
    add_for(std::max<Whole>(right.least, 1), right.greatest);
}

void SpanEvaluator::raise(const Span& left, const Span& right, Span& result) const {
    bool fault = right.least < 0;
    if (right.greatest >= 0) {
        const Whole least_exponent = std::max<Whole>(right.least, 0);
        if (left.least >= 1) {
            result.add(Span::whole(saturated_power(left.least, least_exponent, &fault),
                                   saturated_power(left.greatest, right.greatest, &fault)));
        } else {
            bool is_cut = false;
            const Whole size = std::max<Whole>(
                1,
                std::max(left.greatest, left.least == kLeastWhole ? kGreatestWhole : -left.least));
            const Whole most = saturated_power(size, right.greatest, &is_cut);
            fault = fault || is_cut;
            result.add(Span::whole(left.least >= 0 ? 0
                                   : is_cut        ? kLeastWhole
                                                   : -most,
                                   std::max<Whole>(1, most)));
        }
    }
    result.may_fault = result.may_fault || fault;
}

Span SpanEvaluator::negative(const Span& operand) const {
    Span result;
    result.add_unknown(operand);
    if (operand.may_be_whole) {
        bool fault = false;
        result.add(Span::whole(saturated_difference(0, operand.greatest, &fault),
                               saturated_difference(0, operand.least, &fault)));
        result.may_fault = result.may_fault || fault;
    }
    if (operand.may_be_real) {
        result.add(Span::real(-operand.greatest_real, -operand.least_real));
    }
    return result;
}

void SpanEvaluator::apply_function(Function function, std::uint32_t count) {
    const std::size_t first = stack_.size() - count;
    Span result;
    if (function == Function::kMin || function == Function::kMax) {
        const bool is_min = function == Function::kMin;
        bool is_all_whole = true;
        for (std::uint32_t i = 0; i < count; ++i) {
            const Span operand = as_number(as_operand(stack_[first + i]));
            is_all_whole = is_all_whole && operand.may_be_whole && !operand.may_be_real;
            const bool is_tighter = i > 0 && is_all_whole;
            if (!is_tighter) {
                result.add(operand);
                continue;
            }
            result.add_unknown(operand);
            result.least = is_min ? std::min(result.least, operand.least)
                                  : std::max(result.least, operand.least);
            result.greatest = is_min ? std::min(result.greatest, operand.greatest)
                                     : std::max(result.greatest, operand.greatest);
        }
    } else {
        result = function_of(function, as_number(as_operand(stack_[first])));
    }
    stack_.resize(first);
    stack_.push_back(std::move(result));
}

Span SpanEvaluator::function_of(Function function, const Span& operand) const {
    Span result;
    result.add_unknown(operand);
    switch (function) {
        case Function::kCeil:
        case Function::kFloor: {
            if (operand.may_be_whole) {
                result.add(Span::whole(operand.least, operand.greatest));
            }
            if (operand.may_be_real) {
                const bool is_ceil = function == Function::kCeil;
                const auto rounded = [&](double real) {
                    return is_ceil ? whole_above(real) : whole_below(real);
                };
                const std::optional<Whole> least = rounded(operand.least_real);
                const std::optional<Whole> greatest = rounded(operand.greatest_real);
                result.may_fault = result.may_fault || !least || !greatest;
                result.add(
                    Span::whole(least.value_or(kLeastWhole), greatest.value_or(kGreatestWhole)));
            }
            return result;
        }
        case Function::kAbs: {
            const Span opposite = negative(operand);
            if (operand.may_be_whole) {
                const bool has_zero = operand.least <= 0 && operand.greatest >= 0;
                result.may_fault = result.may_fault || opposite.may_fault;
                result.add(Span::whole(has_zero ? 0 : std::max(operand.least, opposite.least),
                                       std::max(operand.greatest, opposite.greatest)));
            }
            if (operand.may_be_real) {
                result.add(Span::real(
                    0, std::max(std::fabs(operand.least_real), std::fabs(operand.greatest_real))));
            }
            return result;
        }
        case Function::kLog:
        case Function::kLog2: {
            if (!operand.is_number()) {
                return result;
            }
            const Limits<double> limits = reals_of(operand);
            result.may_fault = result.may_fault || limits.least <= 0;
            if (limits.greatest <= 0) {
                return result;
            }
            const auto log = [function](double real) {
                return function == Function::kLog ? std::log(real) : std::log2(real);
            };
            const double smallest =
                operand.may_be_real ? std::numeric_limits<double>::denorm_min() : 1.0;
            result.add(Span::real(loosened(log(std::max(limits.least, smallest)), -1),
                                  loosened(log(limits.greatest), 1)));
            return result;
        }
        case Function::kMin:
        case Function::kMax:
            break;
    }
    return operand;
}

Span SpanEvaluator::as_condition(const Span& value) const {
    Span result;
    result.add_unknown(value);
    result.add(Span::truth(value.may_be_true, value.may_be_false));
    if (value.may_be_whole) {
        const bool is_zero = value.least == 0 && value.greatest == 0;
        result.add(Span::truth(!is_zero, value.least <= 0 && value.greatest >= 0));
    }
    if (value.may_be_real) {
        const bool is_near_zero = value.least_real <= 0x1p-46 && value.greatest_real >= -0x1p-46;
        result.add(Span::truth(true, is_near_zero));
    }
    if (value.is_any_text) {
        result.add(Span::truth(true, true));
        result.may_fault = true;
    }
    for (const WordId word : value.texts) {
        const std::string_view text = words_.text(word);
        const std::optional<bool> truth = text.empty() ? false : truth_of_text(text);
        result.add(truth ? Span::truth(*truth, !*truth) : Span::fault());
    }
    if (value.is_port) {
        const Span state = names_.port_state(value.port_index);
        result.add_unknown(state);
        if (state.may_be_whole) {
            result.add(Span::truth(state.least <= 2 && state.greatest >= 1,
                                   state.least < 1 || state.greatest > 2));
        }
    }
    return result;
}

Span SpanEvaluator::as_operand(const Span& value) const {
    return value.is_port ? names_.port_constant(value.port_index) : value;
}

Span SpanEvaluator::as_number(const Span& value) const {
    if (!value.is_text() && !value.may_be_true && !value.may_be_false) {
        return value;
    }
    Span result;
    result.add_unknown(value);
    if (value.may_be_whole) {
        result.add(Span::whole(value.least, value.greatest));
    }
    if (value.may_be_real) {
        result.add(Span::real(value.least_real, value.greatest_real));
    }
    if (value.is_any_text) {
        result.add(Span::whole(kLeastWhole, kGreatestWhole));
    }
    result.may_fault =
        result.may_fault || value.is_any_text || value.may_be_true || value.may_be_false;
    for (const WordId word : value.texts) {
        const std::string_view text = words_.text(word);
        const std::optional<Whole> whole =
            is_canonical_decimal(text) ? whole_from_text(text) : std::nullopt;
        result.add(whole ? Span::whole(*whole, *whole) : Span::fault());
    }
    return result;
}

Span SpanEvaluator::as_whole(const Span& value) const {
    Span result = as_number(value);
    if (!result.may_be_real) {
        return result;
    }
    const std::optional<Whole> least = whole_below(widened(result.least_real, -1));
    const std::optional<Whole> greatest = whole_above(widened(result.greatest_real, 1));
    result.may_be_real = false;
    result.may_fault = true;
    result.add(Span::whole(least.value_or(kLeastWhole), greatest.value_or(kGreatestWhole)));
    return result;
}

}  // namespace kivo_session
