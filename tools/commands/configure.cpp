#include <memory>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/configuring.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/configure/report.h"
#include "tools/files/file_output.h"

namespace {

struct Options {
    std::string path;
    ConfigurationRequest request;
    std::string format = "text";
    std::string output;
    ReportDepth depth;
    Directories directories;
};

std::string check_output(const Options& options, const std::string& description) {
    const bool is_input =
        !options.output.empty() &&
        (is_same_file(options.output, description) ||
         (!options.request.from.empty() && is_same_file(options.output, options.request.from)));
    return is_input ? "'" + options.output + "' is read; name another output" : "";
}

// What is asked about exists, as a value or as the subject of a finding.
std::string check_why(const KIVO_SESSION& session, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (name == "all" || session.why({name}).is_known) {
            continue;
        }
        const std::string near = session.nearest_name(name);
        return "--why: no parameter, port or macro is called '" + name + "'" +
               (near.empty() ? "" : "; did you mean '" + near + "'?");
    }
    return {};
}

// Colours are for terminals: a file gets none.
std::string report_of(const Stream& stream, const KIVO_SESSION& session,
                      const Description& description, const Options& options) {
    if (options.format == "json") {
        return configuration_json(session, description);
    }
    return configuration_text(options.output.empty() ? stream : Stream(nullptr), session,
                              description, options.depth);
}

int configure(Terminal& terminal, const Options& options) {
    const Description description(options.path, options.directories);
    if (const std::string problem = check_output(options, description.path()); !problem.empty()) {
        terminal.report_error(problem);
        return kExitUsage;
    }
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    int status = kExitDone;
    const auto session = configured(terminal, description.info(), options.request, &status);
    if (!session) {
        return status;
    }
    if (const std::string problem = check_why(*session, options.depth.why); !problem.empty()) {
        terminal.report_error(problem);
        return kExitUsage;
    }
    const std::string report = report_of(terminal.out, *session, description, options);
    if (options.output.empty()) {
        terminal.out.write(report);
    } else if (const auto reason = write_file(options.output, report)) {
        terminal.report_error("cannot write '" + options.output + "': " + *reason);
        return kExitFailed;
    }
    const int loading = status_of_loading(description);
    return loading != kExitDone ? loading : status_of(*session);
}

constexpr const char* kFooter =
    "Shows what takes effect and where it comes from, what is wrong with it, and the messages,\n"
    "waves and wizard maps that apply. Settings are values, never expressions. What a rule\n"
    "of the description overrides is kept and told.\n"
    "JSON holds the same in one object, see docs/configure.schema.json; --from reads it back.\n"
    "Exit status: 0 legal and as asked for, 1 not so, or the description gave messages, 2 wrong\n"
    "usage, or no such name or value, 3 a file cannot be read or written.\n\n"
    "Examples:\n"
    "  kivo configure fifo_info.xml DEPTH=1024\n"
    "  kivo configure ram_info.xml BUS_STYLE=SHARED ADDRESS_WIDTH=13 --why all --repairs\n"
    "  kivo configure counter_info.xml load=USED offset=CONSTANT:5 --format json";

}  // namespace

Command make_configure() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "configure",
        .summary = "Set parameters and ports, and tell what follows and what is wrong",
        .rows = {
            description_row(options->path),
            settings_row(options->request),
            map_row(options->request),
            from_row(options->request),
            {.name = "--allow-hidden", .target = &options->request.allows_hidden,
             .help = "Let hidden parameters be set"},
            {.name = "--why", .value_name = "NAME", .target = &options->depth.why,
             .help = "Explain NAME's value and findings; 'all' explains every finding"},
            {.name = "--repairs", .target = &options->depth.shows_all_repairs,
             .help = "Show every change that makes a finding go, not the best alone"},
            {.name = "--format", .value_name = "FORMAT", .target = &options->format,
             .help = "What to write: text (the default) or json", .choices = {"text", "json"}},
            directories_row(options->directories),
            {.name = "--output", .short_name = "-o", .value_name = "OUT",
             .target = &options->output, .help = "Write a file instead",
             .offer = Offer::kFiles},
        },
        .footer = kFooter,
        .run = [options](Terminal& terminal) { return configure(terminal, *options); },
    };
    // clang-format on
}
