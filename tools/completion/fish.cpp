#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

#include "tools/completion/writers.h"

namespace {

constexpr const char* kHead =
    R"fish(# Completion of kivo for fish, printed by 'kivo completion fish'.

# The sub-command on the line and the number of arguments that follow it.
function __kivo_state
    set -l command
    set -l count 0
    set -l is_value no
    set -l only_arguments no
    for word in (commandline -opc)[2..]
        if test $is_value = yes
            set is_value no
            continue
        end
        if test $only_arguments = no
            switch "$command $word"
                case {valued}
                    set is_value yes
                    continue
                case '* --'
                    set only_arguments yes
                    continue
                case '* -?*'
                    continue
            end
        end
        if test -z "$command"
            set command $word
        else
            set count (math $count + 1)
        end
    end
    printf '%s\n' "$command" $count
end

# Whether a word of that sub-command is completed, and which of its arguments if a number is given.
function __kivo_at
    set -l state (__kivo_state)
    test "$state[1]" = "$argv[1]"
    and begin
        not set -q argv[2]
        or test "$state[2]" = "$argv[2]"
    end
end

complete -c kivo -f
)fish";

std::string in_quotes(std::string_view text) {
    std::string word = "'";
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\') {
            word += '\\';
        }
        word += letter;
    }
    return word + "'";
}

// What may stand there, for "complete".
std::string candidates(const ValueModel& value) {
    switch (value.kind) {
        case ValueModel::Kind::kWords:
            return " -a " + in_quotes(fmt::format("{}", fmt::join(value.words, " ")));
        case ValueModel::Kind::kDescriptions:
            return " -k -a '(__fish_complete_suffix .xml)'";
        case ValueModel::Kind::kFiles:
            return " -F";
        case ValueModel::Kind::kFree:
            break;
    }
    return {};
}

std::string condition(const std::string& command, const std::string& argument = "") {
    const std::string name = command.empty() ? "\"\"" : command;
    return "complete -c kivo -n " +
           in_quotes("__kivo_at " + name + (argument.empty() ? "" : " " + argument));
}

std::string option_line(const std::string& command, const OptionModel& option) {
    std::string line = condition(command);
    for (const std::string& name : option.names) {
        line += name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (option.takes_value()) {
        const bool is_file = option.value.kind == ValueModel::Kind::kFiles;
        line += (is_file ? " -r" : " -x") + candidates(option.value);
    }
    return line + " -d " + in_quotes(option.description) + '\n';
}

std::string lines_of(const std::string& name, const CommandModel& command) {
    std::string lines;
    for (const OptionModel& option : command.options) {
        lines += option_line(name, option);
    }
    for (std::size_t index = 0; index < command.arguments.size(); ++index) {
        const ArgumentModel& argument = command.arguments[index];
        if (argument.value.kind != ValueModel::Kind::kFree) {
            lines += condition(name, argument.is_repeated ? "" : std::to_string(index)) +
                     candidates(argument.value) + '\n';
        }
    }
    return lines;
}

void append_valued(std::vector<std::string>& patterns, const std::string& name,
                   const CommandModel& command) {
    const std::string before = name + ' ';
    for (const OptionModel& option : command.options) {
        for (const std::string& word : option.names) {
            if (option.takes_value()) {
                patterns.push_back(in_quotes(before + word));
            }
        }
    }
}

}  // namespace

std::string fish_completion(const ProgramModel& model) {
    std::vector<std::string> valued;
    append_valued(valued, "", model.program);
    std::string lines = lines_of("", model.program);
    for (const CommandModel& command : model.commands) {
        append_valued(valued, command.name, command);
        lines += '\n' + condition("") + " -a " + command.name + " -d " +
                 in_quotes(command.description) + '\n' + lines_of(command.name, command);
    }
    std::string script = kHead;
    const std::string mark = "{valued}";
    script.replace(script.find(mark), mark.size(), fmt::format("{}", fmt::join(valued, " ")));
    return script + lines;
}
