#pragma once

#include <string>
#include <vector>

#include "kivo/session/session.h"
#include "tools/configure/verdict_form.h"
#include "tools/description/description.h"
#include "tools/terminal/terminal.h"

// How much is told for people.
struct ReportDepth {
    std::vector<std::string> why;  // names whose values and verdicts are explained; "all" for all
    bool shows_all_repairs = false;
};

// A configuration with all that follows from it, for people: tables, and findings as "kivo check"
// writes them, each with what is in conflict and the best repair. Painted as the stream is.
std::string configuration_text(const Stream& stream, const KIVO_SESSION& session,
                               const Description& description, const ReportDepth& depth);

// The same for programs; docs/configure.schema.json says what stands where.
std::string configuration_json(const KIVO_SESSION& session, const Description& description);

// "legal", "not legal: 2 errors", "legal, but not granted", ...
std::string standing_of(const KIVO_SESSION& session);

// "given", "preset", "default" or "forced"; of a port "state" in place of "forced".
const char* source_word(KIVO_VALUE_SOURCE source, bool is_port);

// "error", "critical-warning", "warning", "advice" or "info".
const char* severity_word(KIVO_SEVERITY severity);

// The settings as on a command line: "DEPTH=1024 load=USED".
std::string asked_for(const KIVO_SESSION& session);
