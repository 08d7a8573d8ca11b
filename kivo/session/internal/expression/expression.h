#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/internal/expression/fault.h"
#include "kivo/session/internal/expression/operators.h"

namespace kivo_session {

enum class NodeKind : std::uint8_t {
    kNumber,  // whole or with a fraction
    kText,
    kName,
    kCall,
    kUnary,
    kBinary,
};

// One node of a parsed text. Nodes stand in postfix order: the operands of a node come before it,
// the last one directly before, so that the node and all below it are nodes "begin" to itself.
struct Node {
    std::uint32_t offset = 0;  // of its token in the text: number, text with quotes, name, operator
    std::uint32_t length = 0;
    std::uint32_t begin = 0;         // position of the first node of its subtree
    std::uint32_t count = 0;         // operands: arguments of a call, 1, 2 or 0
    std::uint32_t source_begin = 0;  // of the whole subtree in the text, with parentheses around it
    std::uint32_t source_end = 0;
    NodeKind kind = NodeKind::kNumber;
    std::uint8_t row = kNoOperator;  // of an operator
    bool is_parenthesised = false;   // in the text; no node is made for parentheses
};

// A text as the parser understood it.
struct Expression {
    std::vector<Node> nodes;     // the root is the last; empty when there is a fault
    std::optional<Fault> fault;  // the first one
};

inline constexpr std::size_t kLongestText = 65536;
inline constexpr std::size_t kMostOpen = 256;

// Parses a text of the rule language, with memory in proportion to it and without recursion.
// "expression" is filled anew; its memory is used again.
void parse(std::string_view text, Expression& expression);

inline std::string_view token_of(std::string_view text, const Node& node) {
    return text.substr(node.offset, node.length);
}

// The bytes between the quotes of a text node.
inline std::string_view literal_of(std::string_view text, const Node& node) {
    return text.substr(node.offset + 1, node.length - 2);
}

// The positions of the operands of nodes[root], first to last.
void operands_of(const std::vector<Node>& nodes, std::uint32_t root,
                 std::vector<std::uint32_t>& operands);

// Whether two subtrees of a text say the same, however they are spelled and parenthesised.
bool is_same(std::string_view text, const std::vector<Node>& nodes, std::uint32_t first,
             std::uint32_t second);

// Whether a node of level "inner" needs parentheses as an operand of an operator, as its last one
// or not.
bool needs_parentheses(const Node& inner, Operator outer, bool is_last);

// The text of a subtree with the parentheses that it needs and no others. Parsing it gives the
// same tree.
std::string print(std::string_view text, const std::vector<Node>& nodes, std::uint32_t root);

// "if A then B else C", which the combined text of a value rule says. Positions of nodes.
struct Implication {
    std::uint32_t condition = 0;
    std::uint32_t consequence = 0;
    std::optional<std::uint32_t> alternative;
};

// The implication that the whole of a text is: (A and B) || (!A), or (A and B) || (!A and C), both
// A being the same.
std::optional<Implication> find_implication(std::string_view text, const std::vector<Node>& nodes);

}  // namespace kivo_session
