// Every kind of message: its example gives it, and the same text with the fault mended does not.
#include "tools/findings/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/objects/internal/message.h"
#include "tests/tools/program.h"
#include "tools/text/text_escape.h"

// What a failure prints.
void PrintTo(const MessageDescription& row, std::ostream* out) {
    *out << row.id;
}

namespace {

using Ids = std::set<std::string>;

struct Case {
    std::string id;
    std::string near_miss;
    // What the library always posts along with the message.
    Ids companions = {};
};

std::string parameters(const std::string& content) {
    return "<PARAMETERS>" + content + "</PARAMETERS>";
}

std::string width_with(const std::string& rule) {
    return parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8">)" + rule +
                      "</PARAMETER>");
}

std::string ports(const std::string& content) {
    return "<PORTS>" + content + "</PORTS>";
}

std::string settings(const std::string& content) {
    return "<FUNCTION_INFORMATION>" + content + "</FUNCTION_INFORMATION>";
}

std::string wave(const std::string& content) {
    return R"(<WAVE_DATA><WAVE NAME="count">)" + content + "</WAVE></WAVE_DATA>";
}

std::string conditional_wave(const std::string& then_part, const std::string& else_part) {
    return wave("<IF>HAS_ENABLE == 1</IF><THEN>" + then_part + "</THEN><ELSE>" + else_part +
                "</ELSE>");
}

std::string wizard(const std::string& content) {
    return "<WIZARD_DATA>" + content + "</WIZARD_DATA>";
}

std::string intro(const std::string& content) {
    return "<HTML_TEXT><INTRO>" + content + "</INTRO></HTML_TEXT>";
}

// The sections of a description; "part.xml" is a clean description beside it.
// clang-format off
const std::vector<Case> kCases = {
    {"host-message", ""},
    {"file-not-found", R"(<INCLUDE FILE="part.xml"/>)"},
    {"file-not-opened", R"(<INCLUDE FILE="part.xml"/>)"},
    {"file-not-read", R"(<INCLUDE FILE="part.xml"/>)", {"read-error"}},
    {"read-error", R"(<INCLUDE FILE="part.xml"/>)", {"file-not-read"}},
    {"too-many-files", R"(<INCLUDE FILE="part.xml"/><INCLUDE FILE="part.xml"/>)"},
    {"invalid-file", "<PARAMETERS></PARAMETERS>", {"xml-syntax"}},
    {"xml-syntax", R"(<RULES><RULE ENABLED="ON" REQUIRED_RULE="ON">WIDTH gt 0</RULE></RULES>)"},
    {"no-root", ""},
    {"include-cycle", R"(<INCLUDE FILE="part.xml"/><INCLUDE FILE="part.xml"/>)"},
    {"unknown-section", "<PARAMETERS/>"},
    {"include-attribute", R"(<INCLUDE FILE="part.xml"/>)"},
    {"include-sub-tag", "<INCLUDE><FILE>part.xml</FILE></INCLUDE>"},
    {"function-information-sub-tag", settings(R"(<TIME_SCALE VALUE="ns"/>)")},
    {"function-information-attribute", settings(R"(<VHDL_LIBRARY NAME="ieee"/>)")},
    {"function-information-nested-tag", settings(R"(<TIME_DELTA VALUE="10"> </TIME_DELTA>)")},
    {"type-clash", parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER"/>)") +
                   ports(R"(<PORT NAME="width" TYPE="INPUT"/><PORT NAME="WIDTH"/>)")},
    {"unknown-type", parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER"/>)") +
                     R"(<PARAMETER_RULES><PARAMETER NAME="WIDTH"/></PARAMETER_RULES>)"},
    {"parameter-type", parameters(R"(<PARAMETER NAME="MODE" TYPE="STRING"/>
                                     <PARAMETER NAME="DEPTH" TYPE="INTEGER"/>)")},
    {"parameter-name", parameters(R"(<PARAMETER NAME=" " TYPE="INTEGER"/>)")},
    {"parameter-cnx-type",
     parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER" CNX_TYPE="CONSTANT"/>
                   <PARAMETER NAME="MODE" TYPE="STRING" CNX_TYPE="PRIVATE"/>)")},
    {"parameter-attribute",
     parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8;9" DEFAULT_VALUE="8"
                              DEFAULT_VALUE_INDEX="0" LPM_HINT="ON" CNX_TYPE="PRIVATE"/>)")},
    {"port-type", ports(R"(<PORT NAME="a" TYPE="INPUT"/><PORT NAME="b" TYPE="OUTPUT"/>
                           <PORT NAME="c" TYPE="BIDIR"/><PORT NAME="d" TYPE="BURIED"/>)")},
    {"port-name", ports(R"(<PORT NAME="q" TYPE="OUTPUT"/>)")},
    {"port-cnx-type", ports(R"(<PORT NAME="clock" TYPE="INPUT" CNX_TYPE="USED_PORT"/>)")},
    {"port-attribute",
     ports(R"(<PORT NAME="enable" TYPE="INPUT" WIDTH="1" WIDTH2D="1" DEFAULT_VALUE="1"
                    USAGE="UNUSED" IS_CLOCK_PORT="TRUE" ASYNC="FALSE" CLOCK_PERIOD="20"
                    INITIAL_VEC_STATE="1" HIGH_PROBABILITY="50" CNX_TYPE="USED_PORT"/>)")},
    {"high-probability", ports(R"(<PORT NAME="a" TYPE="INPUT" HIGH_PROBABILITY="1"/>
                                  <PORT NAME="b" TYPE="INPUT" HIGH_PROBABILITY="100"/>)")},
    {"hidden-parameter-attribute",
     R"(<HIDDEN_PARAMETERS><PARAMETER NAME="A" VALUE="4"/></HIDDEN_PARAMETERS>)"},
    {"object-sub-tag", width_with("<VALUE_RULE>WIDTH gt 0</VALUE_RULE>") +
                       ports(R"(<PORT NAME="enable" TYPE="INPUT"><STATE V="1"/></PORT>)")},
    {"range-attribute", width_with(R"(<FORCE_VALUE V="8" ELSE="9" WHEN="MODE == 2"/>)")},
    {"range-sub-tag", width_with("<FORCE_RANGE><MIN>1</MIN><MAX>64</MAX></FORCE_RANGE>")},
    {"value-rule-sub-tag", width_with("<VALUE_RULE><IF>A</IF><THEN>B</THEN></VALUE_RULE>")},
    {"rule-without-data", R"(<RULES><RULE ENABLED="ON">WIDTH gt 0</RULE></RULES>)"},
    {"rules-sub-tag", "<RULES><RULE>A</RULE><CONDITION>B</CONDITION></RULES>"},
    {"message-type", R"(<MESSAGES><MESSAGE TYPE="WARNING">Slow.</MESSAGE></MESSAGES>)"},
    {"message-sub-tag",
     R"(<MSGS><MSG TYPE="INFO"><WHEN>A</WHEN><TEXT>B</TEXT><ELSE>C</ELSE></MSG></MSGS>)"},
    {"messages-sub-tag", R"(<MESSAGES><MSG TYPE="INFO">Slow.</MSG></MESSAGES>)"},
    {"macros-sub-tag", R"(<MACROS><MACRO NAME="B" DEFINITION="W quot 8"/></MACROS>)"},
    {"macro-sub-tag",
     R"(<MACROS><MACRO NAME="W"><DEFINITION>A</DEFINITION><NOTE/></MACRO></MACROS>)"},
    {"vector-name", R"(<WAVE_DATA><WAVE NAME="count" MAX_TIME="200"/></WAVE_DATA>)"},
    {"vector-display-truncation",
     R"(<WAVE_DATA><WAVE NAME="a" DISPLAY_TRUNCATION="LOW"/>
                   <WAVE NAME="b" DISPLAY_TRUNCATION="HIGH"/></WAVE_DATA>)"},
    {"vector-attribute",
     R"(<CUSTOM_VECTORS><CUSTOM_VECTOR NAME="a" INDEX="1" TIME_STEP="5"/></CUSTOM_VECTORS>)"},
    {"vector-sub-tag", wave("<CAPTION>Counting up</CAPTION><WAVE_CONDITION>A</WAVE_CONDITION>")},
    {"then-sub-tag", conditional_wave("<STIM>force a 1 0</STIM>", "")},
    {"else-sub-tag",
     conditional_wave("<STIM>force a 1 0</STIM>", "<VECTOR>force a 0 0</VECTOR>")},
    {"surplus-else",
     conditional_wave("<STIM>force a 1 0</STIM><STIM>force b 1 0</STIM>",
                      "<STIM>force a 0 0</STIM><STIM>force b 0 0</STIM>")},
    {"display-radix", wave("<DISPLAY>add wave -fixed_point(4.4) data</DISPLAY>"),
     {"display-command"}},
    {"display-command", wave("<DISPLAY>add wave -bin data</DISPLAY>")},
    {"wizard-map-name", wizard(R"(<WIZARD_MAP NAME="plain"/>)")},
    {"wizard-map-attribute",
     wizard(R"(<WIZARD_MAP NAME="plain" MODULE_NAME="core" WIZARD_NAME="counter"/>)")},
    {"wizard-map-sub-tag",
     wizard(R"(<WIZARD_MAP NAME="p"><WIZARD_CONDITION>A</WIZARD_CONDITION></WIZARD_MAP>)")},
    {"wizard-map-objects", wizard(R"(<PORT NAME="clock" TYPE="INPUT"/><WIZARD_MAP NAME="p"/>)")},
    {"if-with-sub-tags", intro("<IF>A</IF><THEN><T>B</T></THEN>")},
    {"text-with-sub-tags", intro("<THEN><T>The counter has</T> <T>an enable input.</T></THEN>")},
    {"xml-raw-ampersand", "<RULES><RULE>A &amp;&amp; B<![CDATA[ && C]]></RULE></RULES>"},
    {"xml-raw-less-than", R"(<MACROS><MACRO NAME="A" DEFINITION="8 &lt; 9"/></MACROS>)"},
    {"xml-undeclared-entity", "<RULES><RULE>&quot;A&quot; == &#176;</RULE></RULES>"},
    {"xml-repeated-attribute", R"(<RULES><RULE ENABLED="ON">A</RULE></RULES>)",
     {"invalid-file", "xml-syntax"}},
    {"xml-control-character", "<MSGS><MSG TYPE='INFO'>It is\t\r\nslow.</MSG></MSGS>"},
    {"xml-bad-character-reference", "<MSGS><MSG TYPE='INFO'>It is&#9;&#x20;slow.</MSG></MSGS>"},
    {"xml-bad-utf8", "<RULES><RULE>A == \xC2\xB0</RULE></RULES>"},
    {"xml-comment-hyphens", "<!-- Ports - - see the manual -->"},
    {"xml-entity-expansion", "<MSGS><MSG TYPE='INFO'>&amp;&lt;</MSG></MSGS>", {"unknown-attribute"}},
    {"xml-not-well-formed", "<?xml-stylesheet href='a'?>"},
    {"foreign-root", R"(<INCLUDE FILE="part.xml"/>)"},
    {"unknown-element", ports(R"(<PORT NAME="clock" TYPE="INPUT"/>)")},
    {"unknown-attribute", R"(<RULES><RULE REQUIRED_RULE="OFF">WIDTH gt 0</RULE></RULES>)"},
    {"unread-condition", R"(<MESSAGES><MESSAGE TYPE="WARNING"><IF>WIDTH gt 32</IF><THEN>Slow.</THEN></MESSAGE></MESSAGES>)"},
    {"unread-text", parameters(R"(<PARAMETER NAME="A" TYPE="INTEGER" VALUE="0"/>)") + ports(R"(<PORT NAME="enable" TYPE="INPUT"><STATE V="UNUSED" IF="A == 0" ELSE="USED"/></PORT>)")},
    {"overridden", R"(<MESSAGES><MESSAGE TYPE="INFO">Wide counters are slow.</MESSAGE></MESSAGES>)"},
    {"macro-without-name", width_with("") + R"(<MACROS><MACRO NAME="IS_WIDE" DEFINITION="WIDTH gt 32"/></MACROS><RULES><RULE>!( IS_WIDE )</RULE></RULES>)"},
    {"macro-without-definition", width_with("") + R"(<MACROS><MACRO NAME="IS_WIDE"><DEFINITION>WIDTH gt 32</DEFINITION></MACRO></MACROS><RULES><RULE>!( IS_WIDE )</RULE></RULES>)"},
    {"message-without-text", R"(<MESSAGES><MESSAGE TYPE="WARNING"><WHEN>A gt 32</WHEN><TEXT>Slow.</TEXT></MESSAGE></MESSAGES>)"},
    {"empty-condition", width_with(R"(<FORCE_VALUE V="16" IF="WIDTH == 2"/>)")},
    {"value-missing", width_with(R"(<FORCE_VALUE TO="16" IF="WIDTH == 2"/>)")},
    {"range-without-max", width_with(R"(<FORCE_RANGE MAX="64"/>)")},
    {"then-without-if", wave("<IF>A == 1</IF><CAPTION>On</CAPTION><THEN><STIM>force enable 1 20</STIM></THEN>")},
    {"else-without-then", conditional_wave("<STIM>force enable 1 20</STIM>", "<STIM>force enable 1 0</STIM>")},
    {"else-without-if", width_with(R"(<FORCE_VALUE V="16" WHEN="WIDTH == 2" ELSE="8"/>)")},
    {"if-without-then", intro("<IF>A == 1</IF><ELSE>It always counts.</ELSE><T>On each edge.</T>")},
    {"unknown-word", ports(R"(<PORT NAME="enable" TYPE="INPUT" USAGE="UNUSED" ASYNC="FALSE"/>)")},
    {"not-a-number", R"(<WAVE_DATA><WAVE NAME="count" MAX_TIME="120"><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>)"},
    {"time-unit", R"(<FUNCTION_INFORMATION><TIME_SCALE VALUE="100 ps"/></FUNCTION_INFORMATION>)"},
    {"time-step", R"(<WAVE_DATA><WAVE NAME="count" TIME_STEP="1"><STIM>force a 1 0</STIM></WAVE></WAVE_DATA>)"},
    {"wrong-separator", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>)")},
    {"name-with-blanks", ports(R"(<PORT NAME="clock" TYPE="INPUT"/>)")},
    {"unwritable-name", parameters(R"(<PARAMETER NAME="_DATA_WIDTH$2" TYPE="INTEGER" VALUE="8"/>)")},
    {"other-kind", ports(R"(<PORT NAME="clock" TYPE="INPUT"/>)") + R"(<PORT_RULES><PORT NAME="clock"/></PORT_RULES>)"},
    {"type-missing", wizard(R"(<WIZARD_MAP NAME="plain"><PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/></WIZARD_MAP>)")},
    {"generic-without-map", wizard(R"(<PORT NAME="clock" TYPE="INPUT"/><WIZARD_MAP NAME="plain"/>)")},
    {"unused-waiver", ""},
    {"expression-syntax", width_with("") + R"(<RULES><RULE>WIDTH == 8</RULE></RULES>)"},
    {"expression-too-large", "<RULES><RULE>" + std::string(200, '(') + "1" + std::string(200, ')') + "</RULE></RULES>"},
    {"unknown-name", width_with("") + R"(<RULES><RULE>WIDTH gt 3</RULE></RULES>)"},
    {"macro-arguments", width_with("") + R"(<MACROS><MACRO NAME="B" ARGUMENTS="n" DEFINITION="n + 7"/></MACROS><RULES><RULE>B(WIDTH) gt 3</RULE></RULES>)"},
    {"macro-recursion", R"(<MACROS><MACRO NAME="LIMIT" DEFINITION="BASE + 1"/><MACRO NAME="BASE" DEFINITION="7"/></MACROS>)"},
    {"ill-typed", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>)") + R"(<RULES><RULE REQUIRED_RULE="OFF">STYLE == "AUTO"</RULE></RULES>)"},
    {"division-by-zero", width_with("") + R"(<RULES><RULE>64 quot WIDTH gt 3</RULE></RULES>)"},
    {"domain", width_with("") + R"(<RULES><RULE>log2(WIDTH) lt 9</RULE></RULES>)"},
    {"too-large", width_with("") + R"(<RULES><RULE>2 ^ WIDTH gt 8</RULE></RULES>)"},
    {"mixed-and-or", width_with("") + R"(<RULES><RULE>WIDTH == 8 or ( WIDTH gt 16 and WIDTH lt 32 )</RULE></RULES>)"},
    {"sign-before-power", width_with("") + R"(<RULES><RULE>WIDTH gt -(2 ^ WIDTH)</RULE></RULES>)"},
    {"not-before-comparison", width_with("") + R"(<RULES><RULE>!( WIDTH == 9 )</RULE></RULES>)"},
    {"sign-of-remainder", width_with(R"(<FORCE_RANGE MIN="0" MAX="64"/>)") + R"(<RULES><RULE>WIDTH % 4 == 0</RULE></RULES>)"},
    {"bare-word", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>)") + R"(<RULES><RULE REQUIRED_RULE="OFF">STYLE == &quot;AUTO&quot;</RULE></RULES>)"},
    {"mixed-comparison", width_with("") + R"(<RULES><RULE>WIDTH != &quot;9&quot;</RULE></RULES>)"},
    {"text-not-in-list", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"/>)") + R"(<RULES><RULE REQUIRED_RULE="OFF">STYLE != &quot;BLOCK&quot;</RULE></RULES>)"},
    {"ceil-of-integer", width_with("") + R"(<RULES><RULE>ceil(WIDTH / 8.0) == 1</RULE></RULES>)"},
    {"macro-precedence", width_with("") + R"(<MACROS><MACRO NAME="TOTAL" DEFINITION='( WIDTH + 1 )'/></MACROS><RULES><RULE>2 * TOTAL lt 64</RULE></RULES>)"},
    {"translator-blind", width_with("") + R"(<RULES><RULE>(WIDTH gt 4) and (WIDTH lt 64)</RULE></RULES>)"},
    {"value-read-as-text", width_with("") + R"(<HIDDEN_PARAMETERS><PARAMETER NAME="A" VALUE='ceil(log2(WIDTH))'/></HIDDEN_PARAMETERS>)"},
    {"value-not-in-list", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK"><FORCE_VALUE V="BLOCK" IF="enable"/></PARAMETER>)") + ports(R"(<PORT NAME="enable" TYPE="INPUT"/>)")},
    {"value-out-of-range", width_with(R"(<FORCE_RANGE MIN="8" MAX="8"/>)")},
    {"empty-range", width_with(R"(<FORCE_RANGE MIN="-1" MAX="64"/>)")},
    {"index-without-list", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO" DEFAULT_VALUE_INDEX="0"/>)")},
    {"default-index", parameters(R"(<PARAMETER NAME="STYLE" TYPE="STRING" VALUE="AUTO;BLOCK" DEFAULT_VALUE_INDEX="1"/>)")},
    {"default-ignored", parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8" DEFAULT_VALUE="8"/>)")},
    {"number-expected", ports(R"(<PORT NAME="q" TYPE="OUTPUT" WIDTH="8"/>)")},
    {"other-type", width_with("") + wizard(R"(<WIZARD_MAP NAME="narrow"><PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="4"/></WIZARD_MAP>)")},
    {"unused-argument", width_with("") + R"(<MACROS><MACRO NAME="IS_WIDE" ARGUMENTS="bits" DEFINITION="bits gt 32"/></MACROS><RULES><RULE>!( IS_WIDE(WIDTH) )</RULE></RULES>)"},
    {"no-default", parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER"><FORCE_VALUE V="8"/></PARAMETER>)")},
    {"list-item", parameters(R"(<PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16; 32; 64"/>)")},
    {"wrong-direction", ports(R"(<PORT NAME="clock" TYPE="INPUT" IS_CLOCK_PORT="TRUE" USAGE="CONSTANT" DEFAULT_VALUE="1"/>)")},
    {"run-time-width", width_with(R"(<FORCE_RANGE MIN="1" MAX="64"/>)") + ports(R"(<PORT NAME="q" TYPE="OUTPUT" WIDTH="WIDTH"/>)")},
    {"dead-rule", parameters(R"(<PARAMETER NAME="MODE" TYPE="INTEGER" VALUE="2;3"/><PARAMETER NAME="W" TYPE="INTEGER" VALUE="8" CNX_TYPE="CONSTANT"><FORCE_VALUE V="16" IF="MODE == 3"/></PARAMETER>)")},
    {"dead-in-legal", width_with("") + ports(R"(<PORT NAME="full" TYPE="OUTPUT"><STATE V="UNUSED" IF="WIDTH == 4"/></PORT>)") + "<RULES><RULE>WIDTH gte 4</RULE></RULES>"},
    {"unreachable-message", width_with(R"(<FORCE_RANGE MIN="1" MAX="64"/>)") + R"(<MESSAGES><MESSAGE TYPE="WARNING"><IF>WIDTH gt 63</IF><THEN>Slow.</THEN></MESSAGE></MESSAGES>)"},
    {"impossible-rule", width_with(R"(<FORCE_RANGE MIN="1" MAX="64"/>)") + "<RULES><RULE>( WIDTH lt 9 ) and ( WIDTH gt 7 )</RULE></RULES>"},
    {"always-condition", width_with(R"(<FORCE_RANGE MIN="0" MAX="64"/>)") + "<RULES><RULE>WIDTH gt 0</RULE></RULES>"},
    {"default-breaks-rule", width_with("") + parameters(R"(<PARAMETER NAME="LEVEL" TYPE="INTEGER" VALUE="7" CNX_TYPE="CONSTANT"><FORCE_RANGE MIN="1" MAX="WIDTH - 1"/></PARAMETER>)")},
    {"default-never-used", width_with("") + parameters(R"(<PARAMETER NAME="CHAIN" TYPE="STRING" VALUE="ON;OFF" CNX_TYPE="CONSTANT"><FORCE_VALUE V="OFF" IF="WIDTH lt 4"/></PARAMETER>)")},
    {"value-never-legal", width_with("") + parameters(R"(<PARAMETER NAME="STORAGE" TYPE="STRING" VALUE="AUTO;BLOCK"><VALUE_RULE>( STORAGE != "BLOCK" ) or ( WIDTH gt 9 )</VALUE_RULE></PARAMETER>)")},
    {"forces-disagree", parameters(R"(<PARAMETER NAME="MODE" TYPE="INTEGER" VALUE="1;2;3"/><PARAMETER NAME="W" TYPE="INTEGER" VALUE="8" CNX_TYPE="CONSTANT"><FORCE_VALUE V="16" IF="MODE == 2"/><FORCE_VALUE V="32" IF="MODE gt 2"/></PARAMETER>)")},
    {"ranges-exclude", width_with("") + parameters(R"(<PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16" CNX_TYPE="CONSTANT"><FORCE_RANGE MIN="4" MAX="64"/><FORCE_RANGE MIN="64" MAX="1024" IF="WIDTH gt 32"/></PARAMETER>)")},
    {"force-cycle", parameters(R"(<PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"><FORCE_VALUE V="16" IF="WIDTH gt 64"/></PARAMETER>)")},
    {"unused-parameter", width_with("") + parameters(R"(<PARAMETER NAME="DEPTH" TYPE="INTEGER" VALUE="16" CNX_TYPE="PRIVATE"/>)") + "<RULES><RULE>WIDTH gte 4</RULE></RULES>"},
    {"unused-macro", width_with("") + R"(<MACROS><MACRO NAME="BYTES" DEFINITION="( WIDTH + 7 ) quot 8"/></MACROS><RULES><RULE>BYTES lte 4</RULE></RULES>)"},
    {"port-width-never", width_with(R"(<FORCE_RANGE MIN="8" MAX="64"/>)") + ports(R"(<PORT NAME="lanes" TYPE="INPUT" WIDTH="WIDTH quot 8"/>)")},
    {"range-empty", width_with(R"(<FORCE_RANGE MIN="1" MAX="64"/>)") + ports(R"(<PORT NAME="data" TYPE="INPUT" WIDTH="8"><FORCE_RANGE MIN="0" MAX="WIDTH - 1"/></PORT>)")},
    {"declared-twice", ports(R"(<PORT NAME="data" TYPE="INPUT"/>)") + R"(<PORT_RULES><PORT NAME="data" WIDTH="8"/></PORT_RULES>)"},
    {"stimulus-command", wave("<STIM>force clock 0 0,1 10</STIM>")},
    {"command-blank", wave("<STIM>force clock \n 0 0,\n 1 10\n</STIM>")},
    {"stimulus-option", wave("<STIM>force -hex clock 0 0,1 10,-r 20,-c 90</STIM>")},
    {"stimulus-item", wave("<STIM>force enable 0 0 , 1  10</STIM>")},
    {"stimulus-time", wave("<STIM>force enable 0 0,1 @2</STIM>")},
    {"stimulus-order", wave("<STIM>force enable 0 0,1 20,0 40,-cancel 60</STIM>")},
    {"stimulus-repeat", wave("<STIM>force clock 0 0,1 10,-repeat 20</STIM>")},
    {"stimulus-value", wave("<STIM>force -hex data 0X 0,Zz 10,F_F 20</STIM>")},
    {"fixed-point", wave("<STIM>force -fixed_point(s4.12) gain 0.5 0</STIM>")},
    {"unknown-port", ports(R"(<PORT NAME="clock" TYPE="INPUT"/>)") + wave("<STIM>force clock 0 0</STIM>")},
    {"wave-without-stimulus", wave("<IF>A == 1</IF><THEN><STIM>force clock 0 0</STIM></THEN>")},
    {"given-twice", width_with(R"(<FORCE_VALUE V="16" IF="WIDTH == 2"/><FORCE_VALUE V="32" WHEN="WIDTH == 3"/>)")},
};
// clang-format on

const Case* case_of(std::string_view id) {
    const auto found =
        std::find_if(kCases.begin(), kCases.end(), [&](const Case& row) { return row.id == id; });
    return found == kCases.end() ? nullptr : &*found;
}

// The last word of a line "FILE:1:2: warning: TEXT [id]".
std::string id_at_end(const std::string& line) {
    const std::size_t open = line.rfind('[');
    return open == std::string::npos || line.back() != ']'
               ? std::string()
               : line.substr(open + 1, line.size() - open - 2);
}

// A folder to work in with a description, named as the catalogue says, and one beside it.
class CatalogueTest : public testing::TestWithParam<MessageDescription> {
protected:
    void SetUp() override { before_ = std::filesystem::current_path(); }
    void TearDown() override { std::filesystem::current_path(before_); }

    // Each message's id once for each time that it is given.
    std::multiset<std::string> ids_of(const std::string& description) {
        folder_.write("part.xml", with_sections(""));
        // What the example of too-many-files says of the files that follow it.
        for (int number = 1; number < 20; ++number) {
            const std::string next = "part_" + std::to_string(number + 1) + ".xml";
            const std::string include = "<INCLUDE FILE='" + next + "'/>";
            folder_.write("part_" + std::to_string(number) + ".xml",
                          with_sections(include + include));
        }
        folder_.write("part_20.xml", with_sections(""));
        folder_.write("counter_info.xml", description);
        return GetParam().severity == Severity::kError ? ids_of_library() : ids_of_program();
    }

private:
    std::multiset<std::string> ids_of_library() {
        std::filesystem::current_path(folder_.path(""));
        KIVO_INFO info;
        info.process_xml_file("counter_info.xml");
        std::multiset<std::string> ids;
        for (std::size_t index = 0; index < info.error_list.size(); ++index) {
            ids.insert(info.get_error_id(index));
        }
        info.delete_detached_objects();
        return ids;
    }

    std::multiset<std::string> ids_of_program() {
        const RunResult run =
            run_kivo({"check", "-W", std::string(asked_for()), "counter_info.xml"},
                     {.directory = folder_.path("")});
        std::multiset<std::string> ids;
        for (const std::string& line : messages_in(run.err, "counter_info.xml")) {
            ids.insert(id_at_end(line));
        }
        return ids;
    }

    // What is a matter of taste has to be asked for.
    static std::string_view asked_for() {
        return GetParam().is_on ? std::string_view("unread-text") : GetParam().id;
    }

    TemporaryFolder folder_;
    std::filesystem::path before_;
};

TEST_P(CatalogueTest, the_example_gives_the_message_once) {
    const MessageDescription& row = GetParam();
    if (row.id == "unused-waiver") {
        const TemporaryFolder folder;
        folder.write("counter_info.xml", with_sections(""));
        folder.write("kivo.toml", row.example);
        const RunResult run =
            run_kivo({"check", "counter_info.xml"}, {.directory = folder.path("")});
        EXPECT_EQ(messages_in(run.err, "kivo.toml"),
                  std::vector<std::string>(
                      {"1:1: warning: nothing to waive: there is no unread-text here "
                       "[unused-waiver]"}));
        return;
    }
    if (row.id == "host-message") {
        KIVO_INFO info;
        info.post_error_message("from the host");
        ASSERT_EQ(info.error_list.size(), 1U);
        EXPECT_EQ(info.get_error_id(0), row.id);
        EXPECT_NE(row.example.find("post_error_message"), std::string_view::npos);
        return;
    }
    if (row.id == "wizard-map-objects") {
        // A million of anything is no example; the tests of wizard maps have them.
        EXPECT_EQ(ids_of(std::string(row.example)), std::multiset<std::string>());
        return;
    }
    const Case* const known = case_of(row.id);
    ASSERT_NE(known, nullptr);
    std::multiset<std::string> expected(known->companions.begin(), known->companions.end());
    expected.insert(std::string(row.id));
    EXPECT_EQ(ids_of(std::string(row.example)), expected) << row.example;
}

TEST_P(CatalogueTest, the_mended_text_is_clean) {
    const Case* const known = case_of(GetParam().id);
    ASSERT_NE(known, nullptr);
    const std::string text = with_sections(known->near_miss);
    EXPECT_EQ(ids_of(text), std::multiset<std::string>()) << text;
}

// What is shown joins the lines of the source, so that a blank at their ends would show.
TEST_P(CatalogueTest, the_explanation_is_a_paragraph_of_whole_sentences) {
    const std::string text = join_lines(GetParam().explanation);
    EXPECT_GT(text.size(), 80U) << text;
    EXPECT_EQ(text.back(), '.') << text;
    EXPECT_EQ(text.find("  "), std::string::npos) << text;
    EXPECT_EQ(escape_text(text), text);
}

TEST_P(CatalogueTest, the_example_ends_with_its_last_line) {
    const std::string_view example = GetParam().example;
    ASSERT_FALSE(example.empty());
    EXPECT_EQ(example.back(), '\n');
    for (const std::string& line : lines_of(std::string(example))) {
        EXPECT_NE(line, "");
        EXPECT_LE(line.size(), 98U) << line;
    }
}

std::string test_name(const testing::TestParamInfo<MessageDescription>& info) {
    std::string name(info.param.id);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(EveryMessage, CatalogueTest, testing::ValuesIn(message_catalogue()),
                         test_name);

TEST(CatalogueTable, every_message_of_the_library_has_its_row_and_is_an_error) {
#define KIVO_ID_TEXT(name, id) id,
    const Ids posted = {KIVO_MESSAGE_IDS(KIVO_ID_TEXT)};
#undef KIVO_ID_TEXT
    Ids errors;
    for (const MessageDescription& row : message_catalogue()) {
        if (row.severity == Severity::kError) {
            errors.insert(std::string(row.id));
        }
    }
    EXPECT_EQ(errors, posted);
}

TEST(CatalogueTable, every_id_has_one_row_in_both_tables) {
    std::multiset<std::string> described;
    for (const MessageDescription& row : message_catalogue()) {
        described.insert(std::string(row.id));
    }
    std::multiset<std::string> tested;
    for (const Case& row : kCases) {
        tested.insert(row.id);
    }
    EXPECT_EQ(described, tested);
    EXPECT_EQ(Ids(described.begin(), described.end()).size(), described.size());
}

TEST(CatalogueTable, messages_are_found_by_their_id) {
    ASSERT_NE(find_message("unknown-section"), nullptr);
    EXPECT_EQ(find_message("unknown-section")->id, "unknown-section");
    EXPECT_EQ(find_message("unknown-sectio"), nullptr);
    EXPECT_EQ(find_message(""), nullptr);
}

}  // namespace
