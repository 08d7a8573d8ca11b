#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "tools/findings/finding.h"
#include "tools/terminal/terminal.h"

// What a whole run has found.
struct Tally {
    std::size_t files = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t files_with_findings = 0;
    std::size_t unreadable = 0;
    bool has_unread_files = false;  // among those that the files include
    std::size_t undecided = 0;      // questions of sense

    void add(const CheckedFile& file);
};

// One of the forms in which a run tells what it has found.
class Report {
public:
    Report() = default;
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;
    virtual ~Report() = default;

    virtual void add(const CheckedFile& file) = 0;
    virtual void finish(const Tally& tally, int exit_status) = 0;
};

// For people, on the error stream; each file at once.
std::unique_ptr<Report> make_text_report(Terminal& terminal);
// For programs, on the output stream, when all is known.
std::unique_ptr<Report> make_json_report(Terminal& terminal);
std::unique_ptr<Report> make_sarif_report(Terminal& terminal);
