#pragma once

#include "tools/load.h"
#include "tools/terminal.h"

// Writes the messages of a description, one per line as FILE:LINE:COLUMN: error: TEXT [id], each
// with the source line and a pointer below it when its place is known.
void report_messages(Stream& stream, const Description& description);
