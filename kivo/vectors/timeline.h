#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "kivo/export.h"

// What a command answers at every time from "first" to "last": the same transition, or no
// transition after a cancel.
struct KIVO_TIMELINE_RUN {
    std::int32_t first = 0;
    std::int32_t last = 0;
    std::size_t value = 0;  // position in KIVO_TIMELINE::values; of no meaning when released
    bool released = false;  // no transition, and the signal's name is answered empty
    bool nameless = false;  // a transition for which the signal's name is answered empty
};

// What a stimulus command does over a range of times.
struct KIVO_TIMELINE {
    std::string signal;                   // empty when the command is malformed
    bool has_binary_values = false;       // they come as "0b" and binary digits, as "-hex" ones do
    std::vector<std::string> values;      // each once
    std::vector<KIVO_TIMELINE_RUN> runs;  // by time; at times in none nothing happens
    std::int64_t end = 0;                 // the first time that is not told
    bool is_complete = true;              // false: stopped at the limit, before the range's end
    // The latest time that an item of the command names, of a repeat the end of its second period;
    // the lowest number when there is none. Whatever the range.
    std::int64_t last_item_time = std::numeric_limits<std::int64_t>::min();
};

// Evaluates one stimulus command at all times from "from" to "to", both included: the runs tell
// what kivo_get_transition_at_time answers at each of them. Runs that follow without a gap differ.
// Costs what the command's length and its transitions cost, however far they lie apart; stops
// before the transition that would be number "limit" + 1. Each time at which a repeat without a
// period gives its value counts as a transition.
KIVO_API KIVO_TIMELINE kivo_get_timeline(const std::string& command, std::int32_t from,
                                         std::int32_t to, std::size_t limit);
