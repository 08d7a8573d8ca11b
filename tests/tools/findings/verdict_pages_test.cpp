// Each page's example gives its verdict, and every verdict that there is has a page.
#include "tools/findings/verdict_pages.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/program.h"
#include "tools/text/text_escape.h"

namespace {

using Json = nlohmann::json;

std::vector<std::string> words_in(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

// The verdicts on a page's example, with what it says is set.
Json verdicts_on(const VerdictPage& page) {
    const TemporaryFolder folder;
    std::vector<std::string> words = {
        "configure", folder.write("some_info.xml", std::string(page.example)), "--format", "json"};
    for (const std::string& word : words_in(page.settings)) {
        words.push_back(word);
    }
    const RunResult run = run_kivo(words);
    EXPECT_EQ(run.err, "") << page.id;
    return Json::parse(run.out)["verdicts"];
}

TEST(VerdictPages, every_example_gives_its_verdict_alone) {
    for (const VerdictPage& page : verdict_pages()) {
        const Json verdicts = verdicts_on(page);
        ASSERT_EQ(verdicts.size(), 1U) << page.id << verdicts;
        EXPECT_EQ(verdicts[0]["id"], page.id) << verdicts;
        const std::string severity = verdicts[0]["severity"];
        EXPECT_EQ(page.severity.substr(0, severity.size()), severity) << page.id;
    }
}

TEST(VerdictPages, every_example_without_its_settings_is_legal) {
    for (VerdictPage page : verdict_pages()) {
        if (!page.settings.empty()) {
            page.settings = "";
            EXPECT_EQ(verdicts_on(page), Json::array()) << page.id;
        }
    }
}

TEST(VerdictPages, there_is_one_for_every_verdict) {
    std::multiset<std::string_view> ids;
    for (const VerdictPage& page : verdict_pages()) {
        ids.insert(page.id);
        EXPECT_EQ(find_verdict_page(page.id), &page);
    }
    EXPECT_EQ(ids, (std::multiset<std::string_view>{
                       "advice", "fault", "forced-but-connected", "forces-disagree",
                       "message-error", "needs-value", "not-in-list", "out-of-range", "overridden",
                       "port-needs-value", "port-range", "port-width", "rule", "value-rule"}));
    EXPECT_EQ(find_verdict_page("out-of-rang"), nullptr);
}

TEST(VerdictPages, every_explanation_is_a_paragraph_of_whole_sentences) {
    for (const VerdictPage& page : verdict_pages()) {
        const std::string text = join_lines(page.explanation);
        EXPECT_GT(text.size(), 80U) << text;
        EXPECT_EQ(text.back(), '.') << text;
        EXPECT_EQ(text.find("  "), std::string::npos) << text;
    }
}

TEST(VerdictPages, the_handbook_has_a_line_for_each) {
    std::ifstream file(KIVO_DOCS "/configuring.md");
    const std::string handbook{std::istreambuf_iterator<char>(file), {}};
    for (const VerdictPage& page : verdict_pages()) {
        std::string severity(page.severity);
        if (const std::size_t at = severity.find(" or "); at != std::string::npos) {
            severity.replace(at, 4, ", ");
        }
        const std::string begin = "\n| `" + std::string(page.id) + "` | " + severity + " | ";
        EXPECT_NE(handbook.find(begin), std::string::npos) << begin;
    }
}

}  // namespace
