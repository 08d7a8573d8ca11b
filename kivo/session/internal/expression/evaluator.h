#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "kivo/session/internal/expression/port_state.h"
#include "kivo/session/internal/expression/program.h"
#include "kivo/session/internal/expression/value.h"

namespace kivo_session {

// The truth that a text stands for; nothing for any text but ON, TRUE, OFF and FALSE.
std::optional<bool> truth_of_text(std::string_view text);

// What names stand for while texts are evaluated.
struct Scene {
    const Code* code = nullptr;          // of the macros
    const Code* local_code = nullptr;    // of the program that is evaluated, when it is another one
    const Value* parameters = nullptr;   // by parameter
    const Value* port_states = nullptr;  // by port: the number of a PortState, or unknown
    const Value* port_constants = nullptr;  // by port; unknown for run time when it is not tied
    const Program* macros = nullptr;        // by macro
    const Value* macro_values = nullptr;    // by macro: of those without arguments
    Words* words = nullptr;
    ReasonSets* reasons = nullptr;

    // The object whose own texts are evaluated: there its name means what was asked for.
    std::uint32_t own_parameter = kNoNode;
    std::uint32_t own_port = kNoNode;
    Value own_value;  // of the parameter, or the state of the port
    Value own_constant;
    // Macros that mention it, and so are not read from macro_values: null for none, else a flag
    // for each macro.
    const std::uint8_t* expanded_macros = nullptr;
};

// Evaluates programs, with stacks of its own that are used again. Does not allocate once they are
// large enough, except for texts and sets of reasons that are new.
class Evaluator {
public:
    static constexpr std::uint32_t kMostSteps = 1000000;

    // What a program gives; a port is given as itself.
    Value anything(const Program& program, const Scene& scene);
    // The same, but of a port whether it is connected.
    Value value(const Program& program, const Scene& scene);
    // A truth or unknown.
    Value condition(const Program& program, const Scene& scene);
    // A number or unknown.
    Value number(const Program& program, const Scene& scene);
    // The value after each instruction: that of the expression which it ends.
    void trace(const Program& program, const Scene& scene, std::vector<Value>& values);
    // A whole number or unknown.
    Value whole(const Program& program, const Scene& scene);
    // The same, but what is no whole number is given as it is.
    Value size(const Program& program, const Scene& scene);

    // Whether the name of the own parameter was read since it was last forgotten.
    bool has_read_own() const { return has_read_own_; }
    void forget_own_reads() { has_read_own_ = false; }

    // Compares values that are known; what is wrong with them is told of the program's text.
    Value at_most(Value least, Value greatest, const Program& program, const Scene& scene);

private:
    struct Frame {
        const Code* code;
        std::uint32_t at;
        std::uint32_t end;
        std::uint32_t text;
        std::uint32_t arguments;  // where they begin on the stack
    };

    Value run(const Program& program);
    // The same, with "note" called when an instruction or macro is through.
    template <class Note>
    Value run(const Program& program, Note note);
    void make_room(const Program& program);
    void push(const Value& value) { stack_[top_++] = value; }
    void step(const Instruction& instruction);
    void call(const Program& macro, std::uint32_t arguments);
    void apply_function(Function function, std::uint32_t count, std::uint32_t offset);
    Value function_of(Function function, Value operand, std::uint32_t offset);
    Value choose(Function function, const Value* operands, std::uint32_t count,
                 std::uint32_t offset);
    void apply_operator(Operator operation, std::uint32_t offset, std::uint32_t state_words);

    Value both(Value left, Value right, std::uint32_t offset);
    Value either(Value left, Value right, std::uint32_t offset);
    Value negated(Value operand, std::uint32_t offset);
    Value compared(Operator operation, Value left, Value right, std::uint32_t offset);
    Value compared_states(Operator operation, Value port, Value word);
    Value compared_truth(Operator operation, Value truth, Value other, std::uint32_t offset);
    Value calculated(Operator operation, Value left, Value right, std::uint32_t offset);
    Value calculated_whole(Operator operation, Whole left, Whole right, std::uint32_t offset);
    Value calculated_real(Operator operation, double left, double right, std::uint32_t offset);
    Value divided(Operator operation, Value left, Value right, std::uint32_t offset);
    Value power(Value left, Value right, std::uint32_t offset);
    Value signed_value(Operator operation, Value operand, std::uint32_t offset);

    Value as_condition(Value value, std::uint32_t offset);
    Value as_number(Value value, std::uint32_t offset);
    Value as_whole(Value value, std::uint32_t offset);
    // A port's constant in place of the port.
    Value as_operand(Value value) const;
    Value state_of(std::uint32_t port) const;
    Value constant_of(std::uint32_t port) const;
    Value checked_real(double real, std::uint32_t offset);
    Value fault(FaultId id, std::uint32_t offset);
    Value united(Value left, Value right);

    const Scene* scene_ = nullptr;
    std::vector<Value> stack_;  // those below top_ count
    std::size_t top_ = 0;
    std::vector<Frame> frames_;
    Frame frame_{};
    std::uint32_t steps_ = 0;
    bool has_read_own_ = false;
};

}  // namespace kivo_session
