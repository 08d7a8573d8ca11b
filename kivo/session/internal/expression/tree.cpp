#include <utility>

#include "kivo/session/internal/expression/expression.h"

namespace kivo_session {

namespace {

bool is_same_node(std::string_view text, const Node& first, const Node& second) {
    if (first.kind != second.kind || first.count != second.count) {
        return false;
    }
    if (first.kind == NodeKind::kUnary || first.kind == NodeKind::kBinary) {
        return operator_row(first.row).operation == operator_row(second.row).operation;
    }
    return token_of(text, first) == token_of(text, second);
}

bool is_operation(const Node& node, Operator operation) {
    return node.row != kNoOperator && operator_row(node.row).operation == operation;
}

// Writes a tree with a list of what is still to be written in place of recursion.
class Printer {
public:
    Printer(std::string_view text, const std::vector<Node>& nodes) : text_(text), nodes_(nodes) {}

    std::string run(std::uint32_t root) {
        plan(root, false);
        while (!tasks_.empty()) {
            const Task task = tasks_.back();
            tasks_.pop_back();
            if (task.literal != nullptr) {
                result_ += task.literal;
            } else if (task.is_token) {
                result_ += token_of(text_, nodes_[task.node]);
            } else {
                write(task.node);
            }
        }
        return std::move(result_);
    }

private:
    struct Task {
        const char* literal;
        std::uint32_t node;
        bool is_token;
    };

    void plan(std::uint32_t node, bool in_parentheses) {
        if (in_parentheses) {
            tasks_.push_back({")", 0, false});
        }
        tasks_.push_back({nullptr, node, false});
        if (in_parentheses) {
            tasks_.push_back({"(", 0, false});
        }
    }

    // Plans what a node consists of, from its end.
    void write(std::uint32_t position) {
        const Node& node = nodes_[position];
        operands_of(nodes_, position, operands_);
        switch (node.kind) {
            case NodeKind::kNumber:
            case NodeKind::kText:
            case NodeKind::kName:
                result_ += token_of(text_, node);
                return;
            case NodeKind::kCall:
                tasks_.push_back({")", 0, false});
                for (std::size_t i = operands_.size(); i-- > 0;) {
                    plan(operands_[i], false);
                    tasks_.push_back({i == 0 ? "" : ", ", 0, false});
                }
                result_ += token_of(text_, node);
                result_ += '(';
                return;
            case NodeKind::kUnary:
                result_ += token_of(text_, node);
                if (is_word(token_of(text_, node))) {
                    result_ += ' ';
                }
                plan_operand(node, operands_[0], false);
                return;
            case NodeKind::kBinary:
                plan_operand(node, operands_[1], true);
                tasks_.push_back({" ", 0, false});
                tasks_.push_back({nullptr, position, true});
                tasks_.push_back({" ", 0, false});
                plan_operand(node, operands_[0], false);
                return;
        }
    }

    void plan_operand(const Node& outer, std::uint32_t inner, bool is_last) {
        plan(inner, needs_parentheses(nodes_[inner], operator_row(outer.row).operation, is_last));
    }

    std::string_view text_;
    const std::vector<Node>& nodes_;
    std::vector<Task> tasks_;  // the next one last
    std::vector<std::uint32_t> operands_;
    std::string result_;
};

}  // namespace

void operands_of(const std::vector<Node>& nodes, std::uint32_t root,
                 std::vector<std::uint32_t>& operands) {
    operands.resize(nodes[root].count);
    std::uint32_t end = root;
    for (std::size_t i = operands.size(); i-- > 0;) {
        operands[i] = end - 1;
        end = nodes[end - 1].begin;
    }
}

bool is_same(std::string_view text, const std::vector<Node>& nodes, std::uint32_t first,
             std::uint32_t second) {
    const std::uint32_t size = first - nodes[first].begin;
    if (size != second - nodes[second].begin) {
        return false;
    }
    for (std::uint32_t i = 0; i <= size; ++i) {
        if (!is_same_node(text, nodes[first - i], nodes[second - i])) {
            return false;
        }
    }
    return true;
}

bool needs_parentheses(const Node& inner, Operator outer, bool is_last) {
    if (inner.row == kNoOperator) {
        return false;
    }
    const Level level = operator_row(inner.row).level;
    switch (outer) {
        case Operator::kOr:
            return is_last && level == Level::kOr;
        case Operator::kAnd:
            return level < Level::kAnd || (is_last && level == Level::kAnd);
        case Operator::kEqual:
        case Operator::kUnlike:
        case Operator::kLess:
        case Operator::kAtMost:
        case Operator::kGreater:
        case Operator::kAtLeast:
            return level <= Level::kComparison;
        case Operator::kAdd:
        case Operator::kSubtract:
            return level < Level::kSum || (is_last && level == Level::kSum);
        case Operator::kMultiply:
        case Operator::kDivide:
        case Operator::kRemainder:
        case Operator::kModulo:
        case Operator::kQuotient:
            return level < Level::kProduct || (is_last && level == Level::kProduct);
        case Operator::kPlus:
        case Operator::kMinus:
            return level < Level::kSign;
        case Operator::kPower:
            return level <= Level::kPower;
        case Operator::kNot:
            return level < Level::kNot;
    }
    return true;
}

std::string print(std::string_view text, const std::vector<Node>& nodes, std::uint32_t root) {
    return Printer(text, nodes).run(root);
}

std::optional<Implication> find_implication(std::string_view text, const std::vector<Node>& nodes) {
    const auto root = static_cast<std::uint32_t>(nodes.size()) - 1;
    if (nodes.empty() || !is_operation(nodes[root], Operator::kOr)) {
        return std::nullopt;
    }
    const std::uint32_t right = root - 1;
    const std::uint32_t left = nodes[right].begin - 1;
    if (!is_operation(nodes[left], Operator::kAnd)) {
        return std::nullopt;
    }
    Implication found;
    found.consequence = left - 1;
    found.condition = nodes[found.consequence].begin - 1;
    std::uint32_t negation = right;
    if (is_operation(nodes[right], Operator::kAnd)) {
        found.alternative = right - 1;
        negation = nodes[right - 1].begin - 1;
    }
    if (!is_operation(nodes[negation], Operator::kNot) ||
        !is_same(text, nodes, found.condition, negation - 1)) {
        return std::nullopt;
    }
    return found;
}

}  // namespace kivo_session
