// What is not certain is not told, and how much is tried is bounded.
#include <gtest/gtest.h>

#include <chrono>

#include "tests/session/sense_fixture.h"

namespace {

std::size_t undecided_of(const std::string& sections, const KIVO_EFFORT& effort) {
    const Described described(sections);
    return kivo_judge_sense(described.session, effort).undecided;
}

std::string force_if(const std::string& condition) {
    return constant("A", "VALUE='1'", "<FORCE_VALUE V='2' IF='" + condition + "'/>");
}

TEST(SenseLimits, what_is_known_only_at_run_time_is_never_dead) {
    const std::string ports = in("PORTS",
                                 "<PORT NAME='q' TYPE='OUTPUT' WIDTH='8'/>"
                                 "<PORT NAME='d' TYPE='INPUT' WIDTH='8'/>");
    for (const std::string condition : {"q == 3", "d gt 4 and q lt d", "q"}) {
        EXPECT_EQ(sense_of(parameters(force_if(condition)) + ports), Texts()) << condition;
    }
    EXPECT_EQ(
        sense_of(parameters(constant("W", "VALUE='8;9'") + force_if("q == 3 and W == 7")) + ports),
        Texts{"dead-rule A FORCE_VALUE"});
}

TEST(SenseLimits, a_port_can_be_tied_to_any_number) {
    EXPECT_EQ(sense_of(parameters(force_if("d == 123456")) +
                       in("PORTS", "<PORT NAME='d' TYPE='INPUT' WIDTH='64'/>")),
              Texts());
}

TEST(SenseLimits, a_text_without_a_list_can_be_any_text) {
    const std::string file = text_parameter("FILE", "VALUE='none'");
    const auto told = [&](const std::string& condition) {
        return sense_of(parameters(file + force_if(condition)));
    };
    EXPECT_EQ(told("FILE == \"a\""), Texts());
    EXPECT_EQ(told("FILE != \"a\" and FILE != \"none\""), Texts());
    EXPECT_EQ(told("FILE == \"a\" and FILE == \"b\""), Texts{"dead-rule A FORCE_VALUE"});
    EXPECT_EQ(told("FILE == 7"), Texts());
    EXPECT_EQ(sense_of(parameters(file + force_if("IS(FILE)")) +
                       in("MACROS", "<MACRO NAME='IS' ARGUMENTS='f' DEFINITION='f == \"x\"'/>")),
              Texts());
}

TEST(SenseLimits, numbers_without_a_range_go_beyond_every_limit) {
    const auto told = [](const std::string& condition) {
        return sense_of(parameters(constant("N", "VALUE='1'") + force_if(condition)));
    };
    EXPECT_EQ(told("N gt 9223372036854775807"), Texts());
    EXPECT_EQ(told("N lt -9223372036854775807"), Texts());
    EXPECT_EQ(told("N gt 7 and N lt 8"), Texts{"dead-rule A FORCE_VALUE"});
}

TEST(SenseLimits, what_a_wizard_map_changes_is_tried_with_it) {
    const auto told = [](const std::string& map) {
        return sense_of(parameters(force_if("H == 2")) +
                        in("HIDDEN_PARAMETERS", "<PARAMETER NAME='H' VALUE='1'/>") +
                        in("WIZARD_DATA", "<WIZARD_MAP NAME='m'>" + map + "</WIZARD_MAP>"));
    };
    EXPECT_EQ(told("<PARAMETER NAME='H' TYPE='INTEGER' VALUE='2'/>"), Texts());
    EXPECT_EQ(told(""), Texts{"dead-rule A FORCE_VALUE"});
    EXPECT_EQ(told("<PARAMETER NAME='H' TYPE='INTEGER' VALUE='3'/>"),
              Texts{"dead-rule A FORCE_VALUE"});
}

TEST(SenseLimits, what_cannot_be_read_makes_nothing_dead) {
    EXPECT_EQ(sense_of(parameters(force_if("H == 2")) +
                       in("HIDDEN_PARAMETERS",
                          "<PARAMETER NAME='H' VALUE='1'>"
                          "<FORCE_VALUE V='( 2' IF='X gt'/></PARAMETER>")),
              Texts());
}

// Products of several unbounded numbers: no effort suffices.
const std::string kHard = parameters(constant("X", "VALUE='1'") + constant("Y", "VALUE='1'") +
                                     constant("Z", "VALUE='1'") +
                                     force_if("X * X * X + Y * Y * Y + Z * Z * Z == 33 and X * Y "
                                              "* Z == 12345678987654321"));

TEST(SenseLimits, what_the_effort_does_not_suffice_for_is_counted_and_not_told) {
    EXPECT_EQ(sense_of(kHard), Texts());
    EXPECT_GT(undecided_of(kHard, {4000000, 2000, 2000}), 0U);
    const std::string easy = parameters(constant("X", "VALUE='1'") + force_if("X gt 5"));
    EXPECT_EQ(undecided_of(easy, {4000000, 2000, 2000}), 0U);
    EXPECT_GT(undecided_of(easy, {1, 1, 2000}), 0U);
    EXPECT_GT(undecided_of(easy, {4000000, 2000, 0}), 0U);
}

TEST(SenseLimits, the_effort_bounds_the_time) {
    std::string sections;
    for (int i = 0; i < 200; ++i) {
        const std::string n = std::to_string(i);
        sections +=
            constant("P" + n, "VALUE='1'",
                     "<VALUE_RULE>P" + n + " * P" + std::to_string((i + 1) % 200) + " * P" +
                         std::to_string((i + 7) % 200) + " != 7919 * " + n + "</VALUE_RULE>");
    }
    const auto begin = std::chrono::steady_clock::now();
    undecided_of(parameters(sections), {0xFFFFFFFF, 0xFFFFFFFF, 300});
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(taken.count(), 20.0);
}

TEST(SenseLimits, the_answer_is_the_same_every_time_and_whatever_is_set) {
    Described described(kHard);
    const auto told = [&] {
        const KIVO_SENSE sense = kivo_judge_sense(described.session, {300000, 500, 600000});
        Texts texts{std::to_string(sense.undecided)};
        for (const KIVO_SENSE_FINDING& finding : sense.findings) {
            texts.push_back(finding.id + finding.text);
        }
        return texts;
    };
    const Texts first = told();
    EXPECT_EQ(told(), first);
    described.session.set("X", "77");
    EXPECT_EQ(told(), first);
}

TEST(SenseLimits, an_empty_description_makes_sense) {
    const Described described("");
    const KIVO_SENSE sense = kivo_judge_sense(described.session);
    EXPECT_TRUE(sense.findings.empty());
    EXPECT_EQ(sense.undecided, 0U);
}

}  // namespace
