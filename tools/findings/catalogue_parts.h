#pragma once

#include <vector>

#include "tools/findings/catalogue.h"

// Parts of the catalogue: warnings about what the library reads without a word.

// What is not read, or not as a part of what it should be a part of.
std::vector<MessageDescription> structure_warnings();
// Words, numbers, lists and names that are taken for others.
std::vector<MessageDescription> word_warnings();
// Names and expressions.
std::vector<MessageDescription> expression_warnings();
// Values that the description itself rules out.
std::vector<MessageDescription> value_warnings();
// What is declared or given again.
std::vector<MessageDescription> repetition_warnings();
// Of stimulus commands and display formats.
std::vector<MessageDescription> stimulus_warnings();
