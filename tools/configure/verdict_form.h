#pragma once

#include <string>
#include <vector>

#include "kivo/session/session.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// The verdicts of a configuration as the program tells them.

// A change that makes a verdict hold.
struct RepairForm {
    std::vector<KIVO_ASSIGNMENT> set;
    std::string text;
};

struct VerdictForm {
    Finding finding;
    bool is_undecided = false;
    std::vector<RepairForm> repairs;
    std::vector<std::string> conflict;  // names of settings
};

// All verdicts, in the order of the session.
std::vector<VerdictForm> verdict_forms(const KIVO_SESSION& session, const Description& description);
