#pragma once

#include <cstdint>
#include <string>

// What a time scale of a description ("ns", "10 ps", "25 ns") is to programs that know 1, 10 and
// 100 of its units.
struct TimeScale {
    std::int64_t factor = 1;  // of the description's times
    std::string text = "1 ns";
    bool is_known = false;
};

// One that is not known counts as nanoseconds.
TimeScale read_time_scale(const std::string& written);
