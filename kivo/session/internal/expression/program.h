#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kivo/session/internal/expression/expression.h"
#include "kivo/session/internal/expression/names.h"
#include "kivo/session/internal/expression/value.h"

namespace kivo_session {

enum class Action : std::uint8_t {
    kConstant,  // index: in Code::constants
    kValue,     // index: of a parameter
    kPort,      // index: of a port
    kArgument,  // index: of an argument of the macro that is being evaluated
    kMacro,     // index: of a macro without arguments
    kCall,      // index: of a macro; "count" arguments lie on the stack
    kFunction,  // what: a Function; "count" arguments
    kOperator,  // what: an Operator; index: of "==" and "!=" which operands are state words
};

// A state word counts as one beside a port, and only where it is written as such: a parameter whose
// value is the same text is none.
inline constexpr std::uint32_t kLeftStateWord = 1;
inline constexpr std::uint32_t kRightStateWord = 2;

struct Instruction {
    Action action;
    std::uint8_t what;
    std::uint16_t count;
    std::uint32_t index;
    std::uint32_t offset;  // in the text
};

// A compiled text or a part of one: instructions [begin, end) of the code.
struct Program {
    bool is_empty() const { return begin == end; }

    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t text = 0;    // which text it is made from
    std::uint32_t offset = 0;  // where its source begins in the text
};

struct Code {
    // The position of a constant among "constants", each of which stands there once: rules name few
    // different ones, and those stay where they are fast to reach.
    std::uint32_t add_constant(Value value);

    std::vector<Instruction> instructions;
    std::vector<Value> constants;

private:
    struct Hash {
        std::size_t operator()(const Value& value) const;
    };
    std::unordered_map<Value, std::uint32_t, Hash> index_;
};

// What a text asks of the names in it.
enum class UseKind : std::uint8_t { kParameter, kPortState, kPortConstant, kMacro };

struct Use {
    UseKind kind;
    std::uint32_t index;
};

// Where a value is used: that decides what a port that stands alone is asked.
enum class Position : std::uint8_t { kCondition, kNumber, kAnything };

// Appends the instructions of a subtree, and what it uses to "uses" (some of it more than once).
// With faults in the resolution what it uses counts alone: the program must not be run.
Program compile(std::string_view text, const std::vector<Node>& nodes, std::uint32_t root,
                const Resolution& resolution, Position position, std::uint32_t text_number,
                Words& words, Code& code, std::vector<Use>& uses);

}  // namespace kivo_session
