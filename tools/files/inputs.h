#pragma once

#include <optional>
#include <string>
#include <vector>

// A file that is to be checked.
struct Input {
    std::string path;
    std::optional<std::string> failure;  // why nothing can be read there
};

// The files that the arguments stand for, in their order: a directory for every *_info.xml below
// it, sorted by path; each directory is entered once, whatever links lead to it. A file that
// several arguments stand for counts once; links to it are files of their own. "-" stays.
std::vector<Input> find_inputs(const std::vector<std::string>& arguments);
