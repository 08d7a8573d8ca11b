#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

#include "tools/completion/writers.h"

namespace {

// Between single quotes, in a text where some characters end a part.
std::string quoted_part(std::string_view text) {
    std::string part;
    for (const char letter : text) {
        if (letter == '\'') {
            part += "'\\''";
            continue;
        }
        if (letter == ':' || letter == '[' || letter == ']' || letter == '\\') {
            part += '\\';
        }
        part += letter;
    }
    return part;
}

std::string action_of(const ValueModel& value) {
    switch (value.kind) {
        case ValueModel::Kind::kWords:
            return fmt::format("({})", fmt::join(value.words, " "));
        case ValueModel::Kind::kDescriptions:
            return "_files -g \"*.(#i)xml\"";
        case ValueModel::Kind::kFiles:
            return "_files";
        case ValueModel::Kind::kFree:
            break;
    }
    return " ";
}

// A short option takes its value with or without a blank before it, a long one behind "=" too.
std::string with_value_sign(const OptionModel& option, const std::string& name) {
    if (!option.takes_value()) {
        return name;
    }
    return name + (name.rfind("--", 0) == 0 ? "=" : "+");
}

std::string option_spec(const OptionModel& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names) {
        names.push_back(with_value_sign(option, name));
    }
    std::string spec;
    if (option.is_repeated) {
        spec =
            names.size() == 1 ? "'*" + names[0] : fmt::format("'*'{{{}}}'", fmt::join(names, ","));
    } else if (names.size() == 1) {
        spec = "'" + names[0];
    } else {
        spec = fmt::format("'({})'{{{}}}'", fmt::join(option.names, " "), fmt::join(names, ","));
    }
    spec += '[' + quoted_part(option.description) + ']';
    if (option.takes_value()) {
        spec += ':' + quoted_part(option.value_name) + ':' + action_of(option.value);
    }
    return spec + "'";
}

std::string argument_spec(const ArgumentModel& argument, std::size_t index) {
    const std::string place = argument.is_repeated ? "*" : std::to_string(index + 1);
    return fmt::format("'{}:{}:{}'", place, quoted_part(argument.name), action_of(argument.value));
}

std::string option_specs(const CommandModel& command, const char* indent) {
    std::string specs;
    for (const OptionModel& option : command.options) {
        specs += fmt::format(" \\\n{}{}", indent, option_spec(option));
    }
    return specs;
}

std::string case_of(const CommandModel& command) {
    constexpr const char* kIndent = "                        ";
    std::string text = fmt::format("                {})\n                    _arguments{}",
                                   command.name, option_specs(command, kIndent));
    for (std::size_t index = 0; index < command.arguments.size(); ++index) {
        text += fmt::format(" \\\n{}{}", kIndent, argument_spec(command.arguments[index], index));
    }
    return text + " && return\n                    ;;\n";
}

}  // namespace

std::string zsh_completion(const ProgramModel& model) {
    std::string names;
    std::string cases;
    for (const CommandModel& command : model.commands) {
        names += fmt::format("                '{}:{}'\n", command.name,
                             quoted_part(command.description));
        cases += case_of(command);
    }
    return "#compdef kivo\n"
           "# Completion of kivo for zsh, printed by 'kivo completion zsh'.\n\n"
           "_kivo() {\n"
           "    local curcontext=\"$curcontext\" state line\n"
           "    local -a commands\n"
           "    typeset -A opt_args\n\n"
           "    _arguments -C" +
           option_specs(model.program, "        ") +
           " \\\n"
           "        '1:sub-command:->command' \\\n"
           "        '*::argument:->argument' && return\n\n"
           "    case $state in\n"
           "        command)\n"
           "            commands=(\n" +
           names +
           "            )\n"
           "            _describe -t commands sub-command commands && return\n"
           "            ;;\n"
           "        argument)\n"
           "            curcontext=\"${curcontext%:*:*}:kivo-$words[1]:\"\n"
           "            case $words[1] in\n" +
           cases +
           "            esac\n"
           "            ;;\n"
           "    esac\n"
           "    return 1\n"
           "}\n\n"
           "# Loaded by the completion system, or sourced.\n"
           "if [[ $funcstack[1] == _kivo ]]; then\n"
           "    _kivo \"$@\"\n"
           "else\n"
           "    compdef _kivo kivo\n"
           "fi\n";
}
