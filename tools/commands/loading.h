#pragma once

#include <string>

#include "tools/arguments/command.h"
#include "tools/description/description.h"
#include "tools/terminal/terminal.h"

// What a command does before its own work: false, with the reason reported, when the file cannot
// be read; else its messages are reported.
bool report_loading(Terminal& terminal, const Description& description);

// The argument that names the description which a command reads.
OptionRow description_row(std::string& path);
