#pragma once

#include <string>

#include "tools/arguments/command.h"

// What the arguments of a run ask for.
struct Request {
    const Command* command = nullptr;  // null without a sub-command
    std::string answer;                // help or the version, when that is all that is asked for
    std::string problem;               // what is wrong with the arguments, if anything is
};

// Puts the words of the arguments where the rows say.
Request read_arguments(const Program& program, int argc, char** argv);
