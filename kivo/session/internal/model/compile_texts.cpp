#include <algorithm>
#include <utility>

#include "kivo/session/internal/expression/lexer.h"
#include "kivo/session/internal/model/builder.h"

namespace kivo_session {

namespace {

bool is_quoted(std::string_view text) {
    return text.size() >= 2 && text.front() == '"' && text.find('"', 1) == text.size() - 1;
}

void sort_by_place(std::vector<TextFault>& faults) {
    std::stable_sort(faults.begin(), faults.end(),
                     [](const TextFault& left, const TextFault& right) {
                         return left.text != right.text ? left.text < right.text
                                                        : left.fault.offset < right.fault.offset;
                     });
}

Position position_of(TextRole role) {
    switch (role) {
        case TextRole::kWholeValue:
            return Position::kNumber;
        case TextRole::kCondition:
        case TextRole::kValueRule:
        case TextRole::kUntypedValue:
        case TextRole::kTextValue:
        case TextRole::kStateValue:
            return Position::kCondition;
        case TextRole::kLimit:
        case TextRole::kWidth:
            return Position::kNumber;
        case TextRole::kMacro:
            break;
    }
    return Position::kAnything;
}

void append(std::vector<Reason>& reasons, const std::vector<Reason>& more) {
    reasons.insert(reasons.end(), more.begin(), more.end());
    std::sort(reasons.begin(), reasons.end());
    reasons.erase(std::unique(reasons.begin(), reasons.end()), reasons.end());
    reasons.resize(std::min(reasons.size(), ReasonSets::kMost));
}

}  // namespace

void ModelBuilder::compile_macros() {
    const std::uint32_t size = model_.object_count();
    for (std::uint32_t i = 0; i < size; ++i) {
        if (object(i).kind == ObjectKind::kMacro) {
            model_.macro_arguments[i] = split_arguments(object(i).arguments);
        }
    }
    for (std::uint32_t i = 0; i < size; ++i) {
        if (object(i).kind != ObjectKind::kMacro) {
            continue;
        }
        const std::uint32_t text = object(i).default_text;
        parse(source(text).text, expression_);
        if (expression_.fault) {
            macro_faults_[i].push_back(*expression_.fault);
            continue;
        }
        model_.macro_nodes[i] = expression_.nodes;
        resolve(source(text).text, expression_.nodes, model_, model_.macro_arguments[i], searches_,
                resolution_);
        if (!resolution_.faults.empty()) {
            macro_faults_[i] = resolution_.faults;
        }
        // With faults too: recursion is found all the same.
        const auto begin = static_cast<std::uint32_t>(uses_.size());
        model_.texts[text].program =
            compile(source(text).text, expression_.nodes,
                    static_cast<std::uint32_t>(expression_.nodes.size()) - 1, resolution_,
                    Position::kAnything, text, model_.words, model_.code, uses_);
        text_uses_[text] = {begin, static_cast<std::uint32_t>(uses_.size())};
        model_.macros[i] = model_.texts[text].program;
    }
    find_macro_recursion();
    spoil_macros();
}

void ModelBuilder::find_macro_recursion() {
    std::vector<Edge> edges;
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        if (object(i).kind != ObjectKind::kMacro) {
            continue;
        }
        const Range range = text_uses_[object(i).default_text];
        for (std::uint32_t use = range.begin; use < range.end; ++use) {
            if (uses_[use].kind == UseKind::kMacro) {
                edges.push_back({i, uses_[use].index});
            }
        }
    }
    const Adjacency graph(model_.object_count(), edges);
    const Components circles(graph);
    NearSearches no_searches(0);  // the faults are known already
    for (std::uint32_t component = 0; component < circles.size(); ++component) {
        const auto members = circles.members(component);
        const auto leads_to = [&](std::uint32_t from, std::uint32_t to) {
            const auto targets = graph.of(from);
            return std::binary_search(targets.begin(), targets.end(), to);
        };
        if (members.size() == 1 && !leads_to(members[0], members[0])) {
            continue;
        }
        for (const std::uint32_t macro : members) {
            const std::string_view text = source(object(macro).default_text).text;
            const std::vector<Node>& nodes = model_.macro_nodes[macro];
            resolve(text, nodes, model_, model_.macro_arguments[macro], no_searches, resolution_);
            const Node* first = nullptr;
            std::uint32_t used = kNone;
            for (std::uint32_t i = 0; i < nodes.size(); ++i) {
                const Binding& binding = resolution_.bindings[i];
                if (binding.kind == BindingKind::kMacro &&
                    circles.component_of[binding.index] == component &&
                    (first == nullptr || nodes[i].offset < first->offset)) {
                    first = &nodes[i];
                    used = binding.index;
                }
            }
            if (first != nullptr) {
                macro_faults_[macro].push_back(
                    {FaultId::kMacroRecursion, first->offset, first->length,
                     "the macro " + std::string(object(macro).name) + " uses itself" +
                         (used == macro ? "" : " through " + std::string(object(used).name))});
            }
        }
        // All members are spoiled by the faults of all.
        std::vector<Reason> reasons;
        for (const std::uint32_t macro : members) {
            for (const Fault& fault : macro_faults_[macro]) {
                append(reasons,
                       {Reason::fault(fault.id, object(macro).default_text, fault.offset)});
            }
        }
        for (const std::uint32_t macro : members) {
            macro_reasons_[macro] = reasons;
        }
    }
    // Targets come first, so what a macro uses is settled before it.
    for (const std::uint32_t macro : circles.nodes) {
        std::vector<Reason>& reasons = macro_reasons_[macro];
        for (const Fault& fault : macro_faults_[macro]) {
            append(reasons, {Reason::fault(fault.id, object(macro).default_text, fault.offset)});
        }
        for (const std::uint32_t used : graph.of(macro)) {
            if (!macro_reasons_[used].empty() &&
                circles.component_of[used] != circles.component_of[macro]) {
                append(reasons, macro_reasons_[used]);
            }
        }
    }
}

void ModelBuilder::spoil_macros() {
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        if (!macro_reasons_[i].empty()) {
            CompiledText& text = model_.texts[object(i).default_text];
            text.spoiled = static_cast<std::uint32_t>(model_.spoiled.size());
            model_.spoiled.push_back(macro_reasons_[i]);
        }
    }
}

void ModelBuilder::compile_texts() {
    for (std::uint32_t text = 0; text < description_.texts.size(); ++text) {
        if (source(text).role != TextRole::kMacro) {
            compile_text(text);
        }
    }
    for (const Object& each : description_.objects) {
        if (each.default_fault != kNone) {
            model_.faults.push_back(
                {each.default_fault,
                 {FaultId::kDefaultIndex, 0, 0, fault_text(FaultId::kDefaultIndex)}});
        }
    }
    list_macro_faults();
}

void ModelBuilder::compile_text(std::uint32_t text) {
    switch (source(text).role) {
        case TextRole::kTextValue:
            return compile_text_value(text);
        case TextRole::kStateValue:
            return compile_state(text);
        case TextRole::kWholeValue:
        case TextRole::kUntypedValue:
        case TextRole::kLimit:
        case TextRole::kWidth:
        case TextRole::kCondition:
        case TextRole::kValueRule:
        case TextRole::kMacro:
            return compile_expression(text);
    }
}

void ModelBuilder::compile_expression(std::uint32_t number) {
    const SourceText& text = source(number);
    const bool is_untyped = text.role == TextRole::kUntypedValue;
    if (text.text.empty()) {  // a default index outside the list has no text
        return;
    }
    parse(text.text, expression_);
    if (expression_.fault) {
        return is_untyped ? set_constant(number, Value::text(model_.words.intern(text.text)))
                          : spoil(number, {*expression_.fault});
    }
    resolve(text.text, expression_.nodes, model_, {}, searches_, resolution_);
    if (!resolution_.faults.empty()) {
        const bool is_literal =
            is_untyped &&
            std::any_of(resolution_.faults.begin(), resolution_.faults.end(),
                        [](const Fault& fault) { return fault.id == FaultId::kUnknownName; });
        if (is_literal) {
            return set_constant(number, Value::text(model_.words.intern(text.text)));
        }
    }
    const auto begin = static_cast<std::uint32_t>(uses_.size());
    const std::optional<Implication> implication =
        text.role == TextRole::kValueRule ? find_implication(text.text, expression_.nodes)
                                          : std::nullopt;
    const auto part = [&](std::uint32_t root) {
        return compile(text.text, expression_.nodes, root, resolution_, position_of(text.role),
                       number, model_.words, model_.code, uses_);
    };
    CompiledText& compiled = model_.texts[number];
    if (implication) {
        compiled.implication = static_cast<std::uint32_t>(model_.implications.size());
        compiled.program = part(implication->condition);
        model_.implications.push_back(
            {part(implication->consequence),
             implication->alternative ? part(*implication->alternative) : Program()});
    } else {
        compiled.program = part(static_cast<std::uint32_t>(expression_.nodes.size()) - 1);
    }
    text_uses_[number] = {begin, static_cast<std::uint32_t>(uses_.size())};
    if (!resolution_.faults.empty()) {
        spoil(number, resolution_.faults);
    }
    spoil_by_macros(number);
}

// Of a STRING parameter: quoted, an item of its list, or no name of the description: as it stands.
void ModelBuilder::compile_text_value(std::uint32_t number) {
    const std::string_view text = source(number).text;
    const std::string_view bare = trimmed(text);
    if (is_quoted(bare)) {
        return set_constant(number,
                            Value::text(model_.words.intern(bare.substr(1, bare.size() - 2))));
    }
    const Meaning meaning = model_.look_up(text);
    if (meaning.kind == MeaningKind::kNothing || model_.list_holds(source(number).object, text)) {
        return set_constant(number, Value::text(model_.words.intern(text)));
    }
    set_name(number, meaning);
}

void ModelBuilder::set_name(std::uint32_t number, Meaning meaning) {
    const auto begin = static_cast<std::uint32_t>(uses_.size());
    Action action = Action::kValue;
    UseKind use = UseKind::kParameter;
    if (meaning.kind == MeaningKind::kPort) {
        action = Action::kPort;
        use = UseKind::kPortState;
    } else if (meaning.kind == MeaningKind::kMacro) {
        action = Action::kMacro;
        use = UseKind::kMacro;
        const std::size_t needed = model_.argument_count(meaning.index);
        if (needed != 0) {
            return spoil(number, {{FaultId::kMacroArguments, 0,
                                   static_cast<std::uint32_t>(source(number).text.size()),
                                   fault_text(FaultId::kMacroArguments)}});
        }
    }
    uses_.push_back({use, meaning.index});
    text_uses_[number] = {begin, begin + 1};
    Program& program = model_.texts[number].program;
    program.text = number;
    program.begin = static_cast<std::uint32_t>(model_.code.instructions.size());
    program.end = program.begin + 1;
    model_.code.instructions.push_back({action, 0, 0, meaning.index, 0});
    spoil_by_macros(number);
}

void ModelBuilder::set_constant(std::uint32_t number, Value value) {
    Program& program = model_.texts[number].program;
    program.text = number;
    program.begin = static_cast<std::uint32_t>(model_.code.instructions.size());
    program.end = program.begin + 1;
    model_.code.instructions.push_back(
        {Action::kConstant, 0, 0, model_.code.add_constant(value), 0});
}

// A state is its number; a whole number in place of a state is kept as its text.
void ModelBuilder::compile_state(std::uint32_t number) {
    const std::string_view text = trimmed(source(number).text);
    if (const std::optional<PortState> state = state_of_word(text)) {
        return set_constant(number, Value::integer(static_cast<std::int64_t>(*state)));
    }
    if (const std::optional<Whole> whole = whole_from_text(text)) {
        return set_constant(number, Value::text(model_.words.intern(to_text(*whole))));
    }
    spoil(number, {{FaultId::kStateWord, 0, static_cast<std::uint32_t>(source(number).text.size()),
                    fault_text(FaultId::kStateWord)}});
}

void ModelBuilder::spoil(std::uint32_t number, std::vector<Fault> faults) {
    std::vector<Reason> reasons;
    for (Fault& fault : faults) {
        reasons.push_back(Reason::fault(fault.id, number, fault.offset));
        model_.faults.push_back({number, std::move(fault)});
    }
    std::vector<Reason> sorted;
    append(sorted, reasons);
    model_.texts[number].spoiled = static_cast<std::uint32_t>(model_.spoiled.size());
    model_.spoiled.push_back(std::move(sorted));
}

void ModelBuilder::spoil_by_macros(std::uint32_t number) {
    const Range range = text_uses_[number];
    for (std::uint32_t use = range.begin; use < range.end; ++use) {
        if (uses_[use].kind != UseKind::kMacro) {
            continue;
        }
        is_macro_used_[uses_[use].index] = 1;
        const std::vector<Reason>& reasons = macro_reasons_[uses_[use].index];
        if (reasons.empty()) {
            continue;
        }
        CompiledText& compiled = model_.texts[number];
        if (compiled.spoiled == kNone) {
            compiled.spoiled = static_cast<std::uint32_t>(model_.spoiled.size());
            model_.spoiled.emplace_back();
        }
        append(model_.spoiled[compiled.spoiled], reasons);
    }
}

// A definition has its faults told as such when something uses it.
void ModelBuilder::list_macro_faults() {
    std::vector<std::uint32_t> waiting;
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        if (is_macro_used_[i] != 0) {
            waiting.push_back(i);
        }
    }
    while (!waiting.empty()) {
        const std::uint32_t macro = waiting.back();
        waiting.pop_back();
        const std::uint32_t text = object(macro).default_text;
        for (const Fault& fault : macro_faults_[macro]) {
            model_.faults.push_back({text, fault});
        }
        const Range range = text_uses_[text];
        for (std::uint32_t use = range.begin; use < range.end; ++use) {
            const Use& used = uses_[use];
            if (used.kind == UseKind::kMacro && is_macro_used_[used.index] == 0) {
                is_macro_used_[used.index] = 1;
                waiting.push_back(used.index);
            }
        }
    }
    for (std::uint32_t i = 0; i < model_.object_count(); ++i) {
        if (is_macro_used_[i] == 0) {
            for (const Fault& fault : macro_faults_[i]) {
                model_.unused_faults.push_back({object(i).default_text, fault});
            }
        }
    }
    sort_by_place(model_.faults);
    sort_by_place(model_.unused_faults);
}

}  // namespace kivo_session
