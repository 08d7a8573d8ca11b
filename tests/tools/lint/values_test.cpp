// Values that the description itself rules out.
#include "tests/tools/lint/lint_fixture.h"

namespace {

std::string integer(const std::string& attributes, const std::string& rules = "") {
    return "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' " + attributes + ">" + rules +
           "</PARAMETER></PARAMETERS>" + kPassing;
}

std::string text(const std::string& attributes, const std::string& rules = "") {
    return "<PARAMETERS><PARAMETER NAME='S' TYPE='STRING' " + attributes + ">" + rules +
           "</PARAMETER></PARAMETERS>" + kPassing;
}

std::string port(const std::string& attributes, const std::string& rules) {
    return "<PORTS><PORT NAME='q' TYPE='INPUT' " + attributes + ">" + rules + "</PORT></PORTS>" +
           kPassing;
}

std::string map(const std::string& content) {
    return "<WIZARD_DATA><WIZARD_MAP NAME='m'>" + content + "</WIZARD_MAP></WIZARD_DATA>";
}

const std::string kList = "VALUE='AUTO;BLOCK'";

// clang-format off
const LintCase kLists[] = {
    {text(kList, "<FORCE_VALUE V='BLOK' IF='A' ELSE='auto'/>"), {
     "2:82 the list of S does not hold \"BLOK\" [value-not-in-list]",
     "  did you mean \"BLOCK\"?",
     "2:101 the list of S holds \"auto\" in another letter case [value-not-in-list]",
     "  did you mean \"AUTO\"?"}},
    {text(kList, "<FORCE_VALUE><IF>A</IF><THEN>\"X\"</THEN></FORCE_VALUE>"), {
     "2:95 the list of S does not hold \"X\" [value-not-in-list]",
     "  known here: AUTO, BLOCK"}},
    {text(kList) + "<PARAMETER_RULES><PARAMETER NAME='S' DEFAULT_VALUE='Auto'/></PARAMETER_RULES>", {
     "2:340 the list of S holds \"Auto\" in another letter case [value-not-in-list]",
     "  did you mean \"AUTO\"?"}},
    {integer("VALUE='1;2;4'", "<FORCE_VALUE V='3' IF='A'/>"), {
     "2:78 the list of W does not hold \"3\" [value-not-in-list]",
     "  known here: 1, 2, 4"}},
    {map("<PARAMETER NAME='S' TYPE='STRING' VALUE='NONE'/>") + text(kList), {
     "2:76 the list of S does not hold \"NONE\" [value-not-in-list]",
     "  known here: AUTO, BLOCK"}},
    {text("DEFAULT_VALUE_INDEX='0'"), {
     "2:68 S has no list of values of which DEFAULT_VALUE_INDEX could name one "
     "[index-without-list]"}},
    {text(kList + " DEFAULT_VALUE_INDEX='2'"), {
     "2:87 the list of S has 2 values, counted from 0: none has this index [default-index]"}},
};

const std::string kRange = "<FORCE_RANGE MIN='1' MAX='64'/>";

const LintCase kRanges[] = {
    {integer("VALUE='65'", kRange), {
     "2:55 65 is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    {integer("DEFAULT_VALUE='0'", kRange), {
     "2:63 0 is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    {integer("VALUE='80;8'", kRange), {
     "2:55 80 is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    {integer("VALUE='8;80' DEFAULT_VALUE_INDEX='1'", kRange), {
     "2:82 80, the value with this index, is outside the range of W, which is always 1 to 64 "
     "[value-out-of-range]"}},
    {integer("VALUE='8'", kRange + "<FORCE_VALUE V='2 ^ 7' IF='A' ELSE='0'/>"), {
     "2:105 2 ^ 7 is outside the range of W, which is always 1 to 64 [value-out-of-range]",
     "2:125 0 is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    {integer("VALUE='65'", "<FORCE_RANGE MAX='64'/>"), {
     "2:55 65 is outside the range of W, which is always at most 64 [value-out-of-range]"}},
    {map("<PARAMETER NAME='W' TYPE='INTEGER' VALUE='99'/>") + integer("VALUE='8'", kRange), {
     "2:77 99 is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    {port("WIDTH='4' DEFAULT_VALUE='9'", "<CONSTANT_RANGE MIN='0' MAX='7'/>"), {
     "2:61 9 is outside the range of q, which is always 0 to 7 [value-out-of-range]"}},
    {port("", "<FORCE_RANGE MIN='0' MAX='7'/><FORCE_VALUE V='8' IF='A'/>"), {
     "2:83 8 is outside the range of q, which is always 0 to 7 [value-out-of-range]"}},
    {integer("VALUE='8'", "<FORCE_RANGE MIN='64' MAX='1' IF='A'/>"), {
     "2:76 no value is in this range: MIN 64 lies above MAX 1 [empty-range]"}},
    {port("", "<CONSTANT_RANGE MAX='-2'><IF>A</IF></CONSTANT_RANGE><FORCE_RANGE><MIN>1</MIN>"
              "<MAX>-1</MAX></FORCE_RANGE>"), {
     "2:107 no value is in this range: MIN 1 lies above MAX -1 [empty-range]"}},
};

const LintCase kKinds[] = {
    {integer("DEFAULT_VALUE='ON'"), {
     "2:63 a number is needed here, and \"ON\" is a text [number-expected]"}},
    {integer("VALUE='\"8 bits\"'"), {
     "2:55 a number is needed here, and \"\"8 bits\"\" is a text [number-expected]"}},
    {integer("VALUE='8'", "<FORCE_VALUE V='A gt 3'/>"), {
     "2:74 a number is needed here, and \"A gt 3\" is a condition [number-expected]"}},
    {integer("VALUE='8'", "<FORCE_RANGE MAX='OFF'/>"), {
     "2:76 a number is needed here, and \"OFF\" is a text [number-expected]"}},
    {port("WIDTH='TRUE'", ""), {
     "2:43 a number is needed here, and \"TRUE\" is a condition [number-expected]"}},
    {port("WIDTH='S'", "") + "<PARAMETERS><PARAMETER NAME='S' TYPE='STRING' VALUE='AUTO;BLOCK'/>"
     "</PARAMETERS>", {
     "2:43 a number is needed here, and \"S\" is a text [number-expected]"}},
    {map("<PARAMETER NAME='W' TYPE='STRING' VALUE='4'/>") + integer("VALUE='8'"), {
     "2:61 PARAMETER \"W\" is of TYPE STRING here and declared as INTEGER [other-type]"}},
    {map("<PORT NAME='q' TYPE='OUTPUT'/>") + port("", ""), {
     "2:56 PORT \"q\" is of TYPE OUTPUT here and declared as INPUT [other-type]"}},
};

const LintCase kDefaults[] = {
    {integer("VALUE='8' DEFAULT_VALUE='4'"), {
     "2:73 DEFAULT_VALUE does not count beside VALUE: the default is \"8\" [default-ignored]"}},
    {text("DEFAULT_VALUE='BLOCK' " + kList), {
     "2:62 DEFAULT_VALUE does not count beside VALUE: the default is \"AUTO\" [default-ignored]",
     "  write DEFAULT_VALUE_INDEX=\"1\" for this one"}},
    {text(kList + " DEFAULT_VALUE='AUTO' DEFAULT_VALUE_INDEX='1'"), {
     "2:81 DEFAULT_VALUE does not count beside DEFAULT_VALUE_INDEX: the default is \"BLOCK\" "
     "[default-ignored]",
     "  write DEFAULT_VALUE_INDEX=\"0\" for this one"}},
};

const std::string kSilent[] = {
    text(kList, "<FORCE_VALUE V='BLOCK' IF='A' ELSE='\"AUTO\"'/>"),
    text("VALUE='AUTO'", "<FORCE_VALUE V='BLOCK'/>"),
    text(kList, "<FORCE_VALUE V='A' IF='A'/>"),
    text(kList + " DEFAULT_VALUE='AUTO' DEFAULT_VALUE_INDEX='0'"),
    text(kList + " DEFAULT_VALUE_INDEX='1'"),
    text("VALUE='AUTO' DEFAULT_VALUE_INDEX='0'"),
    text("VALUE='AUTO' DEFAULT_VALUE='AUTO'"),
    text(kList) + "<PARAMETER_RULES><PARAMETER NAME='S' DEFAULT_VALUE='BLOCK'/></PARAMETER_RULES>",
    integer("VALUE='1;2;A + 3'", "<FORCE_VALUE V='5'/><FORCE_VALUE V='02'/>"),
    integer("VALUE='64'", kRange),
    integer("VALUE='65'", "<FORCE_RANGE MIN='1' MAX='64' IF='A'/>"),
    integer("VALUE='65'", "<FORCE_RANGE MIN='1' MAX='A * 8'/>"),
    integer("VALUE='8'", kRange + "<FORCE_VALUE V='A * 80'/>"),
    integer("VALUE='8'", "<FORCE_RANGE MIN='A' MAX='-1'/><FORCE_RANGE MIN='8' MAX='8'/>"),
    integer("VALUE='\"8\"'"),
    integer("VALUE='1'", "<FORCE_RANGE MAX='A'/>"),
    map("<PARAMETER NAME='W' TYPE='INTEGER' VALUE='1' DEFAULT_VALUE_INDEX='0'/>") +
        integer("VALUE='1;2'"),
    port("WIDTH='MODE + 2' DEFAULT_VALUE='7'", "<CONSTANT_RANGE MIN='0' MAX='7'/>"),
    port("WIDTH='S'", "") + "<PARAMETERS><PARAMETER NAME='S' TYPE='STRING' VALUE='AUTO;8'/>"
    "</PARAMETERS>",
    map("<PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/>") + integer("VALUE='8'"),
    map("<PARAMETER NAME='S' TYPE='STRING' VALUE='BLOCK'/>") + text(kList),
};
// clang-format on

TEST(Values, outside_their_list) {
    expect_warnings(kLists);
}

TEST(Values, outside_their_range) {
    expect_warnings(kRanges);
}

TEST(Values, of_another_kind) {
    expect_warnings(kKinds);
}

TEST(Values, defaults_that_do_not_count) {
    expect_warnings(kDefaults);
}

TEST(Values, what_can_be_legal_stays_silent) {
    expect_silence(kSilent);
}

}  // namespace
