#include "kivo/session/session.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "kivo/objects/conditional_text.h"
#include "kivo/objects/info.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/session/instance.h"
#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/engine/report.h"
#include "kivo/session/internal/explain/why.h"
#include "kivo/session/internal/instance/write.h"
#include "kivo/session/internal/model/from_store.h"
#include "kivo/session/internal/model/model.h"
#include "kivo/session/internal/model/text_notes.h"
#include "kivo/session/internal/search/conflict.h"
#include "kivo/session/internal/search/legal.h"
#include "kivo/session/internal/search/repair.h"
#include "kivo/session/internal/sense/sense.h"

using namespace kivo_session;

namespace {

std::shared_ptr<const Model> compiled(const KIVO_INFO& info) {
    auto description = std::make_unique<Description>();
    read_store(info, *description);
    return std::make_shared<const Model>(std::move(description));
}

KIVO_TRUTH truth_of(Value value) {
    return value.is_unknown() ? KIVO_TRUTH::kUnknown
           : value.is_true()  ? KIVO_TRUTH::kYes
                              : KIVO_TRUTH::kNo;
}

KIVO_SET_RESULT public_result(SetResult result) {
    switch (result) {
        case SetResult::kDone:
            return KIVO_SET_RESULT::kDone;
        case SetResult::kUnknownName:
            return KIVO_SET_RESULT::kUnknownName;
        case SetResult::kNotASetting:
            return KIVO_SET_RESULT::kNotASetting;
        case SetResult::kNotANumber:
            return KIVO_SET_RESULT::kNotANumber;
        case SetResult::kNotAState:
            break;
    }
    return KIVO_SET_RESULT::kNotAState;
}

KIVO_VALUE_KIND public_kind(ValueKind kind) {
    switch (kind) {
        case ValueKind::kTruth:
            return KIVO_VALUE_KIND::kTruth;
        case ValueKind::kInteger:
        case ValueKind::kBig:
            return KIVO_VALUE_KIND::kInteger;
        case ValueKind::kReal:
            return KIVO_VALUE_KIND::kReal;
        case ValueKind::kText:
            return KIVO_VALUE_KIND::kText;
        case ValueKind::kUnknown:
        case ValueKind::kPort:
            break;
    }
    return KIVO_VALUE_KIND::kUnknown;
}

// What a host is told of a leaf that may have changed.
std::pair<KIVO_CHANGE_KIND, std::string_view> change_of(const Description& description,
                                                        const Leaf& leaf) {
    switch (leaf.kind) {
        case LeafKind::kMessage:
            return {KIVO_CHANGE_KIND::kMessage, {}};
        case LeafKind::kVector:
            return {KIVO_CHANGE_KIND::kVector, description.vectors[leaf.item].name};
        case LeafKind::kStimulus:
            return {KIVO_CHANGE_KIND::kVector, {}};
        case LeafKind::kMap:
            return {KIVO_CHANGE_KIND::kMap, description.maps[leaf.item].name};
        case LeafKind::kPiece:
            return {KIVO_CHANGE_KIND::kText, {}};
        default:
            break;
    }
    return {KIVO_CHANGE_KIND::kVerdict, leaf.object == kivo_session::kNone
                                            ? std::string_view()
                                            : description.objects[leaf.object].name};
}

}  // namespace

struct KIVO_SESSION::Inside {
    explicit Inside(std::shared_ptr<const Model> model) : engine(std::move(model)) {}
    explicit Inside(const Engine& other) : engine(other) {}

    const Description& description() const { return *engine.model().description; }

    // Answers are kept until something changes.
    void refresh() {
        if (seen != engine.version()) {
            seen = engine.version();
            verdicts.reset();
            faults.reset();
            settings.clear();
            ports.clear();
        }
    }

    const std::vector<KIVO_VERDICT>& get_verdicts() {
        refresh();
        if (!verdicts) {
            verdicts = Reporter(engine).verdicts();
        }
        return *verdicts;
    }

    // The result of a text that is not the description's; "as_condition" asks for a truth.
    Value evaluate(std::string_view text, bool as_condition, NearSearches searches,
                   std::vector<Fault>& found);

    template <class Use>
    void for_each_object(Use use) const {
        for (std::uint32_t i = 0; i < engine.model().object_count(); ++i) {
            use(i, description().objects[i].kind);
        }
    }

    Engine engine;
    std::uint64_t seen = 0;
    std::optional<std::vector<KIVO_VERDICT>> verdicts;
    std::optional<std::vector<KIVO_FAULT>> faults;
    std::unordered_map<std::uint32_t, KIVO_SETTING> settings;
    std::unordered_map<std::uint32_t, KIVO_PORT> ports;
    std::unordered_map<const void*, std::uint32_t> pieces;        // leaves by record
    std::unordered_map<std::string_view, std::uint32_t> vectors;  // by name
};

Value KIVO_SESSION::Inside::evaluate(std::string_view text, bool as_condition,
                                     NearSearches searches, std::vector<Fault>& found) {
    engine.collect_garbage();
    const Model& model = engine.model();
    std::vector<Reason> reasons;
    Expression expression;
    parse(text, expression);
    if (expression.fault) {
        found.push_back(*expression.fault);
    } else {
        Resolution resolution;
        resolve(text, expression.nodes, model, {}, searches, resolution);
        found = resolution.faults;
        for (const Binding& binding : resolution.bindings) {
            const bool is_macro = binding.kind == BindingKind::kMacro;
            const std::uint32_t used =
                is_macro ? description().objects[binding.index].default_text : kivo_session::kNone;
            if (model.is_spoiled(used)) {
                const std::vector<Reason>& spoiled = model.spoiled[model.texts[used].spoiled];
                reasons.insert(reasons.end(), spoiled.begin(), spoiled.end());
            }
        }
        if (found.empty() && reasons.empty()) {
            Code code;
            std::vector<Use> uses;
            const Program program = compile(text, expression.nodes,
                                            static_cast<std::uint32_t>(expression.nodes.size()) - 1,
                                            resolution, Position::kCondition, kivo_session::kNone,
                                            engine.mutable_words(), code, uses);
            return engine.evaluate(program, code, as_condition);
        }
    }
    for (const Fault& fault : found) {
        reasons.push_back(Reason::fault(fault.id, kivo_session::kNone, fault.offset));
    }
    return engine.unknown(std::move(reasons));
}

KIVO_SESSION::KIVO_SESSION(const KIVO_INFO& info)
    : inside_(std::make_unique<Inside>(compiled(info))) {}

KIVO_SESSION::KIVO_SESSION(std::unique_ptr<Inside> inside) : inside_(std::move(inside)) {}

KIVO_SESSION::KIVO_SESSION(KIVO_SESSION&& other) noexcept = default;
KIVO_SESSION& KIVO_SESSION::operator=(KIVO_SESSION&& other) noexcept = default;
KIVO_SESSION::~KIVO_SESSION() = default;

KIVO_SESSION KIVO_SESSION::fork() const {
    return KIVO_SESSION(std::make_unique<Inside>(inside_->engine));
}

KIVO_SET_RESULT KIVO_SESSION::set(std::string_view name, std::string_view value) {
    std::size_t refused = 0;
    return public_result(inside_->engine.set({{name, value}}, &refused));
}

KIVO_SET_RESULT KIVO_SESSION::set_all(const std::vector<KIVO_ASSIGNMENT>& assignments,
                                      std::size_t* refused) {
    std::vector<Assignment> views;
    views.reserve(assignments.size());
    for (const KIVO_ASSIGNMENT& each : assignments) {
        views.push_back({each.name, each.value});
    }
    std::size_t first = 0;
    return public_result(inside_->engine.set(views, refused == nullptr ? &first : refused));
}

void KIVO_SESSION::unset(std::string_view name) {
    inside_->engine.unset(name);
}

std::vector<KIVO_ASSIGNMENT> KIVO_SESSION::assignments() const {
    std::vector<std::pair<std::uint32_t, const Given*>> sorted;
    for (const auto& [object, given] : inside_->engine.all_given()) {
        sorted.emplace_back(object, &given);
    }
    std::sort(sorted.begin(), sorted.end());
    std::vector<KIVO_ASSIGNMENT> result;
    result.reserve(sorted.size());
    for (const auto& [object, given] : sorted) {
        result.push_back({std::string(inside_->description().objects[object].name), given->text});
    }
    return result;
}

bool KIVO_SESSION::select_map(std::string_view map) {
    const std::vector<WizardMap>& maps = inside_->description().maps;
    const auto found = std::find_if(maps.begin(), maps.end(),
                                    [map](const WizardMap& each) { return each.name == map; });
    if (found == maps.end() && !map.empty()) {
        return false;
    }
    inside_->engine.select_map(map.empty() ? kivo_session::kNone
                                           : static_cast<std::uint32_t>(found - maps.begin()));
    return true;
}

std::string KIVO_SESSION::map() const {
    const std::uint32_t map = inside_->engine.map();
    return map == kivo_session::kNone ? std::string()
                                      : std::string(inside_->description().maps[map].name);
}

void KIVO_SESSION::allow_hidden(bool is_allowed) {
    inside_->engine.allow_hidden(is_allowed);
}

std::string KIVO_SESSION::nearest_name(std::string_view name) const {
    NearSearches searches;
    return inside_->engine.model().nearest(name, searches);
}

bool KIVO_SESSION::is_legal() const {
    return inside_->engine.is_legal();
}

bool KIVO_SESSION::is_granted() const {
    return inside_->engine.is_granted();
}

const std::vector<KIVO_FAULT>& KIVO_SESSION::faults() const {
    inside_->refresh();
    if (!inside_->faults) {
        inside_->faults = Reporter(inside_->engine).faults();
    }
    return *inside_->faults;
}

std::vector<KIVO_FAULT> KIVO_SESSION::notes() const {
    const Description& description = inside_->description();
    std::vector<KIVO_FAULT> result;
    for (TextNote& note : notes_of_texts(inside_->engine.model())) {
        const SourceText& source = description.texts[note.text];
        result.push_back({note.id, std::move(note.says),
                          source.object == kivo_session::kNone
                              ? std::string()
                              : std::string(description.objects[source.object].name),
                          source.element, source.attribute, std::string(source.text), source.mark,
                          note.offset, note.length});
    }
    return result;
}

const std::vector<KIVO_VERDICT>& KIVO_SESSION::verdicts() const {
    return inside_->get_verdicts();
}

const KIVO_SETTING* KIVO_SESSION::find(std::string_view name) const {
    const std::uint32_t object = inside_->engine.model().find(name);
    if (object == kivo_session::kNone ||
        !is_parameter(inside_->description().objects[object].kind)) {
        return nullptr;
    }
    inside_->refresh();
    auto [entry, is_new] = inside_->settings.try_emplace(object);
    if (is_new) {
        entry->second = Reporter(inside_->engine).setting(object);
    }
    return &entry->second;
}

const KIVO_PORT* KIVO_SESSION::find_port(std::string_view name) const {
    const std::uint32_t object = inside_->engine.model().find(name);
    if (object == kivo_session::kNone || !is_port(inside_->description().objects[object].kind)) {
        return nullptr;
    }
    inside_->refresh();
    auto [entry, is_new] = inside_->ports.try_emplace(object);
    if (is_new) {
        entry->second = Reporter(inside_->engine).port(object);
    }
    return &entry->second;
}

std::vector<KIVO_SETTING> KIVO_SESSION::settings() const {
    std::vector<KIVO_SETTING> result;
    const Reporter reporter(inside_->engine);
    inside_->for_each_object([&](std::uint32_t object, ObjectKind kind) {
        if (kind == ObjectKind::kInteger || kind == ObjectKind::kString) {
            result.push_back(reporter.setting(object));
        }
    });
    return result;
}

std::vector<KIVO_SETTING> KIVO_SESSION::hidden() const {
    std::vector<KIVO_SETTING> result;
    const Reporter reporter(inside_->engine);
    inside_->for_each_object([&](std::uint32_t object, ObjectKind kind) {
        if (kind == ObjectKind::kHidden) {
            result.push_back(reporter.setting(object));
        }
    });
    return result;
}

std::vector<KIVO_PORT> KIVO_SESSION::ports() const {
    std::vector<KIVO_PORT> result;
    const Reporter reporter(inside_->engine);
    inside_->for_each_object([&](std::uint32_t object, ObjectKind kind) {
        if (is_port(kind)) {
            result.push_back(reporter.port(object));
        }
    });
    return result;
}

std::vector<KIVO_SHOWN_MESSAGE> KIVO_SESSION::messages() const {
    return Reporter(inside_->engine).messages();
}

std::vector<KIVO_APPLICATION> KIVO_SESSION::vectors() const {
    std::vector<KIVO_APPLICATION> result;
    std::uint32_t leaf = inside_->engine.model().first_vector;
    for (const Vector& vector : inside_->description().vectors) {
        result.push_back({std::string(vector.name), truth_of(inside_->engine.result(leaf++))});
    }
    return result;
}

std::vector<KIVO_APPLICATION> KIVO_SESSION::maps() const {
    std::vector<KIVO_APPLICATION> result;
    std::uint32_t leaf = inside_->engine.model().first_map;
    for (const WizardMap& map : inside_->description().maps) {
        result.push_back({std::string(map.name), truth_of(inside_->engine.result(leaf++))});
    }
    return result;
}

std::vector<std::string> KIVO_SESSION::stimulus(const KIVO_VECTOR_OBJ& vector) const {
    const Description& description = inside_->description();
    if (inside_->vectors.empty()) {
        for (std::uint32_t i = 0; i < description.vectors.size(); ++i) {
            inside_->vectors.emplace(description.vectors[i].name, i);
        }
    }
    std::vector<std::string> result;
    const auto found = inside_->vectors.find(vector.name);
    if (found == inside_->vectors.end()) {
        return result;
    }
    const Range range = description.vectors[found->second].stimuli;
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const Stimulus& stimulus = description.stimuli[i];
        const Value holds = inside_->engine.result(inside_->engine.model().first_stimulus + i);
        const std::string_view command = holds.is_false() ? stimulus.otherwise : stimulus.shown;
        if (!command.empty()) {
            result.emplace_back(command);
        }
    }
    return result;
}

std::string KIVO_SESSION::text(const KIVO_CONDITIONAL_TEXT* text) const {
    if (inside_->pieces.empty()) {
        std::uint32_t leaf = inside_->engine.model().first_piece;
        for (const Piece& piece : inside_->description().pieces) {
            inside_->pieces.emplace(piece.key, leaf++);
        }
    }
    std::string result;
    const auto append = [&result](const std::string& piece) {
        if (!piece.empty()) {
            result += (result.empty() ? "" : "\n") + piece;
        }
    };
    std::vector<const KIVO_CONDITIONAL_TEXT*> waiting{text};  // the next one last
    while (!waiting.empty()) {
        const KIVO_CONDITIONAL_TEXT* next = waiting.back();
        waiting.pop_back();
        if (next == nullptr) {
            continue;
        }
        const auto known = inside_->pieces.find(next);
        const KIVO_TRUTH shown = next->condition.empty() ? KIVO_TRUTH::kYes
                                 : known != inside_->pieces.end()
                                     ? truth_of(inside_->engine.result(known->second))
                                     : holds(next->condition);
        if (shown == KIVO_TRUTH::kYes) {
            next->then_sub == nullptr ? append(next->then_text) : waiting.push_back(next->then_sub);
        } else if (shown == KIVO_TRUTH::kNo) {
            next->else_sub == nullptr ? append(next->else_text) : waiting.push_back(next->else_sub);
        }
        KIVO_OBJ_LIST pieces = next->text_elements;
        pieces.reset();
        const std::size_t first = waiting.size();
        while (KIVO_OBJ* piece = pieces.get_next_value()) {
            waiting.push_back(dynamic_cast<const KIVO_CONDITIONAL_TEXT*>(piece));
        }
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end());
    }
    return result;
}

KIVO_TRUTH KIVO_SESSION::holds(std::string_view condition, KIVO_FAULT* fault) const {
    std::vector<Fault> faults;
    const NearSearches searches = fault == nullptr ? NearSearches(0) : NearSearches();
    const Value value = inside_->evaluate(condition, true, searches, faults);
    if (fault != nullptr) {
        *fault = KIVO_FAULT();
        if (!faults.empty()) {
            fault->id = fault_name(faults[0].id);
            fault->text = faults[0].text;
            fault->offset = faults[0].offset;
            fault->length = faults[0].length;
        } else if (value.is_unknown()) {
            const std::vector<Reason>& reasons = inside_->engine.reasons().reasons(value.reasons());
            if (!reasons.empty() && reasons[0].kind() == ReasonKind::kFault) {
                *fault = Reporter(inside_->engine).fault(reasons[0]);
            }
        }
        if (!fault->id.empty() && fault->source.empty()) {
            fault->source = condition;
        }
    }
    return truth_of(value);
}

KIVO_EVALUATION KIVO_SESSION::evaluate(std::string_view expression) const {
    std::vector<Fault> faults;
    const Value value = inside_->evaluate(expression, false, NearSearches(), faults);
    const Reporter reporter(inside_->engine);
    KIVO_EVALUATION result;
    result.kind = public_kind(value.kind);
    result.value = inside_->engine.text_of(value);
    if (value.is_unknown()) {
        for (const Reason reason : inside_->engine.reasons().reasons(value.reasons())) {
            result.reasons.push_back(reporter.reason_text(reason));
        }
        std::sort(result.reasons.begin(), result.reasons.end());
        result.reasons.erase(std::unique(result.reasons.begin(), result.reasons.end()),
                             result.reasons.end());
    }
    for (const Fault& fault : faults) {
        KIVO_FAULT shown;
        shown.id = fault_name(fault.id);
        shown.text = fault.text;
        shown.source = expression;
        shown.offset = fault.offset;
        shown.length = fault.length;
        result.faults.push_back(std::move(shown));
    }
    return result;
}

KIVO_LEGAL_VALUES KIVO_SESSION::legal_values(std::string_view name, KIVO_LEGAL_SCOPE scope,
                                             KIVO_EFFORT effort) const {
    return kivo_session::legal_values(inside_->engine, inside_->engine.model().find(name), scope,
                                      effort);
}

KIVO_WHY KIVO_SESSION::why(const KIVO_SUBJECT& subject) const {
    return why_of(inside_->engine, subject);
}

KIVO_CONFLICT KIVO_SESSION::conflict(const KIVO_SUBJECT& subject, KIVO_EFFORT effort) const {
    return conflict_of(inside_->engine, subject, effort);
}

std::vector<KIVO_REPAIR> KIVO_SESSION::repairs(const KIVO_SUBJECT& subject, KIVO_EFFORT effort,
                                               bool* are_all_tried) const {
    bool is_complete = true;
    std::vector<KIVO_REPAIR> found = repairs_of(inside_->engine, subject, effort, is_complete);
    if (are_all_tried != nullptr) {
        *are_all_tried = is_complete;
    }
    return found;
}

std::vector<KIVO_CHANGE> KIVO_SESSION::take_changes() {
    std::vector<std::uint32_t> nodes;
    std::vector<std::uint32_t> leaves;
    inside_->engine.take_changes(nodes, leaves);
    const Model& model = inside_->engine.model();
    std::vector<KIVO_CHANGE> changes;
    std::set<std::pair<KIVO_CHANGE_KIND, std::string_view>> told;
    const auto tell = [&](KIVO_CHANGE_KIND kind, std::string_view name) {
        if (told.emplace(kind, name).second) {
            changes.push_back({kind, std::string(name)});
        }
    };
    for (const std::uint32_t node : nodes) {
        const Object& object = inside_->description().objects[node % model.object_count()];
        if (object.kind != ObjectKind::kMacro) {
            tell(is_port(object.kind) ? KIVO_CHANGE_KIND::kPort : KIVO_CHANGE_KIND::kSetting,
                 object.name);
        }
    }
    for (const std::uint32_t number : leaves) {
        const Leaf& leaf = model.leaves[number];
        const auto [kind, name] = change_of(inside_->description(), leaf);
        if (leaf.kind == LeafKind::kPortWidth) {
            tell(KIVO_CHANGE_KIND::kPort, name);
        }
        tell(kind, name);
    }
    if (!changes.empty()) {  // a fault or circle may come of anything, through macros too
        tell(KIVO_CHANGE_KIND::kVerdict, {});
    }
    return changes;
}

void kivo_store_results(const KIVO_SESSION& session, KIVO_INFO& info) {
    const Engine& engine = session.inside_->engine;
    const Model& model = engine.model();
    std::int32_t position = 0;
    for (const std::uint32_t node : model.components.nodes) {
        if (node >= model.object_count()) {
            continue;
        }
        const Object& object = model.description->objects[node];
        KIVO_OBJ_INFO* record = info.get_kivo_obj(std::string(object.name));
        if (record == nullptr) {
            continue;
        }
        record->dependency_position = position++;
        const Value value = engine.value(node);
        if (is_parameter(object.kind)) {
            record->current_value = engine.text_of(value);
        } else if (is_port(object.kind)) {
            record->current_value = engine.is_tied(node) ? engine.text_of(engine.constant(node))
                                    : value.is_unknown()
                                        ? std::string()
                                        : word_of(static_cast<PortState>(value.low));
        }
    }
}

std::string kivo_write_instance(const KIVO_SESSION& session, const KIVO_INSTANCE_OPTIONS& options,
                                std::vector<std::string>* problems) {
    InstanceParts parts = collect_parts(session.inside_->engine, options);
    std::string text = options.language == KIVO_HDL_VERILOG ? write_verilog(parts, options)
                                                            : write_vhdl(parts, options);
    if (problems != nullptr) {
        *problems = std::move(parts.problems);
    }
    return text;
}

KIVO_SENSE kivo_judge_sense(const KIVO_SESSION& session, const KIVO_EFFORT& effort) {
    return judge_sense(session.inside_->engine.shared_model(), effort);
}
