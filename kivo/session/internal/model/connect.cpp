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

void ModelBuilder::collect_texts(std::uint32_t node, std::vector<std::uint32_t>& texts) const {
    const bool is_constant = node >= model_.object_count();
    const std::uint32_t index = is_constant ? node - model_.object_count() : node;
    const Object& each = object(index);
    const auto add = [&texts](std::uint32_t text) {
        if (text != kNone) {
            texts.push_back(text);
        }
    };
    if (is_constant ? is_port(each.kind) : !is_port(each.kind)) {
        add(each.default_text);
    }
    for (std::uint32_t i = each.elements.begin; i < each.elements.end; ++i) {
        const Element& element = description_.elements[i];
        const bool is_read = element.kind == ElementKind::kForce ||
                             (element.kind == ElementKind::kState && !is_constant) ||
                             (element.kind == ElementKind::kPortForce && is_constant);
        if (is_read) {
            add(element.first);
            add(element.second);
            add(element.condition);
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

void ModelBuilder::collect_inputs(std::uint32_t node, std::vector<std::uint32_t>& inputs) {
    std::vector<std::uint32_t>& texts = scratch_;
    texts.clear();
    collect_texts(node, texts);
    const bool is_constant = node >= model_.object_count();
    const std::uint32_t index = node % model_.object_count();
    for (const std::uint32_t text : texts) {
        const Range range = text_uses_[text];
        // The default of a port is none of its own texts: there its name is the port as it is.
        const bool is_own = !is_constant || text != object(index).default_text;
        for (std::uint32_t use = range.begin; use < range.end; ++use) {
            if (is_own) {
                collect_use(node, uses_[use], inputs);
            } else {
                inputs.push_back(node_of(uses_[use]));
            }
        }
    }
    if (is_constant) {
        inputs.push_back(index);
    }
}

void ModelBuilder::find_components(const std::vector<Edge>& edges) {
    const std::uint32_t size = 2 * model_.object_count();
    model_.inputs = Adjacency(size, edges);
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

void ModelBuilder::connect_nodes() {
    const auto all_edges = [this] {
        std::vector<Edge> edges;
        std::vector<std::uint32_t> inputs;
        for (std::uint32_t node = 0; node < 2 * model_.object_count(); ++node) {
            const bool is_constant = node >= model_.object_count();
            if (is_constant && !is_port(object(node - model_.object_count()).kind)) {
                continue;
            }
            inputs.clear();
            collect_inputs(node, inputs);
            for (const std::uint32_t input : inputs) {
                edges.push_back({node, input});
            }
        }
        std::vector<std::uint32_t> preset_inputs;
        for (const Preset& preset : description_.presets) {
            if (preset.value == kNone) {
                continue;
            }
            preset_inputs.clear();
            const Range range = text_uses_[preset.value];
            for (std::uint32_t use = range.begin; use < range.end; ++use) {
                collect_use(preset.object, uses_[use], preset_inputs);
            }
            for (const std::uint32_t input : preset_inputs) {
                edges.push_back({preset.object, input});
            }
        }
        return edges;
    };
    std::vector<Edge> edges = all_edges();
    find_components(edges);
    if (find_own_mentions()) {
        edges = all_edges();
        find_components(edges);
    }
    expand_component_macros();
    for (Edge& edge : edges) {
        std::swap(edge.from, edge.to);
    }
    model_.dependents = Adjacency(2 * model_.object_count(), edges);
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
