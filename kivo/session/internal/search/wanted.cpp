#include "kivo/session/internal/search/wanted.h"

#include "kivo/session/internal/search/verdict_kind.h"

namespace kivo_session {

namespace {

bool is_truth(const Engine& engine, Value value, bool wanted, bool is_certain) {
    return value.is_unknown()
               ? !is_certain && !engine.reasons().is_more_than_run_time(value.reasons())
               : value == Value::truth(wanted);
}

}  // namespace

bool is_met(Engine& engine, const Wanted& wanted, bool is_certain) {
    switch (wanted.kind) {
        case WantedKind::kHolds:
            return is_truth(engine, engine.condition_of(wanted.item), true, is_certain);
        case WantedKind::kFails: {
            const Value holds = engine.condition_of(wanted.item);
            return is_certain ? holds.is_false() : !holds.is_true();
        }
        case WantedKind::kAtMost:
        case WantedKind::kAbove:
            return is_truth(engine, engine.is_at_most(wanted.item, wanted.other),
                            wanted.kind == WantedKind::kAtMost, is_certain);
        case WantedKind::kIs: {
            const Value value = engine.value(wanted.item);
            return !value.is_unknown() && engine.text_of(value) == wanted.text;
        }
        case WantedKind::kConnected: {
            const Value state = engine.value(wanted.item);
            return !state.is_unknown() && is_connected(static_cast<PortState>(state.low));
        }
        case WantedKind::kGood:
            return !is_told(engine, wanted.item);
        case WantedKind::kTold:
            break;
    }
    return engine.result(wanted.item).is_unknown() ? false : is_told(engine, wanted.item);
}

}  // namespace kivo_session
