#pragma once

#include <string>
#include <vector>

#include "tools/findings/finding.h"

// What a picture of a vector says of the warnings about it: "FILE:LINE:COLUMN: TEXT", the file
// without its folders. Of very many the first.
std::vector<std::string> wave_notes(const std::vector<Finding>& findings,
                                    const std::string& vector);
