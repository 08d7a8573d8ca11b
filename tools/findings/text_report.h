#pragma once

#include "tools/findings/finding.h"
#include "tools/terminal/terminal.h"

// Writes a finding as FILE:LINE:COLUMN: error: TEXT [id], with the source line and a pointer below
// it when its place is known, and its notes in the same shape. A place without a file is said to be
// in the file of that name.
void write_finding(Stream& stream, const std::string& name, const Finding& finding);
