#include "tools/wave/time_axis.h"

#include <cassert>

namespace {

std::int64_t round_step(std::int64_t closest) {
    std::int64_t power = 1;
    while (power * 10 <= closest) {
        power *= 10;
    }
    for (const std::int64_t factor : {1, 2, 5}) {
        if (factor * power >= closest) {
            return factor * power;
        }
    }
    return 10 * power;
}

}  // namespace

std::vector<std::int64_t> axis_marks(std::int64_t start, std::int64_t end, std::int64_t closest) {
    assert(closest >= 1);
    const std::int64_t step = round_step(closest);
    std::vector<std::int64_t> marks;
    for (std::int64_t at = start + ((-start) % step + step) % step; at <= end; at += step) {
        marks.push_back(at);
    }
    return marks;
}
