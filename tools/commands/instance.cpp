#include <memory>
#include <string>
#include <vector>

#include "kivo/session/instance.h"
#include "tools/commands/commands.h"
#include "tools/commands/configuring.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/configure/report.h"
#include "tools/configure/verdict_form.h"
#include "tools/files/file_output.h"
#include "tools/findings/text_report.h"

namespace {

struct Options {
    std::string path;
    ConfigurationRequest request;
    std::string language;
    KIVO_INSTANCE_OPTIONS instance;
    bool is_forced = false;
    std::string output;
    Directories directories;
};

std::string file_name_of(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

// The name of a module that nothing else names.
std::string stem_of(const std::string& path) {
    const std::string file = file_name_of(path);
    return file.substr(0, file.find_last_of('.'));
}

std::string comment_of(const KIVO_SESSION& session, const std::string& path) {
    const std::string asked = asked_for(session);
    return "from " + file_name_of(path) + (asked.empty() ? "" : " with " + asked) +
           ", by kivo instance";
}

// Tells every reason; false when there is none.
bool report_reasons(Terminal& terminal, const KIVO_SESSION& session, const Description& description,
                    const std::vector<std::string>& problems) {
    for (const VerdictForm& form : verdict_forms(session, description)) {
        if (form.finding.severity == Severity::kError || form.finding.id == "overridden") {
            write_finding(terminal.err, description.name(), form.finding);
        }
    }
    for (const std::string& problem : problems) {
        terminal.report_error(problem);
    }
    return !problems.empty() || !session.is_legal() || !session.is_granted();
}

int write_instance(Terminal& terminal, const Description& description, const KIVO_SESSION& session,
                   const Options& options) {
    KIVO_INSTANCE_OPTIONS wanted = options.instance;
    wanted.language = options.language == "verilog" ? KIVO_HDL_VERILOG : KIVO_HDL_VHDL;
    wanted.comment = comment_of(session, options.path);
    if (description.info().function_name.empty() && session.map().empty()) {
        wanted.module = stem_of(options.path);
    }
    std::vector<std::string> problems;
    const std::string text = kivo_write_instance(session, wanted, &problems);
    const bool has_reasons = report_reasons(terminal, session, description, problems);
    if (has_reasons && !options.is_forced) {
        terminal.report_error("no instance is written; --force writes it all the same");
        return kExitMessages;
    }
    if (options.output.empty()) {
        terminal.out.write(text);
    } else if (const auto reason = write_file(options.output, text)) {
        terminal.report_error("cannot write '" + options.output + "': " + *reason);
        return kExitFailed;
    }
    const int loading = status_of_loading(description);
    return has_reasons && loading == kExitDone ? static_cast<int>(kExitMessages) : loading;
}

int instance(Terminal& terminal, const Options& options) {
    const Description description(options.path, options.directories);
    if (!options.output.empty() && is_same_file(options.output, description.path())) {
        terminal.report_error("'" + options.output + "' is the description; name another output");
        return kExitUsage;
    }
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    int status = kExitDone;
    const auto session = configured(terminal, description.info(), options.request, &status);
    return session ? write_instance(terminal, description, *session, options) : status;
}

constexpr const char* kFooter =
    "Widths and values are written as numbers. Connected ports get signals of their names, tied\n"
    "ones literals; ports that are not used and private parameters are left out. Nothing is\n"
    "written unless the configuration is legal and as asked for, or --force is given.\n"
    "Exit status: 0 done, 1 refused or done with --force, or the description gave messages,\n"
    "2 wrong usage, or no such name or value, 3 a file cannot be read or written.\n\n"
    "Example:\n  kivo instance fifo_info.xml DEPTH=1024 --language vhdl --label buffer_1";

}  // namespace

Command make_instance() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "instance",
        .summary = "Write an instance of a configured function in VHDL or Verilog",
        .rows = {
            description_row(options->path),
            settings_row(options->request),
            {.name = "--language", .value_name = "LANG", .target = &options->language,
             .help = "vhdl or verilog", .choices = {"vhdl", "verilog"}, .is_required = true},
            {.name = "--label", .value_name = "LABEL", .target = &options->instance.label,
             .help = "Name of the instance; u1 by default"},
            map_row(options->request),
            from_row(options->request),
            directories_row(options->directories),
            {.name = "--component", .target = &options->instance.component,
             .help = "Write the declaration of the component, or empty module, before it"},
            {.name = "--unit", .target = &options->instance.unit,
             .help = "Write a whole design unit around it, with its ports"},
            {.name = "--force", .target = &options->is_forced,
             .help = "Write it although there are reasons not to"},
            {.name = "--output", .short_name = "-o", .value_name = "OUT",
             .target = &options->output, .help = "Write a file instead",
             .offer = Offer::kFiles},
        },
        .footer = kFooter,
        .run = [options](Terminal& terminal) { return instance(terminal, *options); },
    };
    // clang-format on
}
