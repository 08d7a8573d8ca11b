#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/commands/loading.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/files/inputs.h"
#include "tools/files/standard_input.h"
#include "tools/findings/finding_filter.h"
#include "tools/findings/report.h"
#include "tools/lint/all_findings.h"
#include "tools/lint/sense.h"
#include "tools/terminal/progress.h"

namespace {

constexpr std::size_t kMebibyte = 1024UL * 1024;

using ReportMaker = std::unique_ptr<Report> (*)(Terminal&);

const std::map<std::string, ReportMaker> kFormats = {
    {"text", make_text_report}, {"json", make_json_report}, {"sarif", make_sarif_report}};

struct Options {
    std::vector<std::string> paths;
    std::string format = "text";
    FindingOptions findings;
    std::string fail_on = "warning";
    std::int32_t effort = kUsualEffort;
    Directories directories;
    std::int32_t input_limit = 256;  // MiB of standard input
};

// What one run of the command is told by.
class Check {
public:
    explicit Check(const Options& options)
        : filter_(options.findings),
          effort_(options.effort),
          directories_(options.directories),
          input_limit_(static_cast<std::size_t>(options.input_limit)) {}

    CheckedFile check(const Input& input) {
        if (input.failure) {
            return {input.path, input.failure, {}, 0};
        }
        return input.path == "-" ? check_standard_input()
                                 : check_description(Description(input.path, directories_));
    }

    // What is wrong with the settings, when all is checked.
    std::vector<CheckedFile> check_settings() const { return filter_.settings_files(); }

private:
    CheckedFile check_description(const Description& description) {
        CheckedFile file{description.name(), description.failure(), {}, 0};
        if (!file.failure) {
            Sources sources;
            AllFindings all = all_findings(description, sources, effort_);
            file.findings = std::move(all.findings);
            file.undecided = all.undecided;
            filter_.apply(file.findings, description);
        }
        return file;
    }

    CheckedFile check_standard_input() {
        const StandardInput input(input_limit_ * kMebibyte);
        return input.failure() ? CheckedFile{StandardInput::kName, input.failure(), {}, 0}
                               : check_description(
                                     Description(StandardInput::kName, input.path(), directories_));
    }

    FindingFilter filter_;
    std::int32_t effort_;
    Directories directories_;
    std::size_t input_limit_;
};

int status_of(const Tally& tally, const std::string& fail_on) {
    if (tally.unreadable > 0 || tally.has_unread_files) {
        return kExitFailed;
    }
    const bool fails = fail_on == "error" ? tally.errors > 0
                                          : fail_on == "warning" && tally.files_with_findings > 0;
    return fails ? kExitMessages : kExitDone;
}

void tell(Terminal& terminal, Report& report, Tally& tally, const CheckedFile& file) {
    tally.add(file);
    if (file.failure) {
        terminal.report_error("cannot read '" + file.name + "': " + *file.failure);
    }
    report.add(file);
}

int run_check(Terminal& terminal, const Options& options) {
    const std::vector<Input> inputs = find_inputs(options.paths);
    const std::unique_ptr<Report> report = kFormats.at(options.format)(terminal);
    Progress progress(terminal.err, inputs.size());
    Check check(options);
    Tally tally;
    for (std::size_t index = 0; index < inputs.size(); ++index) {
        progress.show(index + 1, inputs[index].path);
        const CheckedFile file = check.check(inputs[index]);
        if (file.failure || !file.findings.empty()) {
            progress.erase();
        }
        tell(terminal, *report, tally, file);
    }
    progress.erase();
    for (const CheckedFile& file : check.check_settings()) {
        tell(terminal, *report, tally, file);
    }
    const int status = status_of(tally, options.fail_on);
    report->finish(tally, status);
    return status;
}

// Standard input can be read only once.
std::string check_paths(const Options& options) {
    return std::count(options.paths.begin(), options.paths.end(), "-") > 1
               ? "'-' is given more than once"
               : "";
}

constexpr const char* kFooter =
    "Every message is one line on standard error, with its source line below it; what it\n"
    "means and how to mend it says 'kivo explain ID', with the id that ends the line.\n"
    "Errors are what the library finds; warnings are for what it silently reads although it\n"
    "was surely not meant so, and for files that are not well-formed XML. Whether rules,\n"
    "messages and values make sense is tried out over all configurations; what the effort does\n"
    "not suffice for is counted and not told, and two seconds end it.\n"
    "A file kivo.toml beside a description names findings to live with, in tables [[waiver]]\n"
    "with id, file, reason and perhaps name; errors cannot be waived.\n"
    "Exit status: 0 no messages, 1 messages, 2 wrong usage, 3 a file cannot be read, also one\n"
    "that a description includes.\n\n"
    "Example:\n"
    "  kivo check fifo_info.xml counter_info.xml\n"
    "  kivo check --format sarif descriptions > check.sarif";

}  // namespace

Command make_check() {
    auto options = std::make_shared<Options>();
    // clang-format off
    return {
        .name = "check",
        .summary = "Load descriptions and report what is wrong with them",
        .rows = {
            {.name = "FILE", .target = &options->paths,
             .help = "Files, directories (every *_info.xml below them), - for standard input",
             .is_required = true, .offer = Offer::kDescriptions},
            {.name = "--format", .value_name = "FORMAT", .target = &options->format,
             .help = "text (the default); json or sarif go to standard output",
             .choices = {"text", "json", "sarif"}},
            warnings_row(options->findings),
            {.name = "--fail-on", .value_name = "WHAT", .target = &options->fail_on,
             .help = "What makes the exit status 1: error, warning (the default) or never",
             .choices = {"error", "warning", "never"}},
            {.name = "--effort", .value_name = "STEPS", .target = &options->effort,
             .help = "What one question of sense may cost: 2000 by default; 0 asks none",
             .least = 0, .most = kMostEffort},
            directories_row(options->directories),
            config_row(options->findings),
            {.name = "--input-limit", .value_name = "MIB", .target = &options->input_limit,
             .help = "The most that is read from standard input, in MiB (256)", .least = 1},
        },
        .footer = kFooter,
        .check = [options] { return check_paths(*options); },
        .run = [options](Terminal& terminal) { return run_check(terminal, *options); },
    };
    // clang-format on
}
