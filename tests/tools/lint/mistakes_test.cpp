// Single mistakes that authors make, each in a description that is right without it.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <ostream>

#include "tests/support/temporary_folder.h"
#include "tools/lint/all_findings.h"

namespace {

constexpr const char* kMain = "spi_controller_info.xml";
constexpr const char* kHelp = "spi_controller_help.xml";

struct Mistake {
    const char* name;
    const char* file;
    std::string right;
    std::string wrong;               // stands for each "right"
    std::vector<std::string> found;  // "LINE ID" of the main file, "help:LINE ID"; line 0: no place
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

// clang-format off
const Mistake kMistakes[] = {
    {"unclosed_range", kMain,
     R"(<FORCE_RANGE MIN="4" MAX="32"/>)",
     R"(<FORCE_RANGE MIN="4" MAX="32">)",
     {"0 invalid-file", "19 xml-syntax"}},
    {"swapped_limits", kMain,
     R"(MIN="1" MAX="8")",
     R"(MIN="8" MAX="1")",
     {"23 empty-range"}},
    {"index_one_too_far", kMain,
     R"(DEFAULT_VALUE_INDEX="2" CNX_TYPE="CONSTANT">)",
     R"(DEFAULT_VALUE_INDEX="7" CNX_TYPE="CONSTANT">)",
     {"43 default-index"}},
    {"list_ends_in_separator", kMain,
     R"(NAME="INTERRUPTS" TYPE="STRING" VALUE="ON;OFF")",
     R"(NAME="INTERRUPTS" TYPE="STRING" VALUE="ON;OFF;")",
     {"55 list-item"}},
    {"item_twice", kMain,
     R"(VALUE="0;1;2;3")",
     R"(VALUE="0;1;2;2")",
     {"35 list-item"}},
    {"type_in_other_case", kMain,
     R"(NAME="DEVICES" TYPE="INTEGER" VALUE="2")",
     R"(NAME="DEVICES" TYPE="Integer" VALUE="2")",
     {"22 parameter-type", "22 unknown-type", "77 value-read-as-text"}},
    {"default_one_beyond", kMain,
     R"(NAME="WORD_WIDTH" TYPE="INTEGER" VALUE="8")",
     R"(NAME="WORD_WIDTH" TYPE="INTEGER" VALUE="33")",
     {"13 value-out-of-range"}},
    {"forced_to_no_item", kMain,
     R"(V="MSB_FIRST")",
     R"(V="MSBFIRST")",
     {"38 value-not-in-list"}},
    {"compared_with_no_item", kMain,
     R"(QUEUE_STYLE == "REGISTERS")",
     R"(QUEUE_STYLE == "REGISTER")",
     {"44 text-not-in-list"}},
    {"macro_lacks_argument", kMain,
     "<IF>QUEUE_BITS(QUEUE_DEPTH, WORD_WIDTH) gt 2048</IF>\n        <THEN>MEMORY",
     "<IF>QUEUE_BITS(QUEUE_DEPTH) gt 2048</IF>\n        <THEN>MEMORY",
     {"49 macro-arguments"}},
    {"default_names_nothing", kMain,
     R"(DEFAULT_VALUE="QUEUE_DEPTH / 2")",
     R"(DEFAULT_VALUE="QUEUE_DEPHT / 2")",
     {"53 unknown-name"}},
    {"no_default", kMain,
     R"(TYPE="INTEGER" DEFAULT_VALUE="4" CNX_TYPE="CONSTANT")",
     R"(TYPE="INTEGER" CNX_TYPE="CONSTANT")",
     {"25 no-default"}},
    {"rules_for_nothing", kMain,
     R"(<PARAMETER NAME="LOOPBACK">)",
     R"(<PARAMETER NAME="LOOP_BACK">)",
     {"67 unknown-type"}},
    {"comparison_turned", kMain,
     "<ELSE>DEVICES lte 4",
     "<ELSE>4 => DEVICES",
     {"71 expression-syntax"}},
    {"parenthesis_lost", kMain,
     R"-("CLOG2(CLOCK_DIVIDER + 1)")-",
     R"-("CLOG2(CLOCK_DIVIDER + 1")-",
     {"78 value-read-as-text"}},
    {"arguments_by_semicolon", kMain,
     R"(ARGUMENTS="depth,width")",
     R"(ARGUMENTS="depth;width")",
     {"49 macro-arguments", "90 wrong-separator", "91 unknown-name", "91 unknown-name", "172 macro-arguments"}},
    {"argument_misspelt", kMain,
     "( depth ) * ( width )",
     "( depth ) * ( widht )",
     {"91 unknown-name"}},
    {"macro_pasted", kMain,
     R"(NAME="IS_EVEN" ARGUMENTS="n")",
     R"(NAME="CLOG2" ARGUMENTS="n")",
     {"32 unknown-name", "77 ill-typed", "78 macro-precedence", "79 macro-precedence", "80 macro-precedence", "89 declared-twice"}},
    {"hidden_name_taken", kMain,
     R"(NAME="BIT_COUNT_WIDTH" VALUE)",
     R"(NAME="DEVICES" VALUE)",
     {"79 type-clash", "118 unknown-name"}},
    {"rule_without_then", kMain,
     "\n        <THEN>WORD_WIDTH % DATA_LINES == 0</THEN>",
     "",
     {"16 if-without-then"}},
    {"clock_says_yes", kMain,
     R"(IS_CLOCK_PORT="TRUE")",
     R"(IS_CLOCK_PORT="YES")",
     {"98 unknown-word"}},
    {"output_is_clock", kMain,
     R"(NAME="sclk" TYPE="OUTPUT")",
     R"(NAME="sclk" TYPE="OUTPUT" IS_CLOCK_PORT="TRUE")",
     {"113 wrong-direction"}},
    {"width_as_bounds", kMain,
     R"(WIDTH="SELECT_WIDTH")",
     R"(WIDTH="SELECT_WIDTH-1:0")",
     {"104 expression-syntax"}},
    {"usage_in_other_case", kMain,
     R"(NAME="irq" TYPE="OUTPUT" USAGE="UNUSED")",
     R"(NAME="irq" TYPE="OUTPUT" USAGE="Unused")",
     {"112 unknown-word"}},
    {"state_cut_short", kMain,
     R"(STATE V="CONSTANT")",
     R"(STATE V="CONST")",
     {"128 unknown-word"}},
    {"state_by_value", kMain,
     "<PORT NAME=\"mosi\">\n      <STATE V=",
     "<PORT NAME=\"mosi\">\n      <STATE VALUE=",
     {"139 range-attribute", "139 value-missing"}},
    {"port_as_parameter", kMain,
     "<PORT NAME=\"io\">\n      <STATE V=\"USED\" IF=\"DATA_LINES gt 1\"/>\n    </PORT>",
     "<PARAMETER NAME=\"io\">\n      <STATE V=\"USED\" IF=\"DATA_LINES gt 1\"/>\n    </PARAMETER>",
     {"144 unknown-element"}},
    {"bare_less_than", kMain,
     "ALARM_LEVEL gt 1",
     "1 < ALARM_LEVEL",
     {"0 invalid-file", "150 xml-syntax"}},
    {"word_of_other_language", kMain,
     "WORD_WIDTH gte 8</RULE>",
     "WORD_WIDTH ge 8</RULE>",
     {"151 expression-syntax"}},
    {"required_cut_short", kMain,
     R"(REQUIRED_RULE="OFF">WORD_CLOCKS)",
     R"(REQUIRED="OFF">WORD_CLOCKS)",
     {"153 unknown-attribute"}},
    {"message_type_cut_short", kMain,
     R"(<MESSAGE TYPE="WARNING">)",
     R"(<MESSAGE TYPE="WARN">)",
     {"159 message-type"}},
    {"assignment_for_comparison", kMain,
     R"(<WHEN>LOOPBACK == "ON"</WHEN>)",
     R"(<WHEN>LOOPBACK = "ON"</WHEN>)",
     {"164 expression-syntax"}},
    {"message_text_misspelt", kMain,
     "<TEXT>The controller hears itself and no device.</TEXT>",
     "<TXT>The controller hears itself and no device.</TXT>",
     {"165 message-sub-tag", "163 message-without-text"}},
    {"unit_is_none", kMain,
     R"(TIME_SCALE VALUE="ns")",
     R"(TIME_SCALE VALUE="nsec")",
     {"8 time-unit"}},
    {"stimulus_misses_port", kMain,
     "<STIM>force clock 0 0,1 10,-repeat 20</STIM>\n      <STIM>force reset",
     "<STIM>force clk 0 0,1 10,-repeat 20</STIM>\n      <STIM>force reset",
     {"188 unknown-port"}},
    {"items_by_semicolon", kMain,
     "force reset 1 0,0 30",
     "force reset 1 0;0 30",
     {"189 stimulus-item"}},
    {"radix_forgotten", kMain,
     "force -hex write_data 00 0,A5 60,00 80",
     "force write_data 00 0,A5 60,00 80",
     {"190 stimulus-value"}},
    {"wider_than_its_port", kMain,
     "select_n 11 0,10 90",
     "select_n 111 0,10 90",
     {"193 stimulus-value"}},
    {"bare_command_in_then", kMain,
     "<THEN><VECTOR>force irq 1 0</VECTOR></THEN>",
     "<THEN>force irq 1 0</THEN>",
     {"220 unread-text"}},
    {"display_radix_spelt_out", kMain,
     "add wave -bin irq",
     "add wave -binary irq",
     {"224 display-radix", "224 display-command"}},
    {"index_of_wave_twice", kMain,
     R"(TIME_STEP="10" INDEX="2")",
     R"(TIME_STEP="10" INDEX="1")",
     {"229 given-twice"}},
    {"fixed_point_too_wide", kMain,
     "add wave -fixed_point(s4.4) read_data",
     "add wave -fixed_point(s8.4) read_data",
     {"245 fixed-point"}},
    {"map_pasted", kMain,
     R"(WIZARD_MAP NAME="sensors")",
     R"(WIZARD_MAP NAME="flash")",
     {"269 declared-twice", "272 declared-twice"}},
    {"preset_beyond_range", kMain,
     R"(NAME="DEVICES" TYPE="INTEGER" VALUE="8")",
     R"(NAME="DEVICES" TYPE="INTEGER" VALUE="9")",
     {"272 value-out-of-range"}},
    {"include_misspelt", kMain,
     R"(FILE="spi_controller_help.xml")",
     R"(FILE="spi_controler_help.xml")",
     {"278 file-not-found"}},
    {"entity_of_html", kHelp,
     "busy &amp; has",
     "busy &nbsp; has",
     {"help:26 xml-undeclared-entity"}},
    {"then_without_if", kHelp,
     "        <IF>DATA_LINES == 4</IF>\n",
     "",
     {"help:12 then-without-if", "help:13 else-without-if"}},
    {"probability_in_percent", kMain,
     R"(HIGH_PROBABILITY="20")",
     R"(HIGH_PROBABILITY="20%")",
     {"106 not-a-number"}},
    {"repeat_without_period", kMain,
     "<STIM>force clock 0 0,1 10,-repeat 20</STIM>\n      <STIM>force reset",
     "<STIM>force clock 0 0,1 10,-repeat</STIM>\n      <STIM>force reset",
     {"188 stimulus-item"}},
    {"section_in_singular", kMain,
     "CUSTOM_VECTORS>",
     "CUSTOM_VECTOR>",
     {"228 unknown-section"}},
    {"times_swapped", kMain,
     "force write 0 0,1 60,0 80",
     "force write 0 0,1 80,0 60",
     {"191 stimulus-order"}},
    {"map_names_nothing", kMain,
     R"(NAME="BIT_ORDER" TYPE="STRING" VALUE="MSB_FIRST"/>)",
     R"(NAME="BITORDER" TYPE="STRING" VALUE="MSB_FIRST"/>)",
     {"264 unknown-name"}},
    {"constant_output", kMain,
     "<PORT NAME=\"fill\">\n      <STATE V=\"USED\"",
     "<PORT NAME=\"fill\">\n      <STATE V=\"CONSTANT\"",
     {"133 wrong-direction"}},
    {"items_outside_range", kMain,
     R"(<FORCE_RANGE MIN="4" MAX="32" IF='QUEUE_STYLE == "REGISTERS"'/>)",
     R"(<FORCE_RANGE MIN="4" MAX="32"/>)",
     {"42 value-out-of-range", "42 value-out-of-range", "42 value-out-of-range", "265 value-out-of-range"}},
    {"header_twice", kHelp,
     "<HEADER>Talks to up to eight devices</HEADER>",
     "<HEADER>Talks</HEADER><HEADER>Talks to up to eight devices</HEADER>",
     {"help:6 given-twice"}},
    {"word_sticks_to_number", kMain,
     "<THEN>WORD_WIDTH % DATA_LINES == 0</THEN>",
     "<THEN>WORD_WIDTH mod2 == 0</THEN>",
     {"17 expression-syntax"}},
    {"closed_in_other_case", kHelp,
     "</END>",
     "</End>",
     {"help:0 invalid-file", "help:27 xml-syntax"}},
    {"period_with_unit", kMain,
     R"(CLOCK_PERIOD="20")",
     R"(CLOCK_PERIOD="20 ns")",
     {"98 not-a-number"}},
    {"width_names_port", kMain,
     R"(WIDTH="FILL_WIDTH")",
     R"(WIDTH="fill")",
     {"111 run-time-width"}},
    {"range_for_parameter_state", kMain,
     R"(<FORCE_VALUE V="OFF" WHEN="!HAS_QUEUE"/>)",
     R"(<FORCE_VALUE V="OFF" WHEN="!HAS_QUEUE" UNLESS="1"/>)",
     {"57 range-attribute"}},
    {"quotes_forgotten", kMain,
     R"(IF='DIVIDER_SOURCE == "PORT"')",
     "IF='DIVIDER_SOURCE == PORT'",
     {"124 bare-word"}},
    {"text_for_a_file", kMain,
     R"(<INCLUDE FILE="spi_controller_help.xml"/>)",
     "<INCLUDE>spi_controller_help.xml</INCLUDE>",
     {"278 unread-text"}},
    {"argument_forgotten", kMain,
     "( depth ) * ( width )",
     "( depth ) * 8",
     {"90 unused-argument"}},
    {"argument_pasted", kMain,
     R"(ARGUMENTS="depth,width")",
     R"(ARGUMENTS="depth,depth")",
     {"90 given-twice", "91 unknown-name"}},
    {"clock_stands_still", kMain,
     R"(CLOCK_PERIOD="20")",
     R"(CLOCK_PERIOD="0")",
     {"98 time-step"}},
    {"period_of_no_clock", kMain,
     R"(NAME="write" TYPE="INPUT")",
     R"(NAME="write" TYPE="INPUT" CLOCK_PERIOD="20")",
     {"106 wrong-direction"}},
    {"default_of_port_too_wide", kMain,
     R"(NAME="read" TYPE="INPUT" ASYNC="FALSE" DEFAULT_VALUE="0")",
     R"(NAME="read" TYPE="INPUT" ASYNC="FALSE" DEFAULT_VALUE="2")",
     {"108 value-out-of-range"}},
    {"initial_value_in_words", kMain,
     R"(INITIAL_VEC_STATE="1")",
     R"(INITIAL_VEC_STATE="high")",
     {"100 not-a-number"}},
    {"command_pasted", kMain,
     "<STIM>force write 0 0,1 60,0 80</STIM>",
     "<STIM>force reset 0 0,1 60,0 80</STIM>",
     {"191 given-twice"}},
    {"unused_and_always_used", kMain,
     R"(NAME="sclk" TYPE="OUTPUT" CNX_TYPE="USED_PORT")",
     R"(NAME="sclk" TYPE="OUTPUT" CNX_TYPE="USED_PORT" USAGE="UNUSED")",
     {"113 overridden"}},
    {"step_beyond_the_end", kMain,
     R"(MAX_TIME="800" TIME_STEP="10")",
     R"(MAX_TIME="800" TIME_STEP="1000")",
     {"179 time-step"}},
    {"end_before_the_start", kMain,
     R"(START_TIME VALUE="0")",
     R"(START_TIME VALUE="1000")",
     {"179 time-step"}},
    {"blank_in_module", kMain,
     R"(MODULE_NAME="spi_controller_flash")",
     R"(MODULE_NAME="spi controller flash")",
     {"259 unwritable-name"}},
    {"condition_for_a_width", kMain,
     R"-(VALUE="max(1, CLOG2(DEVICES))")-",
     R"-(VALUE="DEVICES gt 1 and CLOG2(DEVICES)")-",
     {"104 number-expected"}},
    {"index_in_a_map", kMain,
     R"(<PARAMETER NAME="QUEUE_DEPTH" TYPE="INTEGER" VALUE="256"/>)",
     R"(<PARAMETER NAME="QUEUE_DEPTH" TYPE="INTEGER" DEFAULT_VALUE_INDEX="6"/>)",
     {"265 default-ignored"}},
};

// What looks like one, and is read as it was meant; first no mistake at all.
const Mistake kAccepted[] = {
    {"no_mistake", kMain, "<ROOT>", "<ROOT>", {}},
    {"blanks_in_list", kMain,
     R"(VALUE="1;2;4")",
     R"(VALUE="1; 2; 4")", {}},
    {"forced_value_in_quotes", kMain,
     "<THEN>MEMORY</THEN>",
     R"(<THEN>"MEMORY"</THEN>)", {}},
    {"macro_called_empty", kMain,
     R"-(V="USED" IF="HAS_QUEUE")-",
     R"-(V="USED" IF="HAS_QUEUE()")-", {}},
};
// clang-format on

std::string content(const std::string& file) {
    std::ifstream stream(std::string(KIVO_TEST_DATA "/spi/") + file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The two files of the description, one of them with a mistake.
class Mistakes : public testing::TestWithParam<Mistake> {
protected:
    std::vector<std::string> found() {
        const Mistake& mistake = GetParam();
        for (const char* file : {kMain, kHelp}) {
            std::string text = content(file);
            if (std::string_view(file) == mistake.file) {
                EXPECT_TRUE(replace(text, mistake.right, mistake.wrong));
            }
            folder_.write(file, text);
        }
        const Description description(folder_.path(kMain), Directories{folder_.path("")});
        Sources sources;
        std::vector<std::string> found;
        const AllFindings all = all_findings(description, sources);
        for (const Finding& finding : all.findings) {
            const int line = finding.place.start ? finding.place.start->line : 0;
            const bool is_help = finding.place.file.find(kHelp) != std::string::npos;
            found.push_back((is_help ? "help:" : "") + std::to_string(line) + ' ' + finding.id);
        }
        return found;
    }

private:
    static bool replace(std::string& text, const std::string& right, const std::string& wrong) {
        std::size_t at = text.find(right);
        const bool is_there = at != std::string::npos;
        for (; at != std::string::npos; at = text.find(right, at + wrong.size())) {
            text.replace(at, right.size(), wrong);
        }
        return is_there;
    }

    TemporaryFolder folder_;
};

class FoundMistakes : public Mistakes {};
class AcceptedForms : public Mistakes {};

TEST_P(FoundMistakes, are_told_where_they_are) {
    const std::vector<std::string> all = found();
    for (const std::string& expected : GetParam().found) {
        EXPECT_NE(std::find(all.begin(), all.end(), expected), all.end())
            << expected << " is not in " << testing::PrintToString(all);
    }
}

TEST_P(AcceptedForms, are_silent) {
    EXPECT_EQ(found(), std::vector<std::string>());
}

std::string name_of(const testing::TestParamInfo<Mistake>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Spi, FoundMistakes, testing::ValuesIn(kMistakes), name_of);
INSTANTIATE_TEST_SUITE_P(Spi, AcceptedForms, testing::ValuesIn(kAccepted), name_of);

}  // namespace
