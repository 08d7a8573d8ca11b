#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

// The commands of a vector, evaluated.

struct Driver {
    std::string command;
    KIVO_TIMELINE timeline;
};

// For what a vector is drawn: a configuration, or else the case that conditions hold.
struct WaveCase {
    std::vector<std::string> otherwise = {};  // the conditions that do not hold
    const KIVO_SESSION* session = nullptr;    // decides all conditions and widths; null for none
    // Everything at its default: decides the widths of vectors that apply so, where no session
    // does; null: those that are numbers alone are known.
    const KIVO_SESSION* defaults = nullptr;
};

// The commands that count, not evaluated yet; of a condition that is not decided the THEN part.
std::vector<Driver> find_drivers(KIVO_VECTOR_OBJ& vector, const WaveCase& drawn);

// The names of the vectors that do not apply to a configuration; none without one.
std::set<std::string> vectors_left_out(const KIVO_SESSION* session);

// The conditions of a vector's commands, each once, in order.
std::vector<std::string> wave_conditions(KIVO_VECTOR_OBJ& vector);

// The last time of a vector that begins at "start". One without MAX_TIME ends a step after the last
// time that its commands name.
std::int32_t end_of_vector(const std::vector<Driver>& drivers, const KIVO_VECTOR_OBJ& vector,
                           std::int32_t start);

// Evaluates all commands from "start" to "end", up to "limit" transitions together. Returns the
// last time up to which all of them are known: below "end" when there are too many.
std::int64_t evaluate_drivers(std::vector<Driver>& drivers, std::int32_t start, std::int32_t end,
                              std::size_t limit);
