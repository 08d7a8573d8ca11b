#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

std::string bad_sub_tag(const std::string& tag) {
    return "Sub tag " + tag + " is not a recognized sub-tag for messages ";
}

}  // namespace

TEST(Messages, empty_section_yields_nothing) {
    Loaded store("<MESSAGES/><MSGS/><MSGS>text</MSGS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_next_msg(), nullptr);
}

TEST(Messages, type_is_the_severity) {
    struct Row {
        const char* type;
        std::int32_t kind;
    };
    const Row rows[] = {{"CRITICAL_WARNING", 8}, {"WARNING", 9}, {"ERROR", 10}, {"INFO", 11}};
    for (const Row& row : rows) {
        for (const std::string tag : {"MESSAGE", "MSG"}) {
            for (const std::string section : {"MESSAGES", "MSGS"}) {
                const std::string text = "<" + section + "><" + tag + " TYPE='" + row.type +
                                         "'>Width is large</" + tag + "></" + section + ">";
                SCOPED_TRACE(text);
                Loaded store(text);
                EXPECT_TRUE(store.clean);
                EXPECT_EQ(rules_of(store.info.message_list),
                          (std::vector<Rule>{{"Width is large", "", "", row.kind}}));
            }
        }
    }
}

TEST(Messages, without_a_valid_type_a_message_is_refused) {
    for (const char* attributes : {"", "TYPE='error'", "TYPE=''", "TYPE='FATAL'", "TYPE='INFO '",
                                   "type='INFO'", "KIND='INFO'"}) {
        for (const std::string tag : {"MESSAGE", "MSG"}) {
            SCOPED_TRACE(attributes);
            Loaded store("<MSGS><" + tag + " " + attributes + ">text</" + tag + "><" + tag + " " +
                         attributes + "><BAD/><THEN>t</THEN></" + tag + "></MSGS>");
            EXPECT_EQ(store.messages(),
                      (Messages{"Required attribute TYPE not specified for MESSAGE",
                                "Required attribute TYPE not specified for MESSAGE"}));
            EXPECT_EQ(store.info.get_next_msg(), nullptr);
        }
    }
}

TEST(Messages, contents) {
    struct Row {
        const char* content;
        std::vector<Rule> stored;
        Messages messages;
    };
    const Row rows[] = {
        {" text ", {{" text ", "", "", 11}}, {}},
        // White space is a text where it stands alone.
        {"  ", {{"  ", "", "", 11}}, {}},
        {"<![CDATA[<b>]]>", {{"<b>", "", "", 11}}, {}},
        // With a text of its own, nothing below is read.
        {"text<THEN>t</THEN><BAD/>", {{"text", "", "", 11}}, {}},
        {"<IF>A == 1</IF><THEN>one</THEN><ELSE>other</ELSE>", {{"one", "other", "A == 1", 11}}, {}},
        {"\n <ELSE>other</ELSE>\n <TEXT>one</TEXT>\n <WHEN>A == 1</WHEN>\n",
         {{"one", "other", "A == 1", 11}},
         {}},
        {"<THEN>t</THEN>", {{"t", "", "", 11}}, {}},
        {"<TEXT>t</TEXT>", {{"t", "", "", 11}}, {}},
        {"<THEN>t</THEN><ELSE>e</ELSE>", {{"t", "e", "", 11}}, {}},
        {"<THEN>a</THEN><TEXT>b</TEXT>", {{"b", "", "", 11}}, {}},
        {"<TEXT>b</TEXT><THEN>a</THEN>", {{"a", "", "", 11}}, {}},
        {"<IF>a</IF><WHEN>b</WHEN><THEN>t</THEN>", {{"t", "", "b", 11}}, {}},
        {"<WHEN>b</WHEN><IF>a</IF><THEN>t</THEN>", {{"t", "", "a", 11}}, {}},
        {"<THEN>t</THEN><ELSE>a</ELSE><ELSE>b</ELSE>", {{"t", "b", "", 11}}, {}},
        {"<THEN>a</THEN><THEN/>", {}, {}},
        {"<IF>c</IF>", {}, {}},
        {"<IF>c</IF><ELSE>e</ELSE>", {}, {}},
        {"", {}, {}},
        {"<BAD/><THEN>t</THEN><then>u</then>",
         {{"t", "", "", 11}},
         {bad_sub_tag("BAD"), bad_sub_tag("then")}},
        {"<WHEN_CMD>c</WHEN_CMD>", {}, {bad_sub_tag("WHEN_CMD")}},
        // Only the texts of the parts count.
        {"<THEN>t<BAD>u</BAD></THEN>", {{"t", "", "", 11}}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content);
        Loaded store("<MESSAGES><MSG TYPE='INFO' IGNORED='1'>" + std::string(row.content) +
                     "</MSG></MESSAGES>");
        EXPECT_EQ(rules_of(store.info.message_list), row.stored);
        EXPECT_EQ(store.messages(), row.messages);
    }
}

TEST(Messages, other_sub_elements_are_reported) {
    for (const char* tag : {"RULE", "message", "Msg", "TEXT"}) {
        for (const std::string section : {"MESSAGES", "MSGS"}) {
            SCOPED_TRACE(section + " " + tag);
            Loaded store("<" + section + "><" + tag + " TYPE='INFO'>a</" + tag +
                         "><MSG TYPE='INFO'>b</MSG></" + section + ">");
            EXPECT_EQ(store.messages(),
                      Messages{"Sub element tag " + std::string(tag) +
                               " is not a valid sub tag of the main tag MESSAGES"});
            EXPECT_EQ(rules_of(store.info.message_list), (std::vector<Rule>{{"b", "", "", 11}}));
        }
    }
}

TEST(Messages, sections_and_included_files_make_one_list) {
    Loaded store("");
    const std::string more =
        store.folder.write("more.xml", "<ROOT><MSGS><MSG TYPE='ERROR'>3</MSG></MSGS></ROOT>");
    EXPECT_TRUE(store.load("<INCLUDE FILE='" + more +
                           "'/><MESSAGES><MSG TYPE='INFO'>1</MSG></MESSAGES>"
                           "<MSGS><MESSAGE TYPE='WARNING'>2</MESSAGE></MSGS>"));
    EXPECT_EQ(rules_of(store.info.message_list),
              (std::vector<Rule>{{"1", "", "", 11}, {"2", "", "", 9}, {"3", "", "", 10}}));
    EXPECT_EQ(rules_of(store.info.fn_rule_list), std::vector<Rule>());
}
