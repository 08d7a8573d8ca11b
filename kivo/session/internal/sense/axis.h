#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/search/domain.h"

namespace kivo_session {

// What stands beside the names of settings in the texts of a description.
struct Mentions {
    explicit Mentions(const Model& model);

    std::vector<std::vector<WordId>> words;   // by object: of texts without a list
    std::vector<std::vector<Whole>> numbers;  // by object: of whole numbers
    std::vector<std::uint8_t> is_plain;       // by object: a text compared with literals alone
};

// What one setting can be asked to be.
struct Axis {
    // All that it can be asked to be from "first" to "last".
    Span span(Whole first, Whole last) const;
    // Whether nothing else can be meant by the value at a position.
    bool is_exact(Whole number) const;

    Domain domain;
    bool is_port = false;
    bool is_constant_open = false;  // of a port: CONSTANT stands for every number
    bool is_other_exact = true;     // of a text without a list: the other one is like no literal
    bool is_wild = false;           // a list whose items are not fixed
    std::vector<Whole> cuts;        // numbers that it is compared with
};

// "above" are the nodes that are not fixed.
Axis axis_of(Engine& engine, std::uint32_t object, const Cone& above, const Mentions& mentions);

}  // namespace kivo_session
