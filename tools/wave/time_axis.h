#pragma once

#include <cstdint>
#include <vector>

// The times of a range at which an axis has its marks: multiples of 1, 2 or 5 times a power of ten,
// as close together as is possible when they are at least "closest" apart.
// REQUIRES: closest >= 1
std::vector<std::int64_t> axis_marks(std::int64_t start, std::int64_t end, std::int64_t closest);
