#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tools/completion/scopes.h"
#include "tools/completion/writers.h"

namespace {

constexpr const char* kHead = R"sh(# Completion of kivo for bash, printed by 'kivo completion bash'.

_kivo_words() {
    mapfile -t COMPREPLY < <(compgen -P "$prefix" -W "$1" -- "$cur")
}

# The word as it stands on the line may be quoted; readline quotes what it puts there by itself.
_kivo_unquoted() {
    local word=$cur
    case $word in
        \'* | \"*) word=${word:1} ;;
        *) word=${word//\\/} ;;
    esac
    printf '%s' "$word"
}

_kivo_files() {
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(compgen -f -P "$prefix" -- "$(_kivo_unquoted)")
}

_kivo_folders() {
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(compgen -d -P "$prefix" -- "$(_kivo_unquoted)")
}

_kivo_descriptions() {
    local word
    word=$(_kivo_unquoted)
    compopt -o filenames 2> /dev/null
    mapfile -t COMPREPLY < <(
        compgen -d -- "$word"
        compgen -f -X '!*.[xX][mM][lL]' -- "$word"
    )
}

_kivo() {
    local cur=${COMP_WORDS[COMP_CWORD]}
    local command='' option='' only_arguments='' prefix='' count=0 index word
    COMPREPLY=()
    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        if [[ -n $option ]]; then
            # "--color=always" arrives as three words.
            [[ $word == '=' ]] || option=
        elif [[ -z $only_arguments && $word == -- ]]; then
            only_arguments=yes
        elif [[ -z $only_arguments && $word == -?* ]]; then
            case "$command $word" in
                {valued}) option=$word ;;
            esac
        elif [[ -z $command ]]; then
            command=$word
        else
            count=$((count + 1))
        fi
    done
    if [[ -n $option && $cur == '=' ]]; then
        cur=''
    elif [[ -z $option && -z $only_arguments && $cur == --*=* ]]; then
        option=${cur%%=*}
        prefix=$option=
        cur=${cur#*=}
    fi

    if [[ -n $option ]]; then
        case "$command $option" in
{values}            *) ;;
        esac
    elif [[ -z $only_arguments && $cur == -* ]]; then
        case $command in
{options}        esac
    elif [[ -z $command ]]; then
        _kivo_words '{commands}'
    else
        case "$command $count" in
{arguments}            *) ;;
        esac
    fi
}

complete -F _kivo kivo
)sh";

std::string action_of(const OptionRow& row) {
    if (!row.choices.empty()) {
        return fmt::format("_kivo_words '{}'", fmt::join(row.choices, " "));
    }
    switch (row.offer) {
        case Offer::kDescriptions:
            return "_kivo_descriptions";
        case Offer::kFiles:
            return "_kivo_files";
        case Offer::kFolders:
            return "_kivo_folders";
        case Offer::kNothing:
            break;
    }
    return {};
}

// "check --color", with the name of the program's own options empty.
std::string in_command(const std::string& command, const std::string& word) {
    return "'" + command + ' ' + word + "'";
}

// The parts of the script that the sub-commands differ in.
struct Parts {
    std::vector<std::string> valued;
    std::string values;
    std::string options;
    std::string arguments;

    void add(const Scope& scope) {
        std::vector<std::string> names;
        for (const OptionRow* const option : scope.options) {
            for (const std::string& name : option->names()) {
                names.push_back(name);
            }
            add_option(scope.name, *option);
        }
        options += fmt::format("            '{}') _kivo_words '{}' ;;\n", scope.name,
                               fmt::join(names, " "));
        for (std::size_t index = 0; index < scope.arguments.size(); ++index) {
            add_argument(scope.name, *scope.arguments[index], index);
        }
    }

private:
    void add_option(const std::string& command, const OptionRow& option) {
        if (option.is_switch()) {
            return;
        }
        std::vector<std::string> patterns;
        for (const std::string& name : option.names()) {
            patterns.push_back(in_command(command, name));
        }
        valued.insert(valued.end(), patterns.begin(), patterns.end());
        add_case(values, fmt::format("{}", fmt::join(patterns, " | ")), option);
    }

    void add_argument(const std::string& command, const OptionRow& argument, std::size_t index) {
        const std::string pattern = argument.is_repeated()
                                        ? "'" + command + " '*"
                                        : in_command(command, std::to_string(index));
        add_case(arguments, pattern, argument);
    }

    static void add_case(std::string& cases, const std::string& pattern, const OptionRow& row) {
        const std::string action = action_of(row);
        if (!action.empty()) {
            cases += fmt::format("            {}) {} ;;\n", pattern, action);
        }
    }
};

void replace(std::string& text, const std::string& mark, const std::string& with) {
    text.replace(text.find(mark), mark.size(), with);
}

}  // namespace

std::string bash_completion(const Program& program) {
    Parts parts;
    for (const Scope& scope : scopes_of(program)) {
        parts.add(scope);
    }
    std::vector<std::string> names;
    for (const Command* const command : shown_commands(program)) {
        names.push_back(command->name);
    }
    std::string script = kHead;
    replace(script, "{valued}", fmt::format("{}", fmt::join(parts.valued, " | ")));
    replace(script, "{values}", parts.values);
    replace(script, "{options}", parts.options);
    replace(script, "{commands}", fmt::format("{}", fmt::join(names, " ")));
    replace(script, "{arguments}", parts.arguments);
    return script;
}
