// What makes no sense in a description: for each id what is told, and near misses that are not.
#include <gtest/gtest.h>

#include "tests/session/sense_fixture.h"

namespace {

const std::string kMode = constant("MODE", "VALUE='2;3'");
const std::string kRanged = constant("W", "VALUE='8'", "<FORCE_RANGE MIN='1' MAX='64'/>");

TEST(Sense, conditions_that_are_never_true_are_dead) {
    const SenseCase cases[] = {
        {parameters(kMode + constant("A", "VALUE='1'", "<FORCE_VALUE V='2' IF='MODE == 1'/>")),
         {"dead-rule A FORCE_VALUE"}},
        {parameters(kMode + constant("A", "VALUE='1'", "<FORCE_VALUE V='2' IF='MODE == 3'/>")), {}},
        {parameters(kRanged +
                    constant("A", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9' IF='W gt 64'/>")),
         {"dead-rule A FORCE_RANGE"}},
        {parameters(kRanged +
                    constant("A", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9' IF='W gt 63'/>")),
         {}},
        {parameters(kRanged + constant("A", "VALUE='1'",
                                       "<VALUE_RULE><IF>W * W == 2</IF><THEN>A == 1</THEN>"
                                       "</VALUE_RULE>")),
         {"dead-rule A VALUE_RULE"}},
        {parameters(kRanged + constant("A", "VALUE='1'",
                                       "<VALUE_RULE><IF>W * W == 4</IF><THEN>A == 1</THEN>"
                                       "</VALUE_RULE>")),
         {}},
        {parameters(kMode) + in("PORTS",
                                "<PORT NAME='q' TYPE='OUTPUT'><STATE V='UNUSED' IF='MODE == 2 and "
                                "MODE == 3'/></PORT>"),
         {"dead-rule q STATE"}},
        {in("HIDDEN_PARAMETERS", "<PARAMETER NAME='STYLE' VALUE='PLAIN'/>") +
             in("PORTS",
                "<PORT NAME='r' TYPE='INPUT'><FORCE_VALUE V='0' IF='STYLE == \"NONE\"'/></PORT>"),
         {"dead-rule r FORCE_VALUE"}},
    };
    expect_sense(cases);
}

TEST(Sense, an_else_that_never_counts_is_dead) {
    const auto forced = [](const std::string& condition) {
        return parameters(kRanged +
                          text_parameter("T", "VALUE='X'",
                                         "<FORCE_VALUE V='Y' ELSE='T' IF='" + condition + "'/>"));
    };
    EXPECT_EQ(sense_of(forced("W gt 0")), Texts{"dead-rule T FORCE_VALUE"});
    EXPECT_EQ(sense_of(forced("W gt 1")), Texts());
    const auto stated = [](const std::string& condition) {
        return parameters(kRanged) +
               in("PORTS", "<PORT NAME='q' TYPE='OUTPUT'><STATE V='USED' ELSE='UNUSED' IF='" +
                               condition + "'/></PORT>");
    };
    EXPECT_EQ(sense_of(stated("W lte 64")), Texts{"dead-rule q STATE"});
    EXPECT_EQ(sense_of(stated("W lte 63")), Texts());
}

TEST(Sense, a_force_after_one_that_always_decides_is_dead) {
    const auto forced = [](const std::string& first) {
        return parameters(kRanged + integer("A", "", first + "<FORCE_VALUE V='9' IF='W == 3'/>") +
                          constant("B", "VALUE='A'"));
    };
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='8' ELSE='7' IF='W == 2'/>")),
              Texts{"dead-rule A FORCE_VALUE"});
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='8' IF='W == 2'/>")), Texts());
    const Described described(forced("<FORCE_VALUE V='8'/>"));
    const KIVO_SENSE sense = kivo_judge_sense(described.session);
    ASSERT_EQ(sense.findings.size(), 1U);
    ASSERT_EQ(sense.findings[0].notes.size(), 1U);
    EXPECT_EQ(sense.findings[0].notes[0].text, "this one always decides");
}

TEST(Sense, parts_of_waves_texts_and_maps_are_judged_too) {
    const std::string wave =
        "<WAVE NAME='w'><WAVE_CONDITION>W gt 64</WAVE_CONDITION><STIM>force c 0 0</STIM></WAVE>";
    EXPECT_EQ(sense_of(parameters(kRanged) + in("WAVE_DATA", wave)),
              Texts{"dead-rule  WAVE_CONDITION"});
    EXPECT_EQ(sense_of(parameters(kRanged) +
                       in("HTML_TEXT", in("INTRO", "<IF>W gt 0</IF><THEN>A</THEN><ELSE>B</ELSE>"))),
              Texts{"dead-rule  IF"});
    EXPECT_EQ(sense_of(parameters(kRanged) +
                       in("HTML_TEXT", in("INTRO", "<IF>W gt 1</IF><THEN>A</THEN><ELSE>B</ELSE>"))),
              Texts());
    EXPECT_EQ(sense_of(parameters(kRanged) +
                       in("WIZARD_DATA",
                          "<WIZARD_MAP NAME='m'><WIZARD_CONDITION>W lt 1</WIZARD_CONDITION>"
                          "</WIZARD_MAP>")),
              Texts{"dead-rule  WIZARD_CONDITION"});
}

TEST(Sense, what_is_true_only_where_nothing_is_legal_is_told) {
    const auto described = [](const std::string& rule) {
        return parameters(constant("D", "VALUE='16'")) +
               in("PORTS", "<PORT NAME='q' TYPE='OUTPUT'><STATE V='UNUSED' IF='D == 0'/></PORT>") +
               in("RULES", rule);
    };
    EXPECT_EQ(sense_of(described("<RULE>D gte 4</RULE>")), Texts{"dead-in-legal q STATE"});
    EXPECT_EQ(sense_of(described("<RULE>D gte 0</RULE>")), Texts());
    EXPECT_EQ(sense_of(described("<RULE REQUIRED_RULE='OFF'>D gte 4</RULE>")), Texts());
}

TEST(Sense, a_rule_that_forbids_something_is_not_told_for_it) {
    EXPECT_EQ(sense_of(parameters(
                  kRanged + constant("A", "VALUE='1'",
                                     "<VALUE_RULE><IF>W == 9</IF><THEN>A gt A</THEN></VALUE_RULE>"
                                     "<FORCE_RANGE MIN='2' MAX='1' IF='W == 10'/>"))),
              Texts{"ranges-exclude A FORCE_RANGE"});
}

TEST(Sense, messages_that_are_never_shown_are_told) {
    const auto shown = [](const std::string& type, const std::string& content) {
        return parameters(kRanged) + in("RULES", "<RULE>W gt 1</RULE>") +
               in("MESSAGES", "<MESSAGE TYPE='" + type + "'>" + content + "</MESSAGE>");
    };
    EXPECT_EQ(sense_of(shown("INFO", "<IF>W gt 64</IF><THEN>A</THEN>")),
              Texts{"unreachable-message  MESSAGE"});
    EXPECT_EQ(sense_of(shown("INFO", "<IF>W gt 63</IF><THEN>A</THEN>")), Texts());
    EXPECT_EQ(sense_of(shown("INFO", "<IF>W gt 0</IF><THEN>A</THEN><ELSE>B</ELSE>")),
              Texts{"unreachable-message  MESSAGE"});
    // A warning is for legal configurations, an error for all.
    EXPECT_EQ(sense_of(shown("WARNING", "<IF>W == 1</IF><THEN>A</THEN>")),
              Texts{"unreachable-message  MESSAGE"});
    EXPECT_EQ(sense_of(shown("ERROR", "<IF>W == 1</IF><THEN>A</THEN>")), Texts());
}

TEST(Sense, rules_that_nothing_meets_are_told_once) {
    const auto ruled = [](const std::string& rule) {
        return parameters(kRanged) + in("RULES", rule);
    };
    EXPECT_EQ(sense_of(ruled("<RULE>W lt 8 and W gt 32</RULE>")), Texts{"impossible-rule  RULE"});
    EXPECT_EQ(sense_of(ruled("<RULE>W lt 9 and W gt 7</RULE>")), Texts());
    EXPECT_EQ(sense_of(ruled("<RULE REQUIRED_RULE='OFF'>W lt 8 and W gt 32</RULE>")), Texts());
    EXPECT_EQ(
        sense_of(parameters(constant("A", "VALUE='1;2'", "<VALUE_RULE>A * A == 2</VALUE_RULE>"))),
        Texts{"impossible-rule A VALUE_RULE"});
}

TEST(Sense, defaults_that_break_rules_are_told) {
    const auto levelled = [](const std::string& value) {
        return parameters(
            kRanged + constant("L", "VALUE='" + value + "'", "<FORCE_RANGE MIN='1' MAX='W - 1'/>"));
    };
    EXPECT_EQ(sense_of(levelled("8")), Texts{"default-breaks-rule L PARAMETER"});
    EXPECT_EQ(sense_of(levelled("7")), Texts());
    EXPECT_EQ(sense_of(parameters(kRanged) + in("RULES", "<RULE>W gt 9</RULE>")),
              Texts{"default-breaks-rule  "});
    EXPECT_EQ(
        sense_of(parameters(kRanged) +
                 in("MESSAGES", "<MESSAGE TYPE='ERROR'><IF>W == 8</IF><THEN>No.</THEN></MESSAGE>")),
        Texts{"default-breaks-rule  "});
    // A parameter that has to be set breaks nothing yet.
    EXPECT_EQ(sense_of(parameters(constant("A", "", "<FORCE_RANGE MIN='1' MAX='9'/>"))), Texts());
}

TEST(Sense, presets_of_maps_that_break_rules_are_told) {
    const auto mapped = [](const std::string& value) {
        return parameters(kRanged +
                          constant("L", "VALUE='7'", "<FORCE_RANGE MIN='1' MAX='W - 1'/>")) +
               in("WIZARD_DATA", "<WIZARD_MAP NAME='m'><PARAMETER NAME='W' TYPE='INTEGER' VALUE='" +
                                     value + "'/></WIZARD_MAP>");
    };
    const Described described(mapped("6"));
    const KIVO_SENSE sense = kivo_judge_sense(described.session);
    ASSERT_EQ(sense.findings.size(), 1U);
    EXPECT_EQ(sense.findings[0].text,
              "with the wizard map m L is 7, and must be from 1 to 5 (W - 1)");
    EXPECT_EQ(sense_of(mapped("9")), Texts());
}

TEST(Sense, defaults_that_are_always_replaced_are_told) {
    const auto forced = [](const std::string& elements) {
        return parameters(kRanged + constant("A", "VALUE='1'", elements));
    };
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='2' ELSE='3' IF='W == 2'/>")),
              Texts{"default-never-used A PARAMETER"});
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='2' IF='W lt 9'/><FORCE_VALUE V='3' IF='W gt 8'/>")),
              Texts{"default-never-used A PARAMETER"});
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='2' IF='W lt 9'/><FORCE_VALUE V='3' IF='W gt 9'/>")),
              Texts());
    // A rule that is made from what was asked for uses the default.
    EXPECT_EQ(sense_of(forced("<FORCE_VALUE V='A + 1' ELSE='3' IF='W == 2'/>")), Texts());
    EXPECT_EQ(sense_of(in("HIDDEN_PARAMETERS",
                          "<PARAMETER NAME='H' VALUE='1'><FORCE_VALUE V='2'/></PARAMETER>")),
              Texts());
}

TEST(Sense, items_that_no_legal_configuration_has_are_told) {
    const auto listed = [](const std::string& rule) {
        return parameters(kRanged + text_parameter("T", "VALUE='A;B;C'", rule));
    };
    EXPECT_EQ(sense_of(listed("<VALUE_RULE>T != \"B\"</VALUE_RULE>")),
              Texts{"value-never-legal T PARAMETER"});
    EXPECT_EQ(sense_of(listed("<VALUE_RULE>T != \"B\" or W == 64</VALUE_RULE>")), Texts());
    EXPECT_EQ(sense_of(listed("<FORCE_VALUE V='A' IF='W gt 8'/><VALUE_RULE>T != \"C\" or W gt 9"
                              "</VALUE_RULE>")),
              Texts{"value-never-legal T PARAMETER"});
    const Described described(listed("<VALUE_RULE>T != \"B\"</VALUE_RULE>"));
    const KIVO_SENSE sense = kivo_judge_sense(described.session);
    EXPECT_EQ(sense.findings[0].source, "B");
    EXPECT_EQ(sense.findings[0].text, "no legal configuration gives T the value B");
}

TEST(Sense, forces_that_disagree_are_told_with_a_configuration) {
    const auto forced = [](const std::string& second) {
        return parameters(kRanged + constant("A", "VALUE='1'",
                                             "<FORCE_VALUE V='2' IF='W gt 32'/>"
                                             "<FORCE_VALUE " +
                                                 second + "/>"));
    };
    EXPECT_EQ(sense_of(forced("V='3' IF='W gt 40'")), Texts{"forces-disagree A FORCE_VALUE"});
    EXPECT_EQ(sense_of(forced("V='2' IF='W gt 40'")), Texts());
    EXPECT_EQ(sense_of(forced("V='3' IF='W lte 32 and W gt 8'")), Texts());
    EXPECT_EQ(sense_of(forced("V='3' IF='W gt 40'") + in("RULES", "<RULE>W lte 40</RULE>")),
              Texts{"dead-in-legal A FORCE_VALUE"});
}

TEST(Sense, ranges_without_a_common_value_are_told) {
    const auto ranged = [](const std::string& elements) {
        return parameters(kRanged + constant("A", "VALUE='4'", elements));
    };
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='1' MAX='8'/>"
                              "<FORCE_RANGE MIN='9' MAX='16' IF='W gt 9'/>")),
              Texts{"ranges-exclude A FORCE_RANGE"});
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='1' MAX='8'/>"
                              "<FORCE_RANGE MIN='8' MAX='16' IF='W gt 9'/>")),
              Texts());
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='1' MAX='8' IF='W lt 9'/>"
                              "<FORCE_RANGE MIN='9' MAX='16' IF='W gt 9'/>")),
              Texts());
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='W + 1' MAX='W' IF='W gt 9'/>")),
              Texts{"ranges-exclude A FORCE_RANGE"});
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='1' MAX='8'/><FORCE_VALUE V='W' IF='W gt 8'/>")),
              Texts{"ranges-exclude A FORCE_VALUE"});
    EXPECT_EQ(sense_of(ranged("<FORCE_RANGE MIN='1' MAX='9'/><FORCE_VALUE V='W' IF='W gt 8'/>")),
              Texts());
}

TEST(Sense, circles_of_forces_are_told_with_their_path) {
    const auto pair = [](const std::string& of_b) {
        return parameters(constant("A", "VALUE='1'", "<FORCE_VALUE V='B' IF='B gt 4'/>") +
                          constant("B", "VALUE='2'", of_b) + constant("C", "VALUE='A + B'"));
    };
    EXPECT_EQ(sense_of(pair("<FORCE_VALUE V='3' IF='C gt 4'/>")), Texts{"force-cycle A PARAMETER"});
    EXPECT_EQ(sense_of(pair("<FORCE_VALUE V='9' IF='B gt 9'/>")), Texts());
    const Described described(pair("<FORCE_VALUE V='3' IF='A gt 4'/>"));
    EXPECT_EQ(kivo_judge_sense(described.session).findings[0].text,
              "values depend on one another in a circle: A, B, A");
}

TEST(Sense, what_nothing_names_is_told) {
    const std::string named = constant("W", "VALUE='8'") + integer("S", "VALUE='1'");
    const auto macro = [](const std::string& rule) {
        return parameters(constant("W", "VALUE='8'")) +
               in("MACROS", "<MACRO NAME='M' DEFINITION='W gt 4'/>") + in("RULES", rule);
    };
    EXPECT_EQ(sense_of(parameters(named) + in("RULES", "<RULE>W gt 4</RULE>")),
              Texts{"unused-parameter S PARAMETER"});
    EXPECT_EQ(sense_of(parameters(named) + in("RULES", "<RULE>W gt S</RULE>")), Texts());
    EXPECT_EQ(sense_of(parameters(named)), Texts());  // all is left to the host
    EXPECT_EQ(sense_of(macro("<RULE>W gt 1</RULE>")), Texts{"unused-macro M MACRO"});
    EXPECT_EQ(sense_of(macro("<RULE>M</RULE>")), Texts());
    // A text that cannot be read may name it.
    EXPECT_EQ(sense_of(macro("<RULE>( M</RULE>")), Texts());
    EXPECT_EQ(sense_of(parameters(named) + in("RULES", "<RULE>W gt 4</RULE>") +
                       in("WIZARD_DATA",
                          "<WIZARD_MAP NAME='m'><PARAMETER NAME='S' TYPE='INTEGER'/>"
                          "</WIZARD_MAP>")),
              Texts());
}

TEST(Sense, widths_below_one_are_told) {
    const auto wide = [](const std::string& width, const std::string& elements = "") {
        return parameters(kRanged) + in("PORTS", "<PORT NAME='q' TYPE='OUTPUT' WIDTH='" + width +
                                                     "'>" + elements + "</PORT>");
    };
    EXPECT_EQ(sense_of(wide("W quot 8")), Texts{"port-width-never q PORT"});
    EXPECT_EQ(sense_of(wide("W")), Texts());
    EXPECT_EQ(sense_of(wide("W quot 8", "<STATE V='UNUSED' IF='W lt 8'/>")), Texts());
}

TEST(Sense, empty_ranges_of_connected_ports_are_told) {
    const auto ranged = [](const std::string& attributes) {
        return parameters(constant("M", "VALUE='0'", "<FORCE_RANGE MIN='0' MAX='64'/>")) +
               in("PORTS",
                  "<PORT NAME='d' TYPE='INPUT'><FORCE_RANGE MIN='0' " + attributes + "/></PORT>");
    };
    EXPECT_EQ(sense_of(ranged("MAX='M - 1'")), Texts{"range-empty d FORCE_RANGE"});
    EXPECT_EQ(sense_of(ranged("MAX='M'")), Texts());
    EXPECT_EQ(sense_of(ranged("MAX='M - 1' IF='M gt 0'")), Texts());
}

TEST(Sense, conditions_that_are_always_true_have_an_id_of_their_own) {
    const auto told = [](const std::string& rule) {
        const Described described(parameters(kRanged) + in("RULES", "<RULE>" + rule + "</RULE>"));
        Texts ids;
        for (const auto& finding : kivo_judge_sense(described.session).findings) {
            ids.push_back(finding.id);
        }
        return ids;
    };
    EXPECT_EQ(told("W gt 0"), Texts{"always-condition"});
    EXPECT_EQ(told("W gt 1"), Texts());
}

}  // namespace
