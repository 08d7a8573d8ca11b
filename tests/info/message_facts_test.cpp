// What get_error_facts tells of each kind of message.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "kivo/objects/internal/message.h"
#include "tests/support/description.h"

namespace {

struct Case {
    const char* id;
    std::string sections;  // a whole document when it begins with "!"
    std::string facts;     // "element attribute word object", a dash for an empty one
    std::string known;
};

std::string in(const std::string& section, const std::string& content) {
    return "<" + section + ">" + content + "</" + section + ">";
}

std::string integer(const std::string& attributes, const std::string& content = "") {
    return in("PARAMETERS",
              "<PARAMETER NAME='p' TYPE='INTEGER' " + attributes + ">" + content + "</PARAMETER>");
}

std::string input(const std::string& attributes, const std::string& content = "") {
    return in("PORTS", "<PORT NAME='q' TYPE='INPUT' " + attributes + ">" + content + "</PORT>");
}

std::string wave(const std::string& attributes, const std::string& content = "") {
    return in("WAVE_DATA", "<WAVE NAME='w' " + attributes + ">" + content + "</WAVE>");
}

const std::string kSeverities = "CRITICAL_WARNING ERROR INFO WARNING";
const std::string kPortAttributes =
    "ASYNC CLOCK_PERIOD CNX_TYPE DEFAULT_VALUE HIGH_PROBABILITY INITIAL_VEC_STATE IS_CLOCK_PORT "
    "NAME TYPE USAGE WIDTH WIDTH2D";
const std::string kParameterAttributes =
    "CNX_TYPE DEFAULT_VALUE DEFAULT_VALUE_INDEX LPM_HINT NAME TYPE VALUE";
const std::string kSections =
    "CUSTOM_VECTORS FUNCTION_INFORMATION HIDDEN_PARAMETERS HTML_TEXT INCLUDE MACROS MESSAGES MSGS "
    "PARAMETERS PARAMETER_RULES PORTS PORT_RULES RULES WAVE_DATA WIZARD_DATA";

// clang-format off
const std::vector<Case> kCases = {
    {"file-not-found", "<INCLUDE FILE='no/such'/>", "INCLUDE FILE no/such -", ""},
    {"file-not-found", "<INCLUDE><FILE>no/such</FILE></INCLUDE>", "FILE - no/such -", ""},
    {"file-not-opened", "<INCLUDE FILE='/dev/null'/>", "INCLUDE FILE /dev/null -", ""},
    {"file-not-read", "<INCLUDE FILE='/proc/self/mem'/>", "- - /proc/self/mem -", ""},
    {"read-error", "<INCLUDE FILE='/proc/self/mem'/>", "- - - -", ""},
    {"no-root", "!", "- - - -", ""},
    {"xml-syntax", "<RULES A='1' B='2' A='3'/>", "- A A -", ""},
    {"xml-syntax", "!<ROOT>", "- - - -", ""},
    {"unknown-section", "<ODD/>", "ROOT - ODD -", kSections},
    {"include-attribute", "<INCLUDE PATH='a'/>", "INCLUDE PATH PATH -", "FILE"},
    {"include-sub-tag", "<INCLUDE><PATH/></INCLUDE>", "INCLUDE - PATH -", "FILE"},
    {"function-information-sub-tag", in("FUNCTION_INFORMATION", "<UNIT/>"),
     "FUNCTION_INFORMATION - UNIT -", "START_TIME TIME_DELTA TIME_SCALE VHDL_LIBRARY"},
    {"function-information-attribute", in("FUNCTION_INFORMATION", "<TIME_SCALE UNIT='ns'/>"),
     "TIME_SCALE UNIT UNIT -", "VALUE"},
    {"function-information-attribute", in("FUNCTION_INFORMATION", "<VHDL_LIBRARY VALUE='ns'/>"),
     "VHDL_LIBRARY VALUE VALUE -", "NAME"},
    {"function-information-nested-tag", in("FUNCTION_INFORMATION", "<TIME_SCALE><V/></TIME_SCALE>"),
     "TIME_SCALE - V -", ""},
    {"type-clash", integer("") + in("PORTS", "<PORT NAME='p' TYPE='INPUT'/>"),
     "PORT TYPE INPUT p", ""},
    {"type-clash", integer("") + in("MACROS", "<MACRO NAME='p' DEFINITION='d'/>"),
     "MACRO NAME p p", ""},
    {"type-clash", integer("") + in("HIDDEN_PARAMETERS", "<PARAMETER NAME='p'/>"),
     "PARAMETER NAME p p", ""},
    {"unknown-type", in("PORT_RULES", "<PORT NAME='p'/>"), "PORT NAME p p", ""},
    {"unknown-type", in("PORTS", "<PORT NAME='p' TYPE='IN'/>"), "PORT TYPE IN p", ""},
    {"parameter-type", in("PARAMETERS", "<PARAMETER NAME='p' TYPE='ENUM'/>"),
     "PARAMETER TYPE ENUM p", "INTEGER STRING"},
    {"parameter-name", in("PARAMETERS", "<PARAMETER TYPE='STRING'/>"), "PARAMETER NAME - -", ""},
    {"parameter-name", in("HIDDEN_PARAMETERS", "<PARAMETER/>"), "PARAMETER NAME - -", ""},
    {"parameter-cnx-type", integer("CNX_TYPE='ODD'"), "PARAMETER CNX_TYPE ODD p",
     "CONSTANT PRIVATE"},
    {"parameter-attribute", integer("ODD='1'"), "PARAMETER ODD ODD p", kParameterAttributes},
    {"port-type", in("PORTS", "<PORT NAME='q' TYPE='IN'/>"), "PORT TYPE IN q",
     "BIDIR BURIED INPUT OUTPUT"},
    {"port-name", in("PORTS", "<PORT NAME=''/>"), "PORT NAME - -", ""},
    {"port-cnx-type", input("CNX_TYPE='ODD'"), "PORT CNX_TYPE ODD q", "USED_PORT"},
    {"port-attribute", input("ODD='1'"), "PORT ODD ODD q", kPortAttributes},
    {"high-probability", input("HIGH_PROBABILITY='0'"), "PORT HIGH_PROBABILITY 0 q",
     "whole numbers from 1 to 100"},
    {"hidden-parameter-attribute", in("HIDDEN_PARAMETERS", "<PARAMETER NAME='h' TYPE='1'/>"),
     "PARAMETER TYPE TYPE h", "NAME VALUE"},
    {"object-sub-tag", integer("", "<STATE V='1'/>"), "PARAMETER - STATE p",
     "FORCE_RANGE FORCE_VALUE VALUE_RULE"},
    {"object-sub-tag", input("", "<ODD/>"), "PORT - ODD q",
     "CONSTANT_RANGE FORCE_RANGE FORCE_VALUE STATE"},
    {"object-sub-tag",
     in("MACROS", "<MACRO NAME='m' DEFINITION='d'/>") +
         in("PARAMETER_RULES", "<PARAMETER NAME='m'><ODD/></PARAMETER>"),
     "PARAMETER - ODD m", "FORCE_VALUE"},
    {"range-attribute", integer("", "<FORCE_VALUE ODD='1'/>"), "FORCE_VALUE ODD ODD p",
     "ELSE IF THEN TO V WHEN WHEN_CMD"},
    {"range-attribute", integer("", "<FORCE_VALUE WHEN_CMD='c' WRONG='1'/>"),
     "FORCE_VALUE WRONG WRONG p", "IF THEN TO V WHEN WHEN_CMD"},
    {"range-attribute", integer("", "<FORCE_RANGE ODD='1'/>"), "FORCE_RANGE ODD ODD p",
     "IF MAX MIN THEN TO V WHEN WHEN_CMD"},
    {"range-attribute", input("", "<FORCE_RANGE V='1'/>"), "FORCE_RANGE V V q",
     "IF MAX MIN WHEN WHEN_CMD"},
    {"range-attribute", input("", "<CONSTANT_RANGE ODD='1'/>"), "CONSTANT_RANGE ODD ODD q",
     "IF MAX MIN THEN TO V WHEN WHEN_CMD"},
    {"range-sub-tag", integer("", "<FORCE_RANGE><V>1</V></FORCE_RANGE>"), "FORCE_RANGE - V p",
     "IF MAX MIN WHEN WHEN_CMD"},
    {"range-sub-tag", input("", "<CONSTANT_RANGE><MAX>1</MAX></CONSTANT_RANGE>"),
     "CONSTANT_RANGE - MAX q", "IF THEN TO V WHEN WHEN_CMD"},
    {"value-rule-sub-tag", integer("", "<VALUE_RULE>A<WHEN>b</WHEN></VALUE_RULE>"),
     "VALUE_RULE - WHEN p", "ELSE IF THEN"},
    {"rule-without-data", in("RULES", "<RULE/>"), "RULE - - -", ""},
    {"rule-without-data", in("RULES", "<CONDITION ENABLED='OFF'>a</CONDITION>"),
     "CONDITION ENABLED OFF -", "ON"},
    {"rules-sub-tag", in("RULES", "<ODD/>"), "RULES - ODD -", "CONDITION RULE"},
    {"message-type", in("MESSAGES", "<MESSAGE>a</MESSAGE>"), "MESSAGE TYPE - -", kSeverities},
    {"message-type", in("MSGS", "<MSG TYPE='FATAL'>a</MSG>"), "MSG TYPE FATAL -", kSeverities},
    {"message-sub-tag", in("MESSAGES", "<MSG TYPE='INFO'><ODD/></MSG>"), "MSG - ODD -",
     "ELSE IF TEXT THEN WHEN"},
    {"messages-sub-tag", in("MSGS", "<ODD/>"), "MSGS - ODD -", "MESSAGE MSG"},
    {"macros-sub-tag", in("MACROS", "<ODD/>"), "MACROS - ODD -", "MACRO"},
    {"macro-sub-tag", in("MACROS", "<MACRO NAME='m'><ODD/></MACRO>"), "MACRO - ODD -",
     "DEFINITION"},
    {"vector-name", in("CUSTOM_VECTORS", "<CUSTOM_VECTOR/>"), "CUSTOM_VECTOR NAME - -", ""},
    {"vector-display-truncation", wave("DISPLAY_TRUNCATION='MID'"),
     "WAVE DISPLAY_TRUNCATION MID w", "HIGH LOW"},
    {"vector-attribute", wave("ODD='1'"), "WAVE ODD ODD w",
     "DISPLAY_TRUNCATION INDEX MAX_TIME NAME TIME_STEP"},
    {"vector-sub-tag", wave("", "<ODD/>"), "WAVE - ODD w",
     "CAPTION DESCRIPTION DISPLAY ELSE IF STIM THEN VECTOR WAVE_CONDITION"},
    {"then-sub-tag", wave("", "<THEN><ODD/></THEN>"), "THEN - ODD w", "STIM VECTOR"},
    {"else-sub-tag", wave("", "<ELSE><ODD/></ELSE>"), "ELSE - ODD w", "STIM VECTOR"},
    {"surplus-else",
     wave("", "<IF>a</IF><THEN><STIM>b</STIM></THEN><ELSE><STIM>c</STIM><STIM>d</STIM></ELSE>"),
     "ELSE - - w", ""},
    {"display-radix", wave("", "<DISPLAY>add wave -oct(3) q</DISPLAY>"), "DISPLAY - -oct q",
     "-bin -fixed_point -hex -signed -unsigned"},
    {"display-command", wave("", "<DISPLAY>show wave -hex q</DISPLAY>"), "DISPLAY - show w", "add"},
    {"display-command", wave("", "<DISPLAY>add list -hex q</DISPLAY>"), "DISPLAY - list w", "wave"},
    {"display-command", wave("", "<DISPLAY>add wave -hex</DISPLAY>"), "DISPLAY - - w", ""},
    {"wizard-map-name", in("WIZARD_DATA", "<WIZARD_MAP/>"), "WIZARD_MAP NAME - -", ""},
    {"wizard-map-attribute", in("WIZARD_DATA", "<WIZARD_MAP NAME='z' ODD='1'/>"),
     "WIZARD_MAP ODD ODD z", "MAP_CONSTANTS MAP_USED_PORTS MODULE_NAME NAME WIZARD_NAME"},
    {"wizard-map-sub-tag", in("WIZARD_DATA", "<WIZARD_MAP NAME='z'><ODD/></WIZARD_MAP>"),
     "WIZARD_MAP - ODD z", "PARAMETER PORT WIZARD_CONDITION"},
    {"if-with-sub-tags", in("HTML_TEXT", "<INTRO><IF><T>a</T></IF></INTRO>"), "IF - - -", ""},
    {"text-with-sub-tags", in("HTML_TEXT", "<INTRO><THEN>a<T>b</T></THEN></INTRO>"), "THEN - - -",
     ""},
};
// clang-format on

std::string or_dash(const std::string& text) {
    return text.empty() ? "-" : text;
}

std::string shown(const KIVO_MESSAGE_FACTS& facts) {
    return or_dash(facts.element) + ' ' + or_dash(facts.attribute) + ' ' + or_dash(facts.word) +
           ' ' + or_dash(facts.object);
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

// The facts of the last message of that id.
KIVO_MESSAGE_FACTS facts_of(const KIVO_INFO& info, const std::string& id) {
    for (std::size_t i = info.error_list.size(); i-- > 0;) {
        if (info.get_error_id(i) == id) {
            return info.get_error_facts(i);
        }
    }
    ADD_FAILURE() << "no message " << id;
    return {};
}

KIVO_MESSAGE_FACTS facts_of(const Case& row) {
    Loaded loaded("");
    if (row.sections[0] == '!') {
        loaded.load_document(row.sections.substr(1));
    } else {
        loaded.load(row.sections);
    }
    return facts_of(loaded.info, row.id);
}

int line_of(Loaded& loaded, const std::string& id) {
    return loaded.info.get_place(facts_of(loaded.info, id).related).line;
}

}  // namespace

TEST(MessageFacts, tell_element_attribute_word_object_and_the_words_known_there) {
    for (const Case& row : kCases) {
        const KIVO_MESSAGE_FACTS facts = facts_of(row);
        EXPECT_EQ(shown(facts), row.facts) << row.id << ' ' << row.sections;
        EXPECT_EQ(joined(facts.known_words), row.known) << row.id << ' ' << row.sections;
    }
}

TEST(MessageFacts, of_files_name_the_file) {
    Loaded loaded("");
    const std::string broken = loaded.folder.write("broken.xml", "<ROOT>");
    loaded.load("<INCLUDE FILE='" + broken + "'/><INCLUDE FILE='" +
                loaded.folder.path("description.xml") + "'/>");
    EXPECT_EQ(shown(facts_of(loaded.info, "invalid-file")), "- - " + broken + " -");
    EXPECT_EQ(shown(facts_of(loaded.info, "include-cycle")),
              "INCLUDE FILE " + loaded.folder.path("description.xml") + " -");
}

TEST(MessageFacts, every_kind_of_message_has_its_case) {
    // Those of the limits have theirs in the tests of includes and wizard maps.
    std::set<std::string> cases = {"host-message", "invalid-file", "include-cycle",
                                   "too-many-files", "wizard-map-objects"};
    for (const Case& row : kCases) {
        cases.insert(row.id);
    }
#define KIVO_EXPECT_CASE(name, id) EXPECT_EQ(cases.count(id), 1U) << id;
    KIVO_MESSAGE_IDS(KIVO_EXPECT_CASE)
#undef KIVO_EXPECT_CASE
}

TEST(MessageFacts, point_at_the_first_declaration_of_an_object_whose_types_clash) {
    Loaded loaded("\n\n" + integer("") + "\n" + in("PORTS", "<PORT NAME='p' TYPE='INPUT'/>"));
    EXPECT_EQ(line_of(loaded, "type-clash"), 3);
}

TEST(MessageFacts, point_at_the_first_attribute_of_a_name) {
    Loaded loaded("<RULES\nA='1'\nB='2'\nA='3'\nA='4'/>");
    EXPECT_EQ(line_of(loaded, "xml-syntax"), 2);
    std::string many = "<RULES\nA='1'";
    for (int i = 0; i < 40; ++i) {
        many += "\nN" + std::to_string(i) + "=''";
    }
    Loaded with_many(many + "\nA='3'/>");
    EXPECT_EQ(line_of(with_many, "xml-syntax"), 2);
}

TEST(MessageFacts, of_other_messages_point_nowhere) {
    Loaded loaded("<ODD/>");
    EXPECT_EQ(line_of(loaded, "unknown-section"), 0);
}

TEST(MessageFacts, of_messages_of_the_host_are_empty) {
    Loaded loaded("<ODD/>");
    loaded.info.post_error_message("mine");
    loaded.info.error_list.front() += " indeed";
    for (const std::size_t index : {0U, 1U, 2U}) {
        EXPECT_EQ(shown(loaded.info.get_error_facts(index)), "- - - -");
        EXPECT_TRUE(loaded.info.get_error_facts(index).known_words.empty());
        EXPECT_EQ(loaded.info.get_error_facts(index).related.file, 0U);
    }
}

TEST(MessageFacts, of_a_clash_with_what_the_host_adds_name_the_object) {
    Loaded loaded("\n" + integer(""));
    loaded.info.add_kivo_object("p", KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(shown(facts_of(loaded.info, "type-clash")), "- - - p");
    EXPECT_EQ(line_of(loaded, "type-clash"), 2);
    EXPECT_EQ(loaded.info.get_error_place(0).line, 0);
}

TEST(MessageFacts, stay_with_their_messages_after_others_are_taken_away) {
    Loaded loaded("<ODD/><WORSE/>" + integer("BAD='1'"));
    loaded.info.error_list.erase(loaded.info.error_list.begin());
    EXPECT_EQ(shown(loaded.info.get_error_facts(0)), "ROOT - WORSE -");
    EXPECT_EQ(shown(loaded.info.get_error_facts(1)), "PARAMETER BAD BAD p");
    EXPECT_EQ(joined(loaded.info.get_error_facts(1).known_words), kParameterAttributes);
}

TEST(MessageFacts, hold_words_of_any_length_and_braces_as_they_are) {
    const std::string word(100000, 'W');
    Loaded loaded("<" + word + "/>" + integer("CNX_TYPE='{object}'"));
    EXPECT_EQ(facts_of(loaded.info, "unknown-section").word, word);
    EXPECT_EQ(facts_of(loaded.info, "parameter-cnx-type").word, "{object}");
    EXPECT_EQ(loaded.messages().back(),
              "Attribute value {object} is not a recognized value for attribute CNX_TYPE (found in "
              "parameter p )");
}
