#include "kivo/session/internal/expression/names.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "kivo/session/internal/expression/lexer.h"
#include "kivo/session/internal/expression/port_state.h"

namespace kivo_session {

namespace {

bool is_equality(const Node& node) {
    return node.kind == NodeKind::kBinary &&
           (operator_row(node.row).operation == Operator::kEqual ||
            operator_row(node.row).operation == Operator::kUnlike);
}

std::string plural(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

class Resolver {
public:
    Resolver(std::string_view text, const std::vector<Node>& nodes, const Names& names,
             const std::vector<std::string_view>& arguments, NearSearches& searches,
             Resolution& resolution)
        : text_(text),
          nodes_(nodes),
          names_(names),
          arguments_(arguments),
          searches_(searches),
          bindings_(resolution.bindings),
          faults_(resolution.faults) {}

    void run() {
        bool has_unknown = false;
        for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
            if (nodes_[i].kind == NodeKind::kName) {
                has_unknown = !bind_name(i) || has_unknown;
            } else if (nodes_[i].kind == NodeKind::kCall) {
                bind_call(i);
            }
        }
        if (has_unknown) {
            bind_bare_words();
        }
        std::sort(faults_.begin(), faults_.end(),
                  [](const Fault& left, const Fault& right) { return left.offset < right.offset; });
    }

private:
    // False when nothing is known of the name so far.
    bool bind_name(std::uint32_t position) {
        const std::string_view name = token_of(text_, nodes_[position]);
        Binding& binding = bindings_[position];
        const auto argument = std::find(arguments_.begin(), arguments_.end(), name);
        if (argument != arguments_.end()) {
            binding = {BindingKind::kArgument,
                       static_cast<std::uint32_t>(argument - arguments_.begin())};
            return true;
        }
        const Meaning meaning = names_.look_up(name);
        switch (meaning.kind) {
            case MeaningKind::kParameter:
                binding = {BindingKind::kParameter, meaning.index};
                return true;
            case MeaningKind::kPort:
                binding = {BindingKind::kPort, meaning.index};
                return true;
            case MeaningKind::kMacro:
                bind_macro(position, meaning.index, 0);
                return true;
            case MeaningKind::kNothing:
                break;
        }
        if (name == "TRUE" || name == "FALSE") {
            binding = {BindingKind::kTruth, name == "TRUE" ? 1U : 0U};
            return true;
        }
        if (name == "ON" || name == "OFF") {
            binding = {BindingKind::kWord, 0};
            return true;
        }
        return false;
    }

    void bind_macro(std::uint32_t position, std::uint32_t macro, std::size_t given) {
        const std::size_t needed = names_.argument_count(macro);
        if (given != needed) {
            fail(position, FaultId::kMacroArguments,
                 "the macro " + std::string(token_of(text_, nodes_[position])) + " takes " +
                     plural(needed) + ", not " + std::to_string(given));
            return;
        }
        bindings_[position] = {BindingKind::kMacro, macro};
    }

    void bind_call(std::uint32_t position) {
        const std::string_view name = token_of(text_, nodes_[position]);
        const std::size_t given = nodes_[position].count;
        const bool is_argument =
            std::find(arguments_.begin(), arguments_.end(), name) != arguments_.end();
        const Meaning meaning = is_argument ? Meaning() : names_.look_up(name);
        if (meaning.kind == MeaningKind::kMacro) {
            return bind_macro(position, meaning.index, given);
        }
        // Of what is no macro functions come first: nothing else can be called.
        const FunctionRow* function = is_argument ? nullptr : find_function(name);
        if (function == nullptr && (is_argument || meaning.kind != MeaningKind::kNothing)) {
            return fail(position, FaultId::kMacroArguments,
                        std::string(name) + " is no macro and takes no arguments");
        }
        if (function == nullptr) {
            return fail_unknown(position, "macro or function");
        }
        if (given < function->fewest_arguments ||
            (given > function->fewest_arguments && !function->takes_more)) {
            return fail(position, FaultId::kMacroArguments,
                        std::string(name) + " takes " + plural(function->fewest_arguments) +
                            (function->takes_more ? " or more" : "") + ", not " +
                            std::to_string(given));
        }
        bindings_[position] = {BindingKind::kFunction,
                               static_cast<std::uint32_t>(function->function)};
    }

    // A name that stands for nothing is a text beside a parameter or port that may have it.
    void bind_bare_words() {
        std::vector<std::uint32_t> parents;
        parents_of(nodes_, parents);
        for (std::uint32_t i = 0; i < nodes_.size(); ++i) {
            if (nodes_[i].kind != NodeKind::kName || bindings_[i].kind != BindingKind::kNone ||
                has_fault_at(nodes_[i].offset)) {
                continue;
            }
            if (is_bare_word(i, parents[i])) {
                bindings_[i] = {BindingKind::kWord, 0, true};
            } else {
                fail_unknown(i, "parameter, port or macro");
            }
        }
    }

    bool has_fault_at(std::uint32_t offset) const {
        return std::any_of(faults_.begin(), faults_.end(),
                           [offset](const Fault& fault) { return fault.offset == offset; });
    }

    bool is_bare_word(std::uint32_t position, std::uint32_t parent) const {
        if (parent == kNoNode || !is_equality(nodes_[parent])) {
            return false;
        }
        const std::uint32_t last = parent - 1;
        const std::uint32_t other = last == position ? nodes_[last].begin - 1 : last;
        if (nodes_[other].kind != NodeKind::kName) {
            return false;
        }
        const std::string_view word = token_of(text_, nodes_[position]);
        const Binding& binding = bindings_[other];
        // An argument may be a port.
        const bool may_be_port =
            binding.kind == BindingKind::kPort || binding.kind == BindingKind::kArgument;
        return (may_be_port && is_state_word(word)) ||
               (binding.kind == BindingKind::kParameter && names_.list_holds(binding.index, word));
    }

    void fail_unknown(std::uint32_t position, const char* kinds) {
        const std::string_view name = token_of(text_, nodes_[position]);
        std::string text = std::string("no ") + kinds + " is called " + std::string(name);
        std::size_t offset = 0;
        if (const LookAlike* found = find_look_alike(name, &offset)) {
            text += std::string("; it holds ") + found->name + ": " + found->hint;
        } else if (const std::string near = names_.nearest(name, searches_); !near.empty()) {
            text += "; did you mean " + near + "?";
        }
        fail(position, FaultId::kUnknownName, std::move(text));
    }

    void fail(std::uint32_t position, FaultId id, std::string text) {
        faults_.push_back({id, nodes_[position].offset, nodes_[position].length, std::move(text)});
    }

    std::string_view text_;
    const std::vector<Node>& nodes_;
    const Names& names_;
    const std::vector<std::string_view>& arguments_;
    NearSearches& searches_;
    std::vector<Binding>& bindings_;
    std::vector<Fault>& faults_;
};

}  // namespace

bool NearSearches::take(std::string_view word) {
    constexpr std::size_t kLongestWord = 200;
    if (left_ == 0 || word.size() > kLongestWord) {
        return false;
    }
    --left_;
    return true;
}

void parents_of(const std::vector<Node>& nodes, std::vector<std::uint32_t>& parents) {
    parents.assign(nodes.size(), kNoNode);
    for (std::uint32_t i = 0; i < nodes.size(); ++i) {
        std::uint32_t operand = i;
        for (std::uint32_t count = nodes[i].count; count > 0; --count) {
            parents[operand - 1] = i;
            operand = nodes[operand - 1].begin;
        }
    }
}

void resolve(std::string_view text, const std::vector<Node>& nodes, const Names& names,
             const std::vector<std::string_view>& arguments, NearSearches& searches,
             Resolution& resolution) {
    resolution.bindings.assign(nodes.size(), {});
    resolution.faults.clear();
    Resolver(text, nodes, names, arguments, searches, resolution).run();
}

std::vector<std::string_view> split_arguments(std::string_view arguments) {
    std::vector<std::string_view> names;
    while (!arguments.empty()) {
        const std::size_t comma = std::min(arguments.find(','), arguments.size());
        const std::string_view name = trimmed(arguments.substr(0, comma));
        arguments.remove_prefix(std::min(comma + 1, arguments.size()));
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

}  // namespace kivo_session
