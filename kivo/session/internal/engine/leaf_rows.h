#pragma once

#include "kivo/session/internal/model/model.h"
#include "kivo/session/session.h"

namespace kivo_session {

// What a leaf of a kind is called where it does not hold, and how much that matters.
struct LeafRow {
    LeafKind kind;
    const char* id;
    KIVO_SEVERITY severity;
};

// REQUIRES: the kind is judged, or that of messages
const LeafRow& row_of(LeafKind kind);

// Messages, vectors, stimuli, maps and pieces apply or not: neither is a fault.
inline bool is_judged(LeafKind kind) {
    return kind < LeafKind::kMessage;
}

// Whether a leaf is about rules that give one object several values at once.
inline bool is_disagreement(LeafKind kind) {
    return kind >= LeafKind::kForcesDisagree && kind <= LeafKind::kPortForcesDisagree;
}

// REQUIRES: as for row_of
KIVO_SEVERITY severity_of(const Description& description, const Leaf& leaf);

// Whether a message is shown when its condition comes to "result".
bool is_shown(const Message& message, Value result);

}  // namespace kivo_session
