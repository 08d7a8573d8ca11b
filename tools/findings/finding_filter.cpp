#include "tools/findings/finding_filter.h"

#include <algorithm>
#include <cassert>

FindingFilter::FindingFilter(const FindingOptions& options) : waivers_(options.config) {
    for (const std::string& warning : options.warnings) {
        [[maybe_unused]] const std::string problem = settings_.take(warning);
        assert(problem.empty());
    }
}

void FindingFilter::apply(std::vector<Finding>& findings, const Description& description) {
    waivers_.apply(findings, description);
    settings_.apply(findings);
}

std::vector<CheckedFile> FindingFilter::settings_files() const {
    std::vector<CheckedFile> files = waivers_.report();
    for (CheckedFile& file : files) {
        settings_.apply(file.findings);
    }
    return files;
}

bool has_errors(const std::vector<Finding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.severity == Severity::kError; });
}
