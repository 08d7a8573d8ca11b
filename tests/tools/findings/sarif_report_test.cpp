#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "tools/findings/report.h"

namespace {

// What a report of one finding of that kind writes.
nlohmann::json report_of(const std::string& id) {
    Finding finding;
    finding.id = id;
    finding.text = "what";
    const CheckedFile file = {"f", {}, {finding}, 0};
    char* text = nullptr;
    std::size_t size = 0;
    std::FILE* const memory = open_memstream(&text, &size);
    Terminal terminal{Stream(memory), Stream(memory)};
    Tally tally;
    tally.add(file);
    const auto report = make_sarif_report(terminal);
    report->add(file);
    report->finish(tally, 1);
    std::fclose(memory);
    const nlohmann::json log = nlohmann::json::parse(std::string(text, size));
    std::free(text);
    return log;
}

TEST(SarifReport, a_finding_of_a_known_kind_points_at_its_rule) {
    const nlohmann::json run = report_of("unknown-section")["runs"][0];
    const nlohmann::json& result = run["results"][0];
    EXPECT_EQ(result["ruleId"], "unknown-section");
    const std::size_t rule = result["ruleIndex"];
    EXPECT_EQ(run["tool"]["driver"]["rules"][rule]["id"], "unknown-section");
}

// As of a library that is newer than the program.
TEST(SarifReport, a_finding_of_an_unknown_kind_is_reported_without_a_rule) {
    const nlohmann::json log = report_of("brand-new");
    const nlohmann::json& result = log["runs"][0]["results"][0];
    EXPECT_EQ(result["ruleId"], "brand-new");
    EXPECT_EQ(result.count("ruleIndex"), 0U);
    EXPECT_EQ(result["level"], "error");
    EXPECT_EQ(result["message"]["text"], "what");
}

}  // namespace
