#include <nlohmann/json.hpp>
#include <string>

#include "tools/findings/report.h"
#include "tools/text/json_text.h"

namespace {

using Json = nlohmann::ordered_json;

Json or_null(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json position_of(const std::optional<Position>& position) {
    return position ? Json{{"line", position->line}, {"column", position->column}} : Json();
}

Json place_of(const Place& place) {
    return {{"file", or_null(place.file)},
            {"start", position_of(place.start)},
            {"end", position_of(place.end)}};
}

Json finding_of(const Finding& finding) {
    Json notes = Json::array();
    for (const Note& note : finding.notes) {
        notes.push_back({{"text", note.text}, {"place", place_of(note.place)}});
    }
    return {{"severity", severity_word(finding.severity)},
            {"id", finding.id},
            {"text", finding.text},
            {"place", place_of(finding.place)},
            {"notes", std::move(notes)}};
}

class JsonReport : public Report {
public:
    explicit JsonReport(Stream& stream) : stream_(stream) {}

    void add(const CheckedFile& file) override {
        Json findings = Json::array();
        for (const Finding& finding : file.findings) {
            findings.push_back(finding_of(finding));
        }
        files_.push_back({{"name", file.name},
                          {"read", !file.failure},
                          {"reason", or_null(file.failure.value_or(""))},
                          {"findings", std::move(findings)}});
    }

    void finish(const Tally& tally, int) override {
        const Json log = {{"version", 1},
                          {"files", std::move(files_)},
                          {"summary",
                           {{"files_read", tally.files},
                            {"files_not_read", tally.unreadable},
                            {"errors", tally.errors},
                            {"warnings", tally.warnings},
                            {"undecided", tally.undecided}}}};
        stream_.write(json_text(log) + '\n');
    }

private:
    Stream& stream_;
    Json files_ = Json::array();
};

}  // namespace

std::unique_ptr<Report> make_json_report(Terminal& terminal) {
    return std::make_unique<JsonReport>(terminal.out);
}
