#include "kivo/session/internal/search/verdict_kind.h"

#include "kivo/session/internal/engine/leaf_rows.h"

namespace kivo_session {

bool is_told(const Engine& engine, std::uint32_t number) {
    const Leaf& leaf = engine.model().leaves[number];
    const Value result = engine.result(number);
    if (leaf.kind == LeafKind::kMessage) {
        return is_shown(engine.model().description->messages[leaf.item], result);
    }
    return result.is_false() || engine.needs_spoiled_text(number) ||
           (result.is_unknown() && engine.reasons().is_more_than_run_time(result.reasons()));
}

bool takes_legality(const Description& description, const Leaf& leaf) {
    if (leaf.kind == LeafKind::kMessage) {
        return description.messages[leaf.item].severity == Severity::kError;
    }
    return is_judged(leaf.kind) && severity_of(description, leaf) == KIVO_SEVERITY::kError;
}

}  // namespace kivo_session
