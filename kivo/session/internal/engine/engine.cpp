#include "kivo/session/internal/engine/engine.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "kivo/session/internal/engine/judge.h"
#include "kivo/session/internal/engine/leaf_rows.h"

namespace kivo_session {

Engine::Engine(std::shared_ptr<const Model> model)
    : model_(std::move(model)), words_(&model_->words) {
    const std::size_t objects = model_->object_count();
    presets_.assign(objects, kNone);
    values_.resize(objects);
    constants_.resize(objects);
    asked_.resize(objects);
    numbers_.resize(objects);
    sources_.resize(objects);
    results_.resize(model_->leaves.size());
    culprits_.assign(model_->leaves.size(), kNone);
    is_queued_.resize(model_->components.size());
    is_leaf_pending_.resize(model_->leaves.size());
    is_default_missed_.resize(objects);
    standings_.resize(model_->leaves.size());
    is_node_wrong_.resize(2 * objects);
    is_node_changed_.resize(2 * objects);
    is_leaf_changed_.resize(model_->leaves.size());
    const Value cycle = Value::unknown(reasons_.of(Reason::cycle()));
    for (std::vector<Value>* values : {&values_, &constants_, &asked_, &numbers_, &results_}) {
        std::fill(values->begin(), values->end(), cycle);
    }
    for (const std::vector<Reason>& reasons : model_->spoiled) {
        spoiled_.push_back(Value::unknown(reasons_.intern(reasons)));
    }
    scene_.code = &model_->code;
    scene_.macros = model_->macros.data();
    scene_.words = &words_;
    scene_.reasons = &reasons_;
    scene_.parameters = scene_.port_states = scene_.macro_values = values_.data();
    scene_.port_constants = constants_.data();
    evaluate_all();
    // A new session has nothing to tell yet.
    std::vector<std::uint32_t> nodes;
    std::vector<std::uint32_t> leaves;
    take_changes(nodes, leaves);
}

Engine::Engine(const Engine& other)
    : model_(other.model_),
      words_(other.words_),
      reasons_(other.reasons_),
      scene_(other.scene_),
      given_(other.given_),
      map_(other.map_),
      presets_(other.presets_),
      allows_hidden_(other.allows_hidden_),
      pinned_(other.pinned_),
      values_(other.values_),
      constants_(other.constants_),
      asked_(other.asked_),
      numbers_(other.numbers_),
      sources_(other.sources_),
      results_(other.results_),
      culprits_(other.culprits_),
      spoiled_(other.spoiled_),
      is_default_missed_(other.is_default_missed_),
      standings_(other.standings_),
      is_node_wrong_(other.is_node_wrong_),
      wrong_(other.wrong_),
      overridden_(other.overridden_),
      queue_(other.queue_),
      is_queued_(other.is_queued_),
      pending_leaves_(other.pending_leaves_),
      is_leaf_pending_(other.is_leaf_pending_),
      changed_nodes_(other.changed_nodes_),
      is_node_changed_(other.is_node_changed_),
      changed_leaves_(other.changed_leaves_),
      is_leaf_changed_(other.is_leaf_changed_) {
    scene_.words = &words_;
    scene_.reasons = &reasons_;
    scene_.parameters = scene_.port_states = scene_.macro_values = values_.data();
    scene_.port_constants = constants_.data();
}

bool Engine::is_settable(std::uint32_t object) const {
    return model_->is_setting(object) ||
           (allows_hidden_ && model_->description->objects[object].kind == ObjectKind::kHidden);
}

const Given* Engine::given(std::uint32_t object) const {
    const auto found = given_.find(object);
    return found == given_.end() ? nullptr : &found->second;
}

SetResult Engine::check(const Assignment& assignment, std::uint32_t* object, Given* given) {
    *object = model_->find(assignment.name);
    if (*object == kNone || model_->description->objects[*object].kind == ObjectKind::kMacro) {
        return SetResult::kUnknownName;
    }
    if (!is_settable(*object)) {
        return SetResult::kNotASetting;
    }
    const ObjectKind kind = model_->description->objects[*object].kind;
    given->text = assignment.value;
    if (is_port(kind)) {
        return check_port(assignment.value, kind, given);
    }
    const std::optional<Whole> whole = whole_from_text(assignment.value);
    if (kind == ObjectKind::kInteger && !whole) {
        return SetResult::kNotANumber;
    }
    const bool is_number =
        kind == ObjectKind::kInteger || (kind == ObjectKind::kHidden && whole.has_value());
    given->value = is_number ? Value::whole(*whole) : Value::text(words_.intern(assignment.value));
    return SetResult::kDone;
}

SetResult Engine::check_port(std::string_view value, ObjectKind kind, Given* given) const {
    const std::size_t colon = value.find(':');
    const std::optional<PortState> state = state_of_word(value.substr(0, colon));
    const bool has_constant = colon != std::string_view::npos;
    if (!state || (has_constant && *state != PortState::kConstant)) {
        return SetResult::kNotAState;
    }
    if (*state == PortState::kConstant && kind == ObjectKind::kOutput) {
        return SetResult::kNotASetting;
    }
    given->value = Value::integer(static_cast<std::int64_t>(*state));
    if (has_constant) {
        const std::optional<Whole> whole = whole_from_text(value.substr(colon + 1));
        if (!whole) {
            return SetResult::kNotANumber;
        }
        given->constant = Value::whole(*whole);
    }
    return SetResult::kDone;
}

SetResult Engine::set(const std::vector<Assignment>& assignments, std::size_t* refused) {
    std::vector<std::pair<std::uint32_t, Given>> checked(assignments.size());
    for (std::size_t i = 0; i < assignments.size(); ++i) {
        const SetResult result = check(assignments[i], &checked[i].first, &checked[i].second);
        if (result != SetResult::kDone) {
            *refused = i;
            return result;
        }
    }
    for (auto& [object, given] : checked) {
        assign(object, std::move(given));
    }
    propagate();
    return SetResult::kDone;
}

void Engine::assign(std::uint32_t object, Given given) {
    given_[object] = std::move(given);
    touch(object);
}

void Engine::unset(std::string_view name) {
    const std::uint32_t object = model_->find(name);
    if (object != kNone && given_.erase(object) > 0) {
        touch(object);
        propagate();
    }
}

void Engine::select_map(std::uint32_t map) {
    if (map == map_) {
        return;
    }
    if (map_ != kNone) {
        apply_map(map_, false);
    }
    map_ = map;
    if (map_ != kNone) {
        apply_map(map_, true);
    }
    propagate();
}

void Engine::apply_map(std::uint32_t map, bool is_selected) {
    const Range range = model_->description->maps[map].presets;
    for (std::uint32_t i = range.begin; i < range.end; ++i) {
        const std::uint32_t object = model_->description->presets[i].object;
        presets_[object] = is_selected ? i : kNone;
        touch(object);
    }
}

void Engine::pin(std::uint32_t object) {
    const std::uint32_t before = std::exchange(pinned_, object);
    for (const std::uint32_t each : {before, object}) {
        if (each != kNone) {
            touch(each);
        }
    }
    propagate();
}

void Engine::evaluate_all() {
    for (std::uint32_t node = 0; node < 2 * model_->object_count(); ++node) {
        mark_node(node);
    }
    for (std::uint32_t leaf = 0; leaf < results_.size(); ++leaf) {
        mark_leaf(leaf);
    }
    propagate();
}

// What a change of what is asked for concerns at once.
void Engine::touch(std::uint32_t object) {
    mark_node(object);
    mark_judged(object);
    tell_change(object);
    if (is_port(model_->description->objects[object].kind)) {
        mark_node(model_->constant_node(object));
        mark_judged(model_->constant_node(object));
    }
}

void Engine::mark_node(std::uint32_t node) {
    const std::uint32_t component = model_->components.component_of[node];
    if (is_queued_[component] == 0) {
        is_queued_[component] = 1;
        queue_.push_back(component);
        std::push_heap(queue_.begin(), queue_.end(), std::greater<>());
    }
}

void Engine::mark_leaf(std::uint32_t leaf) {
    if (is_leaf_pending_[leaf] == 0) {
        is_leaf_pending_[leaf] = 1;
        pending_leaves_.push_back(leaf);
    }
}

void Engine::mark_judged(std::uint32_t node) {
    for (const std::uint32_t leaf : model_->judged_by.of(node)) {
        mark_leaf(leaf);
    }
}

void Engine::propagate() {
    ++version_;
    while (!queue_.empty()) {
        std::pop_heap(queue_.begin(), queue_.end(), std::greater<>());
        const std::uint32_t component = queue_.back();
        queue_.pop_back();
        is_queued_[component] = 0;
        run_component(component);
    }
    Judge judge(*this);
    evaluations_ += pending_leaves_.size();
    for (const std::uint32_t leaf : pending_leaves_) {
        is_leaf_pending_[leaf] = 0;
        results_[leaf] = judge.run(leaf);
        note_standing(leaf, judge.needs_texts());
        if (is_leaf_changed_[leaf] == 0) {
            is_leaf_changed_[leaf] = 1;
            changed_leaves_.push_back(leaf);
        }
    }
    pending_leaves_.clear();
    collect_garbage();
}

void Engine::note_standing(std::uint32_t leaf, bool needs_texts) {
    const std::uint8_t standing = standing_of(leaf, needs_texts);
    const std::uint8_t before = std::exchange(standings_[leaf], standing);
    if (standing != before) {
        wrong_ += (standing & kTakesLegality) != 0;
        wrong_ -= (before & kTakesLegality) != 0;
        overridden_ += (standing & kOverridden) != 0;
        overridden_ -= (before & kOverridden) != 0;
    }
}

std::uint8_t Engine::standing_of(std::uint32_t number, bool needs_texts) const {
    const Leaf& leaf = model_->leaves[number];
    const Value& result = results_[number];
    const bool is_spoiled = needs_texts && model_->has_spoiled_text[number] != 0;
    if (is_judged(leaf.kind) && result.is_true() && !is_spoiled) {
        return 0;
    }
    if (leaf.kind == LeafKind::kMessage) {
        const Message& message = model_->description->messages[leaf.item];
        return message.severity == Severity::kError && is_shown(message, result) ? kTakesLegality
                                                                                 : 0;
    }
    const bool is_undecided =
        result.is_unknown() && reasons_.is_more_than_run_time(result.reasons());
    if (!is_judged(leaf.kind) || !(result.is_false() || is_undecided || is_spoiled)) {
        return 0;
    }
    const bool is_error = severity_of(*model_->description, leaf) == KIVO_SEVERITY::kError;
    const bool is_overridden = leaf.kind == LeafKind::kOverridden && result.is_false();
    return static_cast<std::uint8_t>((is_error ? kTakesLegality : 0) |
                                     (is_overridden ? kOverridden : 0) |
                                     (is_spoiled ? kNeedsSpoiledText : 0));
}

void Engine::weigh_node(std::uint32_t node) {
    const std::uint32_t objects = model_->object_count();
    const Value value = slot(node);
    const bool is_wrong = (value.is_unknown() && reasons_.is_wrong(value.reasons())) ||
                          (node < objects && is_default_missed_[node] != 0);
    const std::uint8_t before = std::exchange(is_node_wrong_[node], is_wrong ? 1 : 0);
    wrong_ += is_wrong ? 1 : 0;
    wrong_ -= before;
}

bool Engine::is_lost_in_cycle(std::uint32_t object) const {
    const auto is_lost = [this](Value value) {
        return value.is_unknown() && reasons_.has(value.reasons(), ReasonKind::kCycle);
    };
    return is_lost(values_[object]) ||
           (is_port(model_->description->objects[object].kind) && is_lost(constants_[object]));
}

bool Engine::is_relay(std::uint32_t node) const {
    return node < model_->object_count() &&
           model_->description->objects[node].kind == ObjectKind::kMacro &&
           !model_->is_value_macro(node);
}

void Engine::note_change(std::uint32_t node) {
    for (const std::uint32_t dependent : model_->dependents.of(node)) {
        mark_node(dependent);
    }
    mark_judged(node);
    tell_change(node);
}

void Engine::tell_change(std::uint32_t node) {
    if (is_node_changed_[node] == 0) {
        is_node_changed_[node] = 1;
        changed_nodes_.push_back(node);
    }
}

void Engine::run_component(std::uint32_t component) {
    if (model_->is_cyclic[component] != 0) {
        return run_cycle(component);
    }
    const std::uint32_t node = model_->components.members(component)[0];
    // Macros with arguments have no value: what they pass on may have changed.
    if (is_relay(node) || update(node)) {
        note_change(node);
    }
}

bool Engine::update(std::uint32_t node) {
    const std::uint32_t objects = model_->object_count();
    const std::uint32_t object = node % objects;
    const ObjectKind kind = model_->description->objects[object].kind;
    ++evaluations_;
    if (kind == ObjectKind::kMacro) {
        return node < objects && evaluate_macro(object);
    }
    if (node >= objects && !is_port(kind)) {
        return false;
    }
    const Value asked = asked_[object];
    const Source source = sources_[object];
    const bool is_changed = node >= objects ? evaluate_constant(object)
                            : is_port(kind) ? evaluate_state(object)
                                            : evaluate_parameter(object);
    weigh_node(node);
    if (asked != asked_[object] || source != sources_[object]) {
        tell_change(object);
    }
    return is_changed;
}

void Engine::take_changes(std::vector<std::uint32_t>& nodes, std::vector<std::uint32_t>& leaves) {
    nodes = std::exchange(changed_nodes_, {});
    leaves = std::exchange(changed_leaves_, {});
    for (const std::uint32_t node : nodes) {
        is_node_changed_[node] = 0;
    }
    for (const std::uint32_t leaf : leaves) {
        is_leaf_changed_[leaf] = 0;
    }
}

}  // namespace kivo_session
