#include "tools/completion/program_model.h"

namespace {

std::vector<std::string> split_words(const std::string& joined) {
    return joined.empty() ? std::vector<std::string>() : CLI::detail::split(joined, '|');
}

std::vector<std::string> words_of(CLI::Option& option) {
    try {
        return split_words(option.get_validator(0)->get_name());
    } catch (const CLI::OptionNotFound&) {
        return {};
    }
}

ValueModel value_of(CLI::Option& option, const std::string& name) {
    ValueModel value;
    value.words = words_of(option);
    value.kind = !value.words.empty()        ? ValueModel::Kind::kWords
                 : name == "FILE"            ? ValueModel::Kind::kDescriptions
                 : name.rfind("OUT", 0) == 0 ? ValueModel::Kind::kFiles
                                             : ValueModel::Kind::kFree;
    return value;
}

ArgumentModel argument_of(CLI::Option& option) {
    ArgumentModel argument;
    argument.name = option.get_name(true);
    argument.description = option.get_description();
    argument.is_repeated = option.get_items_expected_max() > 1;
    argument.value = value_of(option, argument.name);
    return argument;
}

OptionModel option_of(CLI::Option& option) {
    OptionModel model;
    for (const std::string& name : option.get_snames()) {
        model.names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        model.names.push_back("--" + name);
    }
    if (option.get_items_expected_max() > 0) {
        model.value_name = option.get_type_name();
    }
    model.description = option.get_description();
    model.is_repeated = option.get_items_expected_max() > 1;
    model.value = value_of(option, model.value_name);
    return model;
}

CommandModel command_of(CLI::App& app) {
    CommandModel command;
    command.name = app.get_name();
    command.description = app.get_description();
    command.footer = app.get_footer();
    for (CLI::Option* const option : app.get_options()) {
        if (option->get_positional()) {
            command.arguments.push_back(argument_of(*option));
        } else {
            command.options.push_back(option_of(*option));
        }
    }
    return command;
}

}  // namespace

ProgramModel model_of(CLI::App& program, const std::vector<Command>& commands) {
    ProgramModel model;
    model.version = program.version();
    model.program = command_of(program);
    for (const Command& command : commands) {
        if (!command.app->get_group().empty()) {
            model.commands.push_back(command_of(*command.app));
            model.commands.back().usage = command.usage;
        }
    }
    return model;
}
