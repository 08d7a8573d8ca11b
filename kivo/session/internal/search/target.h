#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/search/cone.h"
#include "kivo/session/session.h"

namespace kivo_session {

// What a subject of the interface is about: at most one of these, else kNone.
struct Target {
    bool is_known() const { return is_verdict() || object != kNone; }
    bool is_verdict() const { return leaf != kNone || text != kNone || cycle != kNone; }

    std::uint32_t leaf = kNone;
    std::uint32_t text = kNone;    // that has a fault
    std::uint32_t cycle = kNone;   // the object that has no value because of one
    std::uint32_t object = kNone;  // whose value is asked about
    std::uint32_t number = 0;      // of the subject
};

Target target_of(const Model& model, const KIVO_SUBJECT& subject);

// Whether a verdict is told of.
bool is_told(Engine& engine, const Target& target);

// What a verdict depends on.
Cone cone_of(const Model& model, const Target& target);

// What is wrong with a configuration: leaves and nodes that take its legality.
struct Wrongs {
    // Whether the cone reaches all of them.
    bool are_in(const Cone& cone) const;

    std::vector<std::uint32_t> leaves;
    std::vector<std::uint32_t> nodes;
};
Wrongs wrongs_of(const Engine& engine);

// The objects of a cone that can be set, in the order of the store.
std::vector<std::uint32_t> settings_in(const Engine& engine, const Cone& cone);

// The leaf that says whether a request is granted; kNone when nothing can override it.
std::uint32_t request_leaf(const Model& model, std::uint32_t object);

// The leaves and objects of a cone that can take legality.
std::vector<std::uint32_t> error_leaves(const Model& model, const Cone& cone);
std::vector<std::uint32_t> valued_objects(const Model& model, const Cone& cone);

// What is asked for, as a user would set it.
std::string asked_text_of(const Engine& engine, std::uint32_t object);

}  // namespace kivo_session
