#include <algorithm>

#include "kivo/session/internal/model/builder.h"

namespace kivo_session {

ModelBuilder::ModelBuilder(Model& model) : model_(model), description_(*model.description) {
    const std::size_t objects = description_.objects.size();
    const std::size_t texts = description_.texts.size();
    model_.texts.resize(texts);
    model_.macros.resize(objects);
    model_.macro_arguments.resize(objects);
    model_.macro_nodes.resize(objects);
    model_.expansion.assign(objects, kNone);
    text_uses_.resize(texts);
    macro_faults_.resize(objects);
    macro_reasons_.resize(objects);
    is_macro_used_.resize(objects);
}

void ModelBuilder::run() {
    compile_macros();
    compile_texts();
    make_leaves();
    connect_nodes();
    connect_leaves();
}

std::uint32_t ModelBuilder::node_of(const Use& use) const {
    return use.kind == UseKind::kPortConstant ? model_.constant_node(use.index) : use.index;
}

void ModelBuilder::collect_texts(std::uint32_t node, std::vector<Source>& texts) const {
    const bool is_constant = node >= model_.object_count();
    const Object& each = object(node % model_.object_count());
    const auto add = [&texts](std::uint32_t text, std::uint32_t when) {
        if (text != kNone) {
            texts.push_back({text, when});
        }
    };
    if (is_constant || !is_port(each.kind)) {
        add(each.default_text,
            is_parameter(each.kind) ? CycleEdge::kWithoutPreset : CycleEdge::kAlways);
    }
    for (std::uint32_t i = each.elements.begin; i < each.elements.end; ++i) {
        const Element& element = description_.elements[i];
        const bool is_read = element.kind == ElementKind::kForce ||
                             (element.kind == ElementKind::kState && !is_constant) ||
                             (element.kind == ElementKind::kPortForce && is_constant);
        if (is_read) {
            const std::uint32_t when = element.map == kNone ? CycleEdge::kAlways : element.map;
            add(element.first, when);
            add(element.second, when);
            add(element.condition, when);
        }
    }
}

// An object's own name means what was asked for. What was asked for as the constant of a port may
// be its default, which has inputs of its own.
void ModelBuilder::collect_own_use(std::uint32_t owner, const Use& use,
                                   std::vector<std::uint32_t>& inputs) {
    const bool is_constant_owner = owner >= model_.object_count();
    if (is_constant_owner && use.kind == UseKind::kPortState) {
        inputs.push_back(use.index);
        return;
    }
    if (!is_constant_owner && use.kind == UseKind::kPortConstant) {
        const std::uint32_t text = object(use.index).default_text;
        const Range range = text == kNone ? Range() : text_uses_[text];
        for (std::uint32_t i = range.begin; i < range.end; ++i) {
            inputs.push_back(node_of(uses_[i]));
        }
    }
}

void ModelBuilder::collect_use(std::uint32_t owner, const Use& use,
                               std::vector<std::uint32_t>& inputs) {
    const std::uint32_t own = owner % model_.object_count();
    const auto is_expanded = [&](std::uint32_t macro) {
        return model_.expansion[own] != kNone &&
               model_.macro_flags[model_.expansion[own]][macro] != 0;
    };
    const auto collect = [&](const Use& each) {
        if (each.kind != UseKind::kMacro && each.index == own) {
            collect_own_use(owner, each, inputs);
        } else {
            inputs.push_back(node_of(each));
        }
    };
    if (use.kind != UseKind::kMacro || !is_expanded(use.index)) {
        return collect(use);
    }
    std::vector<std::uint32_t> waiting{use.index};
    std::vector<std::uint32_t> seen;
    while (!waiting.empty()) {
        const std::uint32_t macro = waiting.back();
        waiting.pop_back();
        if (std::find(seen.begin(), seen.end(), macro) != seen.end()) {
            continue;
        }
        seen.push_back(macro);
        const Range range = text_uses_[object(macro).default_text];
        for (std::uint32_t i = range.begin; i < range.end; ++i) {
            const Use& inner = uses_[i];
            if (inner.kind == UseKind::kMacro && is_expanded(inner.index)) {
                waiting.push_back(inner.index);
            } else {
                collect(inner);
            }
        }
    }
}

void ModelBuilder::collect_node_edges(std::uint32_t node, std::vector<CycleEdge>& edges) {
    scratch_.clear();
    collect_texts(node, scratch_);
    const bool is_constant = node >= model_.object_count();
    const std::uint32_t index = node % model_.object_count();
    for (const auto& [text, when] : scratch_) {
        inputs_.clear();
        const Range range = text_uses_[text];
        // The default of a port is none of its own texts: there its name is the port as it is.
        const bool is_own = !is_constant || text != object(index).default_text;
        for (std::uint32_t use = range.begin; use < range.end; ++use) {
            if (is_own) {
                collect_use(node, uses_[use], inputs_);
            } else {
                inputs_.push_back(node_of(uses_[use]));
            }
        }
        for (const std::uint32_t input : inputs_) {
            edges.push_back({node, input, when});
        }
    }
    if (is_constant) {
        edges.push_back({node, index, CycleEdge::kAlways});
    }
}

void ModelBuilder::collect_edges(std::vector<CycleEdge>& edges) {
    edges.clear();
    const std::uint32_t objects = model_.object_count();
    for (std::uint32_t node = 0; node < 2 * objects; ++node) {
        if (node < objects || is_port(object(node - objects).kind)) {
            collect_node_edges(node, edges);
        }
    }
    for (std::uint32_t map = 0; map < description_.maps.size(); ++map) {
        const Range presets = description_.maps[map].presets;
        for (std::uint32_t i = presets.begin; i < presets.end; ++i) {
            const Preset& preset = description_.presets[i];
            const Range range = preset.value == kNone ? Range() : text_uses_[preset.value];
            inputs_.clear();
            for (std::uint32_t use = range.begin; use < range.end; ++use) {
                collect_use(preset.object, uses_[use], inputs_);
            }
            for (const std::uint32_t input : inputs_) {
                edges.push_back({preset.object, input, map});
            }
        }
    }
}

void ModelBuilder::find_components(const std::vector<CycleEdge>& edges) {
    const std::uint32_t size = 2 * model_.object_count();
    std::vector<Edge> plain;
    plain.reserve(edges.size());
    for (const CycleEdge& edge : edges) {
        plain.push_back({edge.from, edge.to});
    }
    model_.inputs = Adjacency(size, plain);
    for (Edge& edge : plain) {
        std::swap(edge.from, edge.to);
    }
    model_.dependents = Adjacency(size, plain);
    model_.components = Components(model_.inputs);
    model_.is_cyclic.assign(model_.components.size(), 0);
    for (std::uint32_t component = 0; component < model_.components.size(); ++component) {
        const auto members = model_.components.members(component);
        const auto inputs = model_.inputs.of(members[0]);
        model_.is_cyclic[component] =
            members.size() > 1 || std::binary_search(inputs.begin(), inputs.end(), members[0]) ? 1
                                                                                               : 0;
    }
}

void ModelBuilder::keep_cycle_edges(const std::vector<CycleEdge>& edges) {
    const std::vector<std::uint32_t>& component_of = model_.components.component_of;
    for (const CycleEdge& edge : edges) {
        if (component_of[edge.from] == component_of[edge.to] &&
            model_.is_cyclic[component_of[edge.from]] != 0) {
            model_.cycle_edges.push_back(edge);
        }
    }
    std::stable_sort(model_.cycle_edges.begin(), model_.cycle_edges.end(),
                     [&component_of](const CycleEdge& left, const CycleEdge& right) {
                         return component_of[left.from] < component_of[right.from];
                     });
}

void ModelBuilder::connect_nodes() {
    std::vector<CycleEdge> edges;
    collect_edges(edges);
    find_components(edges);
    if (find_own_mentions()) {
        collect_edges(edges);
        find_components(edges);
    }
    expand_component_macros();
    keep_cycle_edges(edges);
}

std::uint32_t ModelBuilder::flags_of(std::uint32_t index) {
    if (model_.expansion[index] == kNone) {
        model_.expansion[index] = static_cast<std::uint32_t>(model_.macro_flags.size());
        model_.macro_flags.emplace_back(model_.object_count(), 0);
    }
    return model_.expansion[index];
}

bool ModelBuilder::find_own_mentions() {
    // A macro that leads back to its user through macros alone mentions it. Walked from the object
    // against the direction of use, within its component.
    bool has_found = false;
    for (std::uint32_t component = 0; component < model_.components.size(); ++component) {
        const auto members = model_.components.members(component);
        if (model_.is_cyclic[component] == 0) {
            continue;
        }
        std::vector<Edge> users;  // from what is used to the macros that use it
        std::vector<std::uint32_t> macros;
        for (const std::uint32_t member : members) {
            if (member < model_.object_count() && object(member).kind == ObjectKind::kMacro) {
                macros.push_back(member);
                for (const std::uint32_t input : model_.inputs.of(member)) {
                    const std::uint32_t used =
                        input < model_.object_count() ? input : input - model_.object_count();
                    users.push_back({used, member});
                }
            }
        }
        if (macros.empty()) {
            continue;
        }
        std::sort(users.begin(), users.end(),
                  [](const Edge& left, const Edge& right) { return left.from < right.from; });
        for (const std::uint32_t member : members) {
            const std::uint32_t own = member % model_.object_count();
            if (object(own).kind == ObjectKind::kMacro) {
                continue;
            }
            std::vector<std::uint32_t> waiting{own};
            while (!waiting.empty()) {
                const std::uint32_t used = waiting.back();
                waiting.pop_back();
                auto user = std::lower_bound(
                    users.begin(), users.end(), used,
                    [](const Edge& edge, std::uint32_t value) { return edge.from < value; });
                for (; user != users.end() && user->from == used; ++user) {
                    std::uint8_t& flag = model_.macro_flags[flags_of(own)][user->to];
                    if (flag == 0) {
                        flag = 1;
                        has_found = true;
                        waiting.push_back(user->to);
                    }
                }
            }
        }
    }
    return has_found;
}

// While a cycle is worked out its macros are always read afresh.
void ModelBuilder::expand_component_macros() {
    for (std::uint32_t component = 0; component < model_.components.size(); ++component) {
        if (model_.is_cyclic[component] == 0) {
            continue;
        }
        for (const std::uint32_t macro : model_.components.members(component)) {
            if (macro >= model_.object_count() || object(macro).kind != ObjectKind::kMacro) {
                continue;
            }
            for (const std::uint32_t member : model_.components.members(component)) {
                const std::uint32_t index =
                    member < model_.object_count() ? member : member - model_.object_count();
                model_.macro_flags[flags_of(index)][macro] = 1;
            }
        }
    }
}

void ModelBuilder::connect_leaves() {
    std::vector<Edge> edges;
    std::vector<std::uint32_t> inputs;
    for (std::uint32_t leaf = 0; leaf < model_.leaves.size(); ++leaf) {
        inputs.clear();
        collect_leaf_inputs(model_.leaves[leaf], inputs);
        for (const std::uint32_t node : inputs) {
            edges.push_back({leaf, node});
        }
    }
    model_.leaf_inputs = Adjacency(static_cast<std::uint32_t>(model_.leaves.size()), edges);
    for (Edge& edge : edges) {
        std::swap(edge.from, edge.to);
    }
    model_.judged_by = Adjacency(2 * model_.object_count(), edges);
}

}  // namespace kivo_session
