// Words, numbers, lists and names that are read as others.
#include <gtest/gtest.h>

#include "tests/tools/lint/lint_fixture.h"

namespace {

std::string port(const std::string& attributes) {
    return "<PORTS><PORT NAME='q' TYPE='INPUT' " + attributes + "/></PORTS>";
}

std::string parameter(const std::string& attributes) {
    return "<PARAMETERS><PARAMETER NAME='W' TYPE='STRING' " + attributes + "/></PARAMETERS>";
}

std::string wave(const std::string& attributes) {
    return "<WAVE_DATA><WAVE NAME='w' " + attributes +
           "><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>";
}

std::string map(const std::string& attributes) {
    return "<WIZARD_DATA><WIZARD_MAP NAME='m' " + attributes + "/></WIZARD_DATA>";
}

std::string setting(const std::string& element) {
    return "<FUNCTION_INFORMATION><" + element + "/></FUNCTION_INFORMATION>";
}

std::string macro(const std::string& attributes) {
    return "<MACROS><MACRO NAME='M' DEFINITION='1' " + attributes + "/></MACROS>";
}

// clang-format off
const LintCase kWords[] = {
    {port("USAGE='unused'"), {
     "2:43 \"unused\" is none of the words of USAGE and counts as USED [unknown-word]",
     "  did you mean \"UNUSED\"?"}},
    {port("IS_CLOCK_PORT='YES'"), {
     "2:51 \"YES\" is none of the words of IS_CLOCK_PORT and counts as FALSE [unknown-word]",
     "  known here: FALSE, TRUE"}},
    {port("ASYNC='ON'"), {
     "2:43 \"ON\" is none of the words of ASYNC and counts as FALSE [unknown-word]",
     "  known here: FALSE, TRUE"}},
    {parameter("LPM_HINT='on'"), {
     "2:57 \"on\" is none of the words of LPM_HINT and counts as OFF [unknown-word]",
     "  did you mean \"ON\"?"}},
    {"<RULES><RULE REQUIRED_RULE='NO'>A</RULE></RULES>", {
     "2:29 \"NO\" is none of the words of REQUIRED_RULE and counts as OFF [unknown-word]",
     "  did you mean \"ON\"?"}},
    {map("MAP_CONSTANTS='TRUE'"), {
     "2:50 \"TRUE\" is none of the words of MAP_CONSTANTS and counts as OFF [unknown-word]",
     "  known here: OFF, ON"}},
    {map("MAP_USED_PORTS='1'"), {
     "2:51 \"1\" is none of the words of MAP_USED_PORTS and counts as OFF [unknown-word]",
     "  known here: OFF, ON"}},
    {port_with("<STATE V='Used' IF='A' ELSE='NOT_USED'/>"), {
     "2:47 \"Used\" is no state of a port [unknown-word]",
     "  did you mean \"USED\"?",
     "2:66 \"NOT_USED\" is no state of a port [unknown-word]",
     "  known here: CONSTANT, UNUSED, USED, VARIABLE"}},
    {port_with("<STATE><TO>used</TO></STATE>"), {
     "2:48 \"used\" is no state of a port [unknown-word]",
     "  did you mean \"USED\"?"}},
};

const LintCase kNumbers[] = {
    {wave("MAX_TIME='120us'"), {
     "2:37 \"120us\" is no whole number: MAX_TIME is read as 120 [not-a-number]"}},
    {wave("MAX_TIME='four'"), {
     "2:37 \"four\" is no whole number: MAX_TIME is read as 0 [not-a-number]"}},
    {wave("TIME_STEP='2.5'"), {
     "2:38 \"2.5\" is no whole number: TIME_STEP is read as 2 [not-a-number]"}},
    {wave("INDEX=''"), {
     "2:34 \"\" is no whole number: INDEX is read as 0 [not-a-number]"}},
    {wave("MAX_TIME='4294967297'"), {
     "2:37 \"4294967297\" is too large for MAX_TIME: it is read as 1 [not-a-number]"}},
    {wave("TIME_STEP='0'"), {
     "2:38 a TIME_STEP of 0 gets nowhere [time-step]"}},
    {parameter("VALUE='A;B' DEFAULT_VALUE_INDEX='first'"), {
     "2:80 \"first\" is no whole number: DEFAULT_VALUE_INDEX is read as 0 [not-a-number]"}},
    {port("HIGH_PROBABILITY='50%'"), {
     "2:54 \"50%\" is no whole number: HIGH_PROBABILITY is read as 50 [not-a-number]"}},
    {setting("START_TIME VALUE='20ns'"), {
     "2:42 \"20ns\" is no whole number: START_TIME is read as 20 [not-a-number]"}},
    {wave("MAX_TIME='100' TIME_STEP='200'"), {
     "2:53 a TIME_STEP of 200 goes beyond MAX_TIME 100 at once [time-step]"}},
    {setting("START_TIME VALUE='200'") + "\n" + wave("MAX_TIME='100'"), {
     "3:37 MAX_TIME 100 lies before START_TIME 200: nothing is drawn [time-step]"}},
    {setting("TIME_DELTA VALUE='0.0'"), {
     "2:42 a TIME_DELTA of 0.0 gets nowhere [time-step]"}},
    {port("IS_CLOCK_PORT='TRUE' CLOCK_PERIOD='0'"), {
     "2:71 a CLOCK_PERIOD of 0 gets nowhere [time-step]"}},
    {port("INITIAL_VEC_STATE='high'"), {
     "2:55 \"high\" is no value: INITIAL_VEC_STATE has digits, X or Z [not-a-number]"}},
    {setting("TIME_SCALE VALUE='nsec'"), {
     "2:42 \"nsec\" is no unit of time: fs, ps, ns, us, ms or s, perhaps a whole number before it "
     "[time-unit]"}},
    {setting("TIME_SCALE VALUE='2.5 ns'"), {
     "2:42 \"2.5 ns\" is no unit of time: fs, ps, ns, us, ms or s, perhaps a whole number before it "
     "[time-unit]"}},
    {setting("TIME_DELTA VALUE='5 ns'"), {
     "2:42 \"5 ns\" is no number: TIME_DELTA counts in the unit of TIME_SCALE [not-a-number]"}},
    {port("CLOCK_PERIOD='fast' IS_CLOCK_PORT='TRUE'"), {
     "2:50 \"fast\" is no number: CLOCK_PERIOD counts in the unit of TIME_SCALE [not-a-number]"}},
};

const LintCase kSeparators[] = {
    {parameter("VALUE='AUTO, BLOCK'"), {
     "2:58 the values of VALUE are separated by \",\": \"AUTO, BLOCK\" is one value, a list has "
     "\";\" [wrong-separator]"}},
    {setting("VHDL_LIBRARY NAME='ieee.std_logic_1164, work.pkg'"), {
     "2:62 \"ieee.std_logic_1164, work.pkg\" is one library: a list has \";\" between its entries "
     "[wrong-separator]"}},
    {setting("VHDL_LIBRARY NAME='ieee work'"), {
     "2:47 \"ieee work\" is one library: a list has \";\" between its entries [wrong-separator]"}},
    {macro("ARGUMENTS='a;b'"), {
     "2:52 \"a;b\" is one argument: a list has \",\" between its names [wrong-separator]"}},
    {macro("ARGUMENTS='a b'"), {
     "2:52 \"a b\" is one argument: a list has \",\" between its names [wrong-separator]"}},
};

const LintCase kNames[] = {
    {"<PORTS><PORT NAME=' clock' TYPE='INPUT'/></PORTS>", {
     "2:20 the name \" clock\" has blanks around it: they are part of it [name-with-blanks]"}},
    {"<WAVE_DATA><WAVE NAME='w '><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>", {
     "2:24 the name \"w \" has blanks around it: they are part of it [name-with-blanks]"}},
    {"<PARAMETERS><PARAMETER NAME='DATA-WIDTH' TYPE='INTEGER' VALUE='1'/></PARAMETERS>", {
     "2:34 no condition can write the name \"DATA-WIDTH\": \"-\" cannot be part of a name "
     "[unwritable-name]"}},
    {"<PORTS><PORT NAME='data in' TYPE='INPUT'/></PORTS>", {
     "2:24 no condition can write the name \"data in\": \" \" cannot be part of a name "
     "[unwritable-name]"}},
    {"<HIDDEN_PARAMETERS><PARAMETER NAME='2D' VALUE='1'/></HIDDEN_PARAMETERS>", {
     "2:37 no condition can write the name \"2D\": a name cannot begin with \"2\" "
     "[unwritable-name]"}},
    {"<MACROS><MACRO NAME='A.B' DEFINITION='1'/></MACROS>", {
     "2:23 no condition can write the name \"A.B\": \".\" cannot be part of a name "
     "[unwritable-name]"}},
    {"<MACROS><MACRO NAME='M' DEFINITION='a' ARGUMENTS='a, b-c'/></MACROS>", {
     "2:55 no condition can write the name \"b-c\": \"-\" cannot be part of a name "
     "[unwritable-name]"}},
};

const std::string kSilent[] = {
    port("USAGE='CONSTANT' IS_CLOCK_PORT='FALSE' ASYNC='TRUE'"),
    port("CLOCK_PERIOD='2.5' IS_CLOCK_PORT='TRUE' HIGH_PROBABILITY=' 50'"),
    port("CLOCK_PERIOD='' HIGH_PROBABILITY='x'"),
    parameter("LPM_HINT='OFF' VALUE='AUTO;BLOCK' DEFAULT_VALUE_INDEX='-1'"),
    parameter("VALUE='Hello, dear world'"),
    parameter("VALUE='a,b;c,d'"),
    parameter("CNX_TYPE='private'"),
    "<RULES><RULE ENABLED='NO' REQUIRED_RULE='OFF'>A</RULE></RULES>",
    map("MAP_CONSTANTS='OFF' MAP_USED_PORTS='ON' MODULE_NAME='a_b'"),
    "<PORTS><PORT NAME='d' TYPE='INPUT'><STATE V='CONSTANT'/><STATE TO='1' IF='A' ELSE='VARIABLE'/>"
    "</PORT></PORTS>" + kPassing,
    wave("MAX_TIME='+200' TIME_STEP=' 5 ' INDEX='-1'"),
    wave("MAX_TIME='2147483647' DISPLAY_TRUNCATION='low'"),
    wave("MAX_TIME='100' TIME_STEP='100'"),
    port("INITIAL_VEC_STATE='Z'"),
    port("INITIAL_VEC_STATE='0xF_0'"),
    setting("START_TIME VALUE=''"),
    setting("TIME_SCALE VALUE=''"),
    setting("TIME_SCALE VALUE='100 ps'"),
    setting("TIME_SCALE VALUE='25us'"),
    setting("START_TIME VALUE='-5'"),
    setting("TIME_SCALE VALUE='10 ns'"),
    setting("VHDL_LIBRARY NAME=' ieee.std_logic_1164 ; work.pkg;; '"),
    "<MACROS><MACRO NAME='M' DEFINITION='a + b + c' ARGUMENTS=' a , b,c '/></MACROS>",
    macro("ARGUMENTS=''"),
    "<WAVE_DATA><WAVE NAME='count up-down'><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>",
    "<PORTS><PORT NAME='gr\xC3\xB6\xC3\x9F" "e_$1' TYPE='INPUT'/></PORTS>",
    "<PORT_RULES><PORT NAME='a-b'/></PORT_RULES>",
};
// clang-format on

TEST(WrongWords, words_that_count_as_others) {
    expect_warnings(kWords);
}

TEST(WrongWords, numbers_that_are_none) {
    expect_warnings(kNumbers);
}

TEST(WrongWords, lists_that_are_one_entry) {
    expect_warnings(kSeparators);
}

TEST(WrongWords, names_that_nobody_can_write) {
    expect_warnings(kNames);
}

TEST(WrongWords, what_is_read_as_written_stays_silent) {
    expect_silence(kSilent);
}

TEST(WrongWords, long_texts_are_cut_in_the_message) {
    const Lines lines = LintFixture().warnings(wave("INDEX='" + std::string(1000, 'x') + "'"));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0], "2:34 \"" + std::string(60, 'x') +
                            "...\" is no whole number: INDEX is read as 0 [not-a-number]");
}

}  // namespace
