#include "tools/arguments/usage.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace {

// More words are not told one by one.
constexpr std::size_t kMostChoices = 4;

// What stands for the words of a row: the words themselves where they are few.
std::string words_of(const OptionRow& row) {
    const bool are_few = !row.choices.empty() && row.choices.size() <= kMostChoices;
    return are_few             ? fmt::format("{}", fmt::join(row.choices, "|"))
           : row.is_argument() ? row.name
                               : row.value_name;
}

std::string argument_usage(const OptionRow& row) {
    const std::string words = words_of(row) + (row.is_repeated() ? "..." : "");
    return row.is_required ? words : '[' + words + ']';
}

std::string option_usage(const OptionRow& row) {
    return row.names().front() + (row.is_switch() ? "" : ' ' + words_of(row));
}

// Together with the options that need it, which need nothing else.
std::string option_usage(const Command& command, const OptionRow& row) {
    std::string usage = option_usage(row);
    for (const OptionRow& other : command.rows) {
        usage += other.needs == row.name ? " [" + option_usage(other) + ']' : "";
    }
    return (row.is_required ? usage : '[' + usage + ']') + (row.is_repeated() ? "..." : "");
}

}  // namespace

std::string usage_of(const Program& program) {
    std::vector<std::string> names;
    for (const Command& command : program.commands) {
        if (!command.is_hidden) {
            names.push_back(command.name);
        }
    }
    return fmt::format("{0} {1} ...; '{0} --help' says what each of them does", program.name,
                       fmt::join(names, "|"));
}

std::string usage_of(const Program& program, const Command& command) {
    std::string usage = program.name + ' ' + command.name;
    for (const OptionRow& row : command.rows) {
        if (!row.is_argument() && row.needs.empty()) {
            usage += ' ' + option_usage(command, row);
        }
    }
    for (const OptionRow& row : program.common_rows) {
        usage += fmt::format(" [{} {}]", row.names().front(), row.value_name);
    }
    for (const OptionRow* const row : arguments_of(command)) {
        usage += ' ' + argument_usage(*row);
    }
    return usage;
}
