#include "kivo/session/internal/explain/explainer.h"

#include <algorithm>
#include <optional>

namespace kivo_session {

namespace {

// Longer expressions are told by their operator alone.
constexpr std::uint32_t kLongestPart = 400;

bool is_name(const Node& node) {
    return node.kind == NodeKind::kName || node.kind == NodeKind::kCall;
}

bool is_short(const Node& node) {
    return node.source_end - node.source_begin <= kLongestPart;
}

bool is_logical(const Node& node) {
    if (node.kind != NodeKind::kBinary) {
        return false;
    }
    const Operator operation = operator_row(node.row).operation;
    return operation == Operator::kAnd || operation == Operator::kOr;
}

// Whether a text is no more than the value that it gives.
bool is_literal(const Model& model, std::uint32_t text) {
    const Program& program = model.texts[text].program;
    return program.end - program.begin == 1 &&
           model.code.instructions[program.begin].action == Action::kConstant;
}

void add_once(std::vector<std::uint32_t>& operands, std::uint32_t operand) {
    if (std::find(operands.begin(), operands.end(), operand) == operands.end()) {
        operands.push_back(operand);
    }
}

}  // namespace

std::uint32_t Explainer::operand(std::uint32_t object, Aspect aspect) {
    const auto [entry, is_new] = known_.try_emplace({object, aspect}, 0);
    if (is_new) {
        entry->second = static_cast<std::uint32_t>(operands_.size());
        operands_.emplace_back();
        keys_.emplace_back(object, aspect);
    }
    return entry->second;
}

std::vector<KIVO_OPERAND> Explainer::finish() {
    for (std::uint32_t i = 0; i < operands_.size(); ++i) {
        if (keys_[i].first != kNone) {
            tell(i);
        }
    }
    return std::move(operands_);
}

bool Explainer::parse_text(std::uint32_t text, Parsed& parsed) const {
    const SourceText& source = description_.texts[text];
    const bool is_word =
        source.role == TextRole::kTextValue || source.role == TextRole::kStateValue;
    if (is_word || model_.is_spoiled(text) || source.text.empty()) {
        return false;
    }
    parsed.text = text;
    parsed.source = source.text;
    parse(source.text, parsed.expression);
    if (parsed.expression.fault) {
        return false;
    }
    NearSearches no_searches(0);  // nobody reads the texts of the faults
    resolve(source.text, parsed.expression.nodes, model_,
            source.role == TextRole::kMacro ? model_.macro_arguments[source.object]
                                            : std::vector<std::string_view>(),
            no_searches, parsed.resolution);
    return parsed.resolution.faults.empty();
}

KIVO_BRANCH Explainer::explain(std::uint32_t text, std::vector<KIVO_PART>& parts,
                               std::vector<std::uint32_t>& operands) {
    Parsed parsed;
    if (text == kNone) {
        return KIVO_BRANCH::kNone;
    }
    if (!parse_text(text, parsed)) {
        explain_name(text, operands);
        return KIVO_BRANCH::kNone;
    }
    const CompiledText& compiled = model_.texts[text];
    const std::vector<Node>& nodes = parsed.expression.nodes;
    if (compiled.implication == kNone) {
        explain_part(parsed, static_cast<std::uint32_t>(nodes.size()) - 1, compiled.program, parts,
                     operands);
        return KIVO_BRANCH::kNone;
    }
    const Implication implication = *find_implication(parsed.source, nodes);
    const Branches& branches = model_.implications[compiled.implication];
    explain_part(parsed, implication.condition, compiled.program, parts, operands);
    const bool is_known = parts.back().is_known;
    const bool is_true = parts.back().value == "true";
    if (!is_known || is_true) {
        explain_part(parsed, implication.consequence, branches.consequence, parts, operands);
    }
    if (!is_true && implication.alternative) {
        explain_part(parsed, *implication.alternative, branches.alternative, parts, operands);
    }
    return !is_known ? KIVO_BRANCH::kNone : is_true ? KIVO_BRANCH::kThen : KIVO_BRANCH::kElse;
}

// A text that is a name and no expression.
void Explainer::explain_name(std::uint32_t text, std::vector<std::uint32_t>& operands) {
    const Program& program = model_.texts[text].program;
    if (model_.is_spoiled(text) || program.end - program.begin != 1) {
        return;
    }
    const Instruction& instruction = model_.code.instructions[program.begin];
    const bool is_object = instruction.action == Action::kValue ||
                           instruction.action == Action::kPort ||
                           instruction.action == Action::kMacro;
    if (is_object) {
        add_once(operands, operand(instruction.index, Aspect::kValue));
    }
}

std::string Explainer::value_text(Value value) const {
    return value.kind == ValueKind::kPort ? reporter_.state_text(value.port_index())
                                          : engine_.text_of(value);
}

void Explainer::explain_part(const Parsed& parsed, std::uint32_t root, const Program& program,
                             std::vector<KIVO_PART>& parts, std::vector<std::uint32_t>& operands) {
    const std::vector<Node>& nodes = parsed.expression.nodes;
    const std::uint32_t begin = nodes[root].begin;
    std::vector<Value> values = engine_.trace(parsed.text, program);
    values.resize(root - begin + 1, Value());
    const TextRole role = description_.texts[parsed.text].role;
    if (role == TextRole::kCondition || role == TextRole::kValueRule) {
        if (const std::optional<bool> truth = engine_.truth_of(values.back())) {
            values.back() = Value::truth(*truth);
        }
    }
    const std::vector<bool> is_deciding = deciding(parsed, root, values);
    for (std::uint32_t i = begin; i <= root; ++i) {
        const Value value = values[i - begin];
        KIVO_PART part;
        part.text = is_short(nodes[i]) ? print(parsed.source, nodes, i)
                                       : std::string(token_of(parsed.source, nodes[i]));
        part.is_known = !value.is_unknown();
        part.value = value_text(value);
        part.operands = nodes[i].count;
        part.is_deciding = is_deciding[i - begin];
        part.offset = nodes[i].offset;
        parts.push_back(std::move(part));
    }
    add_names(parsed, root, is_deciding, values, operands);
}

// Of "and" and "or" only the sides that decide.
std::vector<bool> Explainer::deciding(const Parsed& parsed, std::uint32_t root,
                                      const std::vector<Value>& values) const {
    const std::vector<Node>& nodes = parsed.expression.nodes;
    const std::uint32_t begin = nodes[root].begin;
    std::vector<bool> result(root - begin + 1);
    result[root - begin] = true;
    std::vector<std::uint32_t> operands;
    for (std::uint32_t i = root + 1; i-- > begin;) {  // what stands above a node comes after it
        if (!result[i - begin]) {
            continue;
        }
        operands_of(nodes, i, operands);
        const bool is_choice = is_logical(nodes[i]);
        const bool is_and = is_choice && operator_row(nodes[i].row).operation == Operator::kAnd;
        const std::optional<bool> whole = engine_.truth_of(values[i - begin]);
        for (const std::uint32_t operand : operands) {
            const std::optional<bool> part = engine_.truth_of(values[operand - begin]);
            // A true "and" and a false "or" need all their sides.
            result[operand - begin] = !is_choice || whole == is_and || part == whole;
        }
    }
    return result;
}

bool Explainer::is_own(const Parsed& parsed, std::uint32_t object) const {
    const SourceText& source = description_.texts[parsed.text];
    const std::string_view element = source.element;
    return source.object == object &&
           (element == "STATE" ||
            (element == "FORCE_VALUE" && is_parameter(description_.objects[object].kind)));
}

Aspect Explainer::aspect_of_port(const Parsed& parsed, std::uint32_t position,
                                 std::uint32_t parent) const {
    const std::vector<Node>& nodes = parsed.expression.nodes;
    if (parent == kNoNode) {
        const TextRole role = description_.texts[parsed.text].role;
        const bool is_number =
            role == TextRole::kLimit || role == TextRole::kWidth || role == TextRole::kWholeValue;
        return is_number ? Aspect::kConstant : Aspect::kValue;
    }
    if (nodes[parent].kind == NodeKind::kCall || is_logical(nodes[parent])) {
        return Aspect::kValue;
    }
    const Operator operation = operator_row(nodes[parent].row).operation;
    if (operation == Operator::kEqual || operation == Operator::kUnlike) {
        std::vector<std::uint32_t> sides;
        operands_of(nodes, parent, sides);
        const Node& other = nodes[sides[0] == position ? sides[1] : sides[0]];
        const std::string_view word = other.kind == NodeKind::kText
                                          ? literal_of(parsed.source, other)
                                          : token_of(parsed.source, other);
        return is_state_word(word) ? Aspect::kValue : Aspect::kConstant;
    }
    return operation == Operator::kNot ? Aspect::kValue : Aspect::kConstant;
}

void Explainer::add_names(const Parsed& parsed, std::uint32_t root,
                          const std::vector<bool>& is_deciding, const std::vector<Value>& values,
                          std::vector<std::uint32_t>& operands) {
    const std::vector<Node>& nodes = parsed.expression.nodes;
    const std::uint32_t begin = nodes[root].begin;
    std::vector<std::uint32_t> parents;
    parents_of(nodes, parents);
    // What stands in the arguments of a macro decides the call, and so on upwards.
    std::vector<std::uint32_t> calls(root - begin + 1, kNone);  // the call around each node
    std::vector<std::uint32_t> own(root - begin + 1, kNone);    // the operand of each call
    for (std::uint32_t i = root + 1; i-- > begin;) {
        if (i != root) {
            const std::uint32_t parent = parents[i] - begin;
            calls[i - begin] = own[parent] == kNone ? calls[parent] : own[parent];
        }
        const bool is_call = nodes[i].count > 0 && is_deciding[i - begin] &&
                             parsed.resolution.bindings[i].kind == BindingKind::kMacro;
        own[i - begin] = is_call ? call(parsed, i, values[i - begin]) : kNone;
    }
    for (std::uint32_t i = begin; i <= root; ++i) {
        if (!is_deciding[i - begin] || !is_name(nodes[i])) {
            continue;
        }
        const std::uint32_t told = own[i - begin] == kNone
                                       ? named(parsed, i, i == root ? kNoNode : parents[i])
                                       : own[i - begin];
        if (told != kNone) {
            const std::uint32_t around = calls[i - begin];
            add_once(around == kNone ? operands : operands_[around].operands, told);
        }
    }
}

// The operand of a name; kNone for one that stands for no object.
std::uint32_t Explainer::named(const Parsed& parsed, std::uint32_t position, std::uint32_t parent) {
    const Binding& binding = parsed.resolution.bindings[position];
    switch (binding.kind) {
        case BindingKind::kParameter:
            return operand(binding.index,
                           is_own(parsed, binding.index) ? Aspect::kAsked : Aspect::kValue);
        case BindingKind::kPort: {
            const Aspect aspect = aspect_of_port(parsed, position, parent);
            const bool is_asked = aspect == Aspect::kValue && is_own(parsed, binding.index);
            return operand(binding.index, is_asked ? Aspect::kAsked : aspect);
        }
        case BindingKind::kMacro:
            return operand(binding.index, Aspect::kValue);
        default:
            return kNone;
    }
}

// A macro with arguments: each call is a value of its own.
std::uint32_t Explainer::call(const Parsed& parsed, std::uint32_t position, Value value) {
    const Node& node = parsed.expression.nodes[position];
    const Object& macro = description_.objects[parsed.resolution.bindings[position].index];
    const auto result = static_cast<std::uint32_t>(operands_.size());
    operands_.emplace_back();
    keys_.emplace_back(kNone, Aspect::kValue);
    KIVO_OPERAND told;
    told.name = is_short(node) ? print(parsed.source, parsed.expression.nodes, position)
                               : std::string(macro.name);
    told.value = value_text(value);
    told.is_known = !value.is_unknown();
    told.source = KIVO_OPERAND_SOURCE::kMacro;
    told.source_text = reporter_.rule_text(macro.default_text);
    told.mark = macro.mark;
    add_names_of_macro(parsed.resolution.bindings[position].index, told.operands);
    operands_[result] = std::move(told);
    return result;
}

// What a definition reads besides its arguments, and what the macros that it calls read.
void Explainer::add_names_of_macro(std::uint32_t macro, std::vector<std::uint32_t>& operands) {
    std::vector<std::uint32_t> waiting{macro};
    for (std::size_t i = 0; i < waiting.size(); ++i) {
        Parsed parsed;
        if (!parse_text(description_.objects[waiting[i]].default_text, parsed)) {
            continue;
        }
        for (std::size_t node = 0; node < parsed.expression.nodes.size(); ++node) {
            const Binding& binding = parsed.resolution.bindings[node];
            const bool is_macro = binding.kind == BindingKind::kMacro;
            if (is_macro && parsed.expression.nodes[node].count > 0) {
                add_once(waiting, binding.index);
            } else if (is_macro || binding.kind == BindingKind::kParameter ||
                       binding.kind == BindingKind::kPort) {
                add_once(operands, operand(binding.index, Aspect::kValue));
            }
        }
    }
}

void Explainer::tell(std::uint32_t position) {
    const auto [object, aspect] = keys_[position];
    const Object& each = description_.objects[object];
    const bool is_port_object = is_port(each.kind);
    const Value value = aspect == Aspect::kAsked      ? engine_.asked(object)
                        : aspect == Aspect::kConstant ? engine_.constant(object)
                                                      : engine_.value(object);
    KIVO_OPERAND told;
    told.name = each.name;
    told.is_known = !value.is_unknown();
    const bool is_state = is_port_object && aspect != Aspect::kConstant && told.is_known;
    told.value = !is_state                  ? value_text(value)
                 : aspect == Aspect::kAsked ? word_of(static_cast<PortState>(value.low))
                                            : reporter_.state_text(object);
    if (each.kind == ObjectKind::kMacro) {
        tell_macro(object, told);
    } else if (aspect == Aspect::kConstant) {
        tell_constant(object, told);
    } else if (aspect == Aspect::kAsked || engine_.source(object) != Source::kForced) {
        tell_asked(object, told);
    } else if (is_port_object) {
        told.source = KIVO_OPERAND_SOURCE::kState;
        tell_force(engine_.forcing(object, ElementKind::kState), "state rule", told);
    } else {
        told.source = KIVO_OPERAND_SOURCE::kForced;
        tell_force(engine_.forcing(object, ElementKind::kForce), "forced", told);
    }
    operands_[position] = std::move(told);
}

void Explainer::tell_macro(std::uint32_t object, KIVO_OPERAND& told) {
    const std::uint32_t text = description_.objects[object].default_text;
    told.source = KIVO_OPERAND_SOURCE::kMacro;
    told.source_text = reporter_.rule_text(text);
    told.mark = description_.objects[object].mark;
    if (model_.is_value_macro(object)) {
        explain(text, told.expression, told.operands);
    }
}

void Explainer::tell_force(const Engine::Forcing& forcing, const char* word, KIVO_OPERAND& told) {
    told.source_text = word;
    if (forcing.element == kNone) {
        return;
    }
    const Element& element = description_.elements[forcing.element];
    const std::uint32_t value = forcing.is_else ? element.second : element.first;
    told.mark = element.mark;
    if (element.condition != kNone) {
        explain(element.condition, told.expression, told.operands);
        const bool is_known = told.expression.empty() || told.expression.back().is_known;
        told.source_text += ", " + reporter_.rule_text(element.condition) +
                            (!is_known         ? " is not known"
                             : forcing.is_else ? " is false"
                                               : "");
        std::vector<KIVO_PART> parts;
        explain(value, parts, told.operands);
        return;
    }
    if (value != kNone && !is_literal(model_, value)) {
        told.source_text += ", " + reporter_.rule_text(value);
    }
    explain(value, told.expression, told.operands);
}

void Explainer::tell_asked(std::uint32_t object, KIVO_OPERAND& told) {
    const Object& each = description_.objects[object];
    if (engine_.given(object) != nullptr) {
        told.source = KIVO_OPERAND_SOURCE::kGiven;
        told.source_text = "given";
        return;
    }
    const bool is_preset = engine_.is_preset(object);
    told.source = is_preset ? KIVO_OPERAND_SOURCE::kPreset : KIVO_OPERAND_SOURCE::kDefault;
    told.source_text = "default";
    told.mark = each.mark;
    if (is_preset) {
        const WizardMap& map = description_.maps[engine_.map()];
        told.source_text = "preset " + std::string(map.name);
        told.mark = map.mark;
    }
    const std::uint32_t text = is_port(each.kind) ? kNone : engine_.asked_text(object);
    if (text == kNone) {
        told.source_text = told.is_known ? told.source_text : "no value";
        return;
    }
    if (!is_literal(model_, text)) {
        told.source_text += ", " + reporter_.rule_text(text);
    }
    explain(text, told.expression, told.operands);
}

void Explainer::tell_constant(std::uint32_t port, KIVO_OPERAND& told) {
    const Object& each = description_.objects[port];
    told.operands.push_back(operand(port, Aspect::kValue));
    told.mark = each.mark;
    if (!told.is_known) {
        told.source = KIVO_OPERAND_SOURCE::kRunTime;
        told.source_text = "known at run time";
        return;
    }
    told.source = KIVO_OPERAND_SOURCE::kTied;
    const Engine::Forcing forcing = engine_.forcing(port, ElementKind::kPortForce);
    const Given* given = engine_.given(port);
    if (forcing.element != kNone) {
        tell_force(forcing, "tied", told);
    } else if (!engine_.number_in_place(port).is_unknown()) {
        told.source_text = "tied by its state";
    } else if (given != nullptr && given->constant) {
        told.source = KIVO_OPERAND_SOURCE::kGiven;
        told.source_text = "given";
        told.mark = KIVO_MARK();
    } else {
        told.source_text = each.default_text == kNone ? "tied, no default" : "tied, default";
        explain(each.default_text, told.expression, told.operands);
    }
}

}  // namespace kivo_session
