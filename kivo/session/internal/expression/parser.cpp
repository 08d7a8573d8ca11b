#include <utility>

#include "kivo/session/internal/expression/expression.h"
#include "kivo/session/internal/expression/lexer.h"
#include "kivo/toolkit/less_c_string.h"

namespace kivo_session {

namespace {

enum class OpenKind : std::uint8_t { kPrefix, kBinary, kParenthesis, kCall };

// What has begun and waits for its last operand.
struct Open {
    OpenKind kind;
    std::uint8_t row;
    Level level;
    std::uint32_t offset;
    std::uint32_t length;
    std::uint32_t count;  // arguments of a call so far
};

// A word of other languages that stands where an operator is needed.
struct ForeignWord {
    const char* word;
    const char* instead;
};

// clang-format off
constexpr ForeignWord kForeignWords[] = {
    { "eq",  "\"==\""                            },
    { "ge",  "\">=\" or \"gte\""                },
    { "le",  "\"<=\" or \"lte\""                },
    { "ne",  "\"!=\""                            },
    { "neq", "\"!=\""                            },
    { "xor", "\"!=\" between two conditions"    },
};
// clang-format on

bool is_left_associative(Level level) {
    return level != Level::kComparison && level != Level::kPower;
}

class Parser {
public:
    Parser(std::string_view text, Expression& expression)
        : text_(text), lexer_(text), expression_(expression), nodes_(expression.nodes) {}

    void run() {
        while (!is_done_) {
            const Token token = lexer_.next();
            if (needs_operand_) {
                take_operand(token);
            } else {
                take_operator(token);
            }
        }
    }

private:
    void take_operand(const Token& token);
    void take_prefix(const Token& token);
    void take_name(const Token& token);
    void take_operator(const Token& token);
    void take_binary(const Token& token);
    void close(const Token& token);
    void next_argument(const Token& token);
    void finish(const Token& token);

    void push_operand(const Token& token, NodeKind kind);
    void push_open(const Token& token, OpenKind kind, std::uint8_t row, Level level);
    bool is_operator_open() const {
        return !open_.empty() && open_.back().kind <= OpenKind::kBinary;
    }
    // Makes nodes of all operators that wait, back to the last parenthesis.
    void reduce_operators() {
        while (is_operator_open()) {
            reduce();
        }
    }
    void reduce();
    void push_node(const Open& open, NodeKind kind, std::uint32_t count, std::uint32_t end);

    void fail(const Token& token, std::string text, FaultId id = FaultId::kExpressionSyntax);
    std::string quoted(const Token& token) const;
    // Null for a token that is none.
    const ForeignWord* find_foreign_word(const Token& token) const;
    // What to say of a token that cannot stand where it stands.
    void fail_at(const Token& token, const char* expected);

    std::string_view text_;
    Lexer lexer_;
    Expression& expression_;
    std::vector<Node>& nodes_;
    std::vector<Open> open_;
    bool needs_operand_ = true;
    bool is_call_empty_ = false;  // the last token was the "(" of a call
    bool is_done_ = false;
};

void Parser::take_operand(const Token& token) {
    const bool may_close = std::exchange(is_call_empty_, false);
    switch (token.kind) {
        case TokenKind::kNumber:
            return push_operand(token, NodeKind::kNumber);
        case TokenKind::kText:
            return push_operand(token, NodeKind::kText);
        case TokenKind::kName:
            return take_name(token);
        case TokenKind::kOperator:
            return take_prefix(token);
        case TokenKind::kOpen:
            return push_open(token, OpenKind::kParenthesis, kNoOperator, Level::kNot);
        case TokenKind::kClose:
            if (may_close) {
                push_node(open_.back(), NodeKind::kCall, 0, token.offset + 1);
                open_.pop_back();
                return;
            }
            [[fallthrough]];
        case TokenKind::kComma:
        case TokenKind::kEnd:
        case TokenKind::kWrong:
            return fail_at(token, "a number, text, name or \"(\"");
    }
}

void Parser::take_name(const Token& token) {
    if (!lexer_.is_before_open()) {
        return push_operand(token, NodeKind::kName);
    }
    push_open(token, OpenKind::kCall, kNoOperator, Level::kNot);
    lexer_.next();
    is_call_empty_ = true;
}

void Parser::take_prefix(const Token& token) {
    if (operator_row(token.row).operation == Operator::kNot) {
        return push_open(token, OpenKind::kPrefix, token.row, Level::kNot);
    }
    const std::string_view spelling = text_.substr(token.offset, token.length);
    const bool is_sign = spelling == "+" || spelling == "-";
    const bool follows_not = is_operator_open() && open_.back().row != kNoOperator &&
                             operator_row(open_.back().row).operation == Operator::kNot;
    if (!is_sign || follows_not) {
        return fail_at(token, "a number, text, name or \"(\"");
    }
    // In an exponent a sign belongs to the operand alone: a power of a power is refused there too.
    const bool is_in_exponent = is_operator_open() && open_.back().level >= Level::kPower;
    push_open(token, OpenKind::kPrefix, sign_row(spelling.front()),
              is_in_exponent ? Level::kNot : Level::kSign);
}

void Parser::take_operator(const Token& token) {
    switch (token.kind) {
        case TokenKind::kOperator:
            return take_binary(token);
        case TokenKind::kClose:
            return close(token);
        case TokenKind::kComma:
            return next_argument(token);
        case TokenKind::kEnd:
            return finish(token);
        case TokenKind::kNumber:
        case TokenKind::kText:
        case TokenKind::kName:
        case TokenKind::kOpen:
        case TokenKind::kWrong:
            return fail_at(token, "an operator");
    }
}

void Parser::take_binary(const Token& token) {
    const OperatorRow& row = operator_row(token.row);
    if (row.operation == Operator::kNot) {
        return fail_at(token, "an operator");
    }
    while (is_operator_open() &&
           (open_.back().level > row.level ||
            (open_.back().level == row.level && is_left_associative(row.level)))) {
        reduce();
    }
    if (is_operator_open() && open_.back().level == row.level) {
        return fail(token, row.level == Level::kPower
                               ? "a power of a power has no one reading; write parentheses"
                               : "a comparison of a comparison has no one reading; write \"and\" "
                                 "between two comparisons");
    }
    push_open(token, OpenKind::kBinary, token.row, row.level);
    needs_operand_ = true;
}

void Parser::close(const Token& token) {
    reduce_operators();
    if (open_.empty()) {
        return fail(token, "no \"(\" stands before this \")\"");
    }
    const Open open = open_.back();
    open_.pop_back();
    if (open.kind == OpenKind::kCall) {
        push_node(open, NodeKind::kCall, open.count + 1, token.offset + 1);
    } else {
        nodes_.back().is_parenthesised = true;
        nodes_.back().source_begin = open.offset;
        nodes_.back().source_end = token.offset + 1;
    }
}

void Parser::next_argument(const Token& token) {
    reduce_operators();
    if (open_.empty() || open_.back().kind != OpenKind::kCall) {
        return fail(token, "\",\" stands only between the arguments of a macro or function");
    }
    ++open_.back().count;
    needs_operand_ = true;
}

void Parser::finish(const Token& token) {
    reduce_operators();
    if (!open_.empty()) {
        return fail(token, "\")\" is missing");
    }
    is_done_ = true;
}

void Parser::push_operand(const Token& token, NodeKind kind) {
    Node node;
    node.offset = token.offset;
    node.length = token.length;
    node.begin = static_cast<std::uint32_t>(nodes_.size());
    node.source_begin = token.offset;
    node.source_end = token.offset + token.length;
    node.kind = kind;
    nodes_.push_back(node);
    needs_operand_ = false;
}

void Parser::push_open(const Token& token, OpenKind kind, std::uint8_t row, Level level) {
    if (open_.size() == kMostOpen) {
        return fail(token, fault_text(FaultId::kTooDeep), FaultId::kTooDeep);
    }
    open_.push_back({kind, row, level, token.offset, token.length, 0});
}

void Parser::reduce() {
    const Open open = open_.back();
    open_.pop_back();
    const bool is_prefix = open.kind == OpenKind::kPrefix;
    push_node(open, is_prefix ? NodeKind::kUnary : NodeKind::kBinary, is_prefix ? 1 : 2,
              nodes_.back().source_end);
}

void Parser::push_node(const Open& open, NodeKind kind, std::uint32_t count, std::uint32_t end) {
    Node node;
    node.offset = open.offset;
    node.length = open.length;
    node.kind = kind;
    node.row = open.row;
    node.count = count;
    node.begin = static_cast<std::uint32_t>(nodes_.size());
    for (; count > 0; --count) {
        node.begin = nodes_[node.begin - 1].begin;
    }
    const bool begins_with_operand = kind == NodeKind::kBinary;
    node.source_begin =
        begins_with_operand ? nodes_[nodes_.back().begin - 1].source_begin : open.offset;
    node.source_end = end;
    nodes_.push_back(node);
    needs_operand_ = false;
}

std::string Parser::quoted(const Token& token) const {
    constexpr std::size_t kLongest = 40;
    const std::string_view bytes = text_.substr(token.offset, token.length);
    return "\"" + std::string(bytes.substr(0, kLongest)) +
           (bytes.size() > kLongest ? "...\"" : "\"");
}

const ForeignWord* Parser::find_foreign_word(const Token& token) const {
    if (token.kind != TokenKind::kName) {
        return nullptr;
    }
    const std::string_view word = text_.substr(token.offset, token.length);
    for (const ForeignWord& row : kForeignWords) {
        if (LESS_C_STRING::compare(word, row.word) == 0) {
            return &row;
        }
    }
    return nullptr;
}

void Parser::fail_at(const Token& token, const char* expected) {
    std::string text;
    if (token.hint != nullptr) {
        text = quoted(token) + ": " + token.hint;
    } else if (token.kind == TokenKind::kEnd) {
        text = nodes_.empty() && open_.empty() ? "the text is empty"
                                               : std::string(expected) + " is missing at the end";
    } else if (const ForeignWord* const word = find_foreign_word(token)) {
        text = std::string("there is no \"") + word->word + "\"; write " + word->instead;
    } else {
        text = std::string(expected) + " is missing before " + quoted(token);
    }
    fail(token, std::move(text));
}

void Parser::fail(const Token& token, std::string text, FaultId id) {
    std::size_t offset = 0;
    if (const LookAlike* found = find_look_alike(text_, &offset)) {
        text += std::string("; column ") + std::to_string(offset + 1) + " holds " + found->name +
                ": " + found->hint;
    }
    expression_.fault = Fault{id, token.offset, token.length, std::move(text)};
    nodes_.clear();
    is_done_ = true;
}

}  // namespace

void parse(std::string_view text, Expression& expression) {
    expression.nodes.clear();
    expression.fault.reset();
    if (text.size() > kLongestText) {
        expression.fault =
            Fault{FaultId::kTextTooLong, kLongestText, 0, fault_text(FaultId::kTextTooLong)};
        return;
    }
    // At most one node a byte, and far fewer in what people write.
    expression.nodes.reserve(text.size() / 2 + 1);
    Parser(text, expression).run();
}

}  // namespace kivo_session
