#include "kivo/session/session.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>

#include "tests/session/fixture.h"

TEST(Session, refuses_what_cannot_be_set_and_changes_nothing) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'")) +
                in("PORTS",
                   "<PORT NAME='c' TYPE='INPUT' CNX_TYPE='USED_PORT'/><PORT NAME='q' "
                   "TYPE='OUTPUT'/><PORT NAME='b' TYPE='BURIED'/>") +
                in("HIDDEN_PARAMETERS", "<PARAMETER NAME='H' VALUE='2'/>") +
                in("MACROS", "<MACRO NAME='M' DEFINITION='A'/>"));
    EXPECT_EQ(d.session.set("NONE", "1"), KIVO_SET_RESULT::kUnknownName);
    EXPECT_EQ(d.session.set("M", "1"), KIVO_SET_RESULT::kUnknownName);
    EXPECT_EQ(d.session.set("A", "x"), KIVO_SET_RESULT::kNotANumber);
    EXPECT_EQ(d.session.set("A", "1.5"), KIVO_SET_RESULT::kNotANumber);
    EXPECT_EQ(d.session.set("A", std::string(50, '9')), KIVO_SET_RESULT::kNotANumber);
    EXPECT_EQ(d.session.set("c", "UNUSED"), KIVO_SET_RESULT::kNotASetting);
    EXPECT_EQ(d.session.set("b", "USED"), KIVO_SET_RESULT::kNotASetting);
    EXPECT_EQ(d.session.set("H", "3"), KIVO_SET_RESULT::kNotASetting);
    EXPECT_EQ(d.session.set("q", "CONSTANT:1"), KIVO_SET_RESULT::kNotASetting);
    EXPECT_EQ(d.session.set("q", "used"), KIVO_SET_RESULT::kNotAState);
    std::size_t refused = 99;
    EXPECT_EQ(d.session.set_all({{"A", "5"}, {"q", "OPEN"}}, &refused),
              KIVO_SET_RESULT::kNotAState);
    EXPECT_EQ(refused, 1u);
    EXPECT_EQ(value_of(d.session, "A"), "1");
    EXPECT_TRUE(d.session.assignments().empty());
    d.session.allow_hidden(true);
    EXPECT_EQ(d.session.set("H", "3"), KIVO_SET_RESULT::kDone);
    EXPECT_EQ(value_of(d.session, "H"), "3");
    EXPECT_EQ(d.session.nearest_name("a"), "A");
}

TEST(Session, first_active_force_decides) {
    Described d(in("PARAMETERS", integer("MODE", "VALUE='2'") +
                                     integer("A", "VALUE='1'",
                                             "<FORCE_VALUE V='8' IF='MODE == 2'/>"
                                             "<FORCE_VALUE V='16' ELSE='32' IF='MODE == 3'/>"
                                             "<FORCE_VALUE V='99'/>")));
    EXPECT_EQ(value_of(d.session, "A"), "8");
    EXPECT_EQ(verdicts_of(d.session), Texts());
    d.session.set("MODE", "3");
    EXPECT_EQ(value_of(d.session, "A"), "16");
    d.session.set("MODE", "4");
    EXPECT_EQ(value_of(d.session, "A"), "32");
}

TEST(Session, two_active_forces_that_differ_are_an_error) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'",
                                         "<FORCE_VALUE V='8' IF='A gt 2'/>"
                                         "<FORCE_VALUE V='16' IF='A gt 4'/>")));
    d.session.set("A", "3");
    EXPECT_EQ(verdicts_of(d.session), Texts{"overridden A"});
    d.session.set("A", "5");
    EXPECT_EQ(value_of(d.session, "A"), "8");
    EXPECT_EQ(verdicts_of(d.session), (Texts{"overridden A", "forces-disagree A"}));
}

TEST(Session, own_name_in_a_force_is_what_was_asked_for_also_through_macros) {
    Described d(in("PARAMETERS", integer("A", "VALUE='20'", "<FORCE_VALUE V='8' IF='A gt 8'/>") +
                                     integer("B", "VALUE='20'", "<FORCE_VALUE V='8' IF='BIG'/>")) +
                in("MACROS",
                   "<MACRO NAME='BIG' DEFINITION='OVER(B)'/>"
                   "<MACRO NAME='OVER' ARGUMENTS='n' DEFINITION='n gt 8'/>"));
    EXPECT_EQ(value_of(d.session, "A"), "8");
    EXPECT_EQ(value_of(d.session, "B"), "8");
    EXPECT_EQ(evaluated(d.session, "BIG"), "false");
}

TEST(Session, cycles_settle_or_are_unknown) {
    Described settles(
        in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_VALUE V='2' IF='B gt 5'/>") +
                             integer("B", "VALUE='1'", "<FORCE_VALUE V='3' IF='A gt 5'/>")));
    EXPECT_EQ(value_of(settles.session, "A"), "1");
    settles.session.set("B", "9");
    EXPECT_EQ(value_of(settles.session, "A"), "2");
    Described alternates(in(
        "PARAMETERS", integer("A", "VALUE='0'", "<FORCE_VALUE V='1' IF='B == 0' ELSE='0'/>") +
                          integer("B", "VALUE='0'", "<FORCE_VALUE V='1' IF='A == 1' ELSE='0'/>")));
    EXPECT_EQ(value_of(alternates.session, "A"), "none");
    EXPECT_EQ(evaluated(alternates.session, "A"), "[cycle]");
}

TEST(Session, lists_and_defaults) {
    Described d(in("PARAMETERS", integer("PLAIN", "VALUE='8' DEFAULT_VALUE='4'") +
                                     integer("LIST", "VALUE='2; 3 ;;4' DEFAULT_VALUE_INDEX='1'") +
                                     integer("BEYOND", "VALUE='2;3' DEFAULT_VALUE_INDEX='7'") +
                                     integer("FIRST", "VALUE='5;6'") + integer("NOTHING", "")));
    // Attributes are read in the order of their names, so VALUE comes last and wins.
    EXPECT_EQ(value_of(d.session, "PLAIN"), "8");
    EXPECT_EQ(value_of(d.session, "LIST"), "3");
    EXPECT_EQ(value_of(d.session, "BEYOND"), "2");
    EXPECT_EQ(value_of(d.session, "FIRST"), "5");
    EXPECT_EQ(value_of(d.session, "NOTHING"), "none");
    EXPECT_EQ(evaluated(d.session, "NOTHING + 1"), "[unset NOTHING]");
    EXPECT_EQ(verdicts_of(d.session), (Texts{"fault BEYOND?", "needs-value NOTHING"}));
    EXPECT_EQ(fault_ids(d.session), "default-index@0");
    d.session.set_all({{"LIST", "5"}, {"NOTHING", "1"}});
    EXPECT_EQ(verdicts_of(d.session), (Texts{"fault BEYOND?", "not-in-list LIST"}));
}

TEST(Session, faults_become_verdicts_where_something_needs_the_text) {
    Described d(
        in("PARAMETERS", integer("A", "VALUE='1'", "<FORCE_VALUE V='1 +' IF='B == 1'/>") +
                             integer("B", "VALUE='0'", "<FORCE_RANGE MAX='DEPHT' IF='A == 7'/>")) +
        in("RULES",
           "<RULE>A gt 1 / B</RULE><RULE>A = 1</RULE>"
           "<RULE REQUIRED_RULE='OFF'>NOBODY</RULE>"));
    EXPECT_EQ(fault_ids(d.session),
              "expression-syntax@3 unknown-name@0 expression-syntax@2 unknown-name@0 "
              "division-by-zero@7");
    EXPECT_EQ(verdicts_of(d.session), (Texts{"rule ?", "fault ?", "fault ?"}));
    EXPECT_EQ(d.session.verdicts()[1].severity, KIVO_SEVERITY::kError);
    EXPECT_EQ(d.session.verdicts()[2].severity, KIVO_SEVERITY::kWarning);
    d.session.set("B", "1");
    EXPECT_EQ(value_of(d.session, "A"), "none");
    EXPECT_EQ(verdicts_of(d.session)[0], "fault A?");
    EXPECT_EQ(d.session.verdicts()[0].text,
              "FORCE_VALUE, V: \"1 +\": a number, text, name or \"(\" is missing at the end "
              "[expression-syntax]");
}

TEST(Session, undecided_force_is_harmless_when_all_outcomes_agree) {
    Described d(
        in("PARAMETERS", integer("A", "VALUE='4'", "<FORCE_VALUE V='4' IF='q == 1'/>") +
                             integer("B", "VALUE='4'", "<FORCE_VALUE V='5' IF='q == 1'/>")) +
        in("PORTS", "<PORT NAME='q' TYPE='OUTPUT'/>") + in("RULES", "<RULE>B gt 0</RULE>"));
    EXPECT_EQ(value_of(d.session, "A"), "4");
    EXPECT_EQ(evaluated(d.session, "B"), "[run-time q]");
    // What is known only at run time says nothing of the configuration.
    EXPECT_EQ(verdicts_of(d.session), Texts());
}

TEST(Session, unknown_condition_of_a_value_rule_is_harmless_when_both_branches_agree) {
    const auto rule = [](const std::string& text) {
        return in("PARAMETERS", integer("A", "VALUE='4'", "<VALUE_RULE>" + text + "</VALUE_RULE>") +
                                    integer("U", ""));
    };
    const auto verdict = [](const Described& d) { return verdicts_of(d.session).at(0); };
    Described agree(rule("<IF>U == 1</IF><THEN>A == 4</THEN><ELSE>A lt 5</ELSE>"));
    EXPECT_EQ(verdict(agree), "needs-value U");
    Described differ(rule("<IF>U == 1</IF><THEN>A == 4</THEN><ELSE>A lt 4</ELSE>"));
    EXPECT_EQ(verdict(differ), "value-rule A?");
    Described both_fail(rule("<IF>U == 1</IF><THEN>A == 5</THEN><ELSE>A lt 4</ELSE>"));
    EXPECT_EQ(verdict(both_fail), "value-rule A");
}

TEST(Session, ports) {
    Described d(in("PARAMETERS", integer("W", "VALUE='4'")) +
                in("PORTS",
                   "<PORT NAME='a' TYPE='INPUT' WIDTH='W'><CONSTANT_RANGE MIN='0' MAX='9'/></PORT>"
                   "<PORT NAME='b' TYPE='INPUT' USAGE='UNUSED'><FORCE_VALUE V='1' IF='W gt 4'/>"
                   "</PORT>"
                   "<PORT NAME='s' TYPE='INPUT'><STATE V='1' IF='W == 6'/>"
                   "<STATE V='OPEN' IF='W == 7'/></PORT>"));
    EXPECT_EQ(verdicts_of(d.session), Texts{"port-needs-value b"});
    d.session.set("a", "CONSTANT:9");
    EXPECT_EQ(state_of(d.session, "a"), "CONSTANT:9");
    EXPECT_EQ(d.session.find_port("a")->asked, "CONSTANT:9");
    EXPECT_EQ(evaluated(d.session, "a + 1"), "10");
    EXPECT_EQ(evaluated(d.session, "a"), "false");
    EXPECT_EQ(evaluated(d.session, "a == CONSTANT"), "true");
    d.session.set_all({{"a", "CONSTANT:17"}, {"W", "5"}});
    EXPECT_EQ(verdicts_of(d.session), Texts{"port-range a"});
    EXPECT_EQ(state_of(d.session, "b"), "UNUSED:1");
    d.session.set_all({{"a", "CONSTANT:-9"}, {"W", "4"}, {"b", "USED"}});
    EXPECT_EQ(verdicts_of(d.session), (Texts{"port-range a", "port-range a"}));
    d.session.set_all({{"a", "USED"}, {"W", "6"}, {"s", "USED"}});
    EXPECT_EQ(verdicts_of(d.session), (Texts{"forced-but-connected b", "overridden s"}));
    EXPECT_EQ(state_of(d.session, "s"), "CONSTANT:1");
    d.session.set("W", "7");
    EXPECT_EQ(state_of(d.session, "s"), "none");
    EXPECT_EQ(verdicts_of(d.session), (Texts{"fault s?", "forced-but-connected b"}));
    d.session.set("W", "0");
    EXPECT_EQ(verdicts_of(d.session), Texts{"port-width a"});
}

TEST(Session, an_empty_range_of_a_connected_port_is_a_warning) {
    Described d(
        in("PARAMETERS", integer("W", "VALUE='0'")) +
        in("PORTS", "<PORT NAME='data' TYPE='INPUT'><FORCE_RANGE MIN='0' MAX='W - 1'/></PORT>"));
    EXPECT_TRUE(d.session.is_legal());
    EXPECT_EQ(verdicts_of(d.session), Texts{"port-range data"});
    EXPECT_EQ(d.session.verdicts()[0].severity, KIVO_SEVERITY::kWarning);
    d.session.set("data", "UNUSED");
    EXPECT_EQ(verdicts_of(d.session), Texts{"port-needs-value data"});
}

TEST(Session, macros_that_use_themselves_spoil_what_uses_them) {
    Described d(in("MACROS",
                   "<MACRO NAME='A' DEFINITION='B + 1'/><MACRO NAME='B' DEFINITION='A'/>"
                   "<MACRO NAME='UNUSED_ONE' DEFINITION='1 +'/>") +
                in("RULES", "<RULE>A gt 1</RULE>"));
    EXPECT_EQ(fault_ids(d.session), "macro-recursion@0 macro-recursion@0");
    EXPECT_EQ(evaluated(d.session, "UNUSED_ONE"), "[fault expression-syntax]");
    EXPECT_EQ(verdicts_of(d.session), (Texts{"fault A?", "fault B?"}));
}

TEST(Session, each_of_many_faults_is_told_with_its_own_name) {
    constexpr int kRules = 3000;
    std::string rules;
    for (int i = 0; i < kRules; ++i) {
        rules += "<RULE>N" + std::to_string(i) + " gt M" + std::to_string(i) + "</RULE>";
    }
    Described d(in("PARAMETERS", integer("W", "VALUE='4'")) + in("RULES", rules));
    const std::vector<KIVO_FAULT>& faults = d.session.faults();
    ASSERT_EQ(faults.size(), 2U * kRules);
    ASSERT_EQ(d.session.verdicts().size(), 2U * kRules);
    for (std::size_t i = 0; i < faults.size(); ++i) {
        const std::string name = (i % 2 == 0 ? "N" : "M") + std::to_string(i / 2);
        EXPECT_EQ(faults[i].text, "no parameter, port or macro is called " + name);
        EXPECT_EQ(faults[i].length, name.size());
        EXPECT_NE(d.session.verdicts()[i].text.find("called " + name + " ["), std::string::npos);
    }
}

TEST(Session, text_values) {
    Described d(in("PARAMETERS",
                   integer("W", "VALUE='4'") +
                       "<PARAMETER NAME='LIST' TYPE='STRING' VALUE='W;X' DEFAULT_VALUE_INDEX='0'/>"
                       "<PARAMETER NAME='NAMED' TYPE='STRING' DEFAULT_VALUE='W'/>"
                       "<PARAMETER NAME='QUOTED' TYPE='STRING' DEFAULT_VALUE='\"W\"'/>"
                       "<PARAMETER NAME='FREE' TYPE='STRING' DEFAULT_VALUE='a b'/>"
                       "<PARAMETER NAME='NONE' TYPE='STRING'/>") +
                in("HIDDEN_PARAMETERS",
                   "<PARAMETER NAME='H' VALUE='W * 2'/>"
                   "<PARAMETER NAME='T' VALUE='SYNC'/>"));
    EXPECT_EQ(value_of(d.session, "LIST"), "W");
    EXPECT_EQ(value_of(d.session, "NAMED"), "4");
    EXPECT_EQ(value_of(d.session, "QUOTED"), "W");
    EXPECT_EQ(value_of(d.session, "FREE"), "a b");
    EXPECT_EQ(value_of(d.session, "NONE"), "");
    EXPECT_EQ(value_of(d.session, "H"), "8");
    EXPECT_EQ(value_of(d.session, "T"), "SYNC");
    d.session.set("NAMED", "W");
    EXPECT_EQ(value_of(d.session, "NAMED"), "W");
}

TEST(Session, holds_says_what_is_wrong) {
    Described d(in("PARAMETERS", integer("WIDTH", "VALUE='4'")));
    KIVO_FAULT fault;
    EXPECT_EQ(d.session.holds("WIDTH", &fault), KIVO_TRUTH::kYes);
    EXPECT_EQ(fault.id, "");
    EXPECT_EQ(d.session.holds("WIDHT gt 1", &fault), KIVO_TRUTH::kUnknown);
    EXPECT_EQ(fault.text, "no parameter, port or macro is called WIDHT; did you mean WIDTH?");
    EXPECT_EQ(d.session.holds("WIDTH / 0", &fault), KIVO_TRUTH::kUnknown);
    EXPECT_EQ(fault.id, "division-by-zero");
    EXPECT_EQ(fault.offset, 6u);
}

TEST(Session, changes_are_told_once) {
    Described d(in("PARAMETERS", integer("A", "VALUE='1'") +
                                     integer("B", "VALUE='1'", "<FORCE_VALUE V='A + 1'/>") +
                                     integer("C", "VALUE='1'")) +
                in("RULES", "<RULE>B lt 5</RULE>"));
    EXPECT_TRUE(d.session.take_changes().empty());
    d.session.set("A", "9");
    Texts changes;
    for (const KIVO_CHANGE& change : d.session.take_changes()) {
        changes.push_back(std::to_string(static_cast<int>(change.kind)) + change.name);
    }
    const auto has = [&changes](const std::string& text) {
        return std::find(changes.begin(), changes.end(), text) != changes.end();
    };
    EXPECT_TRUE(has("0A") && has("0B") && has("2"));
    EXPECT_FALSE(has("0C"));
    EXPECT_TRUE(d.session.take_changes().empty());
}

TEST(Session, fork_is_independent) {
    Described d(
        in("PARAMETERS", integer("A", "VALUE='1'") + "<PARAMETER NAME='S' TYPE='STRING'/>"));
    d.session.set("S", "mine");
    KIVO_SESSION other = d.session.fork();
    other.set_all({{"A", "2"}, {"S", "other"}});
    EXPECT_EQ(value_of(d.session, "A"), "1");
    EXPECT_EQ(value_of(d.session, "S"), "mine");
    EXPECT_EQ(value_of(other, "S"), "other");
    const KIVO_SESSION moved = std::move(other);
    EXPECT_EQ(value_of(moved, "A"), "2");
}

TEST(Session, results_are_stored_where_hosts_look) {
    Example fifo("fifo");
    KIVO_SESSION session(fifo.info);
    session.set("DEPTH", "1024");
    kivo_store_results(session, fifo.info);
    EXPECT_EQ(fifo.info.get_kivo_obj("STORAGE")->current_value, "BLOCK");
    EXPECT_EQ(fifo.info.get_kivo_obj("reset")->current_value, "USED");
    EXPECT_GT(fifo.info.get_kivo_obj("STORAGE")->dependency_position,
              fifo.info.get_kivo_obj("DEPTH")->dependency_position);
}

TEST(Session, cursors_of_the_store_stay_where_they_are) {
    Example fifo("fifo");
    fifo.info.reset_kivo_obj_map();
    fifo.info.get_next_kivo_obj();
    const KIVO_SESSION session(fifo.info);
    EXPECT_EQ(fifo.info.get_next_kivo_obj()->name, "DEPTH");
}

// Changing step by step gives what a new session gives that is set at once, in any order.
TEST(SessionProperty, change_by_change_equals_at_once) {
    const char* const values[] = {"0",      "1",        "4",          "8",         "13",
                                  "128",    "200",      "ON",         "OFF",       "AUTO",
                                  "BLOCK",  "LARGE",    "SHARED",     "PORT",      "USED",
                                  "UNUSED", "VARIABLE", "CONSTANT:3", "SHOW_AHEAD"};
    for (const char* example : {"fifo", "counter", "ram"}) {
        Example store(example);
        KIVO_SESSION session(store.info);
        const std::string at_first = everything(session, store.info);
        std::vector<std::string> names;
        for (const KIVO_SETTING& setting : session.settings()) {
            names.push_back(setting.name);
        }
        for (const KIVO_PORT& port : session.ports()) {
            names.push_back(port.name);
        }
        std::vector<std::string> maps{""};
        for (const KIVO_APPLICATION& map : session.maps()) {
            maps.push_back(map.name);
        }
        std::mt19937 random(20261121);
        const auto pick = [&random](std::size_t size) { return random() % size; };
        for (int step = 0; step < 1000; ++step) {
            const std::string& name = names[pick(names.size())];
            if (pick(4) == 0) {
                session.unset(name);
            } else if (pick(20) == 0) {
                session.select_map(maps[pick(maps.size())]);
            } else {
                session.set(name, values[pick(std::size(values))]);
            }
            if (step % 20 == 0) {
                KIVO_SESSION fresh(store.info);
                std::vector<KIVO_ASSIGNMENT> assignments = session.assignments();
                std::shuffle(assignments.begin(), assignments.end(), random);
                EXPECT_EQ(fresh.set_all(assignments), KIVO_SET_RESULT::kDone);
                EXPECT_TRUE(fresh.select_map(session.map()));
                ASSERT_EQ(everything(session, store.info), everything(fresh, store.info))
                    << example << ", step " << step;
            }
        }
        session.select_map("");
        for (const std::string& name : names) {
            session.unset(name);
        }
        EXPECT_EQ(everything(session, store.info), at_first);
    }
}

TEST(SessionBadInput, deep_and_long_texts_are_faults) {
    const std::string deep(1000, '(');
    std::string chain;
    for (int i = 0; i < 3000; ++i) {
        chain += "<MACRO NAME='M" + std::to_string(i) + "' DEFINITION='M" + std::to_string(i + 1) +
                 " + M" + std::to_string(i + 1) + "'/><MACRO NAME='F" + std::to_string(i) +
                 "' ARGUMENTS='n' DEFINITION='F" + std::to_string(i + 1) + "(n) + F" +
                 std::to_string(i + 1) + "(n)'/>";
    }
    Described d(in("MACROS", chain + "<MACRO NAME='M3000' DEFINITION='0'/>"
                                     "<MACRO NAME='F3000' ARGUMENTS='n' DEFINITION='n'/>") +
                in("RULES", "<RULE>" + deep + "</RULE><RULE>" + std::string(70000, '1') +
                                "</RULE><RULE>M0 == 0</RULE><RULE>F0(1) == 0</RULE>"));
    EXPECT_EQ(fault_ids(d.session), "too-deep@256 text-too-long@65536 too-many-steps@0");
    EXPECT_EQ(evaluated(d.session, "M0"), "0");
    EXPECT_EQ(evaluated(d.session, "F0(1)"), "[fault too-many-steps]");
}

TEST(SessionBadInput, whole_numbers_have_128_bits_and_not_one_more) {
    const Described d("");
    const std::string most = "170141183460469231731687303715884105727";
    EXPECT_EQ(evaluated(d.session, "2 ^ 126 + ( 2 ^ 126 - 2 )").back(), '6');
    EXPECT_EQ(evaluated(d.session, "2 ^ 126 + ( 2 ^ 126 - 1 )"), most);
    EXPECT_EQ(evaluated(d.session, "2 ^ 126 + 2 ^ 126"), "[fault too-large]");
    EXPECT_EQ(evaluated(d.session, most), most);
    EXPECT_EQ(evaluated(d.session, most + " + 1"), "[fault too-large]");
    EXPECT_EQ(evaluated(d.session, "0 - " + most + " - 2"), "[fault too-large]");
}

// The time of this process: others may be busy too.
double seconds_for_faulty_rules(int count) {
    std::string rules;
    for (int i = 0; i < count; ++i) {
        rules += "<RULE>A</RULE>";
    }
    Described d(in("RULES", rules));
    const std::clock_t begin = std::clock();
    EXPECT_EQ(d.session.verdicts().size(), static_cast<std::size_t>(count));
    EXPECT_EQ(d.session.faults().size(), static_cast<std::size_t>(count));
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST(SessionBadInput, four_times_as_many_faults_take_about_four_times_as_long) {
    const double few = seconds_for_faulty_rules(10000);
    EXPECT_LT(seconds_for_faulty_rules(40000), 9 * few + 0.1);
}

TEST(SessionBadInput, texts_that_were_set_do_not_pile_up) {
    Described d(in("PARAMETERS",
                   "<PARAMETER NAME='S' TYPE='STRING'/>"
                   "<PARAMETER NAME='T' TYPE='STRING' DEFAULT_VALUE='S'/>"));
    for (int i = 0; i < 20000; ++i) {
        d.session.set("S", "text " + std::to_string(i));
    }
    EXPECT_EQ(value_of(d.session, "T"), "text 19999");
    for (int i = 0; i < 5000; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(evaluated(d.session, "S == \"" + number + "\""), "false");
        EXPECT_EQ(evaluated(d.session, std::string(i, ' ') + "1 / 0"), "[fault division-by-zero]");
    }
    EXPECT_EQ(value_of(d.session, "S"), "text 19999");
}
