// Every text of a description that is an expression, with what is wrong in it and where.
#include "tests/tools/lint/lint_fixture.h"

namespace {

const std::string kDeclared =
    "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='8'/>"
    "<PARAMETER NAME='S' TYPE='STRING' VALUE='AUTO;BLOCK'/></PARAMETERS>"
    "<PORTS><PORT NAME='q' TYPE='OUTPUT'/></PORTS>"
    "<MACROS><MACRO NAME='HALF' ARGUMENTS='n' DEFINITION='n / 2'/></MACROS>\n";

std::string in_w(const std::string& rules) {
    return kDeclared + "<PARAMETER_RULES><PARAMETER NAME='W'>" + rules +
           "</PARAMETER></PARAMETER_RULES>";
}

std::string in_q(const std::string& rules) {
    return kDeclared + "<PORT_RULES><PORT NAME='q'>" + rules + "</PORT></PORT_RULES>";
}

std::string rule(const std::string& condition) {
    return kDeclared + "<RULES><RULE>" + condition + "</RULE></RULES>";
}

std::string macro(const std::string& attributes, const std::string& content = "") {
    return kDeclared + "<MACROS><MACRO NAME='M' " + attributes + ">" + content +
           "</MACRO></MACROS>";
}

std::string hidden(const std::string& attributes, const std::string& content = "") {
    return kDeclared + "<HIDDEN_PARAMETERS><PARAMETER NAME='H' " + attributes + ">" + content +
           "</PARAMETER></HIDDEN_PARAMETERS>";
}

std::string map(const std::string& content) {
    return kDeclared + "<WIZARD_DATA><WIZARD_MAP NAME='m'>" + content +
           "</WIZARD_MAP></WIZARD_DATA>";
}

std::string unknown(const std::string& place, const std::string& name) {
    return place + " no parameter, port or macro is called " + name + " [unknown-name]";
}

// clang-format off
const LintCase kEveryText[] = {
    {in_w("<FORCE_VALUE V='V1 + 1' ELSE='V2'><IF>W gt V3</IF></FORCE_VALUE>"), {
     unknown("3:54", "V1"), unknown("3:68", "V2"), unknown("3:81", "V3")}},
    {in_w("<FORCE_VALUE WHEN='W gt V3'><TO>V1</TO><ELSE>W + V2</ELSE></FORCE_VALUE>"), {
     unknown("3:62", "V3"), unknown("3:70", "V1"), unknown("3:87", "V2")}},
    {in_w("<FORCE_VALUE V='1' WHEN_CMD='W gt V3'/>"), {
     unknown("3:72", "V3")}},
    {in_w("<FORCE_RANGE MIN='V1' MAX='2 ^ V2' IF='V3'/>"), {
     unknown("3:56", "V1"), unknown("3:69", "V2"), unknown("3:77", "V3")}},
    {in_w("<FORCE_RANGE><MAX>V1</MAX></FORCE_RANGE><VALUE_RULE>W gt V2</VALUE_RULE>"), {
     unknown("3:56", "V1"), unknown("3:95", "V2")}},
    {in_q("<STATE V='USED' IF='V1'/><FORCE_VALUE V='V2'/><FORCE_RANGE MAX='V3'/>"
          "<CONSTANT_RANGE MIN='V4' MAX='V5'/>"), {
     unknown("3:48", "V1"), unknown("3:69", "V2"), unknown("3:92", "V3"), unknown("3:118", "V4"),
     unknown("3:127", "V5")}},
    {kDeclared +
     "<PORTS><PORT NAME='p' TYPE='INPUT' WIDTH='V1' WIDTH2D='W - V2' DEFAULT_VALUE='V3'/></PORTS>", {
     unknown("3:43", "V1"), unknown("3:60", "V2"), unknown("3:79", "V3")}},
    {kDeclared + "<PARAMETERS><PARAMETER NAME='P' TYPE='INTEGER' VALUE='4; 6 ; V1 + 1'/>"
     "<PARAMETER NAME='Q' TYPE='INTEGER' DEFAULT_VALUE='V2'/></PARAMETERS>", {
     unknown("3:62", "V1"), unknown("3:121", "V2")}},
    {kDeclared + "<PARAMETER_RULES><PARAMETER NAME='W' VALUE='V1'/></PARAMETER_RULES>", {
     unknown("3:45", "V1")}},
    {macro("DEFINITION='W + V1'"), {
     unknown("3:41", "V1")}},
    {macro("", "<DEFINITION>W + V1</DEFINITION>"), {
     unknown("3:42", "V1")}},
    {rule("M gt 1") + "<MACROS><MACRO NAME='M' DEFINITION='V1'/></MACROS>", {
     unknown("3:71", "V1")}},
    {rule("W gt V1"), {
     unknown("3:19", "V1")}},
    {kDeclared + "<MSGS><MSG TYPE='INFO'><WHEN>W gt V1</WHEN><TEXT>a</TEXT></MSG></MSGS>", {
     unknown("3:35", "V1")}},
    {map("<WIZARD_CONDITION>W gt V1</WIZARD_CONDITION>"), {
     unknown("3:58", "V1")}},
    {map("<WIZARD_CONDITION CONDITION='W gt V1'/>"), {
     unknown("3:69", "V1")}},
    {map("<PARAMETER NAME='W' TYPE='INTEGER' VALUE='V1'><FORCE_VALUE V='V2' IF='V3'/></PARAMETER>"), {
     unknown("3:77", "V1"), unknown("3:97", "V2"), unknown("3:105", "V3")}},
    {hidden("VALUE='1'", "<FORCE_VALUE V='2' IF='W gt V1'/>"), {
     unknown("3:78", "V1")}},
    {kDeclared + "<WAVE_DATA><WAVE NAME='w'><WAVE_CONDITION>W gt V1</WAVE_CONDITION><IF>V2</IF><THEN>"
                 "<STIM>force q 1 0</STIM><STIM>force q 0 5</STIM></THEN>"
                 "<DESCRIPTION><IF>V3</IF><THEN>a</THEN></DESCRIPTION></WAVE></WAVE_DATA>", {
     unknown("3:48", "V1"), unknown("3:71", "V2"), unknown("3:156", "V3")}},
    {kDeclared + intro_with("<IF>W gt V1</IF><THEN><T>a</T><IF>V2</IF><THEN>b</THEN></THEN>"), {
     unknown("3:28", "V1"), unknown("3:53", "V2")}},
    {kDeclared + "<HTML_TEXT><END><IF>V1</IF><THEN>a</THEN></END></HTML_TEXT>", {
     unknown("3:21", "V1")}},
};

const std::string kIf = "<VALUE_RULE><IF>";
const std::string kThen = "</IF><THEN>";
const std::string kElse = "</THEN><ELSE>";
const std::string kEndOfRule = "</ELSE></VALUE_RULE>";

const LintCase kValueRules[] = {
    {in_w(kIf + "W gt V1" + kThen + "W lt V2" + kElse + "W == V3" + kEndOfRule), {
     unknown("3:59", "V1"), unknown("3:77", "V2"), unknown("3:97", "V3")}},
    {in_w(kIf + "W gt V1" + kThen + "W lt V2</THEN></VALUE_RULE>"), {
     unknown("3:59", "V1"), unknown("3:77", "V2")}},
    {in_w(kIf + "W gt (1" + kThen + "W lt 2) or (W" + kElse + "W = 3" + kEndOfRule), {
     "3:61 \")\" is missing [expression-syntax]",
     "3:78 no \"(\" stands before this \")\" [expression-syntax]",
     "3:100 \"=\": write \"==\" [expression-syntax]"}},
    {in_w(kIf + "!W == 1" + kThen + "W % 2 gt 1" + kElse + "S == AUTO" + kEndOfRule), {
     "3:54 \"not\" applies to the first operand alone; write parentheses around the comparison "
     "[not-before-comparison]",
     "3:74 for a negative operand \"%\" and \"mod\" differ, and translation writes one for the other "
     "[sign-of-remainder]",
     "3:100 a text without quotes [bare-word]"}},
};

const LintCase kNames[] = {
    {rule("w gt 3"), {
     unknown("3:14", "w"),
     "  did you mean \"W\"?"}},
    {rule("HALLF(W) gt 3"), {
     "3:14 no macro or function is called HALLF [unknown-name]",
     "  did you mean \"HALF\"?"}},
    {rule("HALF(W, 2) gt 3"), {
     "3:14 the macro HALF takes 1 argument, not 2 [macro-arguments]"}},
    {rule("HALF gt 3"), {
     "3:14 the macro HALF takes 1 argument, not 0 [macro-arguments]"}},
    {rule("log2(W, 2) gt 3"), {
     "3:14 log2 takes 1 argument, not 2 [macro-arguments]"}},
    {rule("W(3) gt 3"), {
     "3:14 W is no macro and takes no arguments [macro-arguments]"}},
    {macro("DEFINITION='1 + M'"), {
     "3:41 the macro M uses itself [macro-recursion]"}},
    {map("<PARAMETER NAME='WW' TYPE='INTEGER' VALUE='1'/>"), {
     "3:52 no parameter is called WW: the map says nothing of any [unknown-name]",
     "  did you mean \"W\"?"}},
    {map("<PORT NAME='qq' TYPE='OUTPUT'/>"), {
     "3:47 no port is called qq: the map says nothing of any [unknown-name]",
     "  did you mean \"q\"?"}},
    {hidden("VALUE='ceil(log2(DEPTH))'"), {
     "3:57 the value is read as a text, since no parameter, port or macro is called DEPTH "
     "[value-read-as-text]"}},
};

const LintCase kUnreadable[] = {
    {rule("( W gt 3"), {
     "3:22 \")\" is missing [expression-syntax]"}},
    {rule("W gt 3 )"), {
     "3:21 no \"(\" stands before this \")\" [expression-syntax]"}},
    {rule("W = 3"), {
     "3:16 \"=\": write \"==\" [expression-syntax]"}},
    {rule("W gt"), {
     "3:18 a number, text, name or \"(\" is missing at the end [expression-syntax]"}},
    {rule("S == 'AUTO'"), {
     "3:19 \"'\": texts stand in double quotes [expression-syntax]"}},
    {rule("W gt 3 &amp; W lt 9"), {
     "3:21 \"&\": write \"&&\" or \"and\" [expression-syntax]"}},
    {rule("W \xE2\x89\xA4 3"), {
     "3:16 this is a one-character \"less or equal\": write \"<=\" or \"lte\" [expression-syntax]"}},
    {rule("W \xE2\x80\x93 1 gt 3"), {
     "3:16 this is a typographic dash: write \"-\" [expression-syntax]"}},
    {rule("W\xC2\xA0gt 3"), {
     "3:15 this is a no-break space: write a blank [expression-syntax]"}},
    {rule("W&#160;gt 3"), {
     "3:15 this is a no-break space: write a blank [expression-syntax]"}},
    {rule("S == \xE2\x80\x9C" "AUTO\xE2\x80\x9D"), {
     "3:19 this is a typographic quotation mark: write \" [expression-syntax]"}},
    {rule("S == \"a\xE2\x80\x93" "b\" )"), {
     "3:27 no \"(\" stands before this \")\" [expression-syntax]"}},
    {kDeclared + "<RULES><RULE>\n  ( W gt 3 ) and\n  (W lt 9)\n</RULE></RULES>", {
     "4:14 translation knows operator words only between blanks [translator-blind]"}},
    {"<RULES><RULE>" + std::string(300, '(') + "1" + std::string(300, ')') + "</RULE></RULES>", {
     "2:270 more than 256 operators and parentheses are open [expression-too-large]"}},
};

const LintCase kNotes[] = {
    {rule("W gt 1 and W lt 3 or W == 8"), {
     "3:32 \"and\" stands beside \"or\" without parentheses; languages differ in how they read that "
     "[mixed-and-or]"}},
    {rule("W gt -2 ^ 2"), {
     "3:19 the sign applies to the power; some languages apply it to the base: write parentheses "
     "[sign-before-power]"}},
    {rule("!W == 1"), {
     "3:14 \"not\" applies to the first operand alone; write parentheses around the comparison "
     "[not-before-comparison]"}},
    {rule("W % 3 gt 1"), {
     "3:16 for a negative operand \"%\" and \"mod\" differ, and translation writes one for the other "
     "[sign-of-remainder]"}},
    {rule("S == AUTO or q == USED"), {
     "3:19 a text without quotes [bare-word]",
     "3:32 a text without quotes [bare-word]"}},
    {rule("W == \"eight\""), {
     "3:16 a number is compared with a text that is none [mixed-comparison]"}},
    {rule("S == \"BLOK\" or S == \"auto\" or S != \"REGISTERS\""), {
     "3:19 the list of S does not hold this [text-not-in-list]",
     "  did you mean \"BLOCK\"?",
     "3:34 the list of S holds this in another letter case [text-not-in-list]",
     "  did you mean \"AUTO\"?",
     "3:49 the list of S does not hold this [text-not-in-list]"}},
    {rule("ceil(W / 3) gt 1"), {
     "3:14 whole numbers are divided without a rest: there is nothing to round [ceil-of-integer]"}},
    {rule("HALF(W + 1) gt 1"), {
     "3:19 put in as text, this would be read otherwise; write parentheses [macro-precedence]"}},
    {rule("(W gt 1)and (W lt 9)"), {
     "3:22 translation knows operator words only between blanks [translator-blind]"}},
};

const LintCase kOfDefaults[] = {
    {rule("S gt 3"), {
     "3:16 a value of another kind is needed here [ill-typed]"}},
    {rule("8 / (W - 8) gt 1"), {
     "3:16 the divisor is 0 [division-by-zero]"}},
    {rule("log2(W - 8) gt 1"), {
     "3:14 there is no result for this operand [domain]"}},
    {rule("2 ^ (W * 20) gt 1"), {
     "3:16 the number does not fit 128 bits [too-large]"}},
};

const std::string kSilent[] = {
    rule("W == 8 and S == \"AUTO\" and q"),
    rule("( W gt 1 and W lt 3 ) or W == 8"),
    rule("!( W == 1 )"),
    rule("W % 3 == 0"),
    rule("W gt -(2 ^ 2)"),
    rule("HALF(W) gt max(1, 2, W) and log2(W) gte 3"),
    rule("ceil(W / 3.0) gt 1"),
    rule("HALF((W + 1)) gt 1"),
    rule("q == \"USED\" or TRUE"),
    rule("W == 8 || 8 / (W - 8) gt 1"),
    in_w("<FORCE_VALUE V='8 / (W - 8)' IF='W gt 8'/>"),
    in_w("<VALUE_RULE><IF>W gt 3</IF><THEN>S == \"AUTO\"</THEN></VALUE_RULE>"),
    macro("ARGUMENTS='a, b' DEFINITION='a + b'"),
    hidden("VALUE='ASYNCHRONOUS'"),
    hidden("VALUE='CLOCK-ENABLE'"),
    map("<PARAMETER NAME='S' TYPE='STRING' VALUE='AUTO'/><PORT NAME='q' TYPE='OUTPUT'/>"),
    // A part of another description, which declares the names.
    "<RULES><RULE>DEPTH gt 3</RULE></RULES>",
};
// clang-format on

TEST(Expressions, every_text_is_looked_at_with_places_in_it) {
    expect_warnings(kEveryText);
}

TEST(Expressions, value_rules_are_told_of_in_their_parts) {
    expect_warnings(kValueRules);
}

TEST(Expressions, names_that_are_none) {
    expect_warnings(kNames);
}

TEST(Expressions, what_cannot_be_read) {
    expect_warnings(kUnreadable);
}

TEST(Expressions, what_may_be_read_otherwise) {
    expect_warnings(kNotes);
}

TEST(Expressions, what_has_no_value_by_default_where_it_is_needed) {
    expect_warnings(kOfDefaults);
}

TEST(Expressions, names_that_were_lost_are_told_of_where_they_were_lost) {
    const Lines lost = LintFixture().warnings(
        rule("FILL gt 3") + "<PARAMETERS><PARAMTER NAME='FILL' TYPE='INTEGER'/></PARAMETERS>");
    EXPECT_EQ(lost, (Lines{"3:50 PARAMTER in PARAMETERS is not read [unknown-element]",
                           "  did you mean \"PARAMETER\"?"}));
    EXPECT_EQ(LintFixture().warnings(rule("FILL gt 3") + "<INCLUDE FILE='none.xml'/>"), Lines());
}

TEST(Expressions, places_are_those_of_the_file_in_which_the_text_stands) {
    LintFixture fixture;
    const std::string part = fixture.folder().write(
        "part.xml",
        "\xEF\xBB\xBF"
        "<ROOT>\n<RULES><RULE>&#87; gt <![CDATA[V1]]></RULE></RULES></ROOT>");
    EXPECT_EQ(fixture.warnings(kDeclared + "<INCLUDE FILE='" + part + "'/>"),
              Lines{"part.xml:2:32 no parameter, port or macro is called V1 [unknown-name]"});
}

TEST(Expressions, what_is_right_stays_silent) {
    expect_silence(kSilent);
}

}  // namespace
