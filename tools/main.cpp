#include <unistd.h>

#include <csignal>
#include <cstring>
#include <exception>
#include <new>
#include <string>

#include "tools/arguments/reader.h"
#include "tools/arguments/usage.h"
#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/terminal/terminal.h"

namespace {

constexpr const char* kOutOfMemory = "kivo: error: out of memory\n";

ColorChoice color_choice(const std::string& word) {
    return word == "always"  ? ColorChoice::kAlways
           : word == "never" ? ColorChoice::kNever
                             : ColorChoice::kAuto;
}

// REQUIRES: the program and "color" live on
void declare(Program& program, std::string& color) {
    program.name = "kivo";
    program.version = "kivo " KIVO_VERSION;
    program.summary = "Reads descriptions of configurable hardware functions.";
    program.footer =
        "Examples:\n"
        "  kivo check fifo_info.xml counter_info.xml\n"
        "  kivo configure fifo_info.xml DEPTH=1024\n"
        "  kivo doc fifo_info.xml -o fifo.html\n"
        "  kivo explain unknown-section\n"
        "  kivo instance fifo_info.xml DEPTH=1024 --language vhdl\n"
        "  kivo show fifo_info.xml\n"
        "  kivo translate --to verilog \"WIDTH gte 4 and DEPTH lt 16\"\n"
        "  kivo value fifo_info.xml fill_and_drain data 60\n"
        "  kivo wave fifo_info.xml fill_and_drain";
    program.help_row = {
        .name = "--help", .short_name = "-h", .help = "Print this help message and exit"};
    program.version_row = {.name = "--version",
                           .help = "Display program version information and exit"};
    program.common_rows = {{.name = "--color",
                            .value_name = "WHEN",
                            .target = &color,
                            .help = "Colours: auto (the default), always or never",
                            .choices = {"auto", "always", "never"}}};
    program.commands = {make_check(),         make_completion(program),
                        make_configure(),     make_doc(),
                        make_explain(),       make_instance(),
                        make_manual(program), make_show(),
                        make_translate(),     make_value(),
                        make_wave()};
}

int report_usage(Terminal& terminal, const Program& program, const Request& request) {
    terminal.report_error(
        request.problem + "; usage: " +
        (request.command == nullptr ? usage_of(program) : usage_of(program, *request.command)));
    return kExitUsage;
}

int run(int argc, char** argv, Terminal& terminal) {
    std::string color;
    Program program;
    declare(program, color);
    const Request request = read_arguments(program, argc, argv);
    if (!request.answer.empty()) {
        terminal.out.write(request.answer);
        return kExitDone;
    }
    if (!request.problem.empty()) {
        return report_usage(terminal, program, request);
    }
    terminal.out.choose_color(color_choice(color));
    terminal.err.choose_color(color_choice(color));
    return request.command->run(terminal);
}

// Other errors are reported; want of memory, of a parser that has its own way to take it, goes on.
int run_reporting(int argc, char** argv, Terminal& terminal) {
    try {
        return run(argc, argv, terminal);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        terminal.report_error(error.what());
        return kExitFailed;
    }
}

int run_program(int argc, char** argv, Terminal& terminal) {
    try {
        const int status = run_reporting(argc, argv, terminal);
        if (terminal.out.flush()) {
            return status;
        }
        terminal.report_error(std::string("cannot write to standard output: ") +
                              std::strerror(terminal.out.error()));
    } catch (const std::bad_alloc&) {
        terminal.out.flush();
        terminal.err.write(kOutOfMemory);
    }
    return kExitFailed;
}

// Not by an exception: it may arise before main, in functions that must not throw, and in libraries
// that do not survive it. No file is half written then: while one is, no memory is asked for.
[[noreturn]] void end_out_of_memory() {
    [[maybe_unused]] const ssize_t written =
        write(STDERR_FILENO, kOutOfMemory, std::strlen(kOutOfMemory));
    _exit(kExitFailed);
}

// Before the tables of the other sources take memory.
__attribute__((constructor(101))) void be_ready_for_want_of_memory() {
    std::set_new_handler(end_out_of_memory);
}

}  // namespace

int main(int argc, char** argv) {
    // A file that grows beyond what the shell allows is an error of that file.
    std::signal(SIGXFSZ, SIG_IGN);
    Terminal terminal;
    const int status = run_program(argc, argv, terminal);
    return terminal.err.flush() ? status : static_cast<int>(kExitFailed);
}
