#pragma once

#include <string>
#include <vector>

// Runs a program to its end and returns what it printed. A program that fails ends this one.
std::string run_program(const std::vector<std::string>& words);
