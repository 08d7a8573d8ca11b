#pragma once

#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// What is wrong with a description that was read: the messages of the library, faults of the XML
// that it reads over, and warnings; before settings and waivers.
std::vector<Finding> all_findings(const Description& description, Sources& sources);
