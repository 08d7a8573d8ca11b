#include "kivo/session/internal/engine/leaf_rows.h"
#include "kivo/session/internal/search/span_engine.h"
#include "kivo/session/internal/search/wanted.h"

namespace kivo_session {

// What is not known for a fault is no truth that is wanted; what is not known before run time may
// be one.
bool SpanEngine::may_be(const Wanted& wanted) {
    switch (wanted.kind) {
        case WantedKind::kHolds: {
            const Span holds = own_condition(wanted.item);
            return holds.may_be_true || holds.may_run_time;
        }
        case WantedKind::kFails: {
            const Span holds = own_condition(wanted.item);
            return holds.may_be_false || holds.is_unknown();
        }
        case WantedKind::kAtMost:
        case WantedKind::kAbove: {
            const Span is =
                evaluator_.compared(Operator::kAtMost, limit(wanted.item), limit(wanted.other));
            return is.may_run_time ||
                   (wanted.kind == WantedKind::kAtMost ? is.may_be_true : is.may_be_false);
        }
        case WantedKind::kIs:
            return may_have(value(wanted.item), wanted.span);
        case WantedKind::kConnected: {
            const Span is = is_connected_port(wanted.item);
            return is.may_be_true || is.is_unknown();
        }
        case WantedKind::kGood:
        case WantedKind::kTold:
            break;
    }
    const Standing standing = standing_of(wanted.item);
    return wanted.kind == WantedKind::kGood ? standing.may_be_good : standing.may_be_bad;
}

bool SpanEngine::may_have(const Span& effective, const Span& wanted) const {
    const Span same = evaluator_.compared(Operator::kEqual, effective, wanted);
    return same.may_be_true || effective.is_any_text;
}

Span SpanEngine::own_condition(std::uint32_t text) {
    ++evaluations_;
    if (model_.is_spoiled(text)) {
        return Span::fault();
    }
    const SourceText& source = description_.texts[text];
    if (engine_.reads_own(text)) {
        const bool is_port_force = std::string_view(source.element) == "FORCE_VALUE" &&
                                   is_port(description_.objects[source.object].kind);
        is_port_force ? begin_own_force(source.object) : begin_own(source.object);
    }
    Span holds = evaluator_.condition(model_.texts[text].program);
    end_own();
    return holds;
}

SpanEngine::Standing SpanEngine::standing_of(std::uint32_t leaf) {
    const Span result = judged(leaf);
    Standing standing{result.may_be_true || result.may_run_time,
                      result.may_be_false || result.may_fault};
    if (model_.leaves[leaf].kind == LeafKind::kMessage) {
        const Message& message = description_.messages[model_.leaves[leaf].item];
        const bool is_shown_when_true = is_shown(message, Value::truth(true));
        const bool is_shown_when_false = is_shown(message, Value::truth(false));
        standing.may_be_bad = (result.may_be_true && is_shown_when_true) ||
                              (result.may_be_false && is_shown_when_false);
        standing.may_be_good = (result.may_be_true && !is_shown_when_true) ||
                               (result.may_be_false && !is_shown_when_false) || result.is_unknown();
    }
    return standing;
}

}  // namespace kivo_session
