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

// The configuration that a command shows something for, when any settings are given.
class Configuration {
public:
    // Reports what is wrong with the request, and notes that the configuration is not legal.
    Configuration(Terminal& terminal, const KIVO_INFO& info, const ConfigurationRequest& request);

    // The exit status when the request is refused.
    const std::optional<int>& failure() const { return failure_; }
    // Null without settings.
    const KIVO_SESSION* session() const { return session_ ? &*session_ : nullptr; }
    // The exit status when all is done.
    int status() const;

private:
    std::optional<KIVO_SESSION> session_;
    std::optional<int> failure_;
};
