#include "kivo/session/internal/engine/engine.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

namespace kivo_session {

bool Engine::applies(const CycleEdge& edge) const {
    if (edge.when == CycleEdge::kAlways) {
        return true;
    }
    if (edge.when != CycleEdge::kWithoutPreset) {
        return edge.when == map_;
    }
    const std::uint32_t preset = presets_[edge.from];
    return preset == kNone || model_->description->presets[preset].value == kNone;
}

Components Engine::circles_of(std::uint32_t component, const std::vector<std::uint32_t>& members,
                              std::vector<std::uint8_t>& is_circle) const {
    const std::vector<std::uint32_t>& component_of = model_->components.component_of;
    auto edge = std::lower_bound(model_->cycle_edges.begin(), model_->cycle_edges.end(), component,
                                 [&component_of](const CycleEdge& each, std::uint32_t value) {
                                     return component_of[each.from] < value;
                                 });
    std::unordered_map<std::uint32_t, std::uint32_t> position;
    for (std::uint32_t i = 0; i < members.size(); ++i) {
        position.emplace(members[i], i);
    }
    std::vector<Edge> edges;
    for (; edge != model_->cycle_edges.end() && component_of[edge->from] == component; ++edge) {
        if (applies(*edge)) {
            edges.push_back({position[edge->from], position[edge->to]});
        }
    }
    const Adjacency graph(static_cast<std::uint32_t>(members.size()), edges);
    Components circles(graph);
    is_circle.assign(circles.size(), 0);
    for (std::uint32_t i = 0; i < circles.size(); ++i) {
        const auto inside = circles.members(i);
        const auto inputs = graph.of(inside[0]);
        is_circle[i] =
            inside.size() > 1 || std::binary_search(inputs.begin(), inputs.end(), inside[0]) ? 1
                                                                                             : 0;
    }
    return circles;
}

// A component is cyclic by all rules that there are; those of maps that are not selected do not
// count.
void Engine::run_cycle(std::uint32_t component) {
    const auto members = model_->components.members(component);
    const std::uint32_t objects = model_->object_count();
    std::vector<std::uint32_t> order(members.begin(), members.end());
    // In the order of declaration, a port's state before its constant.
    std::sort(order.begin(), order.end(), [objects](std::uint32_t left, std::uint32_t right) {
        const std::uint32_t first = left % objects;
        const std::uint32_t second = right % objects;
        return first != second ? first < second : left < right;
    });
    // A port may stay CONSTANT while the number that stands in place of its state is another one.
    const auto number = [&](std::uint32_t node) { return numbers_[node % objects]; };
    std::vector<std::pair<Value, Value>> before;
    before.reserve(order.size());
    for (const std::uint32_t node : order) {
        before.emplace_back(slot(node), number(node));
    }
    std::vector<std::uint8_t> is_circle;
    const Components circles = circles_of(component, order, is_circle);
    for (std::uint32_t i = 0; i < circles.size(); ++i) {
        std::vector<std::uint32_t> inside;
        for (const std::uint32_t position : circles.members(i)) {
            inside.push_back(order[position]);
        }
        if (is_circle[i] != 0) {
            run_circle(std::move(inside));
        } else if (!is_relay(inside[0])) {
            update(inside[0]);
        }
    }
    for (std::size_t i = 0; i < order.size(); ++i) {
        // The port that a macro stands for may have changed although it is the same port.
        const std::pair<Value, Value> now(slot(order[i]), number(order[i]));
        if (is_relay(order[i]) || before[i] != now || now.first.kind == ValueKind::kPort) {
            note_change(order[i]);
        }
        // Sources may differ where values do not.
        mark_judged(order[i]);
        tell_change(order[i]);
    }
    is_queued_[component] = 0;
    queue_.erase(std::remove(queue_.begin(), queue_.end(), component), queue_.end());
    std::make_heap(queue_.begin(), queue_.end(), std::greater<>());
}

// The members start at what was asked for and are evaluated in place, in the order of declaration,
// until nothing changes any more. Macros are seen through.
void Engine::run_circle(std::vector<std::uint32_t> members) {
    const auto is_macro = [this](std::uint32_t node) {
        return node < model_->object_count() &&
               model_->description->objects[node].kind == ObjectKind::kMacro;
    };
    const auto first_macro = std::stable_partition(
        members.begin(), members.end(), [&](std::uint32_t node) { return !is_macro(node); });
    const std::vector<std::uint32_t> settings(members.begin(), first_macro);
    start_cycle(settings);
    if (!settle_cycle(settings)) {
        lose_cycle(settings);
    }
    for (auto macro = first_macro; macro != members.end(); ++macro) {
        if (!is_relay(*macro)) {
            update(*macro);
        }
    }
}

void Engine::start_cycle(const std::vector<std::uint32_t>& settings) {
    const std::uint32_t objects = model_->object_count();
    const Value cycle = Value::unknown(reasons_.of(Reason::cycle()));
    for (const std::uint32_t node : settings) {
        slot(node) = cycle;
        if (node < objects) {
            numbers_[node] = untied(node);
        }
    }
    for (const std::uint32_t node : settings) {
        const std::uint32_t object = node % objects;
        slot(node) = node >= objects ? unforced_constant(object)
                     : is_port(model_->description->objects[object].kind) ? asked_state(object)
                                                                          : asked_value(object);
    }
}

// Whether the members came to rest.
bool Engine::settle_cycle(const std::vector<std::uint32_t>& settings) {
    constexpr std::size_t kMostEvaluations = 1000000;
    const std::size_t size = settings.size();
    const std::size_t rounds =
        std::min(2 * size + 2, kMostEvaluations / std::max<std::size_t>(1, size) + 1);
    bool is_stable = settings.empty();
    for (std::size_t round = 0; round < rounds && !is_stable; ++round) {
        is_stable = true;
        for (const std::uint32_t node : settings) {
            is_stable = !update(node) && is_stable;
        }
    }
    return is_stable;
}

// No member has a value, and what is told beside values follows from that alone: not from where the
// last round happened to stop.
void Engine::lose_cycle(const std::vector<std::uint32_t>& settings) {
    const std::uint32_t objects = model_->object_count();
    const Value cycle = Value::unknown(reasons_.of(Reason::cycle()));
    for (const std::uint32_t node : settings) {
        slot(node) = cycle;
    }
    for (const std::uint32_t node : settings) {
        const std::uint32_t object = node % objects;
        update(node);
        const Value state = values_[object];
        const bool is_free = node >= objects && !state.is_unknown() &&
                             is_open(object, static_cast<PortState>(state.low));
        slot(node) = is_free ? untied(object) : cycle;
        if (node < objects) {
            numbers_[object] = untied(object);
        }
        weigh_node(node);
    }
}

}  // namespace kivo_session
