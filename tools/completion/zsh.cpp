#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

#include "tools/completion/scopes.h"
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

std::string action_of(const OptionRow& row) {
    if (!row.choices.empty()) {
        return fmt::format("({})", fmt::join(row.choices, " "));
    }
    switch (row.offer) {
        case Offer::kDescriptions:
            return "_files -g \"*.(#i)xml\"";
        case Offer::kFiles:
            return "_files";
        case Offer::kFolders:
            return "_files -/";
        case Offer::kNothing:
            break;
    }
    return " ";
}

// A short option takes its value with or without a blank before it, a long one after "=" too.
std::string with_value_sign(const OptionRow& option, const std::string& name) {
    return option.is_switch() ? name : name + (name.rfind("--", 0) == 0 ? "=" : "+");
}

std::string option_spec(const OptionRow& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names()) {
        names.push_back(with_value_sign(option, name));
    }
    std::string spec;
    if (option.is_repeated()) {
        spec =
            names.size() == 1 ? "'*" + names[0] : fmt::format("'*'{{{}}}'", fmt::join(names, ","));
    } else if (names.size() == 1) {
        spec = "'" + names[0];
    } else {
        spec = fmt::format("'({})'{{{}}}'", fmt::join(option.names(), " "), fmt::join(names, ","));
    }
    spec += '[' + quoted_part(option.help) + ']';
    if (!option.is_switch()) {
        spec += ':' + quoted_part(option.value_name) + ':' + action_of(option);
    }
    return spec + "'";
}

std::string argument_spec(const OptionRow& argument, std::size_t index) {
    const std::string place = argument.is_repeated() ? "*" : std::to_string(index + 1);
    return fmt::format("'{}:{}:{}'", place, quoted_part(argument.name), action_of(argument));
}

std::string option_specs(const Scope& scope, const char* indent) {
    std::string specs;
    for (const OptionRow* const option : scope.options) {
        specs += fmt::format(" \\\n{}{}", indent, option_spec(*option));
    }
    return specs;
}

std::string case_of(const Scope& scope) {
    constexpr const char* kIndent = "                        ";
    std::string text = fmt::format("                {})\n                    _arguments{}",
                                   scope.name, option_specs(scope, kIndent));
    for (std::size_t index = 0; index < scope.arguments.size(); ++index) {
        text += fmt::format(" \\\n{}{}", kIndent, argument_spec(*scope.arguments[index], index));
    }
    return text + " && return\n                    ;;\n";
}

}  // namespace

std::string zsh_completion(const Program& program) {
    const std::vector<Scope> scopes = scopes_of(program);
    std::string names;
    for (const Command* const command : shown_commands(program)) {
        names +=
            fmt::format("                '{}:{}'\n", command->name, quoted_part(command->summary));
    }
    std::string cases;
    for (std::size_t index = 1; index < scopes.size(); ++index) {
        cases += case_of(scopes[index]);
    }
    return "#compdef kivo\n"
           "# Completion of kivo for zsh, printed by 'kivo completion zsh'.\n\n"
           "_kivo() {\n"
           "    local curcontext=\"$curcontext\" state line\n"
           "    local -a commands\n"
           "    typeset -A opt_args\n\n"
           "    _arguments -C" +
           option_specs(scopes.front(), "        ") +
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
