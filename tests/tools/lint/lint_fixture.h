#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tests/tools/program.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"
#include "tools/lint/lint.h"

// A folder for descriptions, which are checked for warnings of the rooms alone.
class LintFixture {
public:
    // The warnings of a description with these sections, from line 2 on: "LINE:COLUMN TEXT [ID]",
    // those of other files with "FILE:" in front; notes that point elsewhere follow as
    // "  LINE:COLUMN TEXT", others as "  TEXT".
    std::vector<std::string> warnings(const std::string& sections) {
        return warnings_of_file(with_sections(sections));
    }

    std::vector<std::string> warnings_of_file(const std::string& text) {
        const Description description(folder_.write("a_info.xml", text));
        Sources sources;
        std::vector<Finding> findings;
        append_lint_findings(findings, description, sources);
        std::vector<std::string> lines;
        for (const Finding& finding : findings) {
            lines.push_back(shown(finding.place) + ' ' + finding.text + " [" + finding.id + ']');
            for (const Note& note : finding.notes) {
                const bool is_here = shown(note.place) == shown(finding.place);
                lines.push_back("  " + (is_here ? "" : shown(note.place) + ' ') + note.text);
            }
        }
        return lines;
    }

    TemporaryFolder& folder() { return folder_; }

private:
    std::string shown(const Place& place) const {
        const std::string file = place.file == folder_.path("a_info.xml")
                                     ? ""
                                     : place.file.substr(place.file.find_last_of('/') + 1) + ':';
        return file + std::to_string(place.start->line) + ':' + std::to_string(place.start->column);
    }

    TemporaryFolder folder_;
};

using Lines = std::vector<std::string>;

// Sections and what is warned of in them.
struct LintCase {
    std::string sections;
    Lines warnings;
};

template <std::size_t kCount>
void expect_warnings(const LintCase (&cases)[kCount]) {
    for (const LintCase& row : cases) {
        EXPECT_EQ(LintFixture().warnings(row.sections), row.warnings) << row.sections;
    }
}

template <std::size_t kCount>
void expect_silence(const std::string (&cases)[kCount]) {
    for (const std::string& sections : cases) {
        EXPECT_EQ(LintFixture().warnings(sections), Lines()) << sections;
    }
}

// Names that rules speak of in passing.
inline const std::string kPassing =
    "<HIDDEN_PARAMETERS><PARAMETER NAME='A' VALUE='1'/><PARAMETER NAME='B' VALUE='1'/>"
    "<PARAMETER NAME='C' VALUE='1'/><PARAMETER NAME='a' VALUE='1'/><PARAMETER NAME='MODE' "
    "VALUE='1'/></HIDDEN_PARAMETERS>";

inline std::string parameter_with(const std::string& rules) {
    return R"(<PARAMETERS><PARAMETER NAME="W" TYPE="INTEGER">)" + rules +
           "</PARAMETER></PARAMETERS>" + kPassing +
           "<PARAMETER_RULES><PARAMETER NAME='W' DEFAULT_VALUE='1'/></PARAMETER_RULES>";
}

inline std::string port_with(const std::string& rules) {
    return R"(<PORTS><PORT NAME="q" TYPE="OUTPUT">)" + rules + "</PORT></PORTS>" + kPassing;
}

inline std::string wave_with(const std::string& parts) {
    return R"(<WAVE_DATA><WAVE NAME="w">)" + parts + "<STIM>force s 1 0</STIM></WAVE></WAVE_DATA>";
}

inline std::string intro_with(const std::string& parts) {
    return "<HTML_TEXT><INTRO>" + parts + "</INTRO></HTML_TEXT>";
}

inline std::string messages_with(const std::string& messages) {
    return "<MESSAGES>" + messages + "</MESSAGES>";
}

inline std::string wizard_with(const std::string& parts) {
    return "<WIZARD_DATA>" + parts + "</WIZARD_DATA>";
}

inline std::string hidden_with(const std::string& parts) {
    return R"(<HIDDEN_PARAMETERS><PARAMETER NAME="H" VALUE="1">)" + parts +
           "</PARAMETER></HIDDEN_PARAMETERS>" + kPassing;
}
