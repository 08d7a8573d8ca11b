#pragma once

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

std::vector<KIVO_REPAIR> repairs_of(Engine& engine, const KIVO_SUBJECT& subject,
                                    const KIVO_EFFORT& effort);

}  // namespace kivo_session
