#include "tools/commands/loading.h"

#include "tools/commands/exit_status.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/text_report.h"
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

int status_of_loading(const Description& description, const std::vector<Finding>& told) {
    if (description.has_unread_files()) {
        return kExitFailed;
    }
    return description.has_messages() || has_errors(told) ? kExitMessages : kExitDone;
}

std::vector<Finding> warnings_of_waves(const Description& description, FindingFilter& filter) {
    Sources sources;
    std::vector<Finding> findings = stimulus_findings(description, sources);
    filter.apply(findings, description);
    return findings;
}

std::vector<Finding> told_findings(const Description& description, FindingFilter& filter) {
    Sources sources;
    std::vector<Finding> findings = all_findings(description, sources).findings;
    filter.apply(findings, description);
    return findings;
}

bool report_settings(Terminal& terminal, const FindingFilter& filter) {
    bool are_taken = true;
    for (const CheckedFile& file : filter.settings_files()) {
        if (file.failure) {
            terminal.report_error("cannot read '" + file.name + "': " + *file.failure);
            are_taken = false;
        }
    }
    return are_taken;
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

OptionRow warnings_row(FindingOptions& options) {
    return {.name = "-W",
            .value_name = "ID",
            .target = &options.warnings,
            .help = "Switch a warning: ID, no-ID, all, error=ID; later ones win",
            .choices = WarningSettings::all(),
            .check = [](const std::string& setting) { return WarningSettings().take(setting); }};
}

OptionRow config_row(FindingOptions& options) {
    return {.name = "--config",
            .value_name = "FILE",
            .target = &options.config,
            .help = "Settings for all files, instead of the kivo.toml beside each",
            .offer = Offer::kFiles};
}
