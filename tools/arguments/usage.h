#pragma once

#include <string>

#include "tools/arguments/command.h"

// How the program and a sub-command are called, in one line: "kivo doc -o OUT [--color WHEN] FILE".
std::string usage_of(const Program& program);
std::string usage_of(const Program& program, const Command& command);
