#pragma once

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

KIVO_CONFLICT conflict_of(Engine& engine, const KIVO_SUBJECT& subject, const KIVO_EFFORT& effort);

}  // namespace kivo_session
