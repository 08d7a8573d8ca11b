#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/instance.h"
#include "kivo/session/internal/engine/engine.h"

namespace kivo_session {

enum class Direction : std::uint8_t { kInput, kOutput, kBidir };

struct InstanceGeneric {
    std::string name;
    std::optional<Whole> number;  // none: a text
    std::string text;
    bool is_hint = false;
};

struct InstancePort {
    std::string name;
    Direction direction = Direction::kInput;
    bool is_scalar = true;
    std::uint32_t width = 1;
    std::optional<std::string> bits;  // of what ties it, the highest first; none: connected
};

// What an instance is made of, whatever the language.
struct InstanceParts {
    std::string module;
    std::vector<std::string> libraries;  // "ieee.numeric_std", "work.pkg", ...
    std::vector<InstanceGeneric> generics;
    std::vector<InstancePort> ports;
    std::vector<std::string> problems;
};

InstanceParts collect_parts(Engine& engine, const KIVO_INSTANCE_OPTIONS& options);

}  // namespace kivo_session
