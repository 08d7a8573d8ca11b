#include <gtest/gtest.h>

#include "tests/session/fixture.h"

namespace {

constexpr auto kOwn = KIVO_LEGAL_SCOPE::kOwn;
constexpr auto kWhole = KIVO_LEGAL_SCOPE::kWhole;

std::string runs_of(const std::vector<KIVO_RUN>& runs) {
    std::string result;
    for (const KIVO_RUN& run : runs) {
        result += (result.empty() ? "" : " ") + run.first + ".." + run.last;
    }
    return result;
}

std::string legal_runs(const KIVO_SESSION& session, const std::string& name,
                       KIVO_LEGAL_SCOPE scope = kWhole) {
    const KIVO_LEGAL_VALUES legal = session.legal_values(name, scope);
    EXPECT_TRUE(legal.undecided.empty()) << runs_of(legal.undecided);
    return runs_of(legal.runs);
}

Texts legal_texts(const KIVO_SESSION& session, const std::string& name,
                  KIVO_LEGAL_SCOPE scope = kWhole) {
    return session.legal_values(name, scope).values;
}

Texts repairs_of(const KIVO_SESSION& session, const KIVO_SUBJECT& subject) {
    Texts texts;
    for (const KIVO_REPAIR& repair : session.repairs(subject)) {
        texts.push_back(repair.text);
    }
    return texts;
}

}  // namespace

TEST(LegalValues, of_the_fifo) {
    Example fifo("fifo");
    KIVO_SESSION session(fifo.info);
    EXPECT_EQ(legal_runs(session, "DEPTH"), "13..131072");
    // A large one makes the storage a block, which has a greatest depth.
    EXPECT_EQ(legal_runs(session, "DEPTH", kOwn), "-2147483648..131072");
    EXPECT_EQ(legal_runs(session, "DATA_WIDTH", kOwn), "1..256");
    EXPECT_EQ(legal_runs(session, "ALMOST_FULL_LEVEL"), "5..15");
    EXPECT_EQ(legal_texts(session, "STORAGE"), (Texts{"AUTO", "BLOCK", "REGISTERS"}));
    session.set("DEPTH", "128");
    EXPECT_EQ(legal_texts(session, "STORAGE"), (Texts{"AUTO", "BLOCK"}));
    session.set("DEPTH", "1024");
    EXPECT_EQ(legal_texts(session, "STORAGE"), Texts{"BLOCK"});
    EXPECT_EQ(legal_texts(session, "STORAGE", kOwn), (Texts{"AUTO", "BLOCK", "REGISTERS"}));
    EXPECT_EQ(legal_texts(session, "reset"), Texts{"USED"});
    EXPECT_EQ(legal_texts(session, "full"), (Texts{"UNUSED", "USED", "VARIABLE"}));
}

TEST(LegalValues, beyond_64_bits) {
    Example counter("counter");
    KIVO_SESSION session(counter.info);
    session.set("WIDTH", "64");
    EXPECT_EQ(legal_runs(session, "MODULUS"), "0..0 2..18446744073709551616");
    session.set("MODULUS", "18446744073709551617");
    EXPECT_EQ(repairs_of(session, session.verdicts()[0].subject),
              Texts{"MODULUS=18446744073709551616"});
}

TEST(LegalValues, gaps_and_products_of_wide_domains) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'") + integer("B", "VALUE='1000'")) +
                in("RULES",
                   "<RULE>A * B lte 1000000</RULE><RULE>A != 17 and A != 500</RULE>"
                   "<RULE>A gt 0 || A lt -70000</RULE>"));
    EXPECT_EQ(legal_runs(d.session, "A"), "-2147483648..-70001 1..16 18..499 501..1000");
}

TEST(LegalValues, what_the_effort_does_not_decide_is_told) {
    Described d(in("PARAMETERS", integer("A", "VALUE='4'")) +
                in("RULES", "<RULE>( A * A ) % 7 != 3</RULE>"));
    KIVO_EFFORT effort;
    effort.steps = 100;
    const KIVO_LEGAL_VALUES legal = d.session.legal_values("A", kWhole, effort);
    ASSERT_FALSE(legal.undecided.empty());
    EXPECT_EQ(legal.undecided.back().last, "2147483647");
    const KIVO_LEGAL_VALUES again = d.session.legal_values("A", kWhole, effort);
    EXPECT_EQ(runs_of(legal.undecided), runs_of(again.undecided));
}

TEST(LegalValues, of_texts_without_a_list) {
    Described d(in("PARAMETERS",
                   "<PARAMETER NAME='F' TYPE='STRING' DEFAULT_VALUE='none'/>"
                   "<PARAMETER NAME='G' TYPE='STRING' DEFAULT_VALUE='x'/>") +
                in("RULES", "<RULE>F != \"bad\"</RULE><RULE>G == \"x\" || G == \"y\"</RULE>"));
    const KIVO_LEGAL_VALUES open = d.session.legal_values("F", kWhole);
    EXPECT_EQ(open.values, Texts{"none"});
    EXPECT_TRUE(open.are_others_legal);
    const KIVO_LEGAL_VALUES closed = d.session.legal_values("G", kWhole);
    EXPECT_EQ(closed.values, (Texts{"x", "y"}));
    EXPECT_FALSE(closed.are_others_legal);
}

TEST(LegalValues, of_what_is_no_setting_and_where_something_else_is_wrong) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'") +
                                     integer("B", "VALUE='1'", "<FORCE_RANGE MIN='2' MAX='3'/>")) +
                in("HIDDEN_PARAMETERS", "<PARAMETER NAME='H' VALUE='2'/>"));
    EXPECT_FALSE(d.session.legal_values("NOBODY", kWhole).is_setting);
    EXPECT_FALSE(d.session.legal_values("H", kWhole).is_setting);
    EXPECT_EQ(legal_runs(d.session, "A"), "");
    EXPECT_EQ(legal_runs(d.session, "A", kOwn), "-2147483648..2147483647");
    EXPECT_EQ(legal_runs(d.session, "B"), "2..3");
    d.session.allow_hidden(true);
    EXPECT_TRUE(d.session.legal_values("H", kWhole).is_setting);
}

TEST(Repairs, two_changes_where_one_is_not_enough) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9'/>") +
                                     integer("B", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9'/>")) +
                in("RULES", "<RULE>A gt 3</RULE><RULE>A == B</RULE>"));
    EXPECT_EQ(repairs_of(d.session, d.session.verdicts()[0].subject), Texts{"A=4 B=4"});
    Described never(in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9'/>")) +
                    in("RULES", "<RULE>A != A</RULE>"));
    const KIVO_SUBJECT subject = never.session.verdicts()[0].subject;
    EXPECT_TRUE(repairs_of(never.session, subject).empty());
    EXPECT_TRUE(never.session.conflict(subject).settings.empty());
}

TEST(Repairs, of_what_holds_there_are_none) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'")) + in("RULES", "<RULE>A == 1</RULE>"));
    d.session.set("A", "2");
    const KIVO_SUBJECT subject = d.session.verdicts()[0].subject;
    EXPECT_EQ(repairs_of(d.session, subject), Texts{"A=1"});
    d.session.unset("A");
    EXPECT_TRUE(repairs_of(d.session, subject).empty());
    EXPECT_TRUE(d.session.conflict(subject).settings.empty());
    EXPECT_EQ(d.session.why(subject).holds, KIVO_TRUTH::kYes);
}

TEST(Repairs, say_when_the_effort_did_not_suffice_to_try_all) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'") + integer("B", "VALUE='2'") +
                                     integer("C", "VALUE='3'")) +
                in("RULES", "<RULE>A * B == C * C * 7</RULE>"));
    const KIVO_SUBJECT subject = d.session.verdicts()[0].subject;
    bool are_all_tried = false;
    const std::size_t all = d.session.repairs(subject, {}, &are_all_tried).size();
    EXPECT_GT(all, 0U);
    EXPECT_TRUE(are_all_tried);
    EXPECT_LT(d.session.repairs(subject, {4, 4, 2000}, &are_all_tried).size(), all);
    EXPECT_FALSE(are_all_tried);
    d.session.set("A", "63");
    d.session.set("B", "1");
    ASSERT_TRUE(d.session.is_legal());
    EXPECT_TRUE(d.session.repairs(subject, {4, 4, 2000}, &are_all_tried).empty());
    EXPECT_TRUE(are_all_tried);
}

TEST(Repairs, none_at_all_is_an_answer_when_all_were_tried) {
    Described never(
        in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9'/>") +
                             integer("B", "VALUE='1'", "<FORCE_RANGE MIN='0' MAX='9'/>")) +
        in("RULES", "<RULE>A * B gt 99</RULE>"));
    bool are_all_tried = false;
    EXPECT_TRUE(
        never.session.repairs(never.session.verdicts()[0].subject, {}, &are_all_tried).empty());
    EXPECT_TRUE(are_all_tried);
}
