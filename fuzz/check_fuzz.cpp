// Checks a file: whatever a strict parser refuses has findings, every finding has a place in the
// file, and each form of the report can be read.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/loaded.h"
#include "fuzz/support/xml_oracle.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/report.h"
#include "tools/findings/xml_findings.h"

namespace {

// What is written to one of the program's streams.
class Captured {
public:
    Captured() : file_(open_memstream(&text_, &size_)) {}
    Captured(const Captured&) = delete;
    Captured& operator=(const Captured&) = delete;
    ~Captured() {
        std::fclose(file_);
        std::free(text_);
    }

    std::FILE* file() const { return file_; }
    std::string_view text() const {
        std::fflush(file_);
        return {text_, size_};
    }

private:
    char* text_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* file_;
};

void check_place(const Place& place) {
    expect(place.end.has_value() == place.start.has_value(), "a place with a start has an end");
    if (place.start) {
        expect(place.start->line > 0 && place.start->column > 0 && place.start->character > 0,
               "lines, columns and characters count from 1");
        expect(place.start->character <= place.start->column, "a character has a byte or more");
        expect(place.end->line == place.start->line && place.end->column >= place.start->column,
               "a place ends in its line, after its start");
    }
}

void check_findings(const CheckedFile& file) {
    for (const Finding& finding : file.findings) {
        expect(!finding.id.empty() && !finding.text.empty(), "a finding says what it is");
        check_place(finding.place);
        for (const Note& note : finding.notes) {
            check_place(note.place);
        }
    }
}

void check_report(const CheckedFile& file, std::unique_ptr<Report> (*make)(Terminal&),
                  bool is_json) {
    Captured out;
    Captured err;
    Terminal terminal{Stream(out.file()), Stream(err.file())};
    const std::unique_ptr<Report> report = make(terminal);
    Tally tally;
    tally.add(file);
    report->add(file);
    report->finish(tally, 1);
    terminal.out.flush();
    terminal.err.flush();
    if (is_json) {
        expect(nlohmann::json::accept(out.text()), "a report is JSON", out.text());
    }
    for (const std::string_view text : {out.text(), err.text()}) {
        for (const char letter : text) {
            expect(letter == '\n' || (letter >= ' ' && letter != '\x7F') || letter < '\0',
                   "a report steers no terminal", text);
        }
    }
}

// A parser that guesses encodings like the library's is not at hand: bytes of NUL are those of
// UTF-16 and UTF-32, and names of encodings are taken on trust.
bool is_for_oracle(std::string_view text, std::string_view refusal) {
    return text.find('\0') == std::string_view::npos &&
           refusal.find("unknown encoding") == std::string_view::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const LoadedInput description(data, size);
    Sources sources;
    CheckedFile file{description.name(), description.failure(), {}, 0};
    file.findings = library_findings(description, sources);
    append_xml_findings(file.findings, description, sources);
    check_findings(file);
    // SARIF tells all rules each time, which costs a hundred times what the check itself does.
    constexpr std::size_t kOneInSoManyIsSarif = 32;
    if (size % kOneInSoManyIsSarif == 0) {
        check_report(file, make_sarif_report, true);
    }
    check_report(file, make_json_report, true);
    check_report(file, make_text_report, false);

    const std::string refusal = xml_refusal(text);
    expect(refusal.empty() || !file.findings.empty() || !is_for_oracle(text, refusal),
           "what a strict parser refuses has findings", refusal);
    return 0;
}
