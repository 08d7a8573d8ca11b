#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// How much is tried for one question of sense, by default and at most; 0 asks none.
inline constexpr std::int32_t kUsualEffort = 2000;
inline constexpr std::int32_t kMostEffort = 200000;

// What was not decided with that.
struct Sense {
    std::vector<Finding> findings;
    std::size_t undecided = 0;
};

// Rules, values and messages that have no part in any configuration, and whatever else does not
// make sense although it can be read. What "told" says already is not told again.
Sense sense_findings(const Description& description, Sources& sources, std::int32_t effort,
                     const std::vector<Finding>& told);
