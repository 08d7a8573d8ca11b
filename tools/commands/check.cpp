#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/commands/commands.h"
#include "tools/commands/exit_status.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/files/inputs.h"
#include "tools/files/standard_input.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/report.h"
#include "tools/findings/xml_findings.h"
#include "tools/lint/lint.h"
#include "tools/terminal/progress.h"

namespace {

using ReportMaker = std::unique_ptr<Report> (*)(Terminal&);

const std::map<std::string, ReportMaker> kFormats = {
    {"text", make_text_report}, {"json", make_json_report}, {"sarif", make_sarif_report}};

struct Options {
    std::vector<std::string> paths;
    std::string format = "text";
};

CheckedFile check_description(const Description& description) {
    CheckedFile file{description.name(), description.failure(), {}};
    if (!file.failure) {
        Sources sources;
        file.findings = library_findings(description, sources);
        append_xml_findings(file.findings, description, sources);
        append_lint_findings(file.findings, description, sources);
    }
    return file;
}

CheckedFile check_standard_input() {
    const StandardInput input;
    return input.failure() ? CheckedFile{StandardInput::kName, input.failure(), {}}
                           : check_description(Description(StandardInput::kName, input.path()));
}

CheckedFile check_input(const Input& input) {
    if (input.failure) {
        return {input.path, input.failure, {}};
    }
    return input.path == "-" ? check_standard_input() : check_description(Description(input.path));
}

int status_of(const Tally& tally) {
    if (tally.unreadable > 0) {
        return kExitFailed;
    }
    return tally.files_with_findings > 0 ? kExitMessages : kExitDone;
}

int check(Terminal& terminal, const Options& options) {
    const std::vector<Input> inputs = find_inputs(options.paths);
    const std::unique_ptr<Report> report = kFormats.at(options.format)(terminal);
    Progress progress(terminal.err, inputs.size());
    Tally tally;
    for (std::size_t index = 0; index < inputs.size(); ++index) {
        progress.show(index + 1, inputs[index].path);
        const CheckedFile file = check_input(inputs[index]);
        tally.add(file);
        if (file.failure || !file.findings.empty()) {
            progress.erase();
        }
        if (file.failure) {
            terminal.report_error("cannot read '" + file.name + "': " + *file.failure);
        }
        report->add(file);
    }
    progress.erase();
    report->finish(tally, status_of(tally));
    return status_of(tally);
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
    "Errors are what the library finds; warnings are for files that it reads although they\n"
    "are not well-formed XML.\n"
    "Exit status: 0 no messages, 1 messages, 2 wrong usage, 3 a file cannot be read.\n\n"
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
        },
        .footer = kFooter,
        .check = [options] { return check_paths(*options); },
        .run = [options](Terminal& terminal) { return check(terminal, *options); },
    };
    // clang-format on
}
