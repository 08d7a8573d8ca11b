#pragma once

#include <string>
#include <vector>

#include "tools/description/description.h"
#include "tools/findings/finding.h"
#include "tools/findings/waivers.h"
#include "tools/findings/warning_settings.h"

// What a command line says of findings.
struct FindingOptions {
    std::vector<std::string> warnings;  // settings of single warnings
    std::string config;                 // the file of waivers; empty: beside each description
};

// Leaves of the findings of descriptions what is to be told.
class FindingFilter {
public:
    // REQUIRES: every setting of a warning is known.
    explicit FindingFilter(const FindingOptions& options);

    void apply(std::vector<Finding>& findings, const Description& description);

    // What is wrong with the files of waivers that were used so far.
    std::vector<CheckedFile> settings_files() const;

private:
    WarningSettings settings_;
    WaiverFiles waivers_;
};

bool has_errors(const std::vector<Finding>& findings);
