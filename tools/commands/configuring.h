#pragma once

#include <memory>
#include <optional>
#include <string>

#include "tools/arguments/command.h"
#include "tools/configure/request.h"
#include "tools/terminal/terminal.h"

// What the commands that configure a description have in common.

// The rows of a request; of the settings and of what else may be asked for.
OptionRow settings_row(ConfigurationRequest& request);
OptionRow map_row(ConfigurationRequest& request);
OptionRow from_row(ConfigurationRequest& request);

// A session with the request in it; without one the exit status, with the reason reported.
std::optional<KIVO_SESSION> configured(Terminal& terminal, const KIVO_INFO& info,
                                       const ConfigurationRequest& request, int* status);

// The exit status of a configuration that was shown.
int status_of(const KIVO_SESSION& session);
