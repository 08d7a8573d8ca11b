#pragma once

#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

// Whether a leaf is told of as a verdict: it fails, or nobody can say for a reason that counts. Of
// a message: whether it is shown.
bool is_told(const Engine& engine, std::uint32_t leaf);

// Whether a leaf that is told of makes the configuration illegal.
bool takes_legality(const Description& description, const Leaf& leaf);

}  // namespace kivo_session
