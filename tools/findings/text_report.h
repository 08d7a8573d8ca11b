#pragma once

#include <string>

#include "tools/findings/finding.h"
#include "tools/terminal/terminal.h"

// A finding as FILE:LINE:COLUMN: error: TEXT [id], with the source line and a pointer below
// it when its place is known, and its notes in the same shape. For a place without a file, "name"
// is shown.
std::string finding_text(const Stream& stream, const std::string& name, const Finding& finding);
// Writes it.
void write_finding(Stream& stream, const std::string& name, const Finding& finding);
