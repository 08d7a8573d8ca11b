#pragma once

#include <string>
#include <vector>

#include "kivo/session/session.h"

// What was asked for when "kivo configure --format json" wrote a configuration.
struct SavedConfiguration {
    std::vector<KIVO_ASSIGNMENT> settings;
    std::string map;  // empty for none
};

// Reads such a file, of which only "settings" and "map" count; either may be missing. Returns what
// is wrong with it, in one line; nothing when nothing is.
std::string read_saved(const std::string& path, SavedConfiguration& saved);
