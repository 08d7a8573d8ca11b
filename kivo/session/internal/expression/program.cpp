#include "kivo/session/internal/expression/program.h"

#include <charconv>
#include <limits>
#include <optional>

#include "kivo/session/internal/expression/port_state.h"

namespace kivo_session {

namespace {

class Compiler {
public:
    Compiler(std::string_view text, const std::vector<Node>& nodes, const Resolution& resolution,
             std::uint32_t text_number, Words& words, Code& code, std::vector<Use>& uses)
        : text_(text),
          nodes_(nodes),
          bindings_(resolution.bindings),
          text_number_(text_number),
          words_(words),
          code_(code),
          uses_(uses) {}

    Program run(std::uint32_t root, Position position) {
        Program program;
        program.begin = static_cast<std::uint32_t>(code_.instructions.size());
        program.text = text_number_;
        program.offset = nodes_[root].source_begin;
        for (std::uint32_t i = nodes_[root].begin; i <= root; ++i) {
            emit(i);
        }
        program.end = static_cast<std::uint32_t>(code_.instructions.size());
        note_ports(root, position);
        return program;
    }

private:
    void emit(std::uint32_t position);
    void emit_name(std::uint32_t position);
    void push(Action action, std::uint32_t position, std::uint32_t index, std::uint8_t what = 0) {
        const Node& node = nodes_[position];
        code_.instructions.push_back(
            {action, what, static_cast<std::uint16_t>(node.count), index, node.offset});
    }
    void push_constant(std::uint32_t position, Value value) {
        push(Action::kConstant, position, code_.add_constant(value));
    }
    std::optional<Value> number(std::string_view token) const;

    // What ports are asked follows from where they stand.
    void note_ports(std::uint32_t root, Position position);
    void note_port(std::uint32_t position, Position place);
    bool is_state_text(std::uint32_t position) const;
    // Which operands of a comparison for equality are written as a state of a port.
    std::uint32_t state_words_beside(std::uint32_t position) const;

    std::string_view text_;
    const std::vector<Node>& nodes_;
    const std::vector<Binding>& bindings_;
    std::uint32_t text_number_;
    Words& words_;
    Code& code_;
    std::vector<Use>& uses_;
    bool has_port_ = false;
};

void Compiler::emit(std::uint32_t position) {
    const Node& node = nodes_[position];
    switch (node.kind) {
        case NodeKind::kNumber:
            if (const std::optional<Value> value = number(token_of(text_, node))) {
                return push_constant(position, *value);
            }
            // Told when it is evaluated, as a result that is too large is.
            return push(Action::kConstant, position, std::numeric_limits<std::uint32_t>::max());
        case NodeKind::kText:
            return push_constant(position, Value::text(words_.intern(literal_of(text_, node))));
        case NodeKind::kName:
        case NodeKind::kCall:
            return emit_name(position);
        case NodeKind::kUnary:
            return push(Action::kOperator, position, 0,
                        static_cast<std::uint8_t>(operator_row(node.row).operation));
        case NodeKind::kBinary:
            return push(Action::kOperator, position, state_words_beside(position),
                        static_cast<std::uint8_t>(operator_row(node.row).operation));
    }
}

void Compiler::emit_name(std::uint32_t position) {
    const Binding& binding = bindings_[position];
    switch (binding.kind) {
        case BindingKind::kNone:
            return;  // a fault: nothing is compiled
        case BindingKind::kArgument:
            return push(Action::kArgument, position, binding.index);
        case BindingKind::kParameter:
            uses_.push_back({UseKind::kParameter, binding.index});
            return push(Action::kValue, position, binding.index);
        case BindingKind::kPort:
            has_port_ = true;
            return push(Action::kPort, position, binding.index);
        case BindingKind::kMacro:
            uses_.push_back({UseKind::kMacro, binding.index});
            return push(nodes_[position].count == 0 ? Action::kMacro : Action::kCall, position,
                        binding.index);
        case BindingKind::kTruth:
            return push_constant(position, Value::truth(binding.index != 0));
        case BindingKind::kWord:
            return push_constant(position,
                                 Value::text(words_.intern(token_of(text_, nodes_[position]))));
        case BindingKind::kFunction:
            return push(Action::kFunction, position, 0, static_cast<std::uint8_t>(binding.index));
    }
}

std::optional<Value> Compiler::number(std::string_view token) const {
    if (token.find('.') == std::string_view::npos) {
        const std::optional<Whole> whole = whole_from_text(token);
        return whole ? std::optional(Value::whole(*whole)) : std::nullopt;
    }
    double real = 0;
    const auto result = std::from_chars(token.data(), token.data() + token.size(), real);
    // A fraction too small for a double is 0; from_chars calls both ends out of range.
    if (result.ec == std::errc::result_out_of_range) {
        const bool is_small = token.find_first_not_of("0.") > token.find('.');
        return is_small ? std::optional(Value::real(0)) : std::nullopt;
    }
    return Value::real(real);
}

void Compiler::note_ports(std::uint32_t root, Position position) {
    if (!has_port_) {
        return;
    }
    if (bindings_[root].kind == BindingKind::kPort) {
        return note_port(root, position);
    }
    for (std::uint32_t i = nodes_[root].begin; i <= root; ++i) {
        const Node& node = nodes_[i];
        std::uint32_t operand = i;
        for (std::uint32_t count = node.count; count > 0; --count) {
            --operand;
            if (bindings_[operand].kind == BindingKind::kPort) {
                Position place = Position::kAnything;
                if (node.kind == NodeKind::kCall) {
                    place = bindings_[i].kind == BindingKind::kFunction ? Position::kNumber
                                                                        : Position::kAnything;
                } else {
                    const Operator operation = operator_row(node.row).operation;
                    const bool is_condition = operation == Operator::kAnd ||
                                              operation == Operator::kOr ||
                                              operation == Operator::kNot;
                    place = is_condition ? Position::kCondition : Position::kNumber;
                    const std::uint32_t other = operand == i - 1 ? kLeftStateWord : kRightStateWord;
                    if ((state_words_beside(i) & other) != 0) {
                        place = Position::kCondition;
                    }
                }
                note_port(operand, place);
            }
            operand = nodes_[operand].begin;
        }
    }
}

bool Compiler::is_state_text(std::uint32_t position) const {
    if (nodes_[position].kind == NodeKind::kText) {
        return is_state_word(literal_of(text_, nodes_[position]));
    }
    return bindings_[position].kind == BindingKind::kWord &&
           is_state_word(token_of(text_, nodes_[position]));
}

std::uint32_t Compiler::state_words_beside(std::uint32_t position) const {
    const Operator operation = operator_row(nodes_[position].row).operation;
    if (operation != Operator::kEqual && operation != Operator::kUnlike) {
        return 0;
    }
    const std::uint32_t right = position - 1;
    const std::uint32_t left = nodes_[right].begin - 1;
    return (is_state_text(left) ? kLeftStateWord : 0) |
           (is_state_text(right) ? kRightStateWord : 0);
}

void Compiler::note_port(std::uint32_t position, Position place) {
    const std::uint32_t port = bindings_[position].index;
    if (place != Position::kNumber) {
        uses_.push_back({UseKind::kPortState, port});
    }
    if (place != Position::kCondition) {
        uses_.push_back({UseKind::kPortConstant, port});
    }
}

}  // namespace

std::size_t Code::Hash::operator()(const Value& value) const {
    const auto bits = static_cast<std::uint64_t>(value.low ^ value.high) +
                      (static_cast<std::uint64_t>(value.kind) << 56);
    return bits * 0x9E3779B97F4A7C15U >> 20;
}

std::uint32_t Code::add_constant(Value value) {
    const auto [entry, is_new] =
        index_.try_emplace(value, static_cast<std::uint32_t>(constants.size()));
    if (is_new) {
        constants.push_back(value);
    }
    return entry->second;
}

Program compile(std::string_view text, const std::vector<Node>& nodes, std::uint32_t root,
                const Resolution& resolution, Position position, std::uint32_t text_number,
                Words& words, Code& code, std::vector<Use>& uses) {
    return Compiler(text, nodes, resolution, text_number, words, code, uses).run(root, position);
}

}  // namespace kivo_session
