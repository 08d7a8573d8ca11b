#pragma once

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/session.h"

namespace kivo_session {

KIVO_WHY why_of(Engine& engine, const KIVO_SUBJECT& subject);

}  // namespace kivo_session
