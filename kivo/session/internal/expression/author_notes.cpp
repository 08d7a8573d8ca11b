#include "kivo/session/internal/expression/author_notes.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "kivo/session/internal/expression/whole.h"
#include "kivo/session/internal/near_word.h"
#include "kivo/toolkit/less_c_string.h"

namespace kivo_session {

namespace {

struct NoteRow {
    NoteId id;
    const char* name;
    const char* text;
};

// clang-format off
constexpr NoteRow kNotes[] = {
    { NoteId::kMixedAndOr,          "mixed-and-or",          "\"and\" stands beside \"or\" without parentheses; languages differ in how they read that" },
    { NoteId::kSignBeforePower,     "sign-before-power",     "the sign applies to the power; some languages apply it to the base: write parentheses" },
    { NoteId::kNotBeforeComparison, "not-before-comparison", "\"not\" applies to the first operand alone; write parentheses around the comparison" },
    { NoteId::kSignOfRemainder,     "sign-of-remainder",     "for a negative operand \"%\" and \"mod\" differ, and translation writes one for the other" },
    { NoteId::kBareWord,            "bare-word",             "a text without quotes" },
    { NoteId::kMixedComparison,     "mixed-comparison",      "a number is compared with a text that is none" },
    { NoteId::kTextNotInList,       "text-not-in-list",      "the list does not hold this" },
    { NoteId::kCeilOfInteger,       "ceil-of-integer",       "whole numbers are divided without a rest: there is nothing to round" },
    { NoteId::kMacroPrecedence,     "macro-precedence",      "put in as text, this would be read otherwise; write parentheses" },
    { NoteId::kTranslatorBlind,     "translator-blind",      "translation knows operator words only between blanks" },
};
// clang-format on

constexpr bool is_in_order() {
    for (std::size_t i = 0; i < std::size(kNotes); ++i) {
        if (kNotes[i].id != static_cast<NoteId>(i)) {
            return false;
        }
    }
    return std::size(kNotes) == static_cast<std::size_t>(NoteId::kTranslatorBlind) + 1;
}
static_assert(is_in_order());

// Words that translation into some language replaces.
constexpr std::string_view kTranslatedWords[] = {"and", "div", "gt", "gte", "lt", "lte", "quot"};

Note make_note(NoteId id, std::uint32_t offset, std::uint32_t length) {
    return {id, offset, length, kNotes[static_cast<std::size_t>(id)].text};
}

bool is_operation(const Node& node, Operator operation) {
    return node.row != kNoOperator && operator_row(node.row).operation == operation;
}

bool is_blank_separated(std::string_view text, const Node& node) {
    const std::uint32_t end = node.offset + node.length;
    return (node.offset == 0 || text[node.offset - 1] == ' ') &&
           (end == text.size() || text[end] == ' ');
}

bool is_translated(std::string_view word) {
    return std::any_of(
        std::begin(kTranslatedWords), std::end(kTranslatedWords),
        [word](std::string_view known) { return LESS_C_STRING::compare(known, word) == 0; });
}

// Where textual expansion of macros reads a text otherwise than values do.
class NameNotes {
public:
    NameNotes(std::string_view text, const std::vector<Node>& nodes, const Resolution& resolution,
              const Names& names, NearSearches& searches)
        : text_(text),
          nodes_(nodes),
          bindings_(resolution.bindings),
          names_(names),
          searches_(searches) {}

    std::vector<Note> run() {
        parents_of(nodes_, parents_);
        for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
            look_at(i);
        }
        return std::move(notes_);
    }

private:
    void look_at(std::uint32_t position);
    void look_at_operator(std::uint32_t position);
    void look_at_macro(std::uint32_t position);

    void add(NoteId id, std::uint32_t position) {
        notes_.push_back(make_note(id, nodes_[position].offset, nodes_[position].length));
    }
    std::uint32_t left_of(std::uint32_t position) const { return nodes_[position - 1].begin - 1; }
    bool is_integer(std::uint32_t position) const;
    bool may_be_negative(std::uint32_t position) const;
    bool is_number_name(std::uint32_t position) const;
    bool is_foreign_text(std::uint32_t position) const;
    void look_for_text(std::uint32_t parameter, std::uint32_t text);
    bool is_compared_with_zero(std::uint32_t position) const;

    std::string_view text_;
    const std::vector<Node>& nodes_;
    const std::vector<Binding>& bindings_;
    const Names& names_;
    NearSearches& searches_;
    std::vector<std::uint32_t> parents_;
    std::vector<Note> notes_;
};

NameFacts facts_of(const Names& names, const Binding& binding) {
    return binding.kind == BindingKind::kParameter
               ? names.facts({MeaningKind::kParameter, binding.index})
               : NameFacts();
}

// Whether a subtree surely gives a whole number.
bool NameNotes::is_integer(std::uint32_t root) const {
    for (std::uint32_t i = nodes_[root].begin; i <= root; ++i) {
        const Node& node = nodes_[i];
        const bool is_whole_name =
            node.kind == NodeKind::kName && facts_of(names_, bindings_[i]).is_integer;
        const bool is_whole_number =
            node.kind == NodeKind::kNumber && is_decimal(token_of(text_, node));
        const bool is_arithmetic = node.row != kNoOperator &&
                                   operator_row(node.row).level >= Level::kSum &&
                                   operator_row(node.row).level <= Level::kPower;
        if (!is_whole_name && !is_whole_number && !is_arithmetic) {
            return false;
        }
    }
    return true;
}

// Whether a subtree may give a number below 0, for all that is known.
bool NameNotes::may_be_negative(std::uint32_t root) const {
    for (std::uint32_t i = nodes_[root].begin; i <= root; ++i) {
        const Node& node = nodes_[i];
        const bool is_sum =
            is_operation(node, Operator::kAdd) || is_operation(node, Operator::kMultiply) ||
            is_operation(node, Operator::kPower) || is_operation(node, Operator::kDivide);
        const bool is_positive_name = node.kind == NodeKind::kName &&
                                      bindings_[i].kind == BindingKind::kParameter &&
                                      !facts_of(names_, bindings_[i]).may_be_negative;
        if (node.kind != NodeKind::kNumber && !is_sum && !is_positive_name) {
            return true;
        }
    }
    return false;
}

bool NameNotes::is_number_name(std::uint32_t position) const {
    return nodes_[position].kind == NodeKind::kNumber ||
           (nodes_[position].kind == NodeKind::kName &&
            facts_of(names_, bindings_[position]).is_integer);
}

// A text in quotes, ON or OFF.
bool NameNotes::is_foreign_text(std::uint32_t position) const {
    return bindings_[position].kind == BindingKind::kWord ||
           (nodes_[position].kind == NodeKind::kText &&
            !is_canonical_decimal(literal_of(text_, nodes_[position])));
}

// A parameter that can never be the text, or the whole number, that it is compared with.
void NameNotes::look_for_text(std::uint32_t parameter, std::uint32_t text) {
    const Node& node = nodes_[text];
    const bool is_text = node.kind == NodeKind::kText;
    const bool is_word = bindings_[text].kind == BindingKind::kWord;
    if (!(is_text || is_word || node.kind == NodeKind::kNumber)) {
        return;
    }
    const NameFacts facts = facts_of(names_, bindings_[parameter]);
    const std::uint32_t index = bindings_[parameter].index;
    const std::string_view wanted = is_text ? literal_of(text_, node) : token_of(text_, node);
    if (!facts.is_text || !facts.has_list || names_.list_holds(index, wanted)) {
        return;
    }
    const std::string near = names_.nearest_in_list(index, wanted, searches_);
    const bool differs_in_case = !near.empty() && equals_but_for_case(wanted, near);
    Note note = make_note(NoteId::kTextNotInList, node.offset, node.length);
    note.text = "the list of " + std::string(token_of(text_, nodes_[parameter])) +
                (differs_in_case ? " holds this in another letter case" : " does not hold this") +
                (near.empty() ? "" : "; did you mean " + near + "?");
    notes_.push_back(std::move(note));
}

// The sign of what is compared with 0 does not matter.
bool NameNotes::is_compared_with_zero(std::uint32_t position) const {
    const std::uint32_t parent = parents_[position];
    if (parent == kNoNode || nodes_[parent].kind != NodeKind::kBinary ||
        !(is_operation(nodes_[parent], Operator::kEqual) ||
          is_operation(nodes_[parent], Operator::kUnlike))) {
        return false;
    }
    const std::uint32_t other = position == parent - 1 ? left_of(parent) : parent - 1;
    return token_of(text_, nodes_[other]) == "0";
}

void NameNotes::look_at(std::uint32_t position) {
    const Node& node = nodes_[position];
    const Binding& binding = bindings_[position];
    if (node.kind == NodeKind::kBinary) {
        return look_at_operator(position);
    }
    if (binding.is_bare_word) {
        add(NoteId::kBareWord, position);
    }
    if (binding.kind == BindingKind::kMacro) {
        look_at_macro(position);
    }
    const bool is_ceil = binding.kind == BindingKind::kFunction &&
                         static_cast<Function>(binding.index) == Function::kCeil;
    if (is_ceil && is_operation(nodes_[position - 1], Operator::kDivide) &&
        is_integer(position - 1)) {
        add(NoteId::kCeilOfInteger, position);
    }
}

void NameNotes::look_at_operator(std::uint32_t position) {
    const Operator operation = operator_row(nodes_[position].row).operation;
    const std::uint32_t left = left_of(position);
    const std::uint32_t right = position - 1;
    if (operation == Operator::kRemainder && !is_compared_with_zero(position) &&
        (may_be_negative(left) || may_be_negative(right))) {
        add(NoteId::kSignOfRemainder, position);
    }
    if (is_comparison(operation) && ((is_number_name(left) && is_foreign_text(right)) ||
                                     (is_number_name(right) && is_foreign_text(left)))) {
        add(NoteId::kMixedComparison, position);
    }
    if (operation == Operator::kEqual || operation == Operator::kUnlike) {
        look_for_text(left, right);
        look_for_text(right, left);
    }
}

// An argument of operators put in beside a tighter one; or a definition of operators beside one.
void NameNotes::look_at_macro(std::uint32_t position) {
    const Names::Definition definition = names_.definition(bindings_[position].index);
    if (definition.nodes == nullptr) {
        return;
    }
    const std::vector<Node>& inner = *definition.nodes;
    const std::uint32_t parent = parents_[position];
    const bool stands_beside_operator = parent != kNoNode && nodes_[parent].row != kNoOperator &&
                                        !nodes_[position].is_parenthesised &&
                                        !inner.back().is_parenthesised;
    if (stands_beside_operator &&
        needs_parentheses(inner.back(), operator_row(nodes_[parent].row).operation,
                          position == parent - 1)) {
        add(NoteId::kMacroPrecedence, position);
        return;
    }
    std::vector<std::uint32_t> arguments;
    operands_of(nodes_, position, arguments);
    std::vector<std::uint32_t> inner_parents;
    parents_of(inner, inner_parents);
    for (std::size_t i = 0; i < arguments.size() && i < definition.arguments.size(); ++i) {
        const Node& argument = nodes_[arguments[i]];
        if (argument.row == kNoOperator || argument.is_parenthesised) {
            continue;
        }
        for (std::uint32_t use = 0; use < inner.size(); ++use) {
            const bool is_use = inner[use].kind == NodeKind::kName &&
                                token_of(definition.text, inner[use]) == definition.arguments[i];
            const std::uint32_t above = inner_parents[use];
            if (is_use && above != kNoNode && inner[above].row != kNoOperator &&
                !inner[use].is_parenthesised &&
                needs_parentheses(argument, operator_row(inner[above].row).operation,
                                  use == above - 1)) {
                notes_.push_back(make_note(NoteId::kMacroPrecedence, argument.source_begin,
                                           argument.source_end - argument.source_begin));
                break;
            }
        }
    }
}

}  // namespace

const char* note_name(NoteId id) {
    return kNotes[static_cast<std::size_t>(id)].name;
}

std::vector<Note> notes_of_syntax(std::string_view text, const std::vector<Node>& nodes) {
    std::vector<Note> notes;
    const auto add = [&notes](NoteId id, const Node& node) {
        notes.push_back(make_note(id, node.offset, node.length));
    };
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        const Node& node = nodes[i];
        if (node.row == kNoOperator) {
            continue;
        }
        const Node& last = nodes[i - 1];
        const bool is_sign =
            is_operation(node, Operator::kMinus) || is_operation(node, Operator::kPlus);
        if (is_sign && is_operation(last, Operator::kPower) && !last.is_parenthesised) {
            add(NoteId::kSignBeforePower, node);
        }
        if (node.kind == NodeKind::kBinary) {
            const Node& first = nodes[last.begin - 1];
            const auto is_bare = [](const Node& operand, Operator operation) {
                return is_operation(operand, operation) && !operand.is_parenthesised;
            };
            if (is_operation(node, Operator::kOr) &&
                (is_bare(first, Operator::kAnd) || is_bare(last, Operator::kAnd))) {
                add(NoteId::kMixedAndOr, node);
            }
            if (is_comparison(operator_row(node.row).operation) && is_bare(first, Operator::kNot)) {
                add(NoteId::kNotBeforeComparison, first);
            }
        }
        const std::string_view word = token_of(text, node);
        if (is_translated(word) && !is_blank_separated(text, node)) {
            add(NoteId::kTranslatorBlind, node);
        }
    }
    return notes;
}

std::vector<Note> notes_of_names(std::string_view text, const std::vector<Node>& nodes,
                                 const Resolution& resolution, const Names& names,
                                 NearSearches& searches) {
    return NameNotes(text, nodes, resolution, names, searches).run();
}

}  // namespace kivo_session
