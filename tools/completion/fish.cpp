#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

#include "tools/completion/scopes.h"
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
std::string candidates(const OptionRow& row) {
    if (!row.choices.empty()) {
        return " -a " + in_quotes(fmt::format("{}", fmt::join(row.choices, " ")));
    }
    switch (row.offer) {
        case Offer::kDescriptions:
            return " -k -a '(__fish_complete_suffix .xml)'";
        case Offer::kFiles:
            return " -F";
        case Offer::kFolders:
            return " -a '(__fish_complete_directories)'";
        case Offer::kNothing:
            break;
    }
    return {};
}

std::string condition(const std::string& command, const std::string& argument = "") {
    const std::string name = command.empty() ? "\"\"" : command;
    return "complete -c kivo -n " +
           in_quotes("__kivo_at " + name + (argument.empty() ? "" : " " + argument));
}

std::string option_line(const std::string& command, const OptionRow& option) {
    std::string line = condition(command);
    for (const std::string& name : option.names()) {
        line += name.rfind("--", 0) == 0 ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    if (!option.is_switch()) {
        line += (option.offer == Offer::kFiles ? " -r" : " -x") + candidates(option);
    }
    return line + " -d " + in_quotes(option.help) + '\n';
}

std::string lines_of(const Scope& scope) {
    std::string lines;
    for (const OptionRow* const option : scope.options) {
        lines += option_line(scope.name, *option);
    }
    for (std::size_t index = 0; index < scope.arguments.size(); ++index) {
        const OptionRow& argument = *scope.arguments[index];
        if (const std::string words = candidates(argument); !words.empty()) {
            lines += condition(scope.name, argument.is_repeated() ? "" : std::to_string(index)) +
                     words + '\n';
        }
    }
    return lines;
}

// The options of a scope that take a value, each with its sub-command.
void append_valued(std::vector<std::string>& patterns, const Scope& scope) {
    for (const OptionRow* const option : scope.options) {
        if (option->is_switch()) {
            continue;
        }
        for (const std::string& name : option->names()) {
            patterns.push_back(in_quotes(scope.name + ' ' + name));
        }
    }
}

std::string command_line(const Command& command) {
    return '\n' + condition("") + " -a " + command.name + " -d " + in_quotes(command.summary) +
           '\n';
}

}  // namespace

std::string fish_completion(const Program& program) {
    const std::vector<Scope> scopes = scopes_of(program);
    const std::vector<const Command*> commands = shown_commands(program);
    std::vector<std::string> valued;
    std::string lines;
    for (std::size_t index = 0; index < scopes.size(); ++index) {
        append_valued(valued, scopes[index]);
        lines += (index == 0 ? "" : command_line(*commands[index - 1])) + lines_of(scopes[index]);
    }
    std::string script = kHead;
    const std::string mark = "{valued}";
    script.replace(script.find(mark), mark.size(), fmt::format("{}", fmt::join(valued, " ")));
    return script + lines;
}
