#pragma once

#include <string>
#include <vector>

#include "tools/arguments/command.h"
#include "tools/description/description.h"
#include "tools/findings/finding.h"
#include "tools/findings/finding_filter.h"
#include "tools/terminal/terminal.h"

// What a command does before its own work: false, with the reason reported, when the file cannot
// be read; else its messages are reported.
bool report_loading(Terminal& terminal, const Description& description);

// What the messages of a load make of the exit status: kExitFailed when an included file could not
// be read, kExitMessages for other messages, and for errors among what is told, else kExitDone.
int status_of_loading(const Description& description, const std::vector<Finding>& told = {});

// The warnings about the stimulus and display formats of a description's vectors that are to be
// told.
std::vector<Finding> warnings_of_waves(const Description& description, FindingFilter& filter);

// What "kivo check" tells of a description, with its usual effort.
std::vector<Finding> told_findings(const Description& description, FindingFilter& filter);

// False, with the reason reported, when a file of waivers that was used cannot be taken.
bool report_settings(Terminal& terminal, const FindingFilter& filter);

// The argument that names the description which a command reads.
OptionRow description_row(std::string& path);

// The option that names directories in which the files of a description are looked for.
OptionRow directories_row(Directories& directories);

// The options that say which findings are told.
OptionRow warnings_row(FindingOptions& options);
OptionRow config_row(FindingOptions& options);
