#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/expression/operators.h"
#include "kivo/session/internal/expression/program.h"
#include "kivo/session/internal/search/span.h"

namespace kivo_session {

// What names can be while texts are evaluated over spans.
class SpanNames {
public:
    virtual ~SpanNames() = default;

    virtual Span parameter(std::uint32_t index) const = 0;
    virtual Span port_state(std::uint32_t port) const = 0;  // numbers of PortState
    virtual Span port_constant(std::uint32_t port) const = 0;
    // Of a macro without arguments.
    virtual Span macro_value(std::uint32_t macro) const = 0;
    virtual bool is_expanded(std::uint32_t macro) const = 0;
    virtual const Program& macro_program(std::uint32_t macro) const = 0;
};

// The evaluator's rules, for everything that values can be at once.
class SpanEvaluator {
public:
    SpanEvaluator(const Code& code, const Words& words, const ReasonSets& reasons,
                  const SpanNames& names)
        : code_(code), words_(words), reasons_(reasons), names_(names) {}

    Span anything(const Program& program);
    Span value(const Program& program);
    Span condition(const Program& program);
    Span number(const Program& program);
    Span whole(const Program& program);
    // Whether it is a whole number above 0.
    Span is_size(const Program& program);

    Span both(const Span& left, const Span& right) const;
    Span either(const Span& left, const Span& right) const;
    Span compared(Operator operation, Span left, Span right) const;
    Span as_condition(const Span& value) const;
    // A port's constant in place of the port.
    Span as_operand(const Span& value) const;
    Span as_whole(const Span& value) const;

private:
    struct Frame {
        std::uint32_t at;
        std::uint32_t end;
        std::uint32_t arguments;
    };

    void step(const Instruction& instruction);
    void call(const Program& macro, std::uint32_t arguments);
    void apply_operator(Operator operation, std::uint32_t state_words);
    void apply_function(Function function, std::uint32_t count);

    Span compared_states(Operator operation, const Span& port, const Span& word) const;
    void compare_texts(Operator operation, const Span& left, const Span& right, Span& result) const;
    void compare_truths(Operator operation, const Span& truth, const Span& other,
                        Span& result) const;
    Span calculated(Operator operation, const Span& left, const Span& right) const;
    void calculate_whole(Operator operation, const Span& left, const Span& right,
                         Span& result) const;
    void calculate_real(Operator operation, const Span& left, const Span& right,
                        Span& result) const;
    void divide(Operator operation, const Span& left, const Span& right, Span& result) const;
    void raise(const Span& left, const Span& right, Span& result) const;
    Span negative(const Span& operand) const;
    Span function_of(Function function, const Span& operand) const;
    // Numbers only, with what texts stand for.
    Span as_number(const Span& value) const;

    const Code& code_;
    const Words& words_;
    const ReasonSets& reasons_;
    const SpanNames& names_;
    std::vector<Span> stack_;
    std::vector<Frame> frames_;
    Frame frame_{};
};

}  // namespace kivo_session
