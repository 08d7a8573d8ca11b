#include "kivo/session/internal/search/cone.h"

#include <algorithm>

namespace kivo_session {

namespace {

void add_node(Cone& cone, std::uint32_t node) {
    if (cone.is_node[node] == 0) {
        cone.is_node[node] = 1;
        cone.nodes.push_back(node);
    }
}

}  // namespace

void sort_by_rank(const Model& model, std::vector<std::uint32_t>& nodes) {
    const std::vector<std::uint32_t>& rank = model.components.component_of;
    std::sort(nodes.begin(), nodes.end(), [&rank](std::uint32_t left, std::uint32_t right) {
        return rank[left] != rank[right] ? rank[left] < rank[right] : left < right;
    });
}

Cone cone_above(const Model& model, const std::vector<std::uint32_t>& objects) {
    Cone cone;
    cone.is_node.resize(std::size_t{2} * model.object_count());
    for (const std::uint32_t object : objects) {
        add_node(cone, object);
        if (is_port(model.description->objects[object].kind)) {
            add_node(cone, model.constant_node(object));
        }
    }
    for (std::size_t i = 0; i < cone.nodes.size(); ++i) {
        for (const std::uint32_t dependent : model.dependents.of(cone.nodes[i])) {
            add_node(cone, dependent);
        }
        const auto leaves = model.judged_by.of(cone.nodes[i]);
        cone.leaves.insert(cone.leaves.end(), leaves.begin(), leaves.end());
    }
    sort_by_rank(model, cone.nodes);
    std::sort(cone.leaves.begin(), cone.leaves.end());
    cone.leaves.erase(std::unique(cone.leaves.begin(), cone.leaves.end()), cone.leaves.end());
    return cone;
}

Cone cone_below(const Model& model, const std::vector<std::uint32_t>& nodes,
                const std::vector<std::uint32_t>& leaves) {
    Cone cone;
    cone.is_node.resize(std::size_t{2} * model.object_count());
    cone.leaves = leaves;
    for (const std::uint32_t node : nodes) {
        add_node(cone, node);
    }
    for (const std::uint32_t leaf : leaves) {
        for (const std::uint32_t node : model.leaf_inputs.of(leaf)) {
            add_node(cone, node);
        }
    }
    for (std::size_t i = 0; i < cone.nodes.size(); ++i) {
        for (const std::uint32_t input : model.inputs.of(cone.nodes[i])) {
            add_node(cone, input);
        }
    }
    sort_by_rank(model, cone.nodes);
    return cone;
}

}  // namespace kivo_session
