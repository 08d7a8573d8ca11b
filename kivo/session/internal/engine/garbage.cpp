#include "kivo/session/internal/engine/engine.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace kivo_session {

// What was needed once and is needed no more must not pile up.
void Engine::collect_garbage() {
    constexpr std::size_t kFew = 1024;
    if (words_.used() >= kFew + 2 * kept_words_) {
        collect_words();
        kept_words_ = words_.used();
    }
    if (reasons_.size() >= kFew + 2 * kept_reasons_) {
        collect_reasons();
        kept_reasons_ = reasons_.size();
    }
}

void Engine::collect_words() {
    std::vector<bool> kept(words_.size());
    const auto keep = [&kept](const Value value) {
        if (value.is_text()) {
            kept[value.word()] = true;
        }
    };
    for (const std::vector<Value>* values : {&values_, &constants_, &asked_, &numbers_}) {
        std::for_each(values->begin(), values->end(), keep);
    }
    for (const auto& [object, given] : given_) {
        keep(given.value);
    }
    words_.keep_only(kept);
}

void Engine::collect_reasons() {
    ReasonSets kept;
    std::unordered_map<ReasonsId, ReasonsId> moved;
    for (std::vector<Value>* values :
         {&values_, &constants_, &asked_, &numbers_, &results_, &spoiled_}) {
        for (Value& value : *values) {
            if (!value.is_unknown()) {
                continue;
            }
            const auto [entry, is_new] = moved.try_emplace(value.reasons(), 0);
            if (is_new) {
                entry->second = kept.intern(reasons_.reasons(value.reasons()));
            }
            value = Value::unknown(entry->second);
        }
    }
    reasons_ = std::move(kept);
}

}  // namespace kivo_session
