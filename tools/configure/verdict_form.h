#pragma once

#include <string>
#include <vector>

#include "kivo/session/session.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// The verdicts of a configuration as the program tells them.

struct VerdictForm {
    Finding finding;
    KIVO_SUBJECT subject;
    bool is_undecided = false;
    // Of errors and advice, what only warns needs neither; of very many, of the first ones.
    bool is_explained = false;
    KIVO_CONFLICT conflict;
    std::vector<KIVO_REPAIR> repairs;
    bool are_all_tried = true;  // there are no more repairs
};

// All verdicts, in the order of the session.
std::vector<VerdictForm> verdict_forms(const KIVO_SESSION& session, const Description& description);
