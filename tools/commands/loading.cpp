#include "tools/commands/loading.h"

#include "tools/findings/library_findings.h"
#include "tools/findings/text_report.h"
#include "tools/findings/waivers.h"
#include "tools/findings/warning_settings.h"
#include "tools/lint/all_findings.h"
#include "tools/lint/lint.h"

bool report_loading(Terminal& terminal, const Description& description) {
    if (description.failure()) {
        terminal.report_error("cannot read '" + description.path() +
                              "': " + *description.failure());
        return false;
    }
    Sources sources;
    for (const Finding& finding : library_findings(description, sources)) {
        write_finding(terminal.err, description.name(), finding);
    }
    return true;
}

std::vector<Finding> warnings_of_waves(const Description& description) {
    Sources sources;
    std::vector<Finding> findings = stimulus_findings(description, sources);
    WaiverFiles("").apply(findings, description);
    return findings;
}

std::vector<Finding> standing_findings(const Description& description) {
    Sources sources;
    std::vector<Finding> findings = all_findings(description, sources);
    WaiverFiles("").apply(findings, description);
    WarningSettings().apply(findings);
    return findings;
}

OptionRow description_row(std::string& path) {
    return {.name = "FILE",
            .target = &path,
            .help = "Description file",
            .is_required = true,
            .offer = Offer::kDescriptions};
}

OptionRow directories_row(Directories& directories) {
    return {.name = "-I",
            .value_name = "DIR",
            .target = &directories,
            .help = "Look for files in this directory too; may be repeated",
            .offer = Offer::kFolders,
            .check = [](const std::string& directory) {
                return directory.empty() ? std::string("a directory has a name") : std::string();
            }};
}
