#include <gtest/gtest.h>

#include <algorithm>

#include "tests/session/fixture.h"

namespace {

KIVO_SUBJECT subject_of(const KIVO_SESSION& session, const std::string& id) {
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        if (verdict.id == id) {
            return verdict.subject;
        }
    }
    ADD_FAILURE() << "no verdict " << id;
    return {};
}

KIVO_WHY why_verdict(const KIVO_SESSION& session, const std::string& id) {
    return session.why(subject_of(session, id));
}

// "NAME=VALUE source text", indented by what it decides.
Texts tree(const KIVO_WHY& why) {
    Texts lines;
    std::vector<std::pair<std::uint32_t, std::size_t>> waiting;
    const auto wait_for = [&waiting](const std::vector<std::uint32_t>& operands,
                                     std::size_t depth) {
        for (auto each = operands.rbegin(); each != operands.rend(); ++each) {
            waiting.emplace_back(*each, depth);
        }
    };
    wait_for(why.decided_by, 0);
    while (!waiting.empty()) {
        const auto [position, depth] = waiting.back();
        waiting.pop_back();
        const KIVO_OPERAND& operand = why.operands.at(position);
        lines.push_back(std::string(2 * depth, ' ') + operand.name + "=" +
                        (operand.is_known ? operand.value : "?") + " " + operand.source_text);
        wait_for(operand.operands, depth + 1);
    }
    return lines;
}

// "text=value", what does not decide in brackets.
Texts parts(const std::vector<KIVO_PART>& expression) {
    Texts result;
    for (const KIVO_PART& part : expression) {
        const std::string text = part.text + "=" + (part.is_known ? part.value : "?");
        result.push_back(part.is_deciding ? text : "[" + text + "]");
    }
    return result;
}

const std::string kNumbers =
    integer("A", "VALUE='1'") + integer("B", "VALUE='2'") + integer("C", "VALUE='3'");

}  // namespace

TEST(Why, every_subexpression_has_its_value) {
    Described d(in("PARAMETERS", kNumbers) + in("RULES", "<RULE>A + B * 2 == C</RULE>"));
    const KIVO_WHY why = why_verdict(d.session, "rule");
    EXPECT_TRUE(why.is_known);
    EXPECT_EQ(why.holds, KIVO_TRUTH::kNo);
    EXPECT_EQ(why.rule, "A + B * 2 == C");
    EXPECT_EQ(d.info.get_place(why.mark).line, 1);
    EXPECT_EQ(parts(why.expression), (Texts{"A=1", "B=2", "2=2", "B * 2=4", "A + B * 2=5", "C=3",
                                            "A + B * 2 == C=false"}));
    EXPECT_EQ(why.expression[4].operands, 2u);
    EXPECT_EQ(why.expression[4].offset, 2u);
    EXPECT_EQ(tree(why), (Texts{"A=1 default", "B=2 default", "C=3 default"}));
}

TEST(Why, only_sides_that_decide_are_told) {
    Described d(in("PARAMETERS", kNumbers) +
                in("RULES",
                   "<RULE>A == 1 and B == 3</RULE><RULE>A == 2 || C == 4</RULE>"
                   "<RULE>!( A == 1 || B == 9 )</RULE>"));
    const std::vector<KIVO_VERDICT>& verdicts = d.session.verdicts();
    ASSERT_EQ(verdicts.size(), 3u);
    const KIVO_WHY failed_and = d.session.why(verdicts[0].subject);
    EXPECT_EQ(tree(failed_and), Texts{"B=2 default"});
    EXPECT_EQ(parts(failed_and.expression), (Texts{"[A=1]", "[1=1]", "[A == 1=true]", "B=2", "3=3",
                                                   "B == 3=false", "A == 1 and B == 3=false"}));
    EXPECT_EQ(tree(d.session.why(verdicts[1].subject)), (Texts{"A=1 default", "C=3 default"}));
    EXPECT_EQ(tree(d.session.why(verdicts[2].subject)), Texts{"A=1 default"});
}

TEST(Why, branches_of_a_value_rule) {
    const std::string rule =
        "<VALUE_RULE><IF>A == 1</IF><THEN>B == 1</THEN><ELSE>C == 1</ELSE></VALUE_RULE>";
    Described d(in("PARAMETERS", integer("A", "VALUE='1'", rule) + integer("B", "VALUE='2'") +
                                     integer("C", "VALUE='3'")));
    const KIVO_WHY then = why_verdict(d.session, "value-rule");
    EXPECT_EQ(then.branch, KIVO_BRANCH::kThen);
    EXPECT_EQ(then.rule, "if A == 1 then B == 1 else C == 1");
    EXPECT_EQ(tree(then), (Texts{"A=1 default", "B=2 default"}));
    d.session.set("A", "5");
    const KIVO_WHY otherwise = why_verdict(d.session, "value-rule");
    EXPECT_EQ(otherwise.branch, KIVO_BRANCH::kElse);
    EXPECT_EQ(parts(otherwise.expression),
              (Texts{"A=5", "1=1", "A == 1=false", "C=3", "1=1", "C == 1=false"}));
    EXPECT_EQ(tree(otherwise), (Texts{"A=5 given", "C=3 default"}));
}

TEST(Why, of_a_range_the_limit_that_is_broken) {
    Described d(in("PARAMETERS",
                   integer("A", "VALUE='9'", "<FORCE_RANGE MIN='B' MAX='C + 1' IF='D == 1'/>") +
                       integer("B", "VALUE='2'") + integer("C", "VALUE='3'") +
                       integer("D", "VALUE='1'")));
    const KIVO_WHY above = why_verdict(d.session, "out-of-range");
    EXPECT_EQ(above.rule, "from 2 (B) to 4 (C + 1) if D == 1");
    EXPECT_EQ(tree(above), (Texts{"A=9 default", "C=3 default", "D=1 default"}));
    d.session.set("A", "1");
    EXPECT_EQ(tree(why_verdict(d.session, "out-of-range")),
              (Texts{"A=1 given", "B=2 default", "D=1 default"}));
}

TEST(Why, the_tree_of_the_ram_names_every_source_and_place) {
    Example ram("ram");
    KIVO_SESSION session(ram.info);
    session.set_all({{"BUS_STYLE", "SHARED"}, {"ADDRESS_WIDTH", "13"}});
    const KIVO_WHY why = why_verdict(session, "value-rule");
    EXPECT_EQ(why.branch, KIVO_BRANCH::kThen);
    EXPECT_EQ(ram.info.get_place(why.mark).line, 32);
    EXPECT_EQ(
        tree(why),
        (Texts{"BLOCK_TYPE=LARGE forced, CAPACITY gt 65536", "  CAPACITY=131072 WORDS * DATA_WIDTH",
               "    WORDS=8192 forced, 2 ^ ADDRESS_WIDTH", "      ADDRESS_WIDTH=13 given",
               "    DATA_WIDTH=16 default", "OUTPUT_REGISTER=OFF forced, BUS_STYLE == \"SHARED\"",
               "  BUS_STYLE=SHARED given"}));
    EXPECT_EQ(
        kivo_why_text(why, session.conflict(why.subject), session.repairs(why.subject), ram.info),
        R"(OUTPUT_REGISTER: its rule fails   ram_info.xml:32
  if BLOCK_TYPE == "LARGE" then OUTPUT_REGISTER == "ON"
  BLOCK_TYPE = LARGE        forced, CAPACITY gt 65536      ram_info.xml:38
    CAPACITY = 131072       WORDS * DATA_WIDTH             ram_info.xml:86
      WORDS = 8192          forced, 2 ^ ADDRESS_WIDTH      ram_info.xml:78
        ADDRESS_WIDTH = 13  given
      DATA_WIDTH = 16       default                        ram_info.xml:12
  OUTPUT_REGISTER = OFF     forced, BUS_STYLE == "SHARED"  ram_info.xml:31
    BUS_STYLE = SHARED      given
  conflict of: ADDRESS_WIDTH=13 BUS_STYLE=SHARED DATA_WIDTH=16
  would be legal with: DATA_WIDTH=8, or ADDRESS_WIDTH=12, or BUS_STYLE=SEPARATE
)");
}

TEST(Why, of_a_value_and_of_a_force_whose_condition_is_false) {
    Example fifo("fifo");
    KIVO_SESSION session(fifo.info);
    const KIVO_WHY why = session.why({"UNDERFLOW_CHECKING"});
    EXPECT_EQ(why.id, "value");
    EXPECT_EQ(why.text, "UNDERFLOW_CHECKING is \"OFF\"");
    EXPECT_EQ(tree(why), (Texts{"UNDERFLOW_CHECKING=OFF forced, READ_MODE == \"NORMAL\"",
                                "  READ_MODE=NORMAL default"}));
    EXPECT_EQ(fifo.info.get_place(why.operands[0].mark).line, 47);
    EXPECT_EQ(why.operands[0].source, KIVO_OPERAND_SOURCE::kForced);
    EXPECT_EQ(tree(session.why({"LEVEL_WIDTH"})),
              (Texts{"LEVEL_WIDTH=5 forced, CLOG2(DEPTH + 1)",
                     "  CLOG2(DEPTH + 1)=5 ceil(log(n) / log(2))", "    DEPTH=16 default"}));
    EXPECT_EQ(session.why({"LEVEL_WIDTH"}).operands[1].source, KIVO_OPERAND_SOURCE::kMacro);

    Example counter("counter");
    KIVO_SESSION counting(counter.info);
    EXPECT_EQ(tree(counting.why({"LAST_COUNT"})),
              (Texts{"LAST_COUNT=255 forced, MODULUS gt 0 is false", "  MODULUS=0 default",
                     "  ALL_ONES(WIDTH)=255 2 ^ n - 1", "    WIDTH=8 default"}));
}

TEST(Why, what_a_called_macro_reads_is_followed) {
    Described d(in("PARAMETERS", kNumbers) +
                in("MACROS",
                   "<MACRO NAME='OVER' ARGUMENTS='n' DEFINITION='n gt LIMIT'/>"
                   "<MACRO NAME='LIMIT' DEFINITION='C'/>") +
                in("RULES", "<RULE>OVER(A)</RULE>"));
    EXPECT_EQ(
        tree(why_verdict(d.session, "rule")),
        (Texts{"OVER(A)=false n gt LIMIT", "  LIMIT=3 C", "    C=3 default", "  A=1 default"}));
}

TEST(Why, ports_are_states_or_constants) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'")) +
                in("PORTS",
                   "<PORT NAME='p' TYPE='INPUT' USAGE='CONSTANT' WIDTH='4' DEFAULT_VALUE='3'/>"
                   "<PORT NAME='q' TYPE='INPUT'/>") +
                in("PORT_RULES", "<PORT NAME='q'><STATE V='USED' IF='A == 1'/></PORT>") +
                in("RULES", "<RULE>p gt 4</RULE><RULE>q == UNUSED</RULE><RULE>!q</RULE>"));
    const std::vector<KIVO_VERDICT>& verdicts = d.session.verdicts();
    ASSERT_EQ(verdicts.size(), 3u);
    EXPECT_EQ(tree(d.session.why(verdicts[0].subject)),
              (Texts{"p=3 tied, default", "  p=CONSTANT:3 default"}));
    for (const std::size_t i : {1u, 2u}) {
        const KIVO_WHY why = d.session.why(verdicts[i].subject);
        EXPECT_EQ(tree(why), (Texts{"q=USED state rule, A == 1", "  A=1 default"}));
        EXPECT_EQ(why.operands[0].source, KIVO_OPERAND_SOURCE::kState);
    }
    d.session.set("p", "CONSTANT:2");
    EXPECT_EQ(tree(why_verdict(d.session, "rule")), (Texts{"p=2 given", "  p=CONSTANT:2 given"}));
}

TEST(Why, own_name_is_what_was_asked_for) {
    Described d(in("PARAMETERS", integer("A", "VALUE='9'", "<FORCE_VALUE V='8' IF='A gt 8'/>")));
    EXPECT_EQ(tree(d.session.why({"A"})), (Texts{"A=8 forced, A gt 8", "  A=9 default"}));
}

TEST(Why, presets_and_what_has_no_value) {
    Example counter("counter");
    KIVO_SESSION session(counter.info);
    session.select_map("clock_divider");
    const KIVO_WHY why = session.why({"MODULUS"});
    EXPECT_EQ(tree(why), Texts{"MODULUS=10 preset clock_divider"});
    EXPECT_EQ(why.operands[0].source, KIVO_OPERAND_SOURCE::kPreset);
    Described d(in("PARAMETERS", integer("A", "")));
    const KIVO_WHY missing = why_verdict(d.session, "needs-value");
    EXPECT_EQ(tree(missing), Texts{"A=? no value"});
}

TEST(Why, a_request_that_is_overridden) {
    Example ram("ram");
    KIVO_SESSION session(ram.info);
    session.set_all({{"DATA_WIDTH", "18"}, {"BYTE_ENABLES", "ON"}});
    const KIVO_WHY why = why_verdict(session, "overridden");
    EXPECT_EQ(tree(why), (Texts{"BYTE_ENABLES=OFF forced, DATA_WIDTH % 8 != 0",
                                "  DATA_WIDTH=18 given", "BYTE_ENABLES=ON given"}));
    const KIVO_CONFLICT conflict = session.conflict(why.subject);
    ASSERT_EQ(conflict.settings.size(), 2u);
    Texts repairs;
    for (const KIVO_REPAIR& repair : session.repairs(why.subject)) {
        repairs.push_back(repair.text);
    }
    EXPECT_EQ(repairs, (Texts{"BYTE_ENABLES=OFF", "DATA_WIDTH=16", "DATA_WIDTH=24"}));
}

TEST(Why, faults_and_subjects_that_are_not_there) {
    Described d(in("PARAMETERS", kNumbers) + in("RULES",
                                                "<RULE>A / ( B - 2 ) == 1</RULE>"
                                                "<RULE>NOBODY == 1</RULE>"));
    const KIVO_WHY undecided = why_verdict(d.session, "rule");
    EXPECT_EQ(undecided.holds, KIVO_TRUTH::kUnknown);
    EXPECT_EQ(tree(undecided), (Texts{"A=1 default", "B=2 default"}));
    const KIVO_WHY fault = why_verdict(d.session, "fault");
    EXPECT_EQ(fault.id, "fault");
    EXPECT_EQ(fault.rule, "NOBODY == 1");
    EXPECT_TRUE(d.session.repairs(fault.subject).empty());
    EXPECT_TRUE(d.session.conflict(fault.subject).settings.empty());
    EXPECT_FALSE(d.session.why({"NOBODY"}).is_known);
    EXPECT_FALSE(d.session.why({"A", 999999}).is_known);
    EXPECT_FALSE(d.session.why({"B", subject_of(d.session, "rule").number}).is_known);
    EXPECT_EQ(kivo_why_text(d.session.why({"NOBODY"}), {}, {}, d.info), "");
}

TEST(Why, shared_values_are_told_once) {
    std::string macros = "<MACRO NAME='M0' DEFINITION='A + A'/>";
    for (int i = 1; i < 60; ++i) {
        const std::string below = "M" + std::to_string(i - 1);
        macros += "<MACRO NAME='M" + std::to_string(i) + "' DEFINITION='" + below + " - " + below +
                  " + 1'/>";
    }
    Described d(in("PARAMETERS", kNumbers) + in("MACROS", macros) +
                in("RULES", "<RULE>M59 == 0</RULE>"));
    const KIVO_WHY why = why_verdict(d.session, "rule");
    EXPECT_EQ(why.operands.size(), 61u);
    const std::string text = kivo_why_text(why, {}, {}, d.info);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 63);
}
