#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/commands/commands.h"

// What a shell and the manual know of the program, taken from the declarations of its options.

struct ValueModel {
    enum class Kind { kFree, kWords, kDescriptions, kFiles };

    Kind kind = Kind::kFree;
    std::vector<std::string> words;
};

struct OptionModel {
    std::vector<std::string> names;  // "-o", "--output"
    std::string value_name;          // empty: the option is a flag
    std::string description;
    bool is_repeated = false;
    ValueModel value;

    bool takes_value() const { return !value_name.empty(); }
};

struct ArgumentModel {
    std::string name;
    std::string description;
    bool is_repeated = false;
    ValueModel value;
};

struct CommandModel {
    std::string name;
    std::string usage;
    std::string description;
    std::string footer;
    std::vector<OptionModel> options;
    std::vector<ArgumentModel> arguments;
};

struct ProgramModel {
    std::string version;
    CommandModel program;  // what holds without a sub-command
    std::vector<CommandModel> commands;
};

// Leaves out sub-commands that help does not show.
ProgramModel model_of(CLI::App& program, const std::vector<Command>& commands);
