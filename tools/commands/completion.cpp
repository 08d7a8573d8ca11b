#include <memory>
#include <string>

#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/completion/writers.h"

namespace {

std::string script_for(const std::string& shell, const ProgramModel& model) {
    return shell == "bash"  ? bash_completion(model)
           : shell == "zsh" ? zsh_completion(model)
                            : fish_completion(model);
}

}  // namespace

Command add_completion(CLI::App& program, const std::vector<Command>& commands) {
    CLI::App* const app = program.add_subcommand(
        "completion", "Print the script by which a shell completes the arguments");
    auto shell = std::make_shared<std::string>();
    app->add_option("SHELL", *shell, "The shell: bash, zsh or fish")
        ->required()
        ->type_name("")
        ->check(one_of({"bash", "zsh", "fish"}));
    app->footer(
        "An installed kivo brings these scripts along; this is for one that is not.\n"
        "Exit status: 0 done, 2 wrong usage, 3 the script cannot be written.\n\n"
        "Example:\n"
        "  kivo completion bash > ~/.local/share/bash-completion/completions/kivo\n"
        "  kivo completion fish > ~/.config/fish/completions/kivo.fish\n"
        "  kivo completion zsh > _kivo    # in a directory of fpath");
    return {app, "kivo completion [--color WHEN] bash|zsh|fish",
            [&program, &commands, shell](Terminal& terminal) {
                terminal.out.write(script_for(*shell, model_of(program, commands)));
                return static_cast<int>(kExitDone);
            }};
}

Command add_manual(CLI::App& program, const std::vector<Command>& commands) {
    CLI::App* const app = program.add_subcommand("manual", "Print the manual page, for man(1)");
    // For the build, and for those who look for it here: 'man kivo' is what others want.
    app->group("");
    app->footer("Example:\n  kivo manual > kivo.1");
    return {app, "kivo manual", [&program, &commands](Terminal& terminal) {
                terminal.out.write(manual_page(model_of(program, commands)));
                return static_cast<int>(kExitDone);
            }};
}
