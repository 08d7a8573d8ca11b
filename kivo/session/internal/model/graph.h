#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kivo_session {

// From one thing to another, both by number.
struct Edge {
    std::uint32_t from;
    std::uint32_t to;
};

// The targets of each thing, one after another in one array.
class Adjacency {
public:
    Adjacency() = default;
    // Keeps the order of the edges; an edge that stands there twice in a row is kept once.
    Adjacency(std::uint32_t size, const std::vector<Edge>& edges);

    std::span<const std::uint32_t> of(std::uint32_t from) const {
        return {targets_.data() + begins_[from], targets_.data() + begins_[from + 1]};
    }
    std::uint32_t size() const { return static_cast<std::uint32_t>(begins_.size()) - 1; }

private:
    std::vector<std::uint32_t> begins_{0};
    std::vector<std::uint32_t> targets_;
};

// The strongly connected components of a graph, targets before what points to them.
struct Components {
    // Without recursion, in time linear in nodes and edges.
    explicit Components(const Adjacency& graph);
    Components() = default;

    std::span<const std::uint32_t> members(std::uint32_t component) const {
        return {nodes.data() + begins[component], nodes.data() + begins[component + 1]};
    }
    std::uint32_t size() const { return static_cast<std::uint32_t>(begins.size()) - 1; }

    std::vector<std::uint32_t> component_of;  // by node
    std::vector<std::uint32_t> nodes;         // by component
    std::vector<std::uint32_t> begins{0};
};

}  // namespace kivo_session
