#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/model/model.h"

namespace kivo_session {

// Nodes and leaves of a model that hang together.
struct Cone {
    bool has_node(std::uint32_t node) const { return is_node[node] != 0; }

    std::vector<std::uint8_t> is_node;  // by node
    std::vector<std::uint32_t> nodes;   // inputs first
    std::vector<std::uint32_t> leaves;  // in order
};

// What setting the objects can change.
Cone cone_above(const Model& model, const std::vector<std::uint32_t>& objects);

// What the nodes and leaves depend on, with them.
Cone cone_below(const Model& model, const std::vector<std::uint32_t>& nodes,
                const std::vector<std::uint32_t>& leaves);

// The nodes in the order of evaluation.
void sort_by_rank(const Model& model, std::vector<std::uint32_t>& nodes);

}  // namespace kivo_session
