#pragma once

#include <string>
#include <vector>

#include "tools/arguments/command.h"

// A stretch of the command line, in which shells offer the same: before the sub-command, where the
// name is empty, and after each of them.
struct Scope {
    std::string name;
    std::vector<const OptionRow*> options;
    std::vector<const OptionRow*> arguments;
};

// That before the sub-command first; hidden ones have none.
std::vector<Scope> scopes_of(const Program& program);

// The sub-commands that are not hidden.
std::vector<const Command*> shown_commands(const Program& program);
