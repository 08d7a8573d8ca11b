#pragma once

#include <string>
#include <vector>

#include "tools/arguments/command.h"
#include "tools/description/description.h"
#include "tools/findings/finding.h"
#include "tools/terminal/terminal.h"

// What a command does before its own work: false, with the reason reported, when the file cannot
// be read; else its messages are reported.
bool report_loading(Terminal& terminal, const Description& description);

// The warnings about the stimulus and display formats of a description's vectors, without those
// that are waived in the settings beside it.
std::vector<Finding> warnings_of_waves(const Description& description);

// What "kivo check" tells of a description, but for what is waived.
std::vector<Finding> standing_findings(const Description& description);

// The argument that names the description which a command reads.
OptionRow description_row(std::string& path);

// The option that names directories in which the files of a description are looked for.
OptionRow directories_row(Directories& directories);
