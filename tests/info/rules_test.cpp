#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

TEST(Rules, empty_section_yields_nothing) {
    Loaded store("<RULES/><RULES>text</RULES>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_next_fn_rule_element(), nullptr);
}

TEST(Rules, text_is_the_condition) {
    struct Row {
        const char* rule;
        Rule expected;
    };
    const Row rows[] = {
        {"<RULE>WIDTH &gt; 0</RULE>", {"", "", "WIDTH > 0", 4}},
        {"<CONDITION>WIDTH &gt; 0</CONDITION>", {"", "", "WIDTH > 0", 4}},
        {"<RULE> a\n b </RULE>", {"", "", " a\n b ", 4}},
        {"<RULE> </RULE>", {"", "", " ", 4}},
        {"<RULE><![CDATA[a < b]]></RULE>", {"", "", "a < b", 4}},
        {"<RULE REQUIRED_RULE='ON'>c</RULE>", {"", "", "c", 4}},
        {"<RULE REQUIRED_RULE='OFF'>c</RULE>", {"", "", "c", 5}},
        {"<RULE REQUIRED_RULE='on'>c</RULE>", {"", "", "c", 5}},
        {"<RULE REQUIRED_RULE=''>c</RULE>", {"", "", "c", 5}},
        {"<CONDITION REQUIRED_RULE='OFF' ENABLED='ON'>c</CONDITION>", {"", "", "c", 5}},
        {"<RULE ENABLED='ON'>c</RULE>", {"", "", "c", 4}},
        // Unknown attributes and all sub-elements are silently ignored.
        {"<RULE NAME='x' enabled='OFF' required_rule='OFF'>c</RULE>", {"", "", "c", 4}},
        {"<RULE>c<IF>d</IF></RULE>", {"", "", "c", 4}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.rule);
        Loaded store("<RULES>" + std::string(row.rule) + "</RULES>");
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(rules_of(store.info.fn_rule_list), std::vector<Rule>{row.expected});
    }
}

TEST(Rules, without_text_or_switched_off_there_is_no_rule) {
    struct Row {
        const char* rule;
        const char* tag;
    };
    const Row rows[] = {
        {"<RULE/>", "RULE"},
        {"<CONDITION></CONDITION>", "CONDITION"},
        {"<RULE>\n  <IF>c</IF>\n</RULE>", "RULE"},
        {"<RULE ENABLED='OFF'>c</RULE>", "RULE"},
        {"<RULE ENABLED='on'>c</RULE>", "RULE"},
        {"<RULE ENABLED='TRUE'>c</RULE>", "RULE"},
        {"<CONDITION ENABLED=''>c</CONDITION>", "CONDITION"},
        {"<RULE ENABLED='OFF'/>", "RULE"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.rule);
        Loaded store("<RULES>" + std::string(row.rule) + "</RULES>");
        EXPECT_EQ(store.messages(), Messages{"Sub element tag " + std::string(row.tag) +
                                             " doesn't have any valid element data"});
        EXPECT_EQ(store.info.get_next_fn_rule_element(), nullptr);
    }
}

TEST(Rules, other_sub_elements_are_reported) {
    for (const char* tag : {"MESSAGE", "rule", "Condition", "VALUE_RULE"}) {
        SCOPED_TRACE(tag);
        Loaded store("<RULES><" + std::string(tag) + ">c</" + tag + "><RULE>r</RULE></RULES>");
        EXPECT_EQ(store.messages(), Messages{"Sub element tag " + std::string(tag) +
                                             " is not a valid sub tag of the main tag RULES"});
        EXPECT_EQ(rules_of(store.info.fn_rule_list), (std::vector<Rule>{{"", "", "r", 4}}));
    }
}

TEST(Rules, sections_and_included_files_make_one_list) {
    Loaded store("");
    const std::string more =
        store.folder.write("more.xml", "<ROOT><RULES><RULE>4</RULE></RULES></ROOT>");
    EXPECT_TRUE(
        store.load("<RULES><RULE>1</RULE><CONDITION REQUIRED_RULE='OFF'>2</CONDITION>"
                   "</RULES><INCLUDE FILE='" +
                   more + "'/><RULES><RULE>3</RULE></RULES>"));
    EXPECT_EQ(rules_of(store.info.fn_rule_list),
              (std::vector<Rule>{
                  {"", "", "1", 4}, {"", "", "2", 5}, {"", "", "3", 4}, {"", "", "4", 4}}));
    store.info.reset_fn_rule_list();
    const KIVO_RULE_ELEMENT* first = store.info.get_next_fn_rule_element();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->text3, "1");
}
