// What makes no sense, told as warnings with places, and not told where it is told already.
#include "tools/lint/sense.h"

#include <gtest/gtest.h>

#include "tests/tools/lint/lint_fixture.h"
#include "tools/lint/all_findings.h"

namespace {

class SenseFixture {
public:
    // "LINE:COLUMN TEXT [ID]" and the notes with two blanks in front, of sections from line 2 on;
    // what is a matter of taste is left out.
    Lines warnings(const std::string& sections, std::int32_t effort = kUsualEffort) {
        const Description description(folder_.write("a_info.xml", with_sections(sections)));
        Sources sources;
        const std::vector<Finding> told = all_findings(description, sources, 0).findings;
        const Sense sense = sense_findings(description, sources, effort, told);
        undecided_ = sense.undecided;
        Lines lines;
        for (const Finding& finding : sense.findings) {
            if (finding.id != "always-condition") {
                lines.push_back(shown(finding.place) + finding.text + " [" + finding.id + ']');
                for (const Note& note : finding.notes) {
                    lines.push_back("  " + shown(note.place) + note.text);
                }
            }
        }
        return lines;
    }

    std::size_t undecided() const { return undecided_; }
    TemporaryFolder& folder() { return folder_; }

private:
    static std::string shown(const Place& place) {
        return std::to_string(place.start->line) + ':' + std::to_string(place.start->column) + ' ';
    }

    TemporaryFolder folder_;
    std::size_t undecided_ = 0;
};

const std::string kMode =
    "<PARAMETERS><PARAMETER NAME='MODE' TYPE='INTEGER' VALUE='2;3'/></PARAMETERS>\n";

std::string width_with(const std::string& elements) {
    return kMode +
           "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='8' CNX_TYPE='CONSTANT'>\n" +
           elements + "\n</PARAMETER></PARAMETERS>";
}

TEST(SenseRoom, the_place_is_that_of_the_condition_however_it_is_written) {
    SenseFixture lint;
    EXPECT_EQ(lint.warnings(width_with("<FORCE_VALUE V='1' IF='MODE == 1'/>")),
              Lines{"4:24 the condition of the FORCE_VALUE of W is never true [dead-rule]"});
    EXPECT_EQ(lint.warnings(width_with("<FORCE_VALUE><WHEN>MODE == 1</WHEN><TO>1</TO>"
                                       "</FORCE_VALUE>")),
              Lines{"4:20 the condition of the FORCE_VALUE of W is never true [dead-rule]"});
    EXPECT_EQ(lint.warnings(width_with("<FORCE_RANGE MAX='9' WHEN_CMD='MODE == 1'/>")),
              Lines{"4:32 the condition of the FORCE_RANGE of W is never true [dead-rule]"});
}

TEST(SenseRoom, notes_stand_at_the_other_rule) {
    EXPECT_EQ(SenseFixture().warnings(width_with("<FORCE_VALUE V='1' IF='MODE gt 1'/>\n"
                                                 "<FORCE_VALUE V='2' IF='MODE gt 2'/>")),
              (Lines{"3:55 the default of W never counts: rules always force its value "
                     "[default-never-used]",
                     "  5:1 always forced with this one",
                     "5:24 two rules force different values on W with MODE=3 [forces-disagree]",
                     "  4:1 this one counts"}));
}

TEST(SenseRoom, commands_below_one_condition_are_told_of_once) {
    EXPECT_EQ(
        SenseFixture().warnings(kMode + "<WAVE_DATA><WAVE NAME='w'><IF>MODE == 1</IF><THEN>"
                                        "<STIM>force a 1 0</STIM><STIM>force b 1 0</STIM></THEN>"
                                        "</WAVE></WAVE_DATA>"),
        Lines{"3:31 the condition of the command is never true [dead-rule]"});
}

TEST(SenseRoom, what_other_warnings_tell_is_not_told_again) {
    const std::string cases[] = {
        // text-not-in-list
        "<PARAMETERS><PARAMETER NAME='T' TYPE='STRING' VALUE='A;B'/></PARAMETERS>"
        "<RULES><RULE>T == \"a\"</RULE></RULES>",
        // value-out-of-range
        "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='9'>"
        "<FORCE_RANGE MIN='1' MAX='8'/></PARAMETER></PARAMETERS>",
        // empty-range
        "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='9'>"
        "<FORCE_RANGE MIN='9' MAX='8'/></PARAMETER></PARAMETERS>",
        // mixed-comparison
        width_with("<FORCE_VALUE V='1' IF='MODE == \"two\"'/>"),
        // macro-recursion
        "<MACROS><MACRO NAME='A' DEFINITION='B'/><MACRO NAME='B' DEFINITION='A'/></MACROS>",
    };
    for (const std::string& sections : cases) {
        EXPECT_EQ(SenseFixture().warnings(sections), Lines()) << sections;
    }
}

TEST(SenseRoom, of_a_description_with_a_part_missing_nothing_is_told) {
    const std::string dead = width_with("<FORCE_VALUE V='1' IF='MODE == 1'/>");
    EXPECT_EQ(SenseFixture().warnings(dead).size(), 1U);
    EXPECT_EQ(SenseFixture().warnings(dead + "<INCLUDE FILE='nowhere.xml'/>"), Lines());
    EXPECT_EQ(SenseFixture().warnings(dead + "<INCLUDE FILE='/dev/null'/>"), Lines());
}

TEST(SenseRoom, rules_of_included_files_are_told_there) {
    SenseFixture lint;
    const std::string part = lint.folder().write(
        "part.xml", with_sections(width_with("<FORCE_VALUE V='1' IF='MODE == 1'/>")));
    EXPECT_EQ(lint.warnings("<INCLUDE FILE='" + part + "'/>"),
              Lines{"4:24 the condition of the FORCE_VALUE of W is never true [dead-rule]"});
}

TEST(SenseRoom, the_effort_decides_what_is_asked) {
    const std::string dead = width_with("<FORCE_VALUE V='1' IF='MODE == 1'/>");
    SenseFixture lint;
    EXPECT_EQ(lint.warnings(dead, 0), Lines());
    EXPECT_EQ(lint.undecided(), 0U);
    EXPECT_EQ(lint.warnings(dead).size(), 1U);
    EXPECT_EQ(lint.warnings(dead, kMostEffort).size(), 1U);
}

}  // namespace
