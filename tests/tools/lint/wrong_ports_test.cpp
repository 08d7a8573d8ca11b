// What a port of its direction cannot be, and widths that are known too late.
#include "tests/tools/lint/lint_fixture.h"

namespace {

std::string port(const std::string& attributes, const std::string& rules = "") {
    return "<PORTS><PORT NAME='p' " + attributes + ">" + rules + "</PORT></PORTS>" + kPassing;
}

const std::string kBus = "<PORTS><PORT NAME='bus' TYPE='INPUT' WIDTH='4'/></PORTS>";

// clang-format off
const LintCase kDirections[] = {
    {port("TYPE='OUTPUT' IS_CLOCK_PORT='TRUE'"), {
     "2:37 IS_CLOCK_PORT does not count: the port p is no INPUT [wrong-direction]"}},
    {port("TYPE='BIDIR' ASYNC='FALSE'"), {
     "2:36 ASYNC does not count: the port p is no INPUT [wrong-direction]"}},
    {"<PORTS><PORT NAME='p' TYPE='OUTPUT'/></PORTS>\n<PORT_RULES><PORT NAME='p' "
     "ASYNC='TRUE'/></PORT_RULES>", {
     "3:28 ASYNC does not count: the port p is no INPUT [wrong-direction]"}},
    {port("TYPE='INPUT' CLOCK_PERIOD='20'"), {
     "2:36 CLOCK_PERIOD does not count: the port p is no clock [wrong-direction]"}},
    {port("TYPE='OUTPUT' USAGE='UNUSED' CNX_TYPE='USED_PORT'"), {
     "2:37 USAGE does not count beside CNX_TYPE=\"USED_PORT\": the port p is always used "
     "[overridden]"}},
    {port("TYPE='OUTPUT' USAGE='CONSTANT'"), {
     "2:44 the OUTPUT p cannot be CONSTANT: it drives and is not tied [wrong-direction]"}},
    {port("TYPE='OUTPUT'", "<STATE V='CONSTANT' IF='A' ELSE='USED'/>"), {
     "2:44 the OUTPUT p cannot be CONSTANT: it drives and is not tied [wrong-direction]"}},
    {port("TYPE='OUTPUT'", "<STATE V='USED' IF='A'><ELSE>CONSTANT</ELSE></STATE>"), {
     "2:60 the OUTPUT p cannot be CONSTANT: it drives and is not tied [wrong-direction]"}},
};

const std::string kRightDirections[] = {
    port("TYPE='INPUT' IS_CLOCK_PORT='TRUE' ASYNC='FALSE' CLOCK_PERIOD='20'"),
    port("TYPE='INPUT' CLOCK_PERIOD='20'") +
        "<PORT_RULES><PORT NAME='p' IS_CLOCK_PORT='TRUE'/></PORT_RULES>",
    port("TYPE='INPUT' USAGE='VARIABLE' CNX_TYPE='USED_PORT'"),
    port("TYPE='OUTPUT' IS_CLOCK_PORT='FALSE'"),
    port("TYPE='INPUT' USAGE='CONSTANT' DEFAULT_VALUE='0'"),
    port("TYPE='BIDIR'", "<STATE V='CONSTANT' IF='A'/>"),
    // Of a port that nobody declares the library tells.
    "<PORT_RULES><PORT NAME='p' USAGE='CONSTANT'/></PORT_RULES>",
};

const LintCase kWidths[] = {
    {port("TYPE='INPUT' DEFAULT_VALUE='2'"), {
     "2:51 2 does not fit into the 1 bit of the port p [value-out-of-range]"}},
    {port("TYPE='INPUT' WIDTH='A + 3' DEFAULT_VALUE='-9'"), {
     "2:65 -9 does not fit into the 4 bits of the port p [value-out-of-range]"}},
    {kBus + port("TYPE='OUTPUT' WIDTH='bus'"), {
     "2:100 a width is known before the design runs, and the value of the port bus is not "
     "[run-time-width]"}},
    {kBus + port("TYPE='OUTPUT' WIDTH2D='2 * ( bus + 1 )'"), {
     "2:102 a width is known before the design runs, and the value of the port bus is not "
     "[run-time-width]"}},
};

const std::string kRightWidths[] = {
    kBus + port("TYPE='OUTPUT' WIDTH='A + 1' WIDTH2D='max(B, 2)'"),
    port("TYPE='OUTPUT' WIDTH=''"),
    port("TYPE='INPUT' WIDTH='4' DEFAULT_VALUE='15'"),
    port("TYPE='INPUT' WIDTH='4' DEFAULT_VALUE='-8'"),
    port("TYPE='INPUT' WIDTH='100' DEFAULT_VALUE='99999999999'"),
    port("TYPE='INPUT' DEFAULT_VALUE='2 * A'"),
};
// clang-format on

TEST(WrongPorts, what_is_for_another_direction) {
    expect_warnings(kDirections);
}

TEST(WrongPorts, what_fits_its_direction_stays_silent) {
    expect_silence(kRightDirections);
}

TEST(WrongPorts, widths_that_are_known_too_late_or_too_small) {
    expect_warnings(kWidths);
}

TEST(WrongPorts, widths_of_parameters_stay_silent) {
    expect_silence(kRightWidths);
}

}  // namespace
