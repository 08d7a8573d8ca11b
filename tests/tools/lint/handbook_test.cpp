// The examples of the handbook that are right are right for the warnings too, and the handbook
// names the id of every warning.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/tools/lint/lint_fixture.h"
#include "tools/findings/catalogue.h"

namespace {

std::string handbook() {
    std::ifstream page(KIVO_DOCS "/description-format.md");
    return {std::istreambuf_iterator<char>(page), {}};
}

// The examples below which no messages stand.
std::vector<std::string> clean_examples() {
    std::vector<std::string> examples;
    std::string block;
    for (const std::string& line : lines_of(handbook())) {
        const bool is_fence = line.rfind("```", 0) == 0;
        if (line == "```xml") {
            examples.emplace_back();
        } else if (line == "```messages") {
            examples.pop_back();
        } else if (!is_fence && block == "```xml") {
            examples.back() += line + '\n';
        }
        block = is_fence ? line : block;
    }
    return examples;
}

TEST(HandbookTest, ExamplesWithoutMessagesAreWithoutWarningsToo) {
    const std::vector<std::string> examples = clean_examples();
    EXPECT_GT(examples.size(), 10U);
    for (const std::string& example : examples) {
        EXPECT_EQ(LintFixture().warnings(example), Lines()) << example;
    }
}

TEST(HandbookTest, EveryWarningStandsBesideItsRule) {
    const std::string page = handbook();
    for (const MessageDescription& row : message_catalogue()) {
        const bool is_of_rooms =
            row.severity == Severity::kWarning && row.id.substr(0, 4) != "xml-";
        EXPECT_TRUE(!is_of_rooms || page.find('`' + std::string(row.id) + '`') != page.npos)
            << row.id;
    }
}

}  // namespace
