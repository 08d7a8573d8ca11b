#include "tools/findings/report.h"

#include <fmt/format.h>

#include "tools/description/description.h"
#include "tools/findings/text_report.h"
#include "tools/text/words.h"

namespace {

std::string found_in(const Tally& tally) {
    if (tally.files_with_findings == 0) {
        return "no messages";
    }
    std::string text = tally.errors > 0 ? counted(tally.errors, "error") : "";
    text += tally.errors > 0 && tally.warnings > 0 ? " and " : "";
    text += tally.warnings > 0 ? counted(tally.warnings, "warning") : "";
    return text + " in " + counted(tally.files_with_findings, "file");
}

class TextReport : public Report {
public:
    explicit TextReport(Stream& stream) : stream_(stream) {}

    void add(const CheckedFile& file) override {
        for (const Finding& finding : file.findings) {
            write_finding(stream_, file.name, finding);
        }
    }

    void finish(const Tally& tally, int) override {
        std::string text = counted(tally.files, "file") + " checked: " + found_in(tally);
        if (tally.unreadable > 0) {
            text += fmt::format("; {} could not be read", tally.unreadable);
        }
        stream_.write(text + '\n');
        if (tally.undecided > 0) {
            stream_.write(counted(tally.undecided, "question") +
                          " of sense not decided; a greater --effort decides more\n");
        }
    }

private:
    Stream& stream_;
};

}  // namespace

void Tally::add(const CheckedFile& file) {
    if (file.failure) {
        ++unreadable;
        return;
    }
    ++files;
    undecided += file.undecided;
    files_with_findings += file.findings.empty() ? 0 : 1;
    for (const Finding& finding : file.findings) {
        ++(finding.severity == Severity::kError ? errors : warnings);
        has_unread_files = has_unread_files || is_about_unread_file(finding.id);
    }
}

std::unique_ptr<Report> make_text_report(Terminal& terminal) {
    return std::make_unique<TextReport>(terminal.err);
}
