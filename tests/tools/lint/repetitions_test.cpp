// What is declared or given again, and what reaches something else than it names.
#include <gtest/gtest.h>

#include "tests/tools/lint/lint_fixture.h"

namespace {

// clang-format off
const LintCase kDeclared[] = {
    {"<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='1'/>\n<PARAMETER NAME='W' TYPE='INTEGER' VALUE='1'/>"
     "</PARAMETERS>", {
     "3:1 PARAMETER \"W\" is declared again: its attributes replace those of the first, its rules "
     "are added [declared-twice]",
     "  2:13 first declared here"}},
    {"<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>\n<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>", {
     "3:8 PORT \"q\" is declared again: its attributes replace those of the first, its rules are "
     "added [declared-twice]",
     "  2:8 first declared here"}},
    {"<HIDDEN_PARAMETERS><PARAMETER NAME='H' VALUE='1'/>\n<PARAMETER NAME='H' VALUE='2'/>"
     "</HIDDEN_PARAMETERS>", {
     "3:1 PARAMETER \"H\" is declared again: its value replaces that of the first "
     "[declared-twice]",
     "  2:20 first declared here"}},
    {"<MACROS><MACRO NAME='M' DEFINITION='1'/>\n<MACRO NAME='M' DEFINITION='2'/></MACROS>", {
     "3:1 MACRO \"M\" is declared again: its definition replaces that of the first "
     "[declared-twice]",
     "  2:9 first declared here"}},
    {"<WAVE_DATA><WAVE NAME='w'><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>\n"
     "<CUSTOM_VECTORS><CUSTOM_VECTOR NAME='w'/></CUSTOM_VECTORS>", {
     "3:17 CUSTOM_VECTOR \"w\" is declared again: its attributes replace those of the first, the "
     "rest is added [declared-twice]",
     "  2:12 first declared here"}},
    {wizard_with("<WIZARD_MAP NAME='m'/>\n<WIZARD_MAP NAME='m'/>"), {
     "3:1 WIZARD_MAP \"m\" is declared again: its attributes replace those of the first, the rest "
     "is added [declared-twice]",
     "  2:14 first declared here"}},
    {wizard_with("<WIZARD_MAP NAME='m'><PARAMETER NAME='W' TYPE='INTEGER'/>\n"
                 "<PARAMETER NAME='W' TYPE='STRING'/></WIZARD_MAP>"), {
     "3:1 PARAMETER \"W\" is declared again: its attributes replace those of the first, its rules "
     "are added [declared-twice]",
     "  2:35 first declared here"}},
};

const LintCase kGiven[] = {
    {"<FUNCTION_INFORMATION><START_TIME VALUE='0'/></FUNCTION_INFORMATION>\n"
     "<FUNCTION_INFORMATION><START_TIME VALUE='5'/></FUNCTION_INFORMATION>", {
     "3:23 START_TIME is given again and replaces the first [given-twice]",
     "  2:23 first given here"}},
    {"<FUNCTION_INFORMATION><VHDL_LIBRARY NAME='a'/>\n<VHDL_LIBRARY NAME='b'/>"
     "</FUNCTION_INFORMATION>", {
     "3:1 VHDL_LIBRARY is given again and replaces the first [given-twice]",
     "  2:23 first given here"}},
    {wave_with("<CAPTION>a</CAPTION>\n<CAPTION>b</CAPTION>"), {
     "3:1 CAPTION is given again and replaces the first [given-twice]",
     "  2:27 first given here"}},
    {wave_with("<WAVE_CONDITION>A</WAVE_CONDITION>\n<WAVE_CONDITION>B</WAVE_CONDITION>"), {
     "3:1 WAVE_CONDITION is given again and replaces the first [given-twice]",
     "  2:27 first given here"}},
    {wave_with("<DESCRIPTION><T>a</T></DESCRIPTION>\n<DESCRIPTION><T>b</T></DESCRIPTION>"), {
     "3:1 DESCRIPTION is given again and replaces the first [given-twice]",
     "  2:27 first given here"}},
    {wave_with("<DISPLAY>add wave -hex q</DISPLAY>\n<DISPLAY>add wave -bin q</DISPLAY>"), {
     "3:1 the display format of \"q\" is given again and replaces the first [given-twice]",
     "  2:27 first given here"}},
    {"<WAVE_DATA><WAVE NAME='a' INDEX='0'><STIM>force a 1 0</STIM></WAVE>\n"
     "<WAVE NAME='b' INDEX='0'><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>", {
     "3:1 the INDEX \"0\" is that of another vector [given-twice]",
     "  2:12 first given here"}},
    {"<HTML_TEXT><TITLE>a</TITLE>\n<TITLE>b</TITLE></HTML_TEXT>", {
     "3:1 TITLE is given again and replaces the first [given-twice]",
     "  2:12 first given here"}},
    {"<HTML_TEXT><INTRO><T>a</T></INTRO>\n<INTRO><T>b</T></INTRO></HTML_TEXT>", {
     "3:1 INTRO is given again and replaces the first [given-twice]",
     "  2:12 first given here"}},
    {"<HTML_TEXT><TITLE>a</TITLE></HTML_TEXT>\n<HTML_TEXT><TITLE>b</TITLE></HTML_TEXT>", {
     "3:1 HTML_TEXT is given again and replaces the first [given-twice]",
     "  2:1 first given here"}},
    {wizard_with("<WIZARD_MAP NAME='m'><WIZARD_CONDITION>A</WIZARD_CONDITION>\n"
                 "<WIZARD_CONDITION>B</WIZARD_CONDITION></WIZARD_MAP>"), {
     "3:1 WIZARD_CONDITION is given again and replaces the first [given-twice]",
     "  2:35 first given here"}},
};

const LintCase kSynonyms[] = {
    {parameter_with("<FORCE_VALUE V='1' WHEN='A' IF='B'/>"), {
     "2:76 IF and WHEN mean the same here: only WHEN counts [given-twice]",
     "  2:67 first given here"}},
    {parameter_with("<FORCE_VALUE TO='2' V='1'/>"), {
     "2:68 TO and V mean the same here: only V counts [given-twice]",
     "  2:61 first given here"}},
    {parameter_with("<FORCE_VALUE V='1'><TO>2</TO></FORCE_VALUE>"), {
     "2:67 V and TO mean the same here: only TO counts [given-twice]",
     "  2:61 first given here"}},
    {parameter_with("<FORCE_VALUE V='1'><V>2</V></FORCE_VALUE>"), {
     "2:67 V is given again: only the element counts [given-twice]",
     "  2:61 first given here"}},
    {parameter_with("<FORCE_RANGE><MAX>1</MAX><MAX>2</MAX></FORCE_RANGE>"), {
     "2:73 MAX is given again: only the last counts [given-twice]",
     "  2:61 first given here"}},
    {parameter_with("<FORCE_RANGE V='1' MAX='2'/>"), {
     "2:67 MAX and V mean the same here: only V counts [given-twice]",
     "  2:61 first given here"}},
    {messages_with("<MSG TYPE='INFO'><IF>A</IF><THEN>a</THEN><TEXT>b</TEXT></MSG>"), {
     "2:52 THEN and TEXT mean the same here: only TEXT counts [given-twice]",
     "  2:38 first given here"}},
    {parameter_with("<VALUE_RULE><IF>A</IF><IF>B</IF><THEN>C</THEN></VALUE_RULE>"), {
     "2:70 IF is given again: only the last counts [given-twice]",
     "  2:60 first given here"}},
};

const LintCase kMisplaced[] = {
    {"<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>\n"
     "<PARAMETER_RULES><PARAMETER NAME='q'/></PARAMETER_RULES>", {
     "3:18 PARAMETER \"q\" reaches the port of that name [other-kind]",
     "  2:8 declared here"}},
    {"<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='1'/></PARAMETERS>\n"
     "<PORT_RULES><PORT NAME='W'/></PORT_RULES>", {
     "3:13 PORT \"W\" reaches the parameter of that name [other-kind]",
     "  2:13 declared here"}},
    {"<HIDDEN_PARAMETERS><PARAMETER NAME='H' VALUE='1'/></HIDDEN_PARAMETERS>\n"
     "<PARAMETER_RULES><PARAMETER NAME='H'/></PARAMETER_RULES>", {
     "3:18 PARAMETER \"H\" reaches the hidden parameter of that name [other-kind]",
     "  2:20 declared here"}},
    {wizard_with("<WIZARD_MAP NAME='m'><PORT NAME='q' USAGE='UNUSED'/></WIZARD_MAP>"), {
     "2:35 PORT \"q\" is new in the map and has no TYPE: it is dropped [type-missing]"}},
    {wizard_with("<PARAMETER NAME='W' VALUE='8'/><WIZARD_MAP NAME='m'/>"), {
     "2:14 PARAMETER \"W\" is new in the map and has no TYPE: it is dropped [type-missing]"}},
    {wizard_with("<PORT NAME='q' TYPE='INPUT'/>") + "\n" +
     wizard_with("<WIZARD_MAP NAME='m'/>"), {
     "2:14 PORT \"q\" reaches no map: maps must be known at the end of its WIZARD_DATA "
     "[generic-without-map]"}},
};

const std::string kSilent[] = {
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='1'/></PARAMETERS><PARAMETER_RULES>"
    "<PARAMETER NAME='W' VALUE='1'/><PARAMETER NAME='W'/></PARAMETER_RULES>",
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='1'/></PARAMETERS><PORTS>"
    "<PORT NAME='W' TYPE='INPUT'/><PORT NAME='w' TYPE='INPUT'/></PORTS>",
    "<PARAMETER_RULES><PARAMETER NAME='q'/></PARAMETER_RULES>"
    "<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>",
    "<FUNCTION_INFORMATION><START_TIME VALUE='0'/><START_TIME VALUE=''/><TIME_DELTA VALUE='1'/>"
    "</FUNCTION_INFORMATION>",
    "<WAVE_DATA><WAVE NAME='a' INDEX='0'><CAPTION>a</CAPTION>"
    "<STIM>force a 1 0</STIM></WAVE><WAVE NAME='b' INDEX='1'>"
    "<CAPTION>a</CAPTION>"
    "<STIM>force a 1 0</STIM></WAVE></WAVE_DATA>",
    wave_with("<DISPLAY>add wave -hex a</DISPLAY><DISPLAY>add wave -hex b</DISPLAY>"
              "<DISPLAY>show</DISPLAY><DISPLAY>show</DISPLAY>"),
    parameter_with("<FORCE_VALUE V='1' IF='A' ELSE='2'/><FORCE_VALUE V='1' WHEN='B'/>"),
    parameter_with("<FORCE_RANGE MIN='1' MAX='2'><IF>A</IF></FORCE_RANGE>"),
    wizard_with("<PORT NAME='q' TYPE='INPUT'/><WIZARD_MAP NAME='m'/>") +
    wizard_with("<WIZARD_MAP NAME='n'><PORT NAME='q' TYPE='INPUT'/></WIZARD_MAP>"),
    wizard_with("<WIZARD_MAP NAME='m'/>") + wizard_with("<PORT NAME='q' TYPE='INPUT'/>"),
    wizard_with("<WIZARD_MAP NAME='m'><PARAMETER NAME='W' TYPE='INTEGER'/></WIZARD_MAP>"
                "<WIZARD_MAP NAME='n'><PARAMETER NAME='W' TYPE='INTEGER'/></WIZARD_MAP>"),
};
// clang-format on

TEST(Repetitions, declarations) {
    expect_warnings(kDeclared);
}

TEST(Repetitions, what_can_be_given_once) {
    expect_warnings(kGiven);
}

TEST(Repetitions, two_words_of_one_meaning) {
    expect_warnings(kSynonyms);
}

TEST(Repetitions, what_reaches_something_else) {
    expect_warnings(kMisplaced);
}

TEST(Repetitions, what_differs_or_adds_on_purpose_stays_silent) {
    expect_silence(kSilent);
}

TEST(Repetitions, a_file_that_is_included_again) {
    LintFixture fixture;
    const std::string part = fixture.folder().write(
        "part.xml", with_sections("<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>"));
    EXPECT_EQ(fixture.warnings("<INCLUDE FILE='" + part + "'/>\n<INCLUDE><FILE> " + part +
                               " </FILE></INCLUDE>"),
              Lines({"3:10 the file \"" + part +
                         "\" is included again: it is read once more [given-twice]",
                     "  2:1 first given here"}));
    EXPECT_EQ(fixture.warnings("<INCLUDE FILE='" + part + "'/>"), Lines());
}

TEST(Repetitions, the_first_may_stand_in_another_file) {
    LintFixture fixture;
    const std::string part = fixture.folder().write(
        "part.xml", with_sections("<PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>"));
    EXPECT_EQ(fixture.warnings("<INCLUDE FILE='" + part +
                               "'/><PORTS><PORT NAME='q' TYPE='INPUT'/></PORTS>"),
              Lines({"part.xml:2:8 PORT \"q\" is declared again: its attributes replace those of "
                     "the first, its rules are added [declared-twice]",
                     "  2:" + std::to_string(26 + part.size()) + " first declared here"}));
}

}  // namespace
