#include <memory>
#include <string>

#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/completion/writers.h"

namespace {

std::string script_for(const std::string& shell, const Program& program) {
    return shell == "bash"  ? bash_completion(program)
           : shell == "zsh" ? zsh_completion(program)
                            : fish_completion(program);
}

constexpr const char* kFooter =
    "An installed kivo brings these scripts along; this is for one that is not.\n"
    "Exit status: 0 done, 2 wrong usage, 3 the script cannot be written.\n\n"
    "Example:\n"
    "  kivo completion bash > ~/.local/share/bash-completion/completions/kivo\n"
    "  kivo completion fish > ~/.config/fish/completions/kivo.fish\n"
    "  kivo completion zsh > _kivo    # in a directory of fpath";

}  // namespace

Command make_completion(const Program& program) {
    auto shell = std::make_shared<std::string>();
    // clang-format off
    return {
        .name = "completion",
        .summary = "Print the script by which a shell completes the arguments",
        .rows = {
            {.name = "SHELL", .target = shell.get(), .help = "The shell: bash, zsh or fish",
             .choices = {"bash", "zsh", "fish"}, .is_required = true},
        },
        .footer = kFooter,
        .run = [&program, shell](Terminal& terminal) {
            terminal.out.write(script_for(*shell, program));
            return static_cast<int>(kExitDone);
        },
    };
    // clang-format on
}

Command make_manual(const Program& program) {
    return {.name = "manual",
            .summary = "Print the manual page, for man(1)",
            .footer = "Example:\n  kivo manual > kivo.1",
            // For the build, and for those who look for it here: 'man kivo' is what others want.
            .is_hidden = true,
            .run = [&program](Terminal& terminal) {
                terminal.out.write(manual_page(program));
                return static_cast<int>(kExitDone);
            }};
}
