#pragma once

#include <memory>

#include "kivo/session/internal/model/model.h"
#include "kivo/session/sense.h"

namespace kivo_session {

KIVO_SENSE judge_sense(std::shared_ptr<const Model> model, const KIVO_EFFORT& effort);

}  // namespace kivo_session
