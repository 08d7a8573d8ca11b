#pragma once

#include <string>
#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// What the library says about a description, in its order.
std::vector<Finding> library_findings(const Description& description, Sources& sources);

// A place that the library tells, with all that the source adds to it.
Place place_of(const Description& description, const KIVO_PLACE& told, Sources& sources);
