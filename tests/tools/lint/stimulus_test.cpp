// Commands of stimulus and display formats that are not read as they look.
#include <gtest/gtest.h>

#include <algorithm>

#include "kivo/kivo.h"
#include "tests/tools/lint/lint_fixture.h"

namespace {

// Beside these ports, and up to the time 100; the command begins in column 7 of line 3.
std::string stimulus(const std::string& command) {
    return "<PORTS><PORT NAME='clock' TYPE='INPUT'/><PORT NAME='data' TYPE='INPUT' WIDTH='8'/>"
           "<PORT NAME='bus' TYPE='BIDIR' WIDTH='W'/></PORTS><WAVE_DATA><WAVE NAME='w' "
           "MAX_TIME='100'>\n<STIM>" +
           command +
           "</STIM></WAVE></WAVE_DATA><PARAMETERS><PARAMETER NAME='W' "
           "TYPE='INTEGER' VALUE='128'/></PARAMETERS>";
}

// The format begins in column 38 of line 3.
std::string display(const std::string& format) {
    return stimulus("force clock 1 0</STIM><DISPLAY>" + format + "</DISPLAY><STIM>force data 1 0");
}

struct CommandCase {
    std::string command;
    Lines warnings;
};

template <std::size_t kCount>
void expect_warnings(std::string (*make)(const std::string&), const CommandCase (&cases)[kCount]) {
    for (const CommandCase& row : cases) {
        EXPECT_EQ(LintFixture().warnings(make(row.command)), row.warnings) << row.command;
    }
}

// clang-format off
const CommandCase kCommands[] = {
    {"", {
     "3:1 the command is empty [stimulus-command]"}},
    {"frce clock 0 0", {
     "3:7 \"frce\" is no \"force\": the command is not evaluated [stimulus-command]",
     "  did you mean \"force\"?"}},
    {"Force clock 0 0", {
     "3:7 \"Force\" is no \"force\": the command is not evaluated [stimulus-command]",
     "  did you mean \"force\"?"}},
    {"force", {
     "3:7 the command names no signal [stimulus-command]"}},
    {"force clock", {
     "3:13 the command gives \"clock\" no value [stimulus-command]"}},
};

const CommandCase kBlanks[] = {
    {" force clock 0 0", {
     "3:8 a blank before \"force\": the command is not evaluated [command-blank]"}},
    {"\n  force clock 0 0\n", {
     "4:3 a line break before \"force\": the command is not evaluated [command-blank]"}},
    {"force  clock 0 0", {
     "3:14 several blanks before \"clock\": one blank separates the parts of a command "
     "[command-blank]"}},
    {"force -hex  data 0 0", {
     "3:19 several blanks before \"data\": one blank separates the parts of a command "
     "[command-blank]"}},
    {"force\tclock 0 0", {
     "3:12 a tab where a blank belongs: it separates nothing [command-blank]"}},
    {"force \n  clock 0 0", {
     "3:13 a line break where a blank belongs: it separates nothing [command-blank]"}},
    {"force clock\n0 0", {
     "3:18 a line break where a blank belongs: it separates nothing [command-blank]"}},
    {"force clock 0 0,1\t10", {
     "3:24 a tab where a blank belongs: it separates nothing [command-blank]"}},
    {"force clock 0 0,1\xC2\xA0" "10", {
     "3:24 a no-break space where a blank belongs: it separates nothing [command-blank]"}},
    {"force clock 0 0,1&#160;10", {
     "3:24 a no-break space where a blank belongs: it separates nothing [command-blank]"}},
    {"force clock 0 0,\xC2\xA0" "1 10", {
     "3:23 a no-break space where a blank belongs: it separates nothing [command-blank]"}},
};

const CommandCase kOptions[] = {
    {"force -oct data 0 0", {
     "3:13 \"-oct\" is no radix: the values are taken as decimal numbers [stimulus-option]",
     "  known here: -bin, -fixed_point, -hex, -signed, -unsigned"}},
    {"force -Hex data A5 0", {
     "3:13 \"-Hex\" is no radix: the values are taken as decimal numbers [stimulus-option]",
     "  did you mean \"-hex\"?"}},
    {"force -hex -bin data 0 0", {
     "3:18 \"-bin\" is taken for the signal: a command has one option [stimulus-option]"}},
    {"force data -hex A5 0", {
     "3:18 \"-hex\" is taken for a value: a radix stands before the signal [stimulus-option]"}},
    {"force clock 0 0,1 10,-repaet 20", {
     "3:28 \"-repaet\" is no option of an item: it is taken for a value [stimulus-option]",
     "  did you mean \"-repeat\"?"}},
    {"force clock 0 0,1 10,-repeat20", {
     "3:28 \"-repeat20\" is no option of an item: it is taken for a value [stimulus-option]",
     "  known here: -c, -cancel, -r, -repeat"}},
};

const CommandCase kItems[] = {
    {"force clock 1", {
     "3:19 \"1\" has no time: it is silently ignored [stimulus-item]"}},
    {"force clock 0 0,1 10,-repeat", {
     "3:28 \"-repeat\" has no period: it is silently ignored [stimulus-item]"}},
    {"force clock 0 0 1 10,-repeat 20", {
     "3:23 \"1 10\" is not read: a comma is missing before it [stimulus-item]"}},
    {"force clock 0 0;1 10", {
     "3:22 \";\" separates nothing: there is a \",\" between items [stimulus-item]"}},
    {"force clock 0 0,,1 10,-repeat 20", {
     "3:23 an item is missing before this comma: what follows is read as one item "
     "[stimulus-item]"}},
    {"force clock ,0 0", {
     "3:19 an item is missing before this comma: what follows is read as one item "
     "[stimulus-item]"}},
    {"force clock 0 0,1 10,", {
     "3:27 an item is missing beside this comma [stimulus-item]"}},
};

const CommandCase kTimes[] = {
    {"force clock 0 0,1 2.5", {
     "3:25 \"2.5\" is no whole number: the time is read as 2 [stimulus-time]"}},
    {"force clock 0 0,1 10ns", {
     "3:25 \"10ns\" is no whole number: the time is read as 10 [stimulus-time]"}},
    {"force clock 0 0,1 10 ns,0 20", {
     "3:25 \"10 ns\" is no whole number: the time is read as 10 [stimulus-time]"}},
    {"force clock 0 0,1 10,-r x", {
     "3:31 \"x\" is no whole number: the period is read as 0 [stimulus-time]"}},
    {"force clock 0  @10", {
     "3:22 \"@10\" is no whole number: the time is read as 0 [stimulus-time]"}},
    {"force clock 0 -5", {
     "3:21 -5 is negative: waves begin at 0 [stimulus-time]"}},
    {"force clock 0 4294967306", {
     "3:21 \"4294967306\" is too large: the time is read as 10 [stimulus-time]"}},
    {"force clock 0 100,1 101,0 102", {
     "3:27 the time 101 lies beyond MAX_TIME 100 [stimulus-time]"}},
    {"force clock 0 0,-cancel 180", {
     "3:31 the time 180 lies beyond MAX_TIME 100 [stimulus-time]"}},
};

const CommandCase kOrders[] = {
    {"force clock 0 20,1 10", {
     "3:26 the time 10 stands after the time 20: items are sorted by time [stimulus-order]"}},
    {"force clock 0 10,1 10", {
     "3:26 the time 10 is given again: the first item of that time counts [stimulus-order]"}},
    {"force clock 1 20,-cancel 10", {
     "3:32 the time 10 stands after the time 20: items are sorted by time [stimulus-order]"}},
    {"force clock -cancel 50,0 0,1 10", {
     "3:19 the cancel stands before the items: from 50 on they belong to no signal "
     "[stimulus-order]"}},
    {"force clock 0 0,-c 50,1 60", {
     "3:29 \"1 60\" stands after the cancel: from 50 on it belongs to no signal "
     "[stimulus-order]"}},
    {"force clock 0 0,1 10,-c 50,-r 20", {
     "3:34 \"-r 20\" stands after the cancel: from 50 on it belongs to no signal "
     "[stimulus-order]"}},
};

const CommandCase kRepeats[] = {
    {"force clock 0 0, 1 10,-repeat 20", {
     "3:24 \"1 10\" is not repeated: a blank stands before it [stimulus-repeat]"}},
    {"force clock 0 0,\n  1 10,\n  -repeat 20", {
     "4:3 \"1 10\" is not repeated: a blank stands before it [stimulus-repeat]"}},
    {"force clock 0 0,1 5,0 8,-repeat 10", {
     "3:27 \"0 8\" is not repeated: only the first two items are [stimulus-repeat]"}},
    {"force clock -repeat 20,0 0,1 10", {
     "3:19 there is nothing to repeat: two items must stand before \"-repeat 20\" "
     "[stimulus-repeat]"}},
    {"force clock 0 0,-repeat 20,1 10", {
     "3:23 there is nothing to repeat: two items must stand before \"-repeat 20\" "
     "[stimulus-repeat]"}},
    {"force clock 0 0,1 10,-repeat 10", {
     "3:28 \"1 10\" never comes again: the period 10 does not lie beyond its time "
     "[stimulus-repeat]"}},
    {"force clock 0 0,1 10,-r 0", {
     "3:28 a period of 0 repeats nothing [stimulus-repeat]"}},
};

const CommandCase kValues[] = {
    {"force data A5 0", {
     "3:18 \"A5\" is no decimal number [stimulus-value]"}},
    {"force data 1_0 0", {
     "3:18 \"1_0\" is no decimal number [stimulus-value]"}},
    {"force -bin data 012 0", {
     "3:23 \"012\" is no binary number [stimulus-value]"}},
    {"force -hex data 0G 0", {
     "3:23 \"0G\" is no hexadecimal number [stimulus-value]"}},
    {"force -hex data 0x1F 0", {
     "3:23 the \"x\" of \"0x1F\" stands for unknown bits: hexadecimal values have no prefix "
     "[stimulus-value]"}},
    {"force -hex data -5 0", {
     "3:23 the \"-\" of \"-5\" stands for unknown bits: hexadecimal values have no sign "
     "[stimulus-value]"}},
    {"force -unsigned data -1 0", {
     "3:28 \"-1\" is negative after -unsigned [stimulus-value]"}},
    {"force -fixed_point(4.4) data -1 0", {
     "3:36 \"-1\" is negative after -fixed_point(4.4) [stimulus-value]"}},
    {"force -fixed_point(s4.4) data .5 0", {
     "3:37 \".5\" is no fixed-point number [stimulus-value]"}},
    {"force -fixed_point(s4.4) data 8 0,-9 10", {
     "3:37 \"8\" does not fit into -fixed_point(s4.4) [stimulus-value]",
     "3:41 \"-9\" does not fit into -fixed_point(s4.4) [stimulus-value]"}},
    {"force data 256 0,-129 10,99999999999999999999 20", {
     "3:18 \"256\" does not fit into the 8 bits of port \"data\" [stimulus-value]",
     "3:24 \"-129\" does not fit into the 8 bits of port \"data\" [stimulus-value]",
     "3:32 \"99999999999999999999\" does not fit into the 8 bits of port \"data\" "
     "[stimulus-value]"}},
    {"force -hex data 100 0,a00 10", {
     "3:23 \"100\" does not fit into the 8 bits of port \"data\" [stimulus-value]",
     "3:29 \"a00\" does not fit into the 8 bits of port \"data\" [stimulus-value]"}},
    {"force -bin data 100000000 0", {
     "3:23 \"100000000\" does not fit into the 8 bits of port \"data\" [stimulus-value]"}},
    {"force -fixed_point(8.8) data 1 0", {
     "3:13 \"-fixed_point(8.8)\" does not fit into the 8 bits of port \"data\" "
     "[stimulus-value]"}},
    {"force -fixed_point(8) data 1 0", {
     "3:13 \"-fixed_point(8)\" is no format of fixed point: (8.4) has 8 bits before and 4 after "
     "the point [fixed-point]"}},
    {"force -fixed_point(4.4 data 1 0", {
     "3:13 \"-fixed_point(4.4\" is no format of fixed point: (8.4) has 8 bits before and 4 after "
     "the point [fixed-point]"}},
};

// The command begins in column 7 of line 4.
std::string in_ranges(const std::string& command) {
    return "<PORTS><PORT NAME='level' TYPE='INPUT' WIDTH='4'><FORCE_RANGE MIN='1' MAX='2 * 5'/>"
           "</PORT>\n<PORT NAME='error' TYPE='INPUT' WIDTH='4'><FORCE_RANGE MIN='-3' MAX='3'/>"
           "</PORT><PORT NAME='count' TYPE='INPUT' WIDTH='W'><FORCE_RANGE MAX='9'/>"
           "<FORCE_RANGE MAX='W' /><FORCE_RANGE MIN='5' MAX='6' IF='W gt 1'/>"
           "<CONSTANT_RANGE MIN='2' MAX='3'/></PORT></PORTS><PARAMETERS><PARAMETER NAME='W' "
           "TYPE='INTEGER' VALUE='8'/></PARAMETERS><WAVE_DATA><WAVE NAME='w'>\n<STIM>" +
           command + "</STIM></WAVE></WAVE_DATA>";
}

const CommandCase kRanges[] = {
    {"force level 0 0,1 10,10 20,11 30", {
     "4:19 \"0\" is outside the range of port \"level\", which is always 1 to 10 "
     "[stimulus-value]",
     "4:34 \"11\" is outside the range of port \"level\", which is always 1 to 10 "
     "[stimulus-value]"}},
    {"force -hex level A 0,b 10,X 20", {
     "4:28 \"b\" is outside the range of port \"level\", which is always 1 to 10 "
     "[stimulus-value]"}},
    {"force -bin level 1_010 0,1011 10,1Z11 20", {
     "4:32 \"1011\" is outside the range of port \"level\", which is always 1 to 10 "
     "[stimulus-value]"}},
    // 1010 in bits, which is 10 as well.
    {"force level -6 0,-5 10", {
     "4:24 \"-5\" is outside the range of port \"level\", which is always 1 to 10 "
     "[stimulus-value]"}},
    // 13 is -3.
    {"force error -3 0,3 10,13 20,12 30,-4 40", {
     "4:35 \"12\" is outside the range of port \"error\", which is always -3 to 3 "
     "[stimulus-value]",
     "4:41 \"-4\" is outside the range of port \"error\", which is always -3 to 3 "
     "[stimulus-value]"}},
    {"force count 0 0,9 10,10 20,-1 30", {
     "4:28 \"10\" is outside the range of port \"count\", which is always at most 9 "
     "[stimulus-value]"}},
};

const CommandCase kPorts[] = {
    {"force dta 0 0", {
     "3:13 \"dta\" is no port [unknown-port]",
     "  did you mean \"data\"?"}},
    {"force Clock 0 0", {
     "3:13 \"Clock\" is no port [unknown-port]",
     "  did you mean \"clock\"?"}},
    {"force data[3] 0 0", {
     "3:13 \"data[3]\" is no port [unknown-port]"}},
};

const CommandCase kDisplays[] = {
    {"add wave -hex dta", {
     "3:52 \"dta\" is no port [unknown-port]",
     "  did you mean \"data\"?"}},
    {"add wave -hex data\n", {
     "3:56 a line break is taken as a part of the port's name [command-blank]"}},
    {"add wave -hex data clock", {
     "3:57 \"clock\" is not read: a DISPLAY is for one port [unread-text]"}},
    {"add wave -fixed_point(8) data", {
     "3:47 \"-fixed_point(8)\" is no format of fixed point: (8.4) has 8 bits before and 4 after "
     "the point [fixed-point]"}},
};

// Of each item that is a value, the library gives it at its time.
const std::string kCleanCommands[] = {
    "force clock 0 0,1 10,-repeat 20",
    "force clock 0 0,1 10,-r 20,-c 90",
    "force clock 0 @0,1  10 ,0 20 ",
    "force clock \n  0 0,\n\t1 10,\n  0 20\n",
    "force clock 0 0, 1 10, 0 20",
    "force clock 0 0,1 100",
    "force clock -c 20",
    "force data Z 0,X 10,ZZZZZZZZ 20,0b101 30,1X0 40,- 50",
    "force data 0 0,255 10,-128 20,00000000255 30",
    "force -signed data -128 0,127 10",
    "force -unsigned data 0 0,255 10",
    "force -hex data 00 0,Zz 10,0X 20,F_F 30,0FF 40,x 50,-- 60",
    "force -bin data 0b11111111 0,Z 10,1_0 20,0000000011111111 30",
    "force -fixed_point(s4.4) data 7.9 0,-8 10,Z 20,0.03125 30",
    "force -fixed_point(0.8) data 0.5 0",
    "force -hex bus FFFFFFFFFFFF 0",
    "force bus 123456789012345678901234567890 0",
};

const std::string kSilent[] = {
    display("add wave -hex data "),
    display("add wave -fixed_point(s4.4) data"),
    // What the library tells.
    "<WAVE_DATA><WAVE><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>",
    "<WAVE_DATA><WAVE NAME='w'><STIM>force a 1 0</STIM>"
    "<DISPLAY>add wave -fixed_point() b</DISPLAY><DISPLAY>\nadd wave -hex c</DISPLAY></WAVE>"
    "</WAVE_DATA>",
    // A part of a description, without any port.
    "<WAVE_DATA><WAVE NAME='w'><STIM>force a 1 0</STIM><DISPLAY>add wave -hex b</DISPLAY></WAVE>"
    "</WAVE_DATA>",
    // A declaration that the library refuses.
    "<PORTS><PORT NAME='a' TYPE='IN'/></PORTS><WAVE_DATA><WAVE NAME='w'><STIM>force a 1 0</STIM>"
    "</WAVE></WAVE_DATA>",
    // No MAX_TIME, and a start before 0.
    "<FUNCTION_INFORMATION><START_TIME VALUE='-20'/></FUNCTION_INFORMATION><WAVE_DATA>"
    "<WAVE NAME='w'><STIM>force a 1 -20,0 1000000</STIM></WAVE></WAVE_DATA>",
    // A command of THEN that does nothing.
    "<WAVE_DATA><WAVE NAME='w'><IF>A == 1</IF><THEN><STIM/></THEN><ELSE><STIM>force a 1 0</STIM>"
    "</ELSE></WAVE></WAVE_DATA>",
};

const LintCase kWaves[] = {
    {"<WAVE_DATA><WAVE NAME='w' MAX_TIME='9'><CAPTION>Idle</CAPTION></WAVE></WAVE_DATA>", {
     "2:12 WAVE \"w\" has no stimulus: nothing is drawn [wave-without-stimulus]"}},
    {"<CUSTOM_VECTORS><CUSTOM_VECTOR NAME='w'/></CUSTOM_VECTORS>", {
     "2:17 CUSTOM_VECTOR \"w\" has no stimulus: nothing is drawn [wave-without-stimulus]"}},
    {"<MACROS><MACRO NAME='M' DEFINITION='1'/></MACROS><PORTS><PORT NAME='a' TYPE='INPUT'/></PORTS>"
     "<WAVE_DATA><WAVE NAME='w'><VECTOR>force M 0 0</VECTOR></WAVE></WAVE_DATA>", {
     "2:134 \"M\" is no port but a macro [unknown-port]"}},
    // The second adds to the first.
    {"<WAVE_DATA><WAVE NAME='w'/>\n<WAVE NAME='w'><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>", {
     "3:1 WAVE \"w\" is declared again: its attributes replace those of the first, the rest is "
     "added [declared-twice]",
     "  2:12 first declared here"}},
};
// clang-format on

TEST(Stimulus, commands_that_do_nothing) {
    expect_warnings(stimulus, kCommands);
}

TEST(Stimulus, white_space_that_separates_nothing) {
    expect_warnings(stimulus, kBlanks);
}

TEST(Stimulus, options_that_are_none) {
    expect_warnings(stimulus, kOptions);
}

TEST(Stimulus, items_that_are_not_read) {
    expect_warnings(stimulus, kItems);
}

TEST(Stimulus, times_that_are_none_or_out_of_reach) {
    expect_warnings(stimulus, kTimes);
}

TEST(Stimulus, times_in_another_order) {
    expect_warnings(stimulus, kOrders);
}

TEST(Stimulus, values_outside_the_range_of_the_port) {
    expect_warnings(in_ranges, kRanges);
}

TEST(Stimulus, repeats_that_repeat_nothing) {
    expect_warnings(stimulus, kRepeats);
}

TEST(Stimulus, values_that_are_none_or_do_not_fit) {
    expect_warnings(stimulus, kValues);
}

// A port as wide as a parameter, 4 bits by default, in a wave with these parts; the parts begin in
// column 16 of line 3.
std::string wave_of_bus(const std::string& parts) {
    return "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='4'/></PARAMETERS><PORTS><PORT "
           "NAME='bus' TYPE='INPUT' WIDTH='W'/></PORTS><WAVE_DATA>\n<WAVE NAME='w'>" +
           parts + "</WAVE></WAVE_DATA>";
}

// clang-format off
const LintCase kWidthsByDefault[] = {
    {wave_of_bus("<STIM>force -hex bus 1F 0</STIM>"), {
     "3:37 \"1F\" does not fit into the 4 bits that port \"bus\" has by default [stimulus-value]"}},
    {wave_of_bus("<WAVE_CONDITION>W lt 8</WAVE_CONDITION><STIM>force bus 16 0</STIM>"), {
     "3:71 \"16\" does not fit into the 4 bits that port \"bus\" has by default [stimulus-value]"}},
    {wave_of_bus("<STIM>force bus 1 0</STIM><DISPLAY>add wave -fixed_point(s4.4) bus</DISPLAY>"), {
     "3:60 \"-fixed_point(s4.4)\" does not fit into the 4 bits that port \"bus\" has by default "
     "[fixed-point]"}},
};

const std::string kOtherWidths[] = {
    wave_of_bus("<STIM>force -hex bus F 0</STIM>"),
    wave_of_bus("<STIM>force bus 1 0</STIM><DISPLAY>add wave -fixed_point(s2.2) bus</DISPLAY>"),
    // For other configurations.
    wave_of_bus("<WAVE_CONDITION>W == 8</WAVE_CONDITION><STIM>force -hex bus 1F 0</STIM>"),
    wave_of_bus("<IF>W == 8</IF><THEN><STIM>force -hex bus 1F 0</STIM></THEN>"),
};
// clang-format on

TEST(Stimulus, values_that_do_not_fit_by_default) {
    expect_warnings(kWidthsByDefault);
}

// clang-format off
const LintCase kSameTimes[] = {
    {wave_of_bus("<STIM>force bus 1 0,2 10,3 20</STIM>\n<STIM>force bus 4 10,5 20</STIM>"), {
     "4:17 another command gives \"bus\" a value at 10 already: only the last counts [given-twice]",
     "  3:16 first given here"}},
};

const std::string kOtherTimes[] = {
    wave_of_bus("<STIM>force bus 1 0,-cancel 10</STIM><STIM>force bus 2 20</STIM>"),
    wave_of_bus("<IF>W == 4</IF><THEN><STIM>force bus 1 0</STIM></THEN><STIM>force bus 2 0</STIM>"),
    wave_of_bus("<STIM>force bus 1 0</STIM></WAVE><WAVE NAME='v'><STIM>force bus 1 0</STIM>"),
};
// clang-format on

TEST(Stimulus, values_of_two_commands_at_one_time) {
    expect_warnings(kSameTimes);
}

TEST(Stimulus, commands_that_take_turns_stay_silent) {
    expect_silence(kOtherTimes);
}

TEST(Stimulus, values_for_other_widths_stay_silent) {
    expect_silence(kOtherWidths);
}

TEST(Stimulus, signals_that_are_no_port) {
    expect_warnings(stimulus, kPorts);
}

TEST(Stimulus, display_formats_that_show_nothing) {
    expect_warnings(display, kDisplays);
}

TEST(Stimulus, vectors_without_stimulus) {
    expect_warnings(kWaves);
}

TEST(Stimulus, what_is_read_as_it_looks_stays_silent) {
    for (const std::string& command : kCleanCommands) {
        EXPECT_EQ(LintFixture().warnings(stimulus(command)), Lines()) << command;
    }
    for (const std::string& sections : kSilent) {
        EXPECT_EQ(LintFixture().warnings(sections), Lines()) << sections;
    }
}

TEST(Stimulus, a_clean_command_drives_its_port_at_its_times) {
    for (const std::string& command : kCleanCommands) {
        if (command == "force clock -c 20") {
            continue;
        }
        const KIVO_TIMELINE timeline = kivo_get_timeline(command, 0, 100, 1000);
        EXPECT_TRUE(timeline.signal == "clock" || timeline.signal == "data" ||
                    timeline.signal == "bus")
            << command;
        std::size_t transitions = 0;
        for (const KIVO_TIMELINE_RUN& run : timeline.runs) {
            EXPECT_FALSE(run.nameless) << command;
            transitions += run.released ? 0 : 1;
        }
        const auto commas =
            static_cast<std::size_t>(std::count(command.begin(), command.end(), ','));
        EXPECT_GE(transitions, commas + 1) << command;
    }
}

TEST(Stimulus, much_of_each_kind_is_found_at_once) {
    std::string command = "force data 0 0";
    for (int item = 1; item <= 2000; ++item) {
        command += ",,G\xC2\xA0" + std::to_string(item) + "x 1";
    }
    EXPECT_EQ(LintFixture().warnings(stimulus(command)).size(), 8000U);
}

}  // namespace
