#include "kivo/session/internal/search/trial.h"

#include <algorithm>

namespace kivo_session {

Engine& Trial::copy() {
    if (!engine_) {
        engine_.emplace(start_);
    }
    return *engine_;
}

void Trial::pin(std::uint32_t object) {
    copy().pin(object);
}

void Trial::restore(std::uint32_t object) {
    const std::string_view name = start_.model().description->objects[object].name;
    if (const Given* given = start_.given(object)) {
        std::size_t refused = 0;
        engine_->set({{name, given->text}}, &refused);
    } else {
        engine_->unset(name);
    }
}

Engine* Trial::with(const std::vector<Change>& changes) {
    copy();
    const auto is_changed_again = [&](std::uint32_t object) {
        return std::any_of(changes.begin(), changes.end(),
                           [object](const Change& change) { return change.object == object; });
    };
    for (const std::uint32_t object : changed_) {
        if (!is_changed_again(object)) {
            restore(object);
        }
    }
    changed_.clear();
    std::vector<Assignment> assignments;
    for (const Change& change : changes) {
        changed_.push_back(change.object);
        assignments.push_back(
            {start_.model().description->objects[change.object].name, change.text});
    }
    std::size_t refused = 0;
    return engine_->set(assignments, &refused) == SetResult::kDone ? &*engine_ : nullptr;
}

}  // namespace kivo_session
