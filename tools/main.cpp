#include <algorithm>
#include <cstring>
#include <exception>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/terminal/terminal.h"
#include "tools/text/near_word.h"

namespace {

constexpr const char* kUsage =
    "kivo check|completion|doc|explain|show|translate|value|wave ...; 'kivo --help' says what each "
    "of them does";

class Program {
public:
    Program();

    int run(int argc, char** argv, Terminal& terminal);

private:
    void add_color_option(CLI::App& app);
    // The sub-command of the arguments, null without one.
    const Command* chosen() const;
    std::string nearest_command(const std::string& word) const;
    std::string problem_of(const CLI::ParseError& error) const;
    int report_usage(Terminal& terminal, const std::string& problem) const;

    CLI::App app_{"Reads descriptions of configurable hardware functions."};
    std::vector<Command> commands_;
    ColorChoice color_ = ColorChoice::kAuto;
};

Program::Program() {
    app_.name("kivo");
    app_.set_version_flag("--version", "kivo " KIVO_VERSION);
    // One at most, so that a file may have the name of a sub-command.
    app_.require_subcommand(0, 1);
    commands_ = {add_check(app_),
                 add_completion(app_, commands_),
                 add_doc(app_),
                 add_explain(app_),
                 add_manual(app_, commands_),
                 add_show(app_),
                 add_translate(app_),
                 add_value(app_),
                 add_wave(app_)};
    add_color_option(app_);
    for (const Command& command : commands_) {
        add_color_option(*command.app);
    }
    app_.footer(
        "Examples:\n"
        "  kivo check fifo_info.xml counter_info.xml\n"
        "  kivo doc fifo_info.xml -o fifo.html\n"
        "  kivo explain unknown-section\n"
        "  kivo show fifo_info.xml\n"
        "  kivo translate --to verilog \"WIDTH gte 4 and DEPTH lt 16\"\n"
        "  kivo value fifo_info.xml fill_and_drain data 60\n"
        "  kivo wave fifo_info.xml fill_and_drain");
}

void Program::add_color_option(CLI::App& app) {
    const std::vector<std::pair<std::string, ColorChoice>> choices = {
        {"auto", ColorChoice::kAuto},
        {"always", ColorChoice::kAlways},
        {"never", ColorChoice::kNever}};
    app.add_option_function<std::string>(
           "--color",
           [this, choices](const std::string& word) {
               const auto found = std::find_if(choices.begin(), choices.end(),
                                               [&](const auto& row) { return row.first == word; });
               color_ = found->second;
           },
           "Colours: auto (the default), always or never")
        ->type_name("WHEN")
        ->check(one_of({"auto", "always", "never"}));
}

const Command* Program::chosen() const {
    const auto found = std::find_if(commands_.begin(), commands_.end(),
                                    [](const Command& command) { return command.app->parsed(); });
    return found == commands_.end() ? nullptr : &*found;
}

// Empty when the word is like none of them.
std::string Program::nearest_command(const std::string& word) const {
    std::vector<std::string> names;
    for (const Command& command : commands_) {
        names.push_back(command.app->get_name());
    }
    return std::string(nearest_word(word, {names.begin(), names.end()}, 2));
}

// An argument that nobody knows is what a user wants to hear of first, whatever else is missing.
std::string Program::problem_of(const CLI::ParseError& error) const {
    const Command* const command = chosen();
    const std::vector<std::string> unknown =
        command == nullptr ? app_.remaining() : command->app->remaining();
    if (unknown.empty()) {
        return error.what();
    }
    const bool is_option = unknown.front().size() > 1 && unknown.front()[0] == '-';
    const char* const kind = is_option            ? "unknown option '"
                             : command == nullptr ? "unknown sub-command '"
                                                  : "unexpected argument '";
    const std::string near =
        is_option || command != nullptr ? std::string() : nearest_command(unknown.front());
    return kind + unknown.front() + "'" + (near.empty() ? "" : ", perhaps '" + near + "'");
}

int Program::report_usage(Terminal& terminal, const std::string& problem) const {
    const Command* const command = chosen();
    terminal.report_error(problem + "; usage: " + (command == nullptr ? kUsage : command->usage));
    return kExitUsage;
}

int Program::run(int argc, char** argv, Terminal& terminal) {
    try {
        app_.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        terminal.out.write(app_.help());
        return kExitDone;
    } catch (const CLI::CallForVersion&) {
        terminal.out.write(app_.version() + "\n");
        return kExitDone;
    } catch (const CLI::ParseError& error) {
        return report_usage(terminal, problem_of(error));
    }
    terminal.out.choose_color(color_);
    terminal.err.choose_color(color_);
    const Command* const command = chosen();
    return command == nullptr ? report_usage(terminal, "a sub-command is missing")
                              : command->run(terminal);
}

int run_program(int argc, char** argv, Terminal& terminal) {
    try {
        return Program().run(argc, argv, terminal);
    } catch (const std::exception& error) {
        terminal.report_error(error.what());
        return kExitFailed;
    }
}

}  // namespace

int main(int argc, char** argv) {
    Terminal terminal;
    int status = run_program(argc, argv, terminal);
    if (!terminal.out.flush()) {
        terminal.report_error(std::string("cannot write to standard output: ") +
                              std::strerror(terminal.out.error()));
        status = kExitFailed;
    }
    return terminal.err.flush() ? status : static_cast<int>(kExitFailed);
}
