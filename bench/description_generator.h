#pragma once

#include <cstddef>
#include <string>

// A description of at least "size" bytes, always the same for the same size: equal numbers of
// parameters with forced values and value rules, ports with states, rules and conditional messages,
// and a quarter as many waves with conditional stimulus and display commands.
std::string generate_description(std::size_t size);
