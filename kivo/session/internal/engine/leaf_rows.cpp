#include "kivo/session/internal/engine/leaf_rows.h"

#include <cassert>
#include <iterator>

namespace kivo_session {

namespace {

// clang-format off
constexpr LeafRow kLeaves[] = {
    { LeafKind::kNeedsValue,         "needs-value",          KIVO_SEVERITY::kError   },
    { LeafKind::kNotInList,          "not-in-list",          KIVO_SEVERITY::kError   },
    { LeafKind::kOverridden,         "overridden",           KIVO_SEVERITY::kWarning },
    { LeafKind::kForcesDisagree,     "forces-disagree",      KIVO_SEVERITY::kError   },
    { LeafKind::kStatesDisagree,     "forces-disagree",      KIVO_SEVERITY::kError   },
    { LeafKind::kPortForcesDisagree, "forces-disagree",      KIVO_SEVERITY::kError   },
    { LeafKind::kRange,              "out-of-range",         KIVO_SEVERITY::kError   },
    { LeafKind::kValueRule,          "value-rule",           KIVO_SEVERITY::kError   },
    { LeafKind::kConstantRange,      "port-range",           KIVO_SEVERITY::kError   },
    { LeafKind::kPortRange,          "port-range",           KIVO_SEVERITY::kWarning },
    { LeafKind::kTooWide,            "port-range",           KIVO_SEVERITY::kError   },
    { LeafKind::kPortWidth,          "port-width",           KIVO_SEVERITY::kError   },
    { LeafKind::kPortWidth2d,        "port-width",           KIVO_SEVERITY::kError   },
    { LeafKind::kPortNeedsValue,     "port-needs-value",     KIVO_SEVERITY::kWarning },
    { LeafKind::kForcedButConnected, "forced-but-connected", KIVO_SEVERITY::kWarning },
    { LeafKind::kRule,               "rule",                 KIVO_SEVERITY::kError   },
    { LeafKind::kMessage,            "message-error",        KIVO_SEVERITY::kError   },
};
// clang-format on

}  // namespace

const LeafRow& row_of(LeafKind kind) {
    assert(static_cast<std::size_t>(kind) < std::size(kLeaves));
    return kLeaves[static_cast<std::size_t>(kind)];
}

KIVO_SEVERITY severity_of(const Description& description, const Leaf& leaf) {
    const bool is_advice =
        (leaf.kind == LeafKind::kRule && !description.rules[leaf.item].is_required) ||
        (leaf.kind == LeafKind::kValueRule && !description.elements[leaf.item].is_required);
    return is_advice ? KIVO_SEVERITY::kAdvice : row_of(leaf.kind).severity;
}

bool is_shown(const Message& message, Value result) {
    return (result.is_true() && !message.shown.empty()) ||
           (result.is_false() && !message.otherwise.empty());
}

}  // namespace kivo_session
