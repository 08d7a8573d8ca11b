#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

RunResult show_sections(const std::string& sections) {
    const TemporaryFolder folder;
    return run_kivo({"show", folder.write("some_info.xml", with_sections(sections))});
}

void expect_shown(const std::string& sections, const std::string& expected) {
    const RunResult run = show_sections(sections);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "some\n" + expected);
}

std::vector<std::string> section_titles(const std::string& text) {
    std::vector<std::string> titles;
    for (const std::string& line : lines_of(text)) {
        if (!line.empty() && line.front() != ' ') {
            titles.push_back(line);
        }
    }
    return titles;
}

TEST(ShowTest, AnEmptyDescriptionIsOnlyItsName) {
    expect_shown("", "");
}

TEST(ShowTest, FunctionInformationIsShown) {
    expect_shown(
        "<FUNCTION_INFORMATION><VHDL_LIBRARY NAME='ieee.all; work.pkg'/><START_TIME VALUE='-5'/>"
        "<TIME_SCALE VALUE='ns'/><TIME_DELTA VALUE='2'/></FUNCTION_INFORMATION>",
        "\nFunction information\n"
        "  VHDL library        ieee.all; work.pkg\n"
        "  Simulation library  ieee;work;\n"
        "  Start time          -5 ns\n"
        "  Time scale          ns\n"
        "  Time delta          2\n");
}

TEST(ShowTest, ParametersHaveTheirRulesBelowThem) {
    expect_shown(
        "<PARAMETERS>"
        "<PARAMETER NAME='WIDTH' TYPE='INTEGER' VALUE='8' CNX_TYPE='CONSTANT'>"
        "<FORCE_RANGE MIN='1' MAX='64' IF='A == 1'/><FORCE_RANGE MAX='9'/>"
        "<FORCE_VALUE V='4' ELSE='5' IF='B'/><FORCE_VALUE V='6' WHEN_CMD='C'/>"
        "<VALUE_RULE>WIDTH gt 0</VALUE_RULE></PARAMETER>"
        "<PARAMETER NAME='M' TYPE='STRING' VALUE='X;Y' DEFAULT_VALUE_INDEX='1' LPM_HINT='ON'/>"
        "</PARAMETERS>",
        "\nParameters\n"
        "  Name   Type     Default  Values  Connection  LPM hint\n"
        "  WIDTH  integer  8                constant\n"
        "      range 1 to 64 if A == 1\n"
        "      range up to 9\n"
        "      value 4 if B, else 5\n"
        "      on command C: 6\n"
        "      rule WIDTH gt 0\n"
        "  M      string   index 1  X;Y                 yes\n");
}

TEST(ShowTest, PortsHaveTheirRulesBelowThem) {
    expect_shown(
        "<PORTS>"
        "<PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE' CLOCK_PERIOD='20'"
        " CNX_TYPE='USED_PORT'/>"
        "<PORT NAME='d' TYPE='INPUT' ASYNC='FALSE' WIDTH='W' WIDTH2D='2' USAGE='VARIABLE'"
        " DEFAULT_VALUE='7' INITIAL_VEC_STATE='1' HIGH_PROBABILITY='30'>"
        "<STATE V='USED' IF='A' ELSE='UNUSED'/><FORCE_VALUE V='0'/><FORCE_RANGE MIN='0' MAX='3'/>"
        "<CONSTANT_RANGE MIN='0' MAX='7' IF='B'/></PORT>"
        "<PORT NAME='q' TYPE='OUTPUT'/><PORT NAME='dq' TYPE='BIDIR'/><PORT NAME='r' TYPE='BURIED'/>"
        "</PORTS>",
        "\nPorts\n"
        "  Name   Type    Width  Usage     Timing  Period  Default  Init  High %  Connection\n"
        "  clock  input          USED      clock   20               0     50      used port\n"
        "  d      input   W x 2  VARIABLE  sync            7        1     30\n"
        "      state USED if A, else UNUSED\n"
        "      value 0\n"
        "      range 0 to 3\n"
        "      constant range 0 to 7 if B\n"
        "  q      output         USED                               0\n"
        "  dq     bidir          USED                               0     50\n"
        "  r      buried         USED                               0\n");
}

TEST(ShowTest, HiddenParametersAndMacrosAreShown) {
    expect_shown(
        "<HIDDEN_PARAMETERS><PARAMETER NAME='H' VALUE='1'><FORCE_VALUE V='2' IF='A'/></PARAMETER>"
        "</HIDDEN_PARAMETERS>"
        "<MACROS><MACRO NAME='M' ARGUMENTS='a,b'><DEFINITION>a +\n   b</DEFINITION></MACRO>"
        "</MACROS>",
        "\nHidden parameters\n"
        "  Name  Value\n"
        "  H     1\n"
        "      value 2 if A\n"
        "\nMacros\n"
        "  Name  Arguments  Definition\n"
        "  M     a,b        a + b\n");
}

TEST(ShowTest, RulesAndMessagesAreShown) {
    expect_shown(
        "<RULES><RULE>A gt 0</RULE><RULE REQUIRED_RULE='OFF'>B</RULE></RULES>"
        "<MESSAGES><MESSAGE TYPE='INFO'>hello</MESSAGE><MESSAGE TYPE='CRITICAL_WARNING'>"
        "<IF>C</IF><THEN>bad</THEN><ELSE>good</ELSE></MESSAGE></MESSAGES>",
        "\nRules\n"
        "  Kind      Rule\n"
        "  required  A gt 0\n"
        "  optional  B\n"
        "\nMessages\n"
        "  Severity          Message\n"
        "  info              hello\n"
        "  critical warning  bad\n"
        "      if C\n"
        "      else: good\n");
}

TEST(ShowTest, VectorsHaveTheirStimulusAndDisplayFormats) {
    expect_shown(
        "<WAVE_DATA><WAVE NAME='w' MAX_TIME='100' TIME_STEP='10' INDEX='3'"
        " DISPLAY_TRUNCATION='LOW'><CAPTION>A wave</CAPTION><WAVE_CONDITION>E</WAVE_CONDITION>"
        "<DESCRIPTION><T>Something moves.</T></DESCRIPTION>"
        "<STIM>force a 0 0</STIM>"
        "<IF>C == 1</IF><THEN><STIM>force b 1 0</STIM><STIM>force c 1 0</STIM></THEN>"
        "<ELSE><STIM>force b 0 0</STIM></ELSE>"
        "<DISPLAY>add wave -fixed_point(s4.4) a</DISPLAY><DISPLAY>add wave -bin b</DISPLAY>"
        "</WAVE></WAVE_DATA><CUSTOM_VECTORS><CUSTOM_VECTOR NAME='v'/></CUSTOM_VECTORS>",
        "\nVectors\n"
        "\n  w\n"
        "    Caption     A wave\n"
        "    Index       3\n"
        "    Max time    100\n"
        "    Time step   10\n"
        "    Truncation  low\n"
        "    Applies if  E\n"
        "    Description\n"
        "      Something moves.\n"
        "    Stimulus\n"
        "      force a 0 0\n"
        "      if C == 1\n"
        "        then  force b 1 0\n"
        "        else  force b 0 0\n"
        "        then  force c 1 0\n"
        "    Display formats\n"
        "      a  fixed point s4.4\n"
        "      b  binary\n"
        "\n  v\n"
        "    Time step   1\n"
        "    Truncation  high\n");
}

TEST(ShowTest, WizardMapsAreShownWithGenericObjects) {
    expect_shown(
        "<WIZARD_DATA><PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE'/>"
        "<WIZARD_MAP NAME='m' WIZARD_NAME='Some wizard' MAP_CONSTANTS='ON'>"
        "<WIZARD_CONDITION>A</WIZARD_CONDITION>"
        "<PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/></WIZARD_MAP></WIZARD_DATA>",
        "\nWizard maps\n"
        "\n  m\n"
        "    Wizard           Some wizard\n"
        "    Module           some\n"
        "    Maps constants   yes\n"
        "    Maps used ports  no\n"
        "    Applies if       A\n"
        "      Name   Kind     Usage  Timing  Default\n"
        "      W      integer                 4\n"
        "      clock  input    USED   clock\n");
}

TEST(ShowTest, HelpTextIsIndentedByItsConditions) {
    expect_shown(
        "<HTML_TEXT><TITLE>T</TITLE><HEADER>H</HEADER><INTRO><T>one</T>"
        "<IF>A</IF><THEN><T>two</T><IF>B</IF><THEN>three</THEN><ELSE>four</ELSE></THEN>"
        "<ELSE>five</ELSE></INTRO><END><T>six</T></END></HTML_TEXT>",
        "\nHelp text\n"
        "  Title   T\n"
        "  Header  H\n"
        "  Introduction\n"
        "    one\n"
        "    if A\n"
        "      two\n"
        "      if B\n"
        "        three\n"
        "      else\n"
        "        four\n"
        "    else\n"
        "      five\n"
        "  End\n"
        "    six\n");
}

TEST(ShowTest, TheExamplesHaveEverySection) {
    const std::vector<std::string> others = {"Function information",
                                             "Parameters",
                                             "Ports",
                                             "Hidden parameters",
                                             "Macros",
                                             "Rules",
                                             "Messages",
                                             "Vectors",
                                             "Wizard maps",
                                             "Help text"};
    for (const std::string name : {"fifo", "counter", "ram"}) {
        const RunResult run = run_kivo({"show", example(name + "_info.xml")});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, "");
        std::vector<std::string> expected = others;
        expected.insert(expected.begin(), name);
        EXPECT_EQ(section_titles(run.out), expected) << name;
    }
}

TEST(ShowTest, TheExamplesFitTheirPage) {
    for (const std::string name : {"fifo", "counter", "ram"}) {
        for (const std::string& line :
             lines_of(run_kivo({"show", example(name + "_info.xml")}).out)) {
            EXPECT_LE(line.size(), 100U) << name;
            EXPECT_TRUE(line.empty() || line.back() != ' ') << '"' << line << '"';
        }
    }
}

TEST(ShowTest, AFaultyDescriptionIsShownAndItsMessagesReported) {
    const std::string path = example("faulty_info.xml");
    const RunResult run = run_kivo({"show", path});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(messages_in(run.err, path).size(), 20U) << run.err;
    EXPECT_TRUE(contains(run.out, "  WIDTH  integer  16\n")) << run.out;
}

TEST(ShowTest, AMissingFileIsAFailure) {
    const RunResult run = run_kivo({"show", "none_info.xml"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kivo: error: cannot read 'none_info.xml': No such file or directory\n");
}

TEST(ShowTest, ControlCharactersAreEscapedInEverySection) {
    const std::string evil = "x&#27;[2J&#7;y";
    const RunResult run =
        show_sections("<FUNCTION_INFORMATION><TIME_SCALE VALUE='" + evil +
                      "'/></FUNCTION_INFORMATION>"
                      "<PARAMETERS><PARAMETER NAME='" +
                      evil + "' TYPE='STRING' VALUE='" + evil +
                      "'>"
                      "<FORCE_VALUE V='" +
                      evil +
                      "'/></PARAMETER></PARAMETERS>"
                      "<RULES><RULE>" +
                      evil +
                      "</RULE></RULES>"
                      "<MESSAGES><MESSAGE TYPE='INFO'>" +
                      evil +
                      "</MESSAGE></MESSAGES>"
                      "<WAVE_DATA><WAVE NAME='" +
                      evil + "'><STIM>force " + evil +
                      " 0 0</STIM>"
                      "<IF>" +
                      evil + "</IF><THEN><STIM>" + evil +
                      "</STIM></THEN></WAVE></WAVE_DATA>"
                      "<WIZARD_DATA><WIZARD_MAP NAME='" +
                      evil +
                      "'/></WIZARD_DATA>"
                      "<HTML_TEXT><TITLE>" +
                      evil + "</TITLE><INTRO><T>" + evil + "</T></INTRO></HTML_TEXT>");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
    EXPECT_EQ(run.out.find('\007'), std::string::npos);
    EXPECT_TRUE(contains(run.out, "x\\x1B[2J\\x07y")) << run.out;
}

TEST(ShowTest, ColumnsAreAlignedByCharacters) {
    expect_shown(
        "<HIDDEN_PARAMETERS><PARAMETER NAME='\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F' VALUE='1'/>"
        "<PARAMETER NAME='abcd' VALUE='2'/></HIDDEN_PARAMETERS>",
        "\nHidden parameters\n"
        "  Name  Value\n"
        "  \xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F  1\n"
        "  abcd  2\n");
}

TEST(ShowTest, DeepNestingNeitherOverflowsNorOutgrowsThePage) {
    constexpr int kDepth = 20000;
    std::string text;
    for (int level = 0; level < kDepth; ++level) {
        text += "<IF>A</IF><THEN>";
    }
    text += "<T>inside</T>";
    for (int level = 0; level < kDepth; ++level) {
        text += "</THEN>";
    }
    const RunResult run = show_sections("<HTML_TEXT><INTRO>" + text + "</INTRO></HTML_TEXT>");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(contains(run.out, "inside"));
    EXPECT_LT(run.out.size(), 100U * kDepth);
}

}  // namespace
