#include <memory>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/configuring.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/doc/page.h"
#include "tools/files/file_output.h"

namespace {

struct Options {
    std::string path;
    ConfigurationRequest request;
    std::string output;
    Directories directories;
    FindingOptions findings;
};

int write_doc(Terminal& terminal, const Options& options) {
    Description description(options.path, options.directories);
    if (is_same_file(description.path(), options.output)) {
        terminal.report_error("'" + options.output + "' is the description; name another output");
        return kExitUsage;
    }
    if (!report_loading(terminal, description)) {
        return kExitFailed;
    }
    const Configuration configuration(terminal, description.info(), options.request);
    if (configuration.failure()) {
        return *configuration.failure();
    }
    FindingFilter filter(options.findings);
    const std::vector<Finding> findings = told_findings(description, filter);
    if (!report_settings(terminal, filter)) {
        return kExitFailed;
    }
    if (const auto reason = write_file(
            options.output,
            make_page(description.info(), description.path(), findings, configuration.session()))) {
        terminal.report_error("cannot write '" + options.output + "': " + *reason);
        return kExitFailed;
    }
    const int loading = status_of_loading(description, findings);
    return loading != kExitDone ? loading : configuration.status();
}

constexpr const char* kFooter =
    "The page holds its pictures and its style; it needs neither a network nor scripts.\n"
    "With NAME=VALUE, it is the page of that configuration: conditions are decided, and what\n"
    "does not apply is left out.\n"
    "Exit status: 0 done, 1 done although the description gave messages or the configuration is\n"
    "not legal or not as asked for, 2 wrong usage, 3 the file cannot be read or the page not be\n"
    "written.\n\n"
    "Examples:\n"
    "  kivo doc fifo_info.xml -o fifo.html\n"
    "  kivo doc fifo_info.xml DEPTH=1024 -o fifo_1024.html";

}  // namespace

Command make_doc() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "doc",
        .summary = "Write a description as a page for people to read",
        .rows = {
            description_row(options->path),
            settings_row(options->request),
            {.name = "--output", .short_name = "-o", .value_name = "OUT.html",
             .target = &options->output, .help = "Where the page goes", .is_required = true,
             .offer = Offer::kFiles},
            directories_row(options->directories),
            warnings_row(options->findings),
            config_row(options->findings),
        },
        .footer = kFooter,
        .run = [options](Terminal& terminal) { return write_doc(terminal, *options); },
    };
    // clang-format on
}
