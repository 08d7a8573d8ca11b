#pragma once

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

// "is_complete": the effort sufficed to try all that there is to try.
std::vector<KIVO_REPAIR> repairs_of(Engine& engine, const KIVO_SUBJECT& subject,
                                    const KIVO_EFFORT& effort, bool& is_complete);

}  // namespace kivo_session
