#include "kivo/session/internal/engine/engine.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "kivo/session/internal/engine/judge.h"

namespace kivo_session {

namespace {

std::optional<PortState> state_of_word(std::string_view word) {
    for (std::uint8_t state = 0; state < 4; ++state) {
        if (word == word_of(static_cast<PortState>(state))) {
            return static_cast<PortState>(state);
        }
    }
    return std::nullopt;
}

}  // namespace

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
      values_(other.values_),
      constants_(other.constants_),
      asked_(other.asked_),
      numbers_(other.numbers_),
      sources_(other.sources_),
      results_(other.results_),
      culprits_(other.culprits_),
      spoiled_(other.spoiled_),
      is_queued_(other.is_queued_),
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
    for (const std::uint32_t leaf : pending_leaves_) {
        is_leaf_pending_[leaf] = 0;
        const Value result = judge.run(leaf);
        if (result != results_[leaf]) {
            results_[leaf] = result;
        }
        if (is_leaf_changed_[leaf] == 0) {
            is_leaf_changed_[leaf] = 1;
            changed_leaves_.push_back(leaf);
        }
    }
    pending_leaves_.clear();
    collect_garbage();
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
    if (node >= model_->object_count()) {
        const std::uint32_t port = node - model_->object_count();
        return is_port(model_->description->objects[port].kind) && evaluate_constant(port);
    }
    const ObjectKind kind = model_->description->objects[node].kind;
    if (kind == ObjectKind::kMacro) {
        return evaluate_macro(node);
    }
    return is_port(kind) ? evaluate_state(node) : evaluate_parameter(node);
}

// The members of a cycle start at what was asked for and are evaluated in place, in the order of
// declaration, until nothing changes any more.
void Engine::run_cycle(std::uint32_t component) {
    constexpr std::size_t kMostEvaluations = 1000000;
    const auto members = model_->components.members(component);
    const std::uint32_t objects = model_->object_count();
    const auto slot = [&](std::uint32_t node) -> Value& {
        return node < objects ? values_[node] : constants_[node - objects];
    };
    std::vector<std::uint32_t> order(members.begin(), members.end());
    // A port's state comes before its constant.
    std::sort(order.begin(), order.end(), [objects](std::uint32_t left, std::uint32_t right) {
        const std::uint32_t first = left % objects;
        const std::uint32_t second = right % objects;
        return first != second ? first < second : left < right;
    });
    std::vector<Value> before;
    std::vector<std::uint32_t> macros;
    std::vector<std::uint32_t> settings;
    for (const std::uint32_t node : order) {
        const bool is_macro =
            node < objects && model_->description->objects[node].kind == ObjectKind::kMacro;
        before.push_back(slot(node));
        (is_macro ? macros : settings).push_back(node);
    }
    const Value cycle = Value::unknown(reasons_.of(Reason::cycle()));
    for (const std::uint32_t node : settings) {
        slot(node) = cycle;
    }
    for (const std::uint32_t node : settings) {
        if (node >= objects) {
            const Given* given = this->given(node - objects);
            slot(node) =
                given != nullptr && given->constant ? *given->constant : untied(node - objects);
        } else if (is_port(model_->description->objects[node].kind)) {
            slot(node) = asked_state(node);
        } else {
            slot(node) = asked_value(node);
        }
    }
    bool is_stable = settings.empty();
    const std::size_t rounds = std::min(
        2 * order.size() + 2, kMostEvaluations / std::max<std::size_t>(1, order.size()) + 1);
    for (std::size_t round = 0; round < rounds && !is_stable; ++round) {
        is_stable = true;
        for (const std::uint32_t node : settings) {
            is_stable = !update(node) && is_stable;
        }
    }
    for (const std::uint32_t node : settings) {
        slot(node) = is_stable ? slot(node) : cycle;
    }
    for (const std::uint32_t node : macros) {
        if (!is_stable) {
            slot(node) = cycle;
        } else if (!is_relay(node)) {
            update(node);
        }
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (is_relay(order[i]) || before[i] != slot(order[i])) {
            note_change(order[i]);
        }
        // Sources may differ where values do not.
        mark_judged(order[i]);
    }
    is_queued_[component] = 0;
    queue_.erase(std::remove(queue_.begin(), queue_.end(), component), queue_.end());
    std::make_heap(queue_.begin(), queue_.end(), std::greater<>());
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

// What was needed once and is needed no more must not pile up.
void Engine::collect_garbage() {
    constexpr std::size_t kFew = 1024;
    if (words_.used() >= kFew + 2 * kept_words_) {
        collect_words();
        kept_words_ = words_.used();
    }
    if (reasons_.size() >= kFew + 2 * kept_reasons_) {
        collect_reasons();
        kept_reasons_ = reasons_.size();
    }
}

void Engine::collect_words() {
    std::vector<bool> kept(words_.size());
    const auto keep = [&kept](const Value value) {
        if (value.is_text()) {
            kept[value.word()] = true;
        }
    };
    for (const std::vector<Value>* values : {&values_, &constants_, &asked_, &numbers_}) {
        std::for_each(values->begin(), values->end(), keep);
    }
    for (const auto& [object, given] : given_) {
        keep(given.value);
    }
    words_.keep_only(kept);
}

void Engine::collect_reasons() {
    ReasonSets kept;
    std::unordered_map<ReasonsId, ReasonsId> moved;
    for (std::vector<Value>* values :
         {&values_, &constants_, &asked_, &numbers_, &results_, &spoiled_}) {
        for (Value& value : *values) {
            if (!value.is_unknown()) {
                continue;
            }
            const auto [entry, is_new] = moved.try_emplace(value.reasons(), 0);
            if (is_new) {
                entry->second = kept.intern(reasons_.reasons(value.reasons()));
            }
            value = Value::unknown(entry->second);
        }
    }
    reasons_ = std::move(kept);
}

}  // namespace kivo_session
