#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/terminal/terminal.h"

// The program's command line in rows, from which everything is made that knows of it: the reading
// of arguments, help, usage lines, the manual page and the completion of shells.

// What shells offer in a place where no choice of words is given.
enum class Offer { kNothing, kDescriptions, kFiles, kFolders };

// Where a row's words go. What stands there before is the default; a list takes every word of a row
// that may be repeated, a switch is set. Targets outlive the row.
using Target = std::variant<bool*, std::int32_t*, std::string*, std::vector<std::string>*>;

// An option ("--format"), or an argument that is known by its position ("FILE").
struct OptionRow {
    std::string name = {};        // with its hyphens, "-W" for an option that has only a short one
    std::string short_name = {};  // "-o", if it has one besides
    std::string value_name = {};  // empty for a switch
    Target target = {};
    std::string help = {};
    std::vector<std::string> choices = {};  // the only words for it, unless "check" judges them
    bool is_required = false;
    Offer offer = Offer::kNothing;
    std::string needs = {};  // the option, in a row above, without which this one makes no sense
    // Of whole numbers.
    std::int32_t least = std::numeric_limits<std::int32_t>::min();
    std::int32_t most = std::numeric_limits<std::int32_t>::max();
    // Says what is wrong with a word; nothing when nothing is. Of numbers their bounds decide.
    std::function<std::string(const std::string&)> check = {};
    // Whether an argument is meant by a word; if not, it goes to the next argument. By default,
    // every word is.
    bool (*accepts)(std::string_view) = nullptr;

    bool is_argument() const { return name.front() != '-'; }
    bool is_switch() const { return std::holds_alternative<bool*>(target); }
    bool is_repeated() const { return std::holds_alternative<std::vector<std::string>*>(target); }
    // The short name first.
    std::vector<std::string> names() const;
};

// One sub-command.
struct Command {
    std::string name = {};
    std::string summary = {};
    std::vector<OptionRow> rows = {};  // in the order in which help shows them
    std::string footer = {};           // of its help: exit status and examples
    bool is_hidden = false;            // from help, the manual and shells
    // Says what is wrong with the arguments together; nothing when nothing is. May be empty.
    std::function<std::string()> check = {};
    // Its work, which answers an exit status.
    std::function<int(Terminal&)> run = {};
};

struct Program {
    std::string name;
    std::string version;
    std::string summary;
    std::string footer;
    OptionRow help_row;
    OptionRow version_row;
    std::vector<OptionRow> common_rows;  // before or after the sub-command
    std::vector<Command> commands;
};

// The rows of the options that may stand before the sub-command, in the order of help.
std::vector<const OptionRow*> options_of(const Program& program);
// Those that may stand after it.
std::vector<const OptionRow*> options_of(const Program& program, const Command& command);
std::vector<const OptionRow*> arguments_of(const Command& command);
