#pragma once

#include <vector>

#include "tools/findings/catalogue.h"

// Parts of the catalogue: warnings about what the library reads without a word.

// What is not read at all.
std::vector<MessageDescription> structure_warnings();
