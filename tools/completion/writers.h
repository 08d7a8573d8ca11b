#pragma once

#include <string>

#include "tools/completion/program_model.h"

// Scripts that complete the program's command line, and its manual page.
std::string bash_completion(const ProgramModel& model);
std::string zsh_completion(const ProgramModel& model);
std::string fish_completion(const ProgramModel& model);
std::string manual_page(const ProgramModel& model);
