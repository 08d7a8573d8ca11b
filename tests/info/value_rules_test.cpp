#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

enum Kind { kHidden, kInput, kOutput, kBidir, kBuried, kInteger, kString, kMacro };

const std::vector<Kind> kPorts{kInput, kOutput, kBidir, kBuried};
const std::vector<Kind> kParameters{kInteger, kString};
const std::vector<Kind> kOthers{kHidden, kMacro};

// An object "N" of the kind with these sub-elements. Those of hidden parameters and macros come
// through PARAMETER_RULES, which reports what is wrong with them.
std::string object(Kind kind, const std::string& subs) {
    const auto port = [&](const char* type) {
        return "<PORTS><PORT NAME='N' TYPE='" + std::string(type) + "'>" + subs + "</PORT></PORTS>";
    };
    const auto parameter = [&](const char* type) {
        return "<PARAMETERS><PARAMETER NAME='N' TYPE='" + std::string(type) + "'>" + subs +
               "</PARAMETER></PARAMETERS>";
    };
    const std::string rules =
        "<PARAMETER_RULES><PARAMETER NAME='N'>" + subs + "</PARAMETER></PARAMETER_RULES>";
    switch (kind) {
        case kHidden:
            return "<HIDDEN_PARAMETERS><PARAMETER NAME='N'/></HIDDEN_PARAMETERS>" + rules;
        case kInput:
            return port("INPUT");
        case kOutput:
            return port("OUTPUT");
        case kBidir:
            return port("BIDIR");
        case kBuried:
            return port("BURIED");
        case kInteger:
            return parameter("INTEGER");
        case kString:
            return parameter("STRING");
        case kMacro:
            return "<MACROS><MACRO NAME='N'/></MACROS>" + rules;
    }
    return "";
}

std::string not_admitted(const std::string& tag) {
    return "Sub tag " + tag + " is not a valid sub tag of PORT ";
}

std::string bad_attribute(const std::string& name) {
    return "Attribute " + name + " is not a recognized attribute for object N";
}

std::string bad_sub_tag(const std::string& tag) {
    return "Sub tag " + tag + " is not a recognized sub-tag for parameters ";
}

// What an object makes of sub-elements: its rules and the messages.
struct Row {
    std::string subs;
    std::vector<Rule> rules;
    Messages messages;
};

void expect_of(const std::vector<Kind>& kinds, const std::vector<Row>& rows) {
    for (const Kind kind : kinds) {
        for (const Row& row : rows) {
            SCOPED_TRACE("kind " + std::to_string(kind) + ": " + row.subs);
            Loaded store(object(kind, row.subs));
            EXPECT_EQ(rules_of(store.info.get_kivo_obj("N")), row.rules);
            EXPECT_EQ(store.messages(), row.messages);
        }
    }
}

}  // namespace

TEST(ValueRules, admission_by_tag_and_kind) {
    expect_of(kPorts, {
                          {"<STATE V='1'/>", {{"1", "", "", 2}}, {}},
                          {"<FORCE_VALUE V='1'/>", {{"1", "", "", 6}}, {}},
                          {"<FORCE_RANGE MAX='1'/>", {{"1", "", "", 7}}, {}},
                          {"<CONSTANT_RANGE MAX='1'/>", {{"1", "", "", 3}}, {}},
                          {"<VALUE_RULE>N</VALUE_RULE>", {}, {not_admitted("VALUE_RULE")}},
                      });
    expect_of(kParameters, {
                               {"<STATE V='1'/>", {}, {not_admitted("STATE")}},
                               {"<FORCE_VALUE V='1'/>", {{"1", "", "", 2}}, {}},
                               {"<FORCE_RANGE MAX='1'/>", {{"1", "", "", 1}}, {}},
                               {"<CONSTANT_RANGE MAX='1'/>", {}, {not_admitted("CONSTANT_RANGE")}},
                               {"<VALUE_RULE>N</VALUE_RULE>", {{"", "", "N", 4}}, {}},
                           });
    expect_of(kOthers, {
                           {"<STATE V='1'/>", {}, {not_admitted("STATE")}},
                           {"<FORCE_VALUE V='1'/>", {{"1", "", "", 2}}, {}},
                           {"<FORCE_RANGE MAX='1'/>", {}, {not_admitted("FORCE_RANGE")}},
                           {"<CONSTANT_RANGE MAX='1'/>", {}, {not_admitted("CONSTANT_RANGE")}},
                           {"<VALUE_RULE>N</VALUE_RULE>", {}, {not_admitted("VALUE_RULE")}},
                       });
}

TEST(ValueRules, tags_that_no_kind_admits) {
    for (const std::string tag : {"state", "Force_Value", "FORCE", "RULE", "V", "x:STATE"}) {
        const std::string sub = "<" + tag + " V='1'/>";
        expect_of({kHidden, kInput, kBuried, kInteger, kString, kMacro},
                  {{sub, {}, {not_admitted(tag)}}});
    }
}

TEST(ValueRules, rejected_sub_elements_are_not_read) {
    expect_of({kInteger}, {{"<STATE V='1' BAD='1'><BAD/></STATE>", {}, {not_admitted("STATE")}}});
    expect_of({kInput}, {{"<VALUE_RULE><BAD/></VALUE_RULE>", {}, {not_admitted("VALUE_RULE")}}});
}

TEST(ValueRules, attributes_of_a_state) {
    expect_of(kPorts, {
                          {"<STATE V='1'/>", {{"1", "", "", 2}}, {}},
                          {"<STATE TO='1'/>", {{"1", "", "", 2}}, {}},
                          {"<STATE THEN='1'/>", {{"1", "", "", 2}}, {}},
                          {"<STATE V='1' ELSE='0'/>", {{"1", "0", "", 2}}, {}},
                          {"<STATE V='1' IF='A == 2'/>", {{"1", "", "A == 2", 2}}, {}},
                          {"<STATE V='1' WHEN='A == 2'/>", {{"1", "", "A == 2", 2}}, {}},
                          {"<STATE V='1' WHEN_CMD='reset'/>", {{"1", "", "reset", 0}}, {}},
                          {"<STATE V='1' WHEN_CMD=''/>", {{"1", "", "", 0}}, {}},
                          {"<STATE V='1' MAX='2'/>", {{"1", "", "", 2}}, {bad_attribute("MAX")}},
                          {"<STATE V='1' MIN='2'/>", {{"1", "", "", 2}}, {bad_attribute("MIN")}},
                          {"<STATE v='1'/>", {}, {bad_attribute("v")}},
                          {"<STATE V='1' NAME='x'/>", {{"1", "", "", 2}}, {bad_attribute("NAME")}},
                      });
}

TEST(ValueRules, attributes_of_a_forced_value) {
    expect_of({kHidden, kMacro, kInteger, kString},
              {
                  {"<FORCE_VALUE V='0'/>", {{"0", "", "", 2}}, {}},
                  {"<FORCE_VALUE TO='0'/>", {{"0", "", "", 2}}, {}},
                  {"<FORCE_VALUE THEN='0'/>", {{"0", "", "", 2}}, {}},
                  {"<FORCE_VALUE V='0' ELSE='1' IF='c'/>", {{"0", "1", "c", 2}}, {}},
                  {"<FORCE_VALUE V='0' ELSE='1' WHEN_CMD='c'/>", {{"0", "1", "c", 0}}, {}},
                  {"<FORCE_VALUE V='0' MAX='1'/>", {{"0", "", "", 2}}, {bad_attribute("MAX")}},
                  {"<FORCE_VALUE MIN='1'/>", {}, {bad_attribute("MIN")}},
              });
    expect_of(kPorts,
              {
                  {"<FORCE_VALUE V='1' IF='MODE == 2'/>", {{"1", "", "MODE == 2", 6}}, {}},
                  {"<FORCE_VALUE V='1' ELSE='0' WHEN='c'/>", {{"1", "0", "c", 6}}, {}},
                  {"<FORCE_VALUE V='1' WHEN_CMD='x'/>", {{"1", "", "x", 6}}, {}},
                  {"<FORCE_VALUE V='1' MIN='2'/>", {{"1", "", "", 6}}, {bad_attribute("MIN")}},
              });
}

TEST(ValueRules, attributes_of_a_forced_range) {
    expect_of(
        kParameters,
        {
            {"<FORCE_RANGE MAX='15' MIN='1'/>", {{"15", "1", "", 1}}, {}},
            {"<FORCE_RANGE V='3'/>", {{"3", "", "", 1}}, {}},
            {"<FORCE_RANGE TO='3'/>", {{"3", "", "", 1}}, {}},
            {"<FORCE_RANGE THEN='3'/>", {{"3", "", "", 1}}, {}},
            // Attributes are visited by name, so V stands in for MAX.
            {"<FORCE_RANGE V='3' MAX='15'/>", {{"3", "", "", 1}}, {}},
            {"<FORCE_RANGE MAX='15' MIN='1' WHEN='c'/>", {{"15", "1", "c", 1}}, {}},
            {"<FORCE_RANGE MAX='15' MIN='1' WHEN_CMD='c'/>", {{"15", "1", "c", 0}}, {}},
            {"<FORCE_RANGE MAX='15' ELSE='1'/>", {{"15", "", "", 1}}, {bad_attribute("ELSE")}},
            {"<FORCE_RANGE MIN='1'/>", {}, {}},
        });
    expect_of(
        kPorts,
        {
            {"<FORCE_RANGE MAX='15' MIN='1'/>", {{"15", "1", "", 7}}, {}},
            {"<FORCE_RANGE MAX='15' IF='c'/>", {{"15", "", "c", 7}}, {}},
            {"<FORCE_RANGE MAX='15' WHEN_CMD='c'/>", {{"15", "", "c", 7}}, {}},
            {"<FORCE_RANGE V='3'/>", {}, {bad_attribute("V")}},
            {"<FORCE_RANGE TO='3' THEN='4'/>", {}, {bad_attribute("THEN"), bad_attribute("TO")}},
            {"<FORCE_RANGE V='3' MAX='15'/>", {{"15", "", "", 7}}, {bad_attribute("V")}},
            {"<FORCE_RANGE MAX='15' ELSE='1'/>", {{"15", "", "", 7}}, {bad_attribute("ELSE")}},
        });
}

TEST(ValueRules, attributes_of_a_constant_range) {
    expect_of(
        kPorts,
        {
            {"<CONSTANT_RANGE MAX='7' MIN='0'/>", {{"7", "0", "", 3}}, {}},
            {"<CONSTANT_RANGE V='7'/>", {{"7", "", "", 3}}, {}},
            {"<CONSTANT_RANGE TO='7'/>", {{"7", "", "", 3}}, {}},
            {"<CONSTANT_RANGE THEN='7'/>", {{"7", "", "", 3}}, {}},
            {"<CONSTANT_RANGE MAX='7' IF='c'/>", {{"7", "", "c", 3}}, {}},
            {"<CONSTANT_RANGE MAX='7' MIN='0' WHEN_CMD='c'/>", {{"7", "0", "c", 0}}, {}},
            {"<CONSTANT_RANGE MAX='7' ELSE='0'/>", {{"7", "", "", 3}}, {bad_attribute("ELSE")}},
            {"<CONSTANT_RANGE MIN='0'/>", {}, {}},
        });
}

TEST(ValueRules, later_attribute_by_name_overwrites) {
    expect_of({kInput},
              {
                  {"<STATE V='1' TO='2' THEN='3'/>", {{"1", "", "", 2}}, {}},
                  {"<STATE TO='2' THEN='3'/>", {{"2", "", "", 2}}, {}},
                  {"<STATE V='1' WHEN_CMD='c' WHEN='b' IF='a'/>", {{"1", "", "c", 0}}, {}},
                  {"<STATE V='1' WHEN='b' IF='a'/>", {{"1", "", "b", 2}}, {}},
                  {"<STATE V='' TO='2'/>", {}, {}},
              });
}

TEST(ValueRules, sub_elements_of_a_state) {
    expect_of(
        kPorts,
        {
            {"<STATE><V>1</V></STATE>", {{"1", "", "", 2}}, {}},
            {"<STATE><TO>1</TO></STATE>", {{"1", "", "", 2}}, {}},
            {"<STATE><IF>c</IF><THEN>1</THEN><ELSE>0</ELSE></STATE>", {{"1", "0", "c", 2}}, {}},
            {"<STATE><WHEN>c</WHEN><V>1</V></STATE>", {{"1", "", "c", 2}}, {}},
            {"<STATE><WHEN_CMD>c</WHEN_CMD><V>1</V></STATE>", {{"1", "", "c", 0}}, {}},
            {"<STATE><V>1</V><MAX>2</MAX></STATE>", {{"1", "", "", 2}}, {bad_sub_tag("MAX")}},
            {"<STATE><MIN>2</MIN></STATE>", {}, {bad_sub_tag("MIN")}},
            {"<STATE><v>1</v><BAD/></STATE>", {}, {bad_sub_tag("v"), bad_sub_tag("BAD")}},
        });
}

TEST(ValueRules, sub_elements_of_a_forced_value) {
    expect_of(kPorts, {{"<FORCE_VALUE><V>1</V><ELSE>0</ELSE><WHEN_CMD>c</WHEN_CMD></FORCE_VALUE>",
                        {{"1", "0", "c", 6}},
                        {}}});
    expect_of({kHidden, kMacro, kInteger, kString},
              {{"<FORCE_VALUE><V>1</V><ELSE>0</ELSE><WHEN_CMD>c</WHEN_CMD></FORCE_VALUE>",
                {{"1", "0", "c", 0}},
                {}},
               {"<FORCE_VALUE><V>1</V><MAX>2</MAX></FORCE_VALUE>",
                {{"1", "", "", 2}},
                {bad_sub_tag("MAX")}}});
}

TEST(ValueRules, sub_elements_of_a_forced_range) {
    const auto expect_kind = [](const std::vector<Kind>& kinds, std::int32_t kind) {
        expect_of(kinds, {
                             {"<FORCE_RANGE><MAX>9</MAX><MIN>1</MIN><IF>c</IF></FORCE_RANGE>",
                              {{"9", "1", "c", kind}},
                              {}},
                             {"<FORCE_RANGE><V>9</V></FORCE_RANGE>", {}, {bad_sub_tag("V")}},
                             {"<FORCE_RANGE><TO>9</TO><THEN>9</THEN></FORCE_RANGE>",
                              {},
                              {bad_sub_tag("TO"), bad_sub_tag("THEN")}},
                             {"<FORCE_RANGE MAX='9'><ELSE>1</ELSE></FORCE_RANGE>",
                              {{"9", "", "", kind}},
                              {bad_sub_tag("ELSE")}},
                         });
    };
    expect_kind(kParameters, 1);
    expect_kind(kPorts, 7);
}

TEST(ValueRules, sub_elements_of_a_constant_range) {
    expect_of(
        kPorts,
        {
            {"<CONSTANT_RANGE><MAX>7</MAX><MIN>0</MIN></CONSTANT_RANGE>",
             {},
             {bad_sub_tag("MAX"), bad_sub_tag("MIN")}},
            {"<CONSTANT_RANGE><V>7</V><WHEN>c</WHEN></CONSTANT_RANGE>", {{"7", "", "c", 3}}, {}},
            {"<CONSTANT_RANGE><THEN>7</THEN><ELSE>1</ELSE></CONSTANT_RANGE>",
             {{"7", "", "", 3}},
             {bad_sub_tag("ELSE")}},
        });
}

TEST(ValueRules, command_condition_shuts_out_what_its_kind_admitted) {
    expect_of(
        kPorts,
        {
            {"<STATE V='1'><WHEN_CMD>c</WHEN_CMD><ELSE>0</ELSE></STATE>",
             {{"1", "", "c", 0}},
             {bad_sub_tag("ELSE")}},
            {"<STATE V='1' WHEN_CMD='c'><ELSE>0</ELSE></STATE>",
             {{"1", "", "c", 0}},
             {bad_sub_tag("ELSE")}},
            {"<STATE V='1'><ELSE>0</ELSE><WHEN_CMD>c</WHEN_CMD></STATE>", {{"1", "0", "c", 0}}, {}},
            // The kind does not come back with another condition.
            {"<STATE V='1'><WHEN_CMD>c</WHEN_CMD><IF>d</IF><ELSE>0</ELSE></STATE>",
             {{"1", "", "d", 0}},
             {bad_sub_tag("ELSE")}},
            {"<FORCE_VALUE V='1'><WHEN_CMD>c</WHEN_CMD><ELSE>0</ELSE></FORCE_VALUE>",
             {{"1", "", "c", 6}},
             {bad_sub_tag("ELSE")}},
            // It is no forced range any more, and so takes a value.
            {"<FORCE_RANGE><WHEN_CMD>c</WHEN_CMD><V>1</V><MAX>2</MAX></FORCE_RANGE>",
             {{"1", "", "c", 7}},
             {bad_sub_tag("MAX")}},
        });
    expect_of(kParameters,
              {{"<FORCE_RANGE MAX='9'><WHEN_CMD>c</WHEN_CMD><MIN>1</MIN></FORCE_RANGE>",
                {{"9", "", "c", 0}},
                {bad_sub_tag("MIN")}},
               {"<FORCE_RANGE WHEN_CMD='c'><MAX>9</MAX><THEN>2</THEN></FORCE_RANGE>",
                {{"2", "", "c", 0}},
                {bad_sub_tag("MAX")}}});
}

TEST(ValueRules, sub_elements_come_after_attributes_and_overwrite) {
    expect_of(
        {kInput},
        {
            {"<STATE V='1' ELSE='2' IF='a'><V>3</V><ELSE>4</ELSE><IF>b</IF></STATE>",
             {{"3", "4", "b", 2}},
             {}},
            {"<STATE><V>1</V><TO>2</TO><IF>a</IF><WHEN>b</WHEN></STATE>", {{"2", "", "b", 2}}, {}},
            {"<STATE V='1'><V/></STATE>", {}, {}},
            {"<STATE><BAD/></STATE>", {}, {bad_sub_tag("BAD")}},
            {"<STATE ZETA='1' V='1' ALPHA='2'><BAD/></STATE>",
             {{"1", "", "", 2}},
             {bad_attribute("ALPHA"), bad_attribute("ZETA"), bad_sub_tag("BAD")}},
        });
}

TEST(ValueRules, without_a_value_nothing_is_added_or_reported) {
    expect_of(kPorts, {
                          {"<STATE/>", {}, {}},
                          {"<STATE>1</STATE>", {}, {}},
                          {"<STATE V=''/>", {}, {}},
                          {"<STATE ELSE='1' IF='c'/>", {}, {}},
                          {"<FORCE_VALUE/>", {}, {}},
                          {"<FORCE_RANGE MIN='1'/>", {}, {}},
                          {"<CONSTANT_RANGE/>", {}, {}},
                      });
}

TEST(ValueRules, texts_are_kept_as_written) {
    expect_of({kInput}, {{"<STATE V=' 1 ' IF=' a  &lt; b '/>", {{" 1 ", "", " a  < b ", 2}}, {}},
                         {"<STATE><V> 1\n</V></STATE>", {{" 1\n", "", "", 2}}, {}},
                         {"<STATE><V> </V></STATE>", {{" ", "", "", 2}}, {}}});
}

TEST(ValueRules, condition_of_a_value_rule) {
    const std::string both = "( ( i) and ( t ) ) || ( !( i ) )";
    expect_of(
        kParameters,
        {
            {"<VALUE_RULE>A == 1</VALUE_RULE>", {{"", "", "A == 1", 4}}, {}},
            {"<VALUE_RULE> A </VALUE_RULE>", {{"", "", " A ", 4}}, {}},
            {"<VALUE_RULE/>", {}, {}},
            {"<VALUE_RULE><IF>WIDTH &gt; 8</IF><THEN>DEPTH == 16</THEN></VALUE_RULE>",
             {{"", "", "( ( WIDTH > 8) and ( DEPTH == 16 ) ) || ( !( WIDTH > 8 ) )", 4}},
             {}},
            {"<VALUE_RULE><IF>i</IF><THEN>t</THEN><ELSE>e</ELSE></VALUE_RULE>",
             {{"", "", "( ( i) and ( t ) ) || ( !( i ) and ( e ) )", 4}},
             {}},
            {"<VALUE_RULE><ELSE>e</ELSE><THEN>t</THEN><IF>i</IF></VALUE_RULE>",
             {{"", "", "( ( i) and ( t ) ) || ( !( i ) and ( e ) )", 4}},
             {}},
            {"<VALUE_RULE>own<IF>i</IF><THEN>t</THEN></VALUE_RULE>", {{"", "", both, 4}}, {}},
            {"<VALUE_RULE><IF>h</IF><IF>i</IF><THEN>s</THEN><THEN>t</THEN><ELSE>e</ELSE><ELSE/>"
             "</VALUE_RULE>",
             {{"", "", both, 4}},
             {}},
            {"<VALUE_RULE>own<IF>i</IF><ELSE>e</ELSE></VALUE_RULE>", {{"", "", "own", 4}}, {}},
            {"<VALUE_RULE>own<THEN>t</THEN><ELSE>e</ELSE></VALUE_RULE>", {{"", "", "own", 4}}, {}},
            {"<VALUE_RULE>own<IF/><THEN>t</THEN></VALUE_RULE>", {{"", "", "own", 4}}, {}},
            {"<VALUE_RULE>own<IF>i</IF><THEN/></VALUE_RULE>", {{"", "", "own", 4}}, {}},
            {"<VALUE_RULE><IF>i</IF><ELSE>e</ELSE></VALUE_RULE>", {}, {}},
            {"<VALUE_RULE><IF>i</IF></VALUE_RULE>", {}, {}},
            {"<VALUE_RULE><THEN>t</THEN></VALUE_RULE>", {}, {}},
            {"<VALUE_RULE><ELSE>e</ELSE></VALUE_RULE>", {}, {}},
        });
}

TEST(ValueRules, unknown_sub_elements_of_a_value_rule_are_reported) {
    expect_of(
        kParameters,
        {
            {"<VALUE_RULE>own<V>1</V><WHEN>c</WHEN><if>i</if></VALUE_RULE>",
             {{"", "", "own", 4}},
             {"Unrecognized sub tag V of VALUE_RULE ", "Unrecognized sub tag WHEN of VALUE_RULE ",
              "Unrecognized sub tag if of VALUE_RULE "}},
            {"<VALUE_RULE><BAD/></VALUE_RULE>", {}, {"Unrecognized sub tag BAD of VALUE_RULE "}},
        });
}

TEST(ValueRules, attributes_of_a_value_rule_are_ignored) {
    expect_of({kInteger},
              {{"<VALUE_RULE IF='i' BAD='1'>own</VALUE_RULE>", {{"", "", "own", 4}}, {}}});
}

TEST(ValueRules, rules_stand_in_document_order_after_earlier_ones) {
    Loaded store(
        "<PARAMETERS><PARAMETER NAME='N' TYPE='INTEGER'><FORCE_VALUE V='1'/>"
        "<VALUE_RULE>two</VALUE_RULE><BAD/><FORCE_RANGE MAX='3'/></PARAMETER></PARAMETERS>"
        "<PARAMETER_RULES><PARAMETER NAME='N'><FORCE_VALUE V='4'/></PARAMETER>"
        "</PARAMETER_RULES>"
        "<PARAMETERS><PARAMETER NAME='N' TYPE='INTEGER'><FORCE_VALUE V='5'/></PARAMETER>"
        "</PARAMETERS>");
    EXPECT_EQ(store.messages(), Messages{not_admitted("BAD")});
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("N")), (std::vector<Rule>{{"1", "", "", 2},
                                                                         {"", "", "two", 4},
                                                                         {"3", "", "", 1},
                                                                         {"4", "", "", 2},
                                                                         {"5", "", "", 2}}));
}

namespace {

std::vector<std::int32_t> origins(Kind kind, const std::string& subs) {
    Loaded store(object(kind, subs));
    std::vector<std::int32_t> found;
    KIVO_OBJ_INFO* made = store.info.get_kivo_obj("N");
    while (KIVO_RULE_ELEMENT* element = made->get_next_rule_element()) {
        found.push_back(element->origin);
    }
    return found;
}

using Origins = std::vector<std::int32_t>;

}  // namespace

TEST(RuleOrigin, names_the_element_also_where_the_kind_does_not) {
    EXPECT_EQ(origins(kInteger,
                      "<FORCE_VALUE V='1'/><FORCE_VALUE V='1' WHEN_CMD='a'/><FORCE_RANGE MAX='1'/>"
                      "<FORCE_RANGE MAX='1' WHEN_CMD='a'/><VALUE_RULE>a</VALUE_RULE>"),
              (Origins{KIVO_ORIGIN_FORCE_VALUE, KIVO_ORIGIN_FORCE_VALUE, KIVO_ORIGIN_FORCE_RANGE,
                       KIVO_ORIGIN_FORCE_RANGE, KIVO_ORIGIN_VALUE_RULE}));
    EXPECT_EQ(
        origins(kInput,
                "<STATE V='USED'/><STATE V='USED' WHEN_CMD='a'/><CONSTANT_RANGE MAX='1'/>"
                "<CONSTANT_RANGE MAX='1' WHEN_CMD='a'/><FORCE_VALUE V='1' WHEN_CMD='a'/>"
                "<FORCE_RANGE MAX='1' WHEN_CMD='a'/>"),
        (Origins{KIVO_ORIGIN_STATE, KIVO_ORIGIN_STATE, KIVO_ORIGIN_CONSTANT_RANGE,
                 KIVO_ORIGIN_CONSTANT_RANGE, KIVO_ORIGIN_FORCE_VALUE, KIVO_ORIGIN_FORCE_RANGE}));
    EXPECT_EQ(origins(kHidden, "<FORCE_VALUE V='1'/>"), (Origins{KIVO_ORIGIN_FORCE_VALUE}));
}

TEST(RuleOrigin, is_unknown_of_rules_of_the_function_and_of_elements_that_a_host_makes) {
    Loaded store("<RULES><RULE>a</RULE></RULES>");
    EXPECT_EQ(store.info.get_next_fn_rule_element()->origin, KIVO_ORIGIN_UNKNOWN);
    EXPECT_EQ(KIVO_RULE_ELEMENT("1", "", "", KIVO_RULE_FORCED_VALUE).origin, KIVO_ORIGIN_UNKNOWN);
}

// What hosts read of an element stays where it is.
TEST(RuleOrigin, stands_after_the_mark) {
    const KIVO_RULE_ELEMENT element;
    EXPECT_EQ(reinterpret_cast<const char*>(&element.origin),
              reinterpret_cast<const char*>(&element.mark) + sizeof(KIVO_MARK));
}
