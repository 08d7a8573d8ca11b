#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kivo/session/internal/search/cone.h"
#include "kivo/session/internal/search/span.h"

namespace kivo_session {

class Engine;

// What a setting can be set to: whole numbers from "least" to "greatest", else "values", which are
// numbered from 0.
struct Domain {
    Whole size_of_numbers() const { return greatest - least; }
    // The text to set for a number, or for the value at that position.
    std::string text(Whole number) const;
    // What it can be asked to be from "first" to "last".
    Span span(Whole first, Whole last) const;

    std::uint32_t object = kNone;
    bool is_numbers = false;
    bool has_other = false;  // the last value stands for every text that is mentioned nowhere
    Whole least = 0;         // of values: 0 and the last position
    Whole greatest = -1;
    Whole current = 0;  // what is asked for; of values that are not among them: -1
    std::vector<std::string> values;
    std::vector<Span> spans;  // by value
};

// What bounds whole numbers.
enum class Bounds : std::uint8_t {
    kLimits,  // fixed limits of ranges that always count, else 32 bits
    kRanges,  // ranges with fixed limits alone, else nothing
};

// The domain of a setting; "above" are the nodes that are not fixed.
Domain domain_of(Engine& engine, std::uint32_t object, const Cone& above,
                 Bounds bounds = Bounds::kLimits);

}  // namespace kivo_session
