#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "tools/findings/catalogue.h"
#include "tools/findings/report.h"
#include "tools/text/json_text.h"
#include "tools/text/text_escape.h"
#include "tools/text/uri.h"

namespace {

using Json = nlohmann::ordered_json;

Json message(std::string_view text) {
    return {{"text", text}};
}

Json rule_of(const MessageDescription& row) {
    const std::string explanation = join_lines(row.explanation);
    return {{"id", row.id},
            {"shortDescription", message(first_sentence(row.explanation))},
            {"fullDescription", message(explanation)},
            {"help", message(explanation + "\n\nExample:\n\n" + std::string(row.example))},
            {"defaultConfiguration", {{"level", severity_word(row.severity)}}}};
}

// Characters, since the format knows no columns of bytes.
Json region_of(const Position& start, const Position& end) {
    return {{"startLine", start.line},
            {"startColumn", start.character},
            {"endLine", end.line},
            {"endColumn", end.character}};
}

Json location_of(const Place& place) {
    Json physical = {{"artifactLocation", {{"uri", uri_of_path(place.file)}}}};
    if (place.start && place.end) {
        physical["region"] = region_of(*place.start, *place.end);
    }
    return {{"physicalLocation", std::move(physical)}};
}

// The numbers of the rules, by their ids.
class Rules {
public:
    Rules() {
        for (const MessageDescription& row : message_catalogue()) {
            numbers_.emplace(row.id, rules_.size());
            rules_.push_back(rule_of(row));
        }
    }

    Json all() const { return rules_; }
    // Nothing for a kind of message that the catalogue does not know.
    std::optional<std::size_t> number_of(const std::string& id) const {
        const auto found = numbers_.find(id);
        return found == numbers_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    Json rules_ = Json::array();
    std::map<std::string, std::size_t, std::less<>> numbers_;
};

class SarifReport : public Report {
public:
    explicit SarifReport(Stream& stream) : stream_(stream) {}

    void add(const CheckedFile& file) override;
    void finish(const Tally& tally, int exit_status) override;

private:
    Json result_of(const Finding& finding) const;

    Stream& stream_;
    const Rules rules_;
    Json results_ = Json::array();
    Json notifications_ = Json::array();
};

Json SarifReport::result_of(const Finding& finding) const {
    Json locations = Json::array();
    if (!finding.place.file.empty()) {
        locations.push_back(location_of(finding.place));
    }
    Json result = {{"ruleId", finding.id}};
    if (const auto number = rules_.number_of(finding.id)) {
        result["ruleIndex"] = *number;
    }
    result["level"] = severity_word(finding.severity);
    result["message"] = message(finding.text);
    result["locations"] = std::move(locations);
    Json related = Json::array();
    for (const Note& note : finding.notes) {
        related.push_back(location_of(note.place));
        related.back()["message"] = message(note.text);
    }
    if (!related.empty()) {
        result["relatedLocations"] = std::move(related);
    }
    return result;
}

void SarifReport::add(const CheckedFile& file) {
    for (const Finding& finding : file.findings) {
        results_.push_back(result_of(finding));
    }
    if (file.failure) {
        Place place;
        place.file = file.name;
        notifications_.push_back(
            {{"level", "error"},
             {"message", message("cannot read '" + file.name + "': " + *file.failure)},
             {"locations", Json::array({location_of(place)})}});
    }
}

void SarifReport::finish(const Tally& tally, int exit_status) {
    const Json invocation = {{"executionSuccessful", tally.unreadable == 0},
                             {"exitCode", exit_status},
                             {"toolExecutionNotifications", std::move(notifications_)}};
    const Json driver = {{"name", "kivo"}, {"version", KIVO_VERSION}, {"rules", rules_.all()}};
    const Json run = {{"tool", {{"driver", driver}}},
                      {"invocations", Json::array({invocation})},
                      {"columnKind", "unicodeCodePoints"},
                      {"results", std::move(results_)}};
    const Json log = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                      {"version", "2.1.0"},
                      {"runs", Json::array({run})}};
    stream_.write(json_text(log) + '\n');
}

}  // namespace

std::unique_ptr<Report> make_sarif_report(Terminal& terminal) {
    return std::make_unique<SarifReport>(terminal.out);
}
