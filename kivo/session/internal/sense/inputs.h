#pragma once

#include <cstdint>
#include <vector>

#include "kivo/session/internal/model/model.h"
#include "kivo/session/internal/search/wanted.h"

namespace kivo_session {

// What something is made from.
struct Inputs {
    std::vector<std::uint32_t> nodes;
    std::vector<std::uint32_t> asked;  // parameters of which what is asked for counts
    std::vector<std::uint32_t> leaves;
};

// Appends what the condition or limit that a text is reads.
void add_inputs(const Engine& engine, std::uint32_t text, Inputs& inputs);

// Whether two of the conditions say of one value that it is this and that: no search finds such
// ways out as fast.
bool exclude_each_other(const Engine& engine, const std::vector<Wanted>& wanted);

Inputs inputs_of(const Engine& engine, const std::vector<Wanted>& wanted);

}  // namespace kivo_session
