// What is not read where it stands.
#include <gtest/gtest.h>

#include "tests/tools/lint/lint_fixture.h"

namespace {

// clang-format off
const LintCase kUnknownElements[] = {
    {"<PARAMETERS><PARAMETR NAME='W' TYPE='INTEGER'/></PARAMETERS>", {
     "2:13 PARAMETR in PARAMETERS is not read [unknown-element]",
     "  did you mean \"PARAMETER\"?"}},
    {"<PARAMETERS><PORT NAME='q' TYPE='OUTPUT'/></PARAMETERS>", {
     "2:13 PORT in PARAMETERS is not read [unknown-element]",
     "  known here: PARAMETER"}},
    {"<PORTS><PARAMETER NAME='W' TYPE='INTEGER'/></PORTS>", {
     "2:8 PARAMETER in PORTS is not read [unknown-element]",
     "  known here: PORT"}},
    {"<PORT_RULES><PROT NAME='q'/></PORT_RULES>", {
     "2:13 PROT in PORT_RULES is not read [unknown-element]",
     "  did you mean \"PORT\"?"}},
    {"<HIDDEN_PARAMETERS><HIDDEN NAME='H'/></HIDDEN_PARAMETERS>", {
     "2:20 HIDDEN in HIDDEN_PARAMETERS is not read [unknown-element]",
     "  known here: PARAMETER"}},
    {"<MACROS><MACRO NAME='M'><DEFINITION>1</DEFINITION><NOTE/></MACRO></MACROS>", {
     "2:51 NOTE in MACRO is not read [unknown-element]",
     "  known here: DEFINITION"}},
    {"<WAVE_DATA><Wave NAME='w'/></WAVE_DATA>", {
     "2:12 Wave in WAVE_DATA is not read [unknown-element]",
     "  did you mean \"WAVE\"?"}},
    {"<CUSTOM_VECTORS><VECTOR NAME='w'/></CUSTOM_VECTORS>", {
     "2:17 VECTOR in CUSTOM_VECTORS is not read [unknown-element]",
     "  known here: CUSTOM_VECTOR, WAVE"}},
    {wizard_with("<WIZARD NAME='m'/>"), {
     "2:14 WIZARD in WIZARD_DATA is not read [unknown-element]",
     "  known here: PARAMETER, PORT, WIZARD_MAP"}},
    {"<HTML_TEXT><TITEL>Counter</TITEL></HTML_TEXT>", {
     "2:12 TITEL in HTML_TEXT is not read [unknown-element]",
     "  did you mean \"TITLE\"?"}},
    {intro_with("<T>a</T><P>b</P>"), {
     "2:27 P in INTRO is not read [unknown-element]",
     "  known here: ELSE, IF, T, TEXT, THEN"}},
    {intro_with("<IF>A</IF><THEN><B>b</B></THEN>"), {
     "2:35 B in THEN is not read [unknown-element]",
     "  known here: ELSE, IF, T, TEXT, THEN"}},
    {wave_with("<DESCRIPTION><T>a</T><B>b</B></DESCRIPTION>"), {
     "2:48 B in DESCRIPTION is not read [unknown-element]",
     "  known here: ELSE, IF, T, TEXT, THEN"}},
    {"<HTML_TEXT><TITLE>A <B>counter</B></TITLE></HTML_TEXT>", {
     "2:21 B in TITLE is not read [unknown-element]"}},
    {wave_with("<CAPTION>A <B>count</B></CAPTION>"), {
     "2:38 B in CAPTION is not read [unknown-element]"}},
    {"<RULES><RULE>A<NOTE>b</NOTE></RULE></RULES>", {
     "2:15 NOTE in RULE is not read [unknown-element]"}},
};

const LintCase kHiddenParameters[] = {
    {hidden_with("<STATE V='USED'/>"), {
     "2:50 STATE in PARAMETER is not read [unknown-element]",
     "  known here: FORCE_VALUE"}},
    {hidden_with("<FORCE_VALUE V='1' IFF='A'/>"), {
     "2:69 the attribute IFF of FORCE_VALUE is not read [unknown-attribute]",
     "  did you mean \"IF\"?"}},
    {hidden_with("<FORCE_VALUE><VALUE>1</VALUE><V>1</V></FORCE_VALUE>"), {
     "2:63 VALUE in FORCE_VALUE is not read [unknown-element]",
     "  known here: ELSE, IF, THEN, TO, V, WHEN, WHEN_CMD"}},
    {hidden_with("<FORCE_VALUE V='1'><WHEN_CMD>a</WHEN_CMD><ELSE>2</ELSE></FORCE_VALUE>"), {
     "2:91 ELSE is not read after WHEN_CMD [overridden]"}},
};

const LintCase kAttributes[] = {
    {"<RULES ENABLED='OFF'><RULE>A</RULE></RULES>", {
     "2:8 the attribute ENABLED of RULES is not read [unknown-attribute]"}},
    {"<PORTS FILE='ports.xml'/>", {
     "2:8 the attribute FILE of PORTS is not read [unknown-attribute]"}},
    {"<MACROS><MACRO NAME='M' DEFINTION='1' DEFINITION='1'/></MACROS>", {
     "2:25 the attribute DEFINTION of MACRO is not read [unknown-attribute]",
     "  did you mean \"DEFINITION\"?"}},
    {"<HTML_TEXT><TITLE TEXT='Counter'/></HTML_TEXT>", {
     "2:19 the attribute TEXT of TITLE is not read [unknown-attribute]"}},
    {"<RULES><RULE REQUIRED='OFF'>A</RULE></RULES>", {
     "2:14 the attribute REQUIRED of RULE is not read [unknown-attribute]",
     "  known here: ENABLED, REQUIRED_RULE"}},
    {wave_with("<STIM SIGNAL='clock'>force clock 0 0</STIM>"), {
     "2:33 the attribute SIGNAL of STIM is not read [unknown-attribute]"}},
};

const LintCase kConditions[] = {
    {messages_with("<MESSAGE TYPE='INFO' IF='A'>b</MESSAGE>"), {
     "2:32 the attribute IF of MESSAGE is not read: MESSAGE applies always [unread-condition]"}},
    {"<RULES><RULE WHEN='A'>B</RULE></RULES>", {
     "2:14 the attribute WHEN of RULE is not read: RULE applies always [unread-condition]"}},
    {wave_with("<STIM IF='A'>force clock 0 0</STIM>"), {
     "2:33 the attribute IF of STIM is not read: STIM applies always [unread-condition]"}},
    {parameter_with("<VALUE_RULE IF='A'>B</VALUE_RULE>"), {
     "2:60 the attribute IF of VALUE_RULE is not read: VALUE_RULE applies always "
     "[unread-condition]"}},
    {wave_with("<WAVE_CONDITION IF='A'>B</WAVE_CONDITION>"), {
     "2:43 the attribute IF of WAVE_CONDITION is not read: WAVE_CONDITION applies always "
     "[unread-condition]"}},
};

const LintCase kTexts[] = {
    {"<INCLUDE>part.xml</INCLUDE>", {
     "2:10 the text of INCLUDE is not read [unread-text]"}},
    {"<PORTS>\n  clock\n</PORTS>", {
     "3:3 the text of PORTS is not read [unread-text]"}},
    {port_with("<STATE V='UNUSED'>USED</STATE>"), {
     "2:55 the text of STATE is not read [unread-text]"}},
    {intro_with("The counter"), {
     "2:19 the text of INTRO is not read [unread-text]"}},
    {"<MACROS><MACRO NAME='M' DEFINITION='1'>2</MACRO></MACROS>", {
     "2:40 the text of MACRO is not read [unread-text]"}},
    {"<FUNCTION_INFORMATION><START_TIME>5</START_TIME></FUNCTION_INFORMATION>", {
     "2:35 the text of START_TIME is not read [unread-text]"}},
    {wave_with("<IF>A</IF><THEN>force a 1 0<STIM>force b 1 0</STIM></THEN>"), {
     "2:43 the text of THEN is not read [unread-text]",
     "  a command stands in STIM or VECTOR"}},
};

const LintCase kOverridden[] = {
    {messages_with("<MESSAGE TYPE='INFO'>a<IF>B</IF></MESSAGE>"), {
     "2:33 IF is not read because MESSAGE has a text of its own [overridden]"}},
    {parameter_with("<VALUE_RULE>A<IF>B</IF><THEN>C</THEN></VALUE_RULE>"), {
     "2:60 the text of VALUE_RULE is not read because it has IF and THEN [overridden]"}},
    {parameter_with("<VALUE_RULE>A<IF>B</IF></VALUE_RULE>"), {
     "2:61 IF is not read because VALUE_RULE has a text of its own [overridden]"}},
    {wizard_with("<WIZARD_MAP NAME='m'><WIZARD_CONDITION CONDITION='A'>B</WIZARD_CONDITION>"
                 "</WIZARD_MAP>"), {
     "2:53 the attribute CONDITION of WIZARD_CONDITION is not read because it has a text of its "
     "own [overridden]"}},
    {"<MACROS><MACRO NAME='M' DEFINITION='1'><DEFINITION>2</DEFINITION></MACRO></MACROS>", {
     "2:25 the attribute DEFINITION of MACRO is not read because it has an element DEFINITION "
     "[overridden]"}},
    {"<MACROS><MACRO NAME='M'><DEFINITION>2</DEFINITION><DEFINITION>3</DEFINITION></MACRO>"
     "</MACROS>", {
     "2:51 DEFINITION is not read because it is not the first in MACRO [overridden]"}},
};

// What is read, is told of, or is meant for others.
const std::string kSilent[] = {
    "<PARAMETERS/><PORTS></PORTS><RULES> </RULES>",
    "<PARAMETERS><!-- none --></PARAMETERS>",
    "<PARAMETRS><PARAMETER NAME='W'/></PARAMETRS>",
    "<INCLUDE PATH='.'><DIR>a</DIR></INCLUDE>",
    "<HTML_TEXT><TITLE>Counter</TITLE><HEADER> </HEADER></HTML_TEXT>",
    "<HTML_TEXT><INTRO><IF><T>A</T></IF><THEN>It has <T>an enable.</T></THEN></INTRO></HTML_TEXT>",
    "<MACROS><MACRO NAME='M'><BODY>1</BODY></MACRO><MACRO NAME='N' DEFINITION='1'/></MACROS>",
    "<FUNCTION_INFORMATION><TIME_SCALE VALUE='ns'><A/><B/></TIME_SCALE></FUNCTION_INFORMATION>",
    "<WAVE_DATA><WAVE NAME='w' COLOUR='red'><NOTE IF='A'>b</NOTE>"
    "<STIM>force a 1 0</STIM></WAVE></WAVE_DATA>",
    "<RULES><CONDITION ENABLED='ON' REQUIRED_RULE='ON'>A</CONDITION></RULES>",
};
// clang-format on

TEST(UnreadParts, elements_of_unknown_tags) {
    expect_warnings(kUnknownElements);
}

TEST(UnreadParts, everything_wrong_in_a_hidden_parameter) {
    expect_warnings(kHiddenParameters);
}

TEST(UnreadParts, attributes_of_what_has_none) {
    expect_warnings(kAttributes);
}

TEST(UnreadParts, conditions_as_attributes_where_none_is_read) {
    expect_warnings(kConditions);
}

TEST(UnreadParts, texts_of_what_has_none) {
    expect_warnings(kTexts);
}

TEST(UnreadParts, two_ways_to_say_one_thing) {
    expect_warnings(kOverridden);
}

TEST(UnreadParts, what_is_read_or_told_stays_silent) {
    expect_silence(kSilent);
}

TEST(UnreadParts, attributes_of_xml_stay_silent) {
    EXPECT_EQ(LintFixture().warnings_of_file(
                  "<ROOT xmlns='a' xmlns:xsi='b' xsi:schemaLocation='c' xml:lang='en'/>"),
              Lines());
    EXPECT_EQ(LintFixture().warnings_of_file("<ROOT VERSION='1'/>"),
              Lines({"1:7 the attribute VERSION of ROOT is not read [unknown-attribute]"}));
}

TEST(UnreadParts, a_root_that_is_not_root_in_included_files_too) {
    EXPECT_EQ(LintFixture().warnings_of_file("<Root><PORTS><A/></PORTS></Root>"),
              Lines({"1:1 the root of the file is Root and not ROOT: nothing of the file is read "
                     "[foreign-root]",
                     "  did you mean \"ROOT\"?"}));
    LintFixture fixture;
    const std::string part = fixture.folder().write("part.xml", "<PORTS/>");
    EXPECT_EQ(fixture.warnings("<INCLUDE FILE='" + part + "'/>"),
              Lines({"part.xml:1:1 the root of the file is PORTS and not ROOT: nothing of the file "
                     "is read [foreign-root]",
                     "  known here: ROOT"}));
}

TEST(UnreadParts, files_that_cannot_be_read_are_left_to_their_messages) {
    EXPECT_EQ(LintFixture().warnings_of_file("<Root/><Root/>"), Lines());
    EXPECT_EQ(LintFixture().warnings_of_file("<Root>"), Lines());
}

}  // namespace
