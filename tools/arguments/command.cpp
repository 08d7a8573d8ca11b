#include "tools/arguments/command.h"

std::vector<std::string> OptionRow::names() const {
    return short_name.empty() ? std::vector{name} : std::vector{short_name, name};
}

std::vector<const OptionRow*> options_of(const Program& program) {
    std::vector<const OptionRow*> options = {&program.help_row, &program.version_row};
    for (const OptionRow& row : program.common_rows) {
        options.push_back(&row);
    }
    return options;
}

std::vector<const OptionRow*> options_of(const Program& program, const Command& command) {
    std::vector<const OptionRow*> options = {&program.help_row};
    for (const OptionRow& row : command.rows) {
        if (!row.is_argument()) {
            options.push_back(&row);
        }
    }
    for (const OptionRow& row : program.common_rows) {
        options.push_back(&row);
    }
    return options;
}

std::vector<const OptionRow*> arguments_of(const Command& command) {
    std::vector<const OptionRow*> arguments;
    for (const OptionRow& row : command.rows) {
        if (row.is_argument()) {
            arguments.push_back(&row);
        }
    }
    return arguments;
}
