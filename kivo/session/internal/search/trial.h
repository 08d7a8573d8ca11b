#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

// A change of one setting, by the text to set.
struct Change {
    std::uint32_t object;
    std::string text;
};

// Tries changes on a copy of an engine that is made with the first one.
class Trial {
public:
    explicit Trial(const Engine& engine) : start_(engine) {}

    // As though no rule forced a value on the object.
    void pin(std::uint32_t object);
    // The engine with these changes and no others; null when one of them cannot be set.
    Engine* with(const std::vector<Change>& changes);
    // Of values and leaves.
    std::uint64_t evaluations() const { return engine_ ? engine_->evaluations() : 0; }

private:
    Engine& copy();
    void restore(std::uint32_t object);

    const Engine& start_;
    std::optional<Engine> engine_;
    std::vector<std::uint32_t> changed_;
};

}  // namespace kivo_session
