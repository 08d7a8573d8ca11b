#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"
#include "tools/lint/sense.h"

// What is wrong with a description that was read: the messages of the library, faults of the XML
// that it reads over, warnings, and what makes no sense; before settings and waivers.
struct AllFindings {
    std::vector<Finding> findings;
    std::size_t undecided = 0;  // questions of sense for which the effort did not suffice
};

AllFindings all_findings(const Description& description, Sources& sources,
                         std::int32_t effort = kUsualEffort);
