#pragma once

#include <cstdint>
#include <string>

#include "kivo/session/internal/engine/engine.h"
#include "kivo/session/internal/search/span.h"

namespace kivo_session {

enum class WantedKind : std::uint8_t {
    kHolds,      // item: a text, whose condition is true; of an implication the one before "then"
    kFails,      // the same, not true, for whatever reason
    kAtMost,     // item, other: limits of ranges, the first at most the second
    kAbove,      // the same, the first above the second
    kIs,         // item: an object with this value
    kConnected,  // item: a port
    kGood,       // item: a leaf that is not told of
    kTold,       // item: a leaf that is
};

// One thing that is wanted of a configuration, beside its legality.
struct Wanted {
    WantedKind kind;
    std::uint32_t item;
    std::uint32_t other = kNone;
    Span span;         // of kIs: the value
    std::string text;  // and as text
};

// Whether a configuration has it. What is only known at run time counts when it need not be
// certain.
bool is_met(Engine& engine, const Wanted& wanted, bool is_certain);

}  // namespace kivo_session
