#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "tools/commands.h"
#include "tools/exit_status.h"
#include "tools/load.h"

namespace {

struct Tally {
    std::size_t files = 0;
    std::size_t messages = 0;
    std::size_t files_with_messages = 0;
    std::size_t unreadable = 0;
};

std::string counted(std::size_t count, const char* noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string summary_of(const Tally& tally) {
    std::string text = counted(tally.files, "file") + " checked: ";
    text += tally.messages == 0 ? "no messages"
                                : fmt::format("{} in {}", counted(tally.messages, "message"),
                                              counted(tally.files_with_messages, "file"));
    if (tally.unreadable > 0) {
        text += fmt::format("; {} could not be read", counted(tally.unreadable, "file"));
    }
    return text + '\n';
}

void check_file(Terminal& terminal, const std::string& path, Tally& tally) {
    const Description description(path);
    if (!report_loading(terminal, description)) {
        ++tally.unreadable;
        return;
    }
    ++tally.files;
    tally.messages += description.info().error_list.size();
    tally.files_with_messages += description.has_messages() ? 1 : 0;
}

int check(Terminal& terminal, const std::vector<std::string>& paths) {
    Tally tally;
    for (const std::string& path : paths) {
        check_file(terminal, path, tally);
    }
    terminal.err.write(summary_of(tally));
    if (tally.unreadable > 0) {
        return kExitFailed;
    }
    return tally.messages > 0 ? kExitMessages : kExitDone;
}

}  // namespace

Command add_check(CLI::App& program) {
    CLI::App* const app =
        program.add_subcommand("check", "Load descriptions and report what is wrong with them");
    auto paths = std::make_shared<std::vector<std::string>>();
    app->add_option("FILE", *paths, "Description files")->required()->type_name("");
    app->footer(
        "Every message is one line on standard error, with its source line below it.\n"
        "Exit status: 0 no messages, 1 messages, 2 wrong usage, 3 a file cannot be read.\n\n"
        "Example:\n  kivo check fifo_info.xml counter_info.xml");
    return {app, "kivo check [--color WHEN] FILE...",
            [paths](Terminal& terminal) { return check(terminal, *paths); }};
}
