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

// Examples speak of what others on the page declare.
struct Surroundings {
    std::string section;
    std::string tag;
    std::string name;
    std::string attributes;
};

const Surroundings kSurroundings[] = {
    {"PARAMETERS", "PARAMETER", "WIDTH", "TYPE='INTEGER' VALUE='1'"},
    {"PARAMETERS", "PARAMETER", "DEPTH", "TYPE='INTEGER' VALUE='1'"},
    {"PARAMETERS", "PARAMETER", "MODE", "TYPE='INTEGER' VALUE='1'"},
    {"PARAMETERS", "PARAMETER", "HAS_ENABLE", "TYPE='INTEGER' VALUE='1'"},
    {"PARAMETERS", "PARAMETER", "STYLE", "TYPE='INTEGER' VALUE='1'"},
    {"PORTS", "PORT", "clock", "TYPE='INPUT'"},
    {"PORTS", "PORT", "reset", "TYPE='INPUT'"},
    {"PORTS", "PORT", "enable", "TYPE='INPUT'"},
    {"PORTS", "PORT", "data", "TYPE='INPUT' WIDTH='8'"},
};

std::string with_surroundings(std::string example) {
    // A map declares nothing.
    const bool has_maps = example.find("<WIZARD_DATA>") != std::string::npos;
    for (const Surroundings& each : kSurroundings) {
        if (has_maps || example.find("NAME=\"" + each.name + '"') == std::string::npos) {
            example += '<' + each.section + "><" + each.tag + " NAME='" + each.name + "' " +
                       each.attributes + "/></" + each.section + '>';
        }
    }
    return example;
}

TEST(Handbook, examples_without_messages_are_without_warnings_too) {
    const std::vector<std::string> examples = clean_examples();
    EXPECT_GT(examples.size(), 10U);
    for (const std::string& example : examples) {
        EXPECT_EQ(LintFixture().warnings(with_surroundings(example)), Lines()) << example;
    }
}

TEST(Handbook, every_warning_stands_beside_its_rule) {
    const std::string page = handbook();
    for (const MessageDescription& row : message_catalogue()) {
        const bool is_of_rooms =
            row.severity == Severity::kWarning && row.id.substr(0, 4) != "xml-";
        EXPECT_TRUE(!is_of_rooms || page.find('`' + std::string(row.id) + '`') != page.npos)
            << row.id;
    }
}

}  // namespace
