#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "tools/terminal/terminal.h"

// One sub-command: how it is called, and its work, which answers an ExitStatus.
struct Command {
    CLI::App* app = nullptr;
    std::string usage;
    std::function<int(Terminal&)> run;
};

// The name of a validator of words, by which shells learn what can stand there.
std::string joined_words(const std::vector<std::string>& words);

// Accepts only these words, and names them when it gets another.
CLI::Validator one_of(const std::vector<std::string>& words);

// Each declares a sub-command with its options, in the file of its name.
Command add_check(CLI::App& program);
Command add_doc(CLI::App& program);
Command add_explain(CLI::App& program);
Command add_show(CLI::App& program);
Command add_translate(CLI::App& program);
Command add_value(CLI::App& program);
Command add_wave(CLI::App& program);

// Print what is made of all the sub-commands, which must live on; the list is read when they run.
Command add_completion(CLI::App& program, const std::vector<Command>& commands);
Command add_manual(CLI::App& program, const std::vector<Command>& commands);
