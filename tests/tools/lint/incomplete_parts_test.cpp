// What is dropped or changes its meaning because a part of it is missing, empty or out of order.
#include <gtest/gtest.h>

#include "tests/tools/lint/lint_fixture.h"

namespace {

// clang-format off
const LintCase kIncomplete[] = {
    {"<MACROS><MACRO DEFINITION='1'/></MACROS>", {
     "2:9 the macro has no NAME: it cannot be called [macro-without-name]"}},
    {"<MACROS><MACRO NAME='M' ARGUMENTS='a'/></MACROS>", {
     "2:9 the macro \"M\" has no definition [macro-without-definition]"}},
    {messages_with("<MESSAGE TYPE='INFO'><IF>A</IF></MESSAGE>"), {
     "2:11 the message has no text and is never shown [message-without-text]"}},
    {messages_with("<MESSAGE TYPE='INFO'><IF>A</IF><ELSE>b</ELSE></MESSAGE>"), {
     "2:11 the message has no text and is never shown [message-without-text]"}},
    {parameter_with("<FORCE_VALUE IF='A'/>"), {
     "2:48 FORCE_VALUE has no value and is dropped [value-missing]"}},
    {port_with("<STATE><WHEN>A</WHEN></STATE>"), {
     "2:37 STATE has no value and is dropped [value-missing]"}},
    {hidden_with("<FORCE_VALUE IF='A'/>"), {
     "2:50 FORCE_VALUE has no value and is dropped [value-missing]"}},
    {parameter_with("<FORCE_RANGE MIN='1'/>"), {
     "2:48 FORCE_RANGE has no MAX and is dropped [range-without-max]"}},
    {port_with("<FORCE_RANGE><MIN>1</MIN></FORCE_RANGE>"), {
     "2:37 FORCE_RANGE has no MAX and is dropped [range-without-max]"}},
    {port_with("<CONSTANT_RANGE MIN='1'/>"), {
     "2:37 CONSTANT_RANGE has no MAX and is dropped [range-without-max]"}},
};

const LintCase kEmptyConditions[] = {
    {parameter_with("<FORCE_VALUE V='1' IF=''/>"), {
     "2:67 the condition IF is empty [empty-condition]"}},
    {parameter_with("<FORCE_RANGE MAX='1'><WHEN> </WHEN></FORCE_RANGE>"), {
     "2:69 the condition WHEN is empty [empty-condition]"}},
    {wave_with("<WAVE_CONDITION/>"), {
     "2:27 the condition WAVE_CONDITION is empty [empty-condition]"}},
    {wave_with("<IF></IF><THEN><STIM>force a 1 0</STIM></THEN>"), {
     "2:27 the condition IF is empty [empty-condition]"}},
    {intro_with("<IF/><THEN>a</THEN>"), {
     "2:19 the condition IF is empty [empty-condition]"}},
    {messages_with("<MESSAGE TYPE='INFO'><IF/><THEN>a</THEN></MESSAGE>"), {
     "2:32 the condition IF is empty [empty-condition]"}},
    {wizard_with("<WIZARD_MAP NAME='m'><WIZARD_CONDITION/></WIZARD_MAP>"), {
     "2:35 the condition WIZARD_CONDITION is empty [empty-condition]"}},
    {"<RULES><RULE> </RULE></RULES>", {
     "2:8 the condition RULE is empty [empty-condition]"}},
    {parameter_with("<VALUE_RULE/>"), {
     "2:48 the condition VALUE_RULE is empty [empty-condition]"}},
};

const LintCase kBranches[] = {
    {wave_with("<THEN><STIM>force a 1 0</STIM></THEN>"), {
     "2:27 THEN has no IF before it: it applies always [then-without-if]"}},
    {wave_with("<IF>A</IF><STIM>force a 1 0</STIM>\n<THEN><STIM>force b 1 0</STIM></THEN>"), {
     "3:1 THEN has no IF before it: it applies always [then-without-if]",
     "  2:37 the IF before it ends here"}},
    {wave_with("<IF>A</IF><ELSE><STIM>force a 1 0</STIM></ELSE>"), {
     "2:37 ELSE has no THEN before it and never applies [else-without-then]"}},
    {wave_with("<IF>A</IF>\n<ELSE><STIM>force a 1 0</STIM></ELSE>\n"
               "<THEN><STIM>force a 0 0</STIM></THEN>"), {
     "3:1 ELSE has no THEN before it and never applies [else-without-then]",
     "4:1 THEN has no IF before it: it applies always [then-without-if]",
     "  3:1 the IF before it ends here"}},
    {wave_with("<STIM>force a 1 0</STIM><ELSE><STIM>force a 1 0</STIM></ELSE>"), {
     "2:51 ELSE has no THEN before it and never applies [else-without-then]"}},
    {wave_with("<IF>A</IF><STIM>force a 1 0</STIM>"), {
     "2:27 IF has no THEN after it and is dropped [if-without-then]"}},
    {wave_with("<IF>A</IF><IF>B</IF><THEN><STIM>force a 1 0</STIM></THEN>"), {
     "2:27 IF has no THEN after it and is dropped [if-without-then]"}},
    {intro_with("<THEN>a</THEN>"), {
     "2:19 THEN has no IF before it: it applies always [then-without-if]"}},
    {intro_with("<IF>A</IF>\n<ELSE>b</ELSE>\n<THEN>c</THEN>"), {
     "4:1 THEN has no IF before it: it applies always [then-without-if]",
     "  3:1 the IF before it ends here"}},
    {intro_with("<T>a</T><ELSE>b</ELSE>"), {
     "2:27 ELSE has no IF before it and is never shown [else-without-if]"}},
    {intro_with("<IF>A</IF><T>b</T>"), {
     "2:19 IF has no THEN after it and is dropped [if-without-then]"}},
    {intro_with("<IF>A</IF><THEN><THEN>b</THEN></THEN>"), {
     "2:35 THEN has no IF before it: it applies always [then-without-if]"}},
    {wave_with("<DESCRIPTION><THEN>a</THEN></DESCRIPTION>"), {
     "2:40 THEN has no IF before it: it applies always [then-without-if]"}},
    {parameter_with("<VALUE_RULE><IF>A</IF></VALUE_RULE>"), {
     "2:60 IF has no THEN after it and is dropped [if-without-then]"}},
    {parameter_with("<VALUE_RULE><THEN>A</THEN><ELSE>B</ELSE></VALUE_RULE>"), {
     "2:60 THEN has no IF beside it and is dropped [then-without-if]"}},
    {parameter_with("<VALUE_RULE><ELSE>B</ELSE></VALUE_RULE>"), {
     "2:60 ELSE has no condition beside it and never applies [else-without-if]"}},
    {messages_with("<MESSAGE TYPE='INFO'><THEN>a</THEN></MESSAGE>"), {
     "2:32 THEN has no IF beside it: it is always shown [then-without-if]"}},
    {messages_with("<MESSAGE TYPE='INFO'><TEXT>a</TEXT><ELSE>b</ELSE></MESSAGE>"), {
     "2:46 ELSE has no condition beside it and never applies [else-without-if]"}},
    {parameter_with("<FORCE_VALUE V='1' ELSE='2'/>"), {
     "2:67 ELSE has no condition beside it and never applies [else-without-if]"}},
};

const std::string kSilent[] = {
    "<MACROS><MACRO NAME='M'><DEFINITION>1</DEFINITION></MACRO></MACROS>",
    "<MACROS><MACRO NAME='M' DEFINITION='a' ARGUMENTS='a'/></MACROS>",
    messages_with("<MESSAGE TYPE='INFO'><TEXT>a</TEXT></MESSAGE>"),
    messages_with("<MESSAGE TYPE='INFO'><ELSE>b</ELSE><THEN>a</THEN><IF>A</IF></MESSAGE>"),
    parameter_with("<FORCE_VALUE THEN='1'/><FORCE_RANGE V='3'/>"),
    parameter_with("<FORCE_VALUE V='1' WHEN_CMD='a'/><FORCE_RANGE MAX='3' IF='A'/>"),
    parameter_with("<VALUE_RULE><THEN>B</THEN><IF>A</IF><ELSE>C</ELSE></VALUE_RULE>"),
    port_with("<STATE><ELSE>UNUSED</ELSE><IF>A</IF><TO>USED</TO></STATE>"),
    wizard_with("<WIZARD_MAP NAME='m'><WIZARD_CONDITION CONDITION='A'/></WIZARD_MAP>"),
    wave_with("<IF>A</IF><CAPTION>a</CAPTION><THEN><STIM>force a 1 0</STIM></THEN>"
              "<DISPLAY>add wave -hex a</DISPLAY><ELSE><STIM>force a 0 0</STIM></ELSE>"),
    wave_with("<IF>A</IF><THEN><STIM>force a 1 0</STIM></THEN><THEN><STIM>force b 1 0</STIM></THEN>"
              "<STIM>force c 1 0</STIM>"),
    intro_with("<IF>A</IF><ELSE>b</ELSE><T>c</T><IF>B</IF><THEN>d</THEN><IF>C</IF><THEN>e</THEN>"),
    intro_with("<IF>A</IF><ELSE><T>b</T></ELSE><THEN>c</THEN>"),
};
// clang-format on

TEST(IncompleteParts, records_without_what_they_need) {
    expect_warnings(kIncomplete);
}

TEST(IncompleteParts, conditions_that_are_there_but_empty) {
    expect_warnings(kEmptyConditions);
}

TEST(IncompleteParts, branches_that_have_lost_each_other) {
    expect_warnings(kBranches);
}

TEST(IncompleteParts, what_is_complete_stays_silent) {
    expect_silence(kSilent);
}

}  // namespace
