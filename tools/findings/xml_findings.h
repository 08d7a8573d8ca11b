#pragma once

#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// The library reads some descriptions that are not well-formed XML. Appends a warning for each such
// file of the description, at the first fault; none where the library has found a fault already.
void append_xml_findings(std::vector<Finding>& findings, const Description& description,
                         Sources& sources);
