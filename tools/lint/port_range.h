#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/lint/lint.h"

// What a port carries whatever is set: its FORCE_RANGEs without condition, with constant limits.
struct PortRange {
    bool holds(std::int64_t number) const {
        return (!least || number >= *least) && (!greatest || number <= *greatest);
    }
    // "1 to 7". REQUIRES: a limit
    std::string text() const;

    std::optional<std::int64_t> least;
    std::optional<std::int64_t> greatest;
};

// Without limits for what is no port.
PortRange range_of_port(const Lint& lint, const std::string& name);
