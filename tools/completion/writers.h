#pragma once

#include <string>

#include "tools/arguments/command.h"

// Scripts that complete the program's command line, and its manual page.
std::string bash_completion(const Program& program);
std::string zsh_completion(const Program& program);
std::string fish_completion(const Program& program);
std::string manual_page(const Program& program);
