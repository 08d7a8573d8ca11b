#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/wave/drivers.h"
#include "tools/wave/wave_model.h"

// The positions of a command's values among those of its signal.
using ValuePositions = std::vector<std::size_t>;

// The changes of one signal up to "end", which several commands may drive; "positions" has an entry
// for each of them. At one time a later command goes before an earlier one, and a transition before
// a release, which is no answer of its own.
std::vector<WaveChange> merge_drivers(const std::vector<const Driver*>& drivers,
                                      const std::vector<ValuePositions>& positions,
                                      std::int64_t end);
