// Parameters without a default, and items of lists.
#include "tests/tools/lint/lint_fixture.h"

namespace {

std::string parameter(const std::string& attributes, const std::string& rules = "") {
    return "<PARAMETERS><PARAMETER NAME='W' " + attributes + ">" + rules +
           "</PARAMETER></PARAMETERS>" + kPassing;
}

std::string integer(const std::string& attributes, const std::string& rules = "") {
    return parameter("TYPE='INTEGER' " + attributes, rules);
}

const std::string kLostDefault =
    "2:13 W has no default: it is unknown until somebody sets it [no-default]";

// clang-format off
const LintCase kMissing[] = {
    {integer(""), {kLostDefault}},
    {integer("VALUE='' DEFAULT_VALUE=' '"), {kLostDefault}},
    {integer("", "<FORCE_VALUE V='8' IF='A'/>"), {kLostDefault}},
    {"<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER'/></PARAMETERS>\n"
     "<PARAMETER_RULES><PARAMETER NAME='W' LPM_HINT='ON'/></PARAMETER_RULES>", {kLostDefault}},
};

const std::string kNotMissing[] = {
    integer("VALUE='8'"),
    integer("VALUE='8;16'"),
    integer("DEFAULT_VALUE='2 * A'"),
    integer("", "<FORCE_VALUE V='8'/>"),
    integer("", "<FORCE_VALUE V='8' IF='A' ELSE='4'/>"),
    parameter("TYPE='STRING'"),
    "<PARAMETER_RULES><PARAMETER NAME='W' DEFAULT_VALUE='8'/></PARAMETER_RULES>"
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='8'/></PARAMETERS>",
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER'/></PARAMETERS>"
    "<PARAMETER_RULES><PARAMETER NAME='W' DEFAULT_VALUE='8'/></PARAMETER_RULES>",
    // Offered by a map with its own default.
    "<WIZARD_DATA><WIZARD_MAP NAME='m'><PARAMETER NAME='W' TYPE='INTEGER'/></WIZARD_MAP>"
    "</WIZARD_DATA><PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='8'/></PARAMETERS>",
};

const std::string kRange = "<FORCE_RANGE MIN='1' MAX='64'/>";

const LintCase kItems[] = {
    {integer("VALUE='1;2;2'"), {
     "2:59 the list of W has \"2\" already [list-item]"}},
    {integer("VALUE='1;2; 02 '"), {
     "2:60 the list of W has \"02\" already [list-item]"}},
    {parameter("TYPE='STRING' VALUE='A;B;A'"), {
     "2:58 the list of W has \"A\" already [list-item]"}},
    {parameter("TYPE='STRING' VALUE='A;;B'"), {
     "2:55 an item of the list of W is empty and does not count [list-item]"}},
    {parameter("TYPE='STRING' VALUE=';A'"), {
     "2:54 an item of the list of W is empty and does not count [list-item]"}},
    {parameter("TYPE='STRING' VALUE='A; '"), {
     "2:55 an item of the list of W is empty and does not count [list-item]"}},
    {integer("VALUE='1;99;0' DEFAULT_VALUE_INDEX='0'", kRange), {
     "2:57 99 in the list is outside the range of W, which is always 1 to 64 [value-out-of-range]",
     "2:60 0 in the list is outside the range of W, which is always 1 to 64 [value-out-of-range]"}},
    // The default is told of where it is chosen, and once.
    {integer("VALUE='1;99' DEFAULT_VALUE_INDEX='1'", kRange), {
     "2:82 99, the value with this index, is outside the range of W, which is always 1 to 64 "
     "[value-out-of-range]"}},
};

const std::string kRightItems[] = {
    integer("VALUE='1;2;4;64'", kRange),
    integer("VALUE=' 1 ; 2\n; 4'"),
    integer("VALUE='1;99'", "<FORCE_RANGE MIN='1' MAX='64' IF='A'/>"),
    integer("VALUE='1;99'", "<FORCE_RANGE MAX='A * 100'/>"),
    integer("VALUE='A;A + 1'"),
    parameter("TYPE='STRING' VALUE='A;a;01;1'"),
};
// clang-format on

TEST(Defaults, a_number_that_nobody_gives) {
    expect_warnings(kMissing);
}

TEST(Defaults, a_default_from_anywhere_is_one) {
    expect_silence(kNotMissing);
}

TEST(Defaults, items_that_do_not_count_or_cannot_be_chosen) {
    expect_warnings(kItems);
}

TEST(Defaults, items_to_choose_stay_silent) {
    expect_silence(kRightItems);
}

}  // namespace
