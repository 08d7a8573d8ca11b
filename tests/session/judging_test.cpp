// What is judged how, where a rule is easily read in two ways.
#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

std::string port(const std::string& name, const std::string& attributes,
                 const std::string& elements = "") {
    return "<PORT NAME='" + name + "' " + attributes + ">" + elements + "</PORT>";
}

std::string text_parameter(const std::string& name, const std::string& attributes,
                           const std::string& elements = "") {
    return "<PARAMETER NAME='" + name + "' TYPE='STRING' " + attributes + ">" + elements +
           "</PARAMETER>";
}

// "fault A?" and so on, with "!" before what takes legality.
Texts weighed_verdicts_of(const KIVO_SESSION& session) {
    Texts verdicts = verdicts_of(session);
    for (std::size_t i = 0; i < verdicts.size(); ++i) {
        if (session.verdicts()[i].severity == KIVO_SEVERITY::kError) {
            verdicts[i].insert(0, "!");
        }
    }
    return verdicts;
}

}  // namespace

TEST(Judging, a_port_that_is_always_connected_starts_as_used) {
    Described d(in("PORTS", port("a", "TYPE='INPUT' CNX_TYPE='USED_PORT' USAGE='UNUSED'") +
                                port("b", "TYPE='INPUT' CNX_TYPE='USED_PORT' USAGE='CONSTANT'") +
                                port("c", "TYPE='INPUT' CNX_TYPE='USED_PORT' USAGE='VARIABLE'") +
                                port("d", "TYPE='INPUT' CNX_TYPE='USED_PORT' USAGE='UNUSED'",
                                     "<STATE V='CONSTANT' IF='a'/>")) +
                in("WIZARD_DATA", "<WIZARD_MAP NAME='m'>" +
                                      port("a", "TYPE='INPUT' USAGE='UNUSED'") + "</WIZARD_MAP>"));
    EXPECT_EQ(state_of(d.session, "a"), "USED");
    EXPECT_EQ(d.session.find_port("a")->asked, "USED");
    EXPECT_EQ(state_of(d.session, "b"), "USED");
    EXPECT_EQ(state_of(d.session, "c"), "USED");
    EXPECT_EQ(state_of(d.session, "d"), "CONSTANT:0");
    ASSERT_TRUE(d.session.select_map("m"));
    EXPECT_EQ(state_of(d.session, "a"), "UNUSED");
    EXPECT_EQ(state_of(d.session, "d"), "USED");
}

TEST(Judging, a_real_beyond_all_whole_numbers_is_too_large) {
    Described d(in("PARAMETERS", integer("A", "DEFAULT_VALUE='2.0 ^ 127'") +
                                     integer("B", "DEFAULT_VALUE='0 - 2.0 ^ 127'") +
                                     integer("C", "DEFAULT_VALUE='0.5'")) +
                in("PORTS", port("q", "TYPE='OUTPUT' WIDTH='2.0 ^ 200'")));
    EXPECT_EQ(evaluated(d.session, "A"), "[fault too-large]");
    EXPECT_EQ(evaluated(d.session, "B"), "-170141183460469231731687303715884105728");
    EXPECT_EQ(evaluated(d.session, "C"), "[fault ill-typed]");
    EXPECT_EQ(evaluated(d.session, "(2.0 ^ 200) % 7"), "[fault too-large]");
    EXPECT_EQ(evaluated(d.session, "2.5 % 7"), "[fault ill-typed]");
    EXPECT_EQ(evaluated(d.session, "(2.0 ^ 200) % 2.5"), "[fault ill-typed, fault too-large]");
    EXPECT_EQ(weighed_verdicts_of(d.session), (Texts{"!fault A?", "!fault C?", "!port-width q?"}));
}

TEST(Judging, a_default_index_outside_the_list_is_an_error_while_the_default_is_needed) {
    const std::string beyond = "VALUE='2;3' DEFAULT_VALUE_INDEX='7'";
    Described d(
        in("PARAMETERS", integer("A", beyond) + integer("FORCED", beyond, "<FORCE_VALUE V='3'/>") +
                             integer("CLAMPED", beyond, "<FORCE_VALUE V='3' IF='CLAMPED gt 1'/>") +
                             integer("MAYBE", beyond, "<FORCE_VALUE V='3' IF='A == 3'/>") +
                             integer("NONE", "")));
    EXPECT_EQ(value_of(d.session, "A"), "2");
    EXPECT_EQ(weighed_verdicts_of(d.session),
              (Texts{"!fault A?", "!fault CLAMPED?", "!fault MAYBE?", "!needs-value NONE"}));
    EXPECT_EQ(d.session.verdicts()[0].text,
              "PARAMETER, DEFAULT_VALUE_INDEX: DEFAULT_VALUE_INDEX lies outside the list "
              "[default-index]");
    d.session.set_all({{"A", "3"}, {"CLAMPED", "2"}, {"NONE", "1"}});
    EXPECT_EQ(weighed_verdicts_of(d.session), Texts{"overridden CLAMPED"});
    EXPECT_TRUE(d.session.is_legal());
    d.session.unset("A");
    EXPECT_FALSE(d.session.is_legal());
}

TEST(Judging, a_spoiled_text_of_a_range_that_is_asked_is_an_error_wherever_the_value_lies) {
    Described d(
        in("PARAMETERS",
           integer("A", "VALUE='4'", "<FORCE_RANGE MAX='9' MIN='1' IF='NOBODY == 1'/>") +
               integer("B", "VALUE='4'", "<FORCE_RANGE MAX='9' MIN='NOBODY' IF='A == 5'/>") +
               integer("C", "VALUE='4'", "<FORCE_RANGE MAX='3' MIN='NOBODY'/>")));
    EXPECT_EQ(weighed_verdicts_of(d.session), (Texts{"!fault A?", "!fault C?", "!out-of-range C"}));
    d.session.set("A", "5");
    EXPECT_EQ(weighed_verdicts_of(d.session),
              (Texts{"!fault A?", "!fault B?", "!fault C?", "!out-of-range C"}));
}

TEST(Judging, a_port_in_its_own_state_rule_is_the_constant_asked_for) {
    Described d(in("PARAMETERS", integer("W", "VALUE='6'")) +
                in("PORTS", port("a", "TYPE='INPUT' DEFAULT_VALUE='W'",
                                 "<STATE V='USED' IF='a gt 5'/><FORCE_VALUE V='1'/>")));
    // Asked for as USED it has no constant, so that it is USED either way.
    EXPECT_EQ(state_of(d.session, "a"), "USED");
    d.session.set("a", "CONSTANT:5");
    EXPECT_EQ(state_of(d.session, "a"), "CONSTANT:1");
    d.session.set("a", "CONSTANT:6");
    EXPECT_EQ(state_of(d.session, "a"), "USED");
    d.session.set("a", "CONSTANT");
    EXPECT_EQ(state_of(d.session, "a"), "USED");
    d.session.set("W", "4");
    EXPECT_EQ(state_of(d.session, "a"), "CONSTANT:1");
}

TEST(Judging, a_port_in_its_own_force_is_the_constant_asked_for) {
    Described d(in("PORTS", port("a", "TYPE='INPUT'", "<FORCE_VALUE V='8' IF='a gt 8'/>")) +
                in("MACROS", "<MACRO NAME='M' DEFINITION='b + 1'/>") +
                in("PORTS", port("b", "TYPE='INPUT'", "<FORCE_VALUE V='M'/>")));
    d.session.set_all({{"a", "CONSTANT:9"}, {"b", "CONSTANT:9"}});
    EXPECT_EQ(state_of(d.session, "a"), "CONSTANT:8");
    EXPECT_EQ(state_of(d.session, "b"), "CONSTANT:10");
    d.session.set("a", "CONSTANT:7");
    EXPECT_EQ(state_of(d.session, "a"), "CONSTANT:7");
}

TEST(Judging, a_cycle_without_rest_leaves_nothing_of_its_last_round) {
    Described d(in("PARAMETERS",
                   integer("A", "VALUE='B + 3'", "<FORCE_VALUE V='1' IF='B == 0'/>") +
                       integer("B", "VALUE='7'",
                               "<FORCE_VALUE V='1' IF='A == 1'/><FORCE_VALUE V='0' IF='A gt 1'/>") +
                       integer("C", "VALUE='1'", "<FORCE_VALUE V='A'/>")));
    for (const char* value : {"A", "B", "C"}) {
        EXPECT_EQ(value_of(d.session, value), "none");
    }
    EXPECT_EQ(evaluated(d.session, "C"), "[cycle]");
    // Its default depends on the cycle; which force was active when the rounds ended is no matter.
    EXPECT_EQ(d.session.find("A")->asked, std::nullopt);
    EXPECT_EQ(d.session.find("A")->source, KIVO_VALUE_SOURCE::kDefault);
    EXPECT_EQ(d.session.find("B")->asked, "7");
    EXPECT_EQ(d.session.find("B")->source, KIVO_VALUE_SOURCE::kDefault);
    EXPECT_EQ(weighed_verdicts_of(d.session), (Texts{"!fault A?", "!fault B?", "!fault C?"}));
    EXPECT_EQ(d.session.verdicts()[0].text,
              "A is not known: rules that depend on one another in a circle do not come to rest");
    EXPECT_FALSE(d.session.is_legal());
}

TEST(Judging, the_width_of_a_tied_port_is_judged_whatever_it_is_tied_to) {
    Described d(in("PORTS", port("a", "TYPE='INPUT' WIDTH='0'",
                                 "<STATE V='CONSTANT'/><FORCE_VALUE V='NOBODY'/>") +
                                port("b", "TYPE='INPUT' WIDTH='\"x\"'") +
                                port("c",
                                     "TYPE='INPUT' WIDTH='0' USAGE='UNUSED' "
                                     "DEFAULT_VALUE='0'")));
    EXPECT_EQ(weighed_verdicts_of(d.session),
              (Texts{"!fault a?", "!port-width a", "!port-width b"}));
}

TEST(Judging, what_all_outcomes_agree_on_needs_no_text) {
    Described d(in("PARAMETERS",
                   integer("A", "VALUE='4'", "<FORCE_VALUE V='4' IF='NOBODY'/>") +
                       integer("B", "VALUE='4'", "<FORCE_VALUE V='1' ELSE='\"x\"' IF='A == 4'/>")) +
                in("PORTS", port("q", "TYPE='OUTPUT'") +
                                port("a", "TYPE='INPUT'",
                                     "<STATE V='CONSTANT' IF='q == 1'/>"
                                     "<FORCE_VALUE V='NOBODY'/>") +
                                port("b", "TYPE='INPUT'",
                                     "<STATE V='UNUSED' IF='q == 1'/>"
                                     "<STATE V='USED' IF='NOBODY'/>")));
    EXPECT_EQ(value_of(d.session, "A"), "4");
    EXPECT_EQ(value_of(d.session, "B"), "1");
    EXPECT_EQ(state_of(d.session, "a"), "none");
    EXPECT_EQ(state_of(d.session, "b"), "none");
    EXPECT_EQ(weighed_verdicts_of(d.session), Texts());
}

TEST(Judging, what_takes_no_arguments_is_told_from_what_nobody_knows) {
    Described d(in("PARAMETERS", integer("A", "VALUE='4'") + integer("min", "VALUE='4'")) +
                in("PORTS", port("q", "TYPE='OUTPUT'")) +
                in("MACROS", "<MACRO NAME='M' ARGUMENTS='x' DEFINITION='x(1)'/>"));
    EXPECT_EQ(evaluated(d.session, "A(1)"), "[fault macro-arguments]");
    EXPECT_EQ(evaluated(d.session, "q()"), "[fault macro-arguments]");
    EXPECT_EQ(evaluated(d.session, "M(1)"), "[fault macro-arguments]");
    EXPECT_EQ(evaluated(d.session, "NOBODY(1)"), "[fault unknown-name]");
    EXPECT_EQ(d.session.evaluate("A(1)").faults[0].text, "A is no macro and takes no arguments");
    // Only macros take the name of a function.
    EXPECT_EQ(evaluated(d.session, "min(7, 5)"), "5");
}

TEST(Judging, a_state_word_counts_where_it_is_written) {
    Described d(in("PARAMETERS", text_parameter("S", "DEFAULT_VALUE='\"USED\"'")) +
                in("PORTS", port("q", "TYPE='OUTPUT'") + port("c", "TYPE='INPUT'")) +
                in("MACROS",
                   "<MACRO NAME='IS_USED' ARGUMENTS='x' DEFINITION='x == USED'/>"
                   "<MACRO NAME='SAME' ARGUMENTS='x, y' DEFINITION='x == y'/>"));
    EXPECT_EQ(evaluated(d.session, "q == USED"), "true");
    EXPECT_EQ(evaluated(d.session, "\"UNUSED\" == (q)"), "false");
    EXPECT_EQ(evaluated(d.session, "IS_USED(q)"), "true");
    EXPECT_EQ(evaluated(d.session, "IS_USED(2)"), "false");
    EXPECT_EQ(evaluated(d.session, "q == S"), "[run-time q]");
    EXPECT_EQ(evaluated(d.session, "SAME(q, \"USED\")"), "[run-time q]");
    d.session.set("c", "CONSTANT:3");
    EXPECT_EQ(evaluated(d.session, "c == S"), "false");
    EXPECT_EQ(evaluated(d.session, "SAME(c, 3)"), "true");
}

TEST(Judging, the_port_that_something_else_asks_for_is_no_part_of_its_cycle) {
    // The state of b depends on A, its constant does not; what asks for the state alone is no
    // member.
    Described d(in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_VALUE V='2' IF='b gt 1'/>")) +
                in("PORTS", port("b", "TYPE='INPUT'", "<STATE V='CONSTANT' IF='A == 1'/>")));
    d.session.set("b", "CONSTANT:1");
    EXPECT_EQ(state_of(d.session, "b"), "CONSTANT:1");
    d.session.set("b", "CONSTANT:5");
    EXPECT_EQ(state_of(d.session, "b"), "CONSTANT:5");
    EXPECT_EQ(value_of(d.session, "A"), "2");
}

TEST(Judging, counters_of_legality_say_what_the_verdicts_say) {
    Described d(
        in("PARAMETERS", integer("A", "", "<FORCE_RANGE MAX='9'/>") +
                             integer("B", "VALUE='1'", "<FORCE_VALUE V='2' IF='A gt 3'/>")) +
        in("RULES", "<RULE>A gt 2</RULE><RULE REQUIRED_RULE='OFF'>A gt 4</RULE>") +
        in("MSGS", "<MSG TYPE='ERROR'><WHEN>A % 2 == 1</WHEN><TEXT>odd</TEXT></MSG>"));
    const auto expect_same = [&d] {
        const std::vector<KIVO_VERDICT>& verdicts = d.session.verdicts();
        const auto is_error = [](const KIVO_VERDICT& each) {
            return each.severity == KIVO_SEVERITY::kError;
        };
        const auto is_overridden = [](const KIVO_VERDICT& each) { return each.id == "overridden"; };
        EXPECT_EQ(d.session.is_legal(), std::none_of(verdicts.begin(), verdicts.end(), is_error));
        EXPECT_EQ(d.session.is_granted(),
                  std::none_of(verdicts.begin(), verdicts.end(), is_overridden));
    };
    EXPECT_FALSE(d.session.is_legal());
    for (const char* value : {"4", "3", "2", "10", "6", "11"}) {
        d.session.set_all({{"A", value}, {"B", "1"}});
        expect_same();
    }
    d.session.set("A", "5");
    EXPECT_EQ(weighed_verdicts_of(d.session), (Texts{"overridden B", "!message-error "}));
    expect_same();
    d.session.set("A", "6");
    EXPECT_TRUE(d.session.is_legal());
    EXPECT_FALSE(d.session.is_granted());
    const KIVO_SESSION other = d.session.fork();
    EXPECT_TRUE(other.is_legal());
    EXPECT_FALSE(other.is_granted());
    d.session.unset("A");
    expect_same();
}

// In a circle too what a member passes on is seen to change: a number in place of a state while the
// state stays, and a macro that stands for a port while it stays that port.
TEST(Judging, what_depends_on_a_cycle_follows_it) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_VALUE V='A' IF='p'/>")) +
                in("PORTS", port("p", "TYPE='INPUT'", "<STATE V='1' IF='A == 1' ELSE='2'/>")) +
                in("PARAMETERS", integer("B", "VALUE='1'")) +
                in("PORTS",
                   port("c", "TYPE='INPUT' USAGE='CONSTANT'", "<FORCE_VALUE V='B' IF='C == 1'/>")) +
                in("PARAMETERS", integer("C", "VALUE='1'", "<FORCE_VALUE V='M' IF='M gt 5'/>") +
                                     integer("AFTER", "VALUE='0'", "<FORCE_VALUE V='M'/>")) +
                in("MACROS", "<MACRO NAME='M' DEFINITION='c'/>"));
    EXPECT_EQ(state_of(d.session, "p"), "CONSTANT:1");
    EXPECT_EQ(value_of(d.session, "AFTER"), "1");
    d.session.set_all({{"A", "5"}, {"B", "3"}});
    EXPECT_EQ(state_of(d.session, "p"), "CONSTANT:2");
    EXPECT_EQ(value_of(d.session, "AFTER"), "3");
}

// Rules that alternate between the two zeros of reals would never come to rest.
TEST(Judging, there_is_one_zero) {
    Described d(in("HIDDEN_PARAMETERS",
                   "<PARAMETER NAME='N' VALUE='-18'/><PARAMETER NAME='A' VALUE='B * N'/>"
                   "<PARAMETER NAME='B' VALUE='0.0'><FORCE_VALUE V='A'/></PARAMETER>"
                   "<PARAMETER NAME='C' VALUE='0.0'><FORCE_VALUE V='C' IF='1'/>"
                   "<FORCE_VALUE V='-C' IF='2'/></PARAMETER>"));
    EXPECT_EQ(value_of(d.session, "A"), "0");
    EXPECT_EQ(evaluated(d.session, "-(0.0)"), "0");
    EXPECT_EQ(verdicts_of(d.session), Texts());
}
