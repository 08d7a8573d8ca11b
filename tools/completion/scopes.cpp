#include "tools/completion/scopes.h"

std::vector<Scope> scopes_of(const Program& program) {
    std::vector<Scope> scopes = {{"", options_of(program), {}}};
    for (const Command* const command : shown_commands(program)) {
        scopes.push_back({command->name, options_of(program, *command), arguments_of(*command)});
    }
    return scopes;
}

std::vector<const Command*> shown_commands(const Program& program) {
    std::vector<const Command*> shown;
    for (const Command& command : program.commands) {
        if (!command.is_hidden) {
            shown.push_back(&command);
        }
    }
    return shown;
}
