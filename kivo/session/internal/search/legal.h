#pragma once

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

KIVO_LEGAL_VALUES legal_values(Engine& engine, std::uint32_t object, KIVO_LEGAL_SCOPE scope,
                               const KIVO_EFFORT& effort);

}  // namespace kivo_session
