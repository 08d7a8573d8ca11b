// Loads descriptions with a misspelt word and asks for the one that was meant.
#include "tools/findings/suggestion.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/tools/program.h"
#include "tools/findings/catalogue.h"

namespace {

struct Case {
    std::string id;
    std::string sections;
    std::string meant;  // empty: no suggestion
};

std::string as_in(const std::string& section, const std::string& content) {
    return '<' + section + '>' + content + "</" + section + '>';
}

std::string parameters(const std::string& content) {
    return as_in("PARAMETERS", content);
}

std::string ports(const std::string& content) {
    return as_in("PORTS", content);
}

std::string wave(const std::string& content) {
    return as_in("WAVE_DATA", "<WAVE NAME='w'>" + content + "</WAVE>");
}

std::string width_with(const std::string& rule) {
    return parameters("<PARAMETER NAME='WIDTH' TYPE='INTEGER'>" + rule + "</PARAMETER>");
}

std::string port_with(const std::string& rule) {
    return ports("<PORT NAME='p' TYPE='INPUT'>" + rule + "</PORT>");
}

std::string settings(const std::string& content) {
    return as_in("FUNCTION_INFORMATION", content);
}

std::string wizard_map(const std::string& attributes, const std::string& content) {
    return as_in("WIZARD_DATA", "<WIZARD_MAP " + attributes + '>' + content + "</WIZARD_MAP>");
}

// clang-format off
const std::vector<Case> kCases = {
    {"unknown-section", "<PARAMETRS/>", "PARAMETERS"},
    {"unknown-section", "<Ports/>", "PORTS"},
    {"unknown-section", "<MSG/>", "MSGS"},
    {"unknown-section", "<PORT_RULE/>", "PORT_RULES"},
    {"unknown-section", "<REVISIONS/>", ""},
    {"unknown-section", "<PARAMETER_SET/>", ""},
    {"include-attribute", "<INCLUDE FIEL='a'/>", "FILE"},
    {"include-attribute", "<INCLUDE PATH='a'/>", ""},
    {"include-sub-tag", "<INCLUDE><FILES>a</FILES></INCLUDE>", "FILE"},
    {"include-sub-tag", "<INCLUDE><DIRECTORY/></INCLUDE>", ""},
    {"function-information-sub-tag", settings("<TIME_SCLAE VALUE='ns'/>"), "TIME_SCALE"},
    {"function-information-sub-tag", settings("<TIME_UNIT VALUE='ns'/>"), ""},
    {"function-information-attribute", settings("<TIME_SCALE VALU='ns'/>"), "VALUE"},
    {"function-information-attribute", settings("<TIME_DELTA value='1'/>"), "VALUE"},
    {"function-information-attribute", settings("<START_TIME VALUES='1'/>"), "VALUE"},
    {"function-information-attribute", settings("<VHDL_LIBRARY NAMES='ieee'/>"), "NAME"},
    {"function-information-attribute", settings("<VHDL_LIBRARY VALUES='ieee'/>"), ""},
    {"function-information-attribute", settings("<TIME_SCALE NAMES='ns'/>"), ""},
    {"function-information-nested-tag", settings("<TIME_SCALE><VALU/></TIME_SCALE>"), ""},
    {"unknown-type", parameters("<PARAMETER NAME='A' TPYE='INTEGER'/>"), "TYPE"},
    {"unknown-type", parameters("<PARAMETER NAME='A'/>"), ""},
    {"unknown-type", ports("<PORT WIDTH='>' Type = \"INPUT\" NAME='A'/>"), "TYPE"},
    {"parameter-type", parameters("<PARAMETER NAME='A' TYPE='INTGER'/>"), "INTEGER"},
    {"parameter-type", parameters("<PARAMETER NAME='A' TYPE='string'/>"), "STRING"},
    {"parameter-type", parameters("<PARAMETER NAME='A' TYPE='ENUM'/>"), ""},
    {"parameter-type", parameters("<PARAMETER NAME='A' TYPE=''/>"), ""},
    {"parameter-name", parameters("<PARAMETER NAEM='A' TYPE='INTEGER'/>"), "NAME"},
    {"parameter-name", parameters("<PARAMETER NAME='' TYPE='INTEGER'/>"), ""},
    {"parameter-name", parameters("<PARAMETER TYPE='INTEGER' VALUE='NAEM=\"\"'/>"), ""},
    {"parameter-cnx-type", parameters("<PARAMETER NAME='A' TYPE='STRING' CNX_TYPE='Private'/>"),
     "PRIVATE"},
    {"parameter-cnx-type", parameters("<PARAMETER NAME='A' TYPE='STRING' CNX_TYPE='CONSTANTS'/>"),
     "CONSTANT"},
    {"parameter-cnx-type", parameters("<PARAMETER NAME='A' TYPE='STRING' CNX_TYPE='USED_PORT'/>"),
     ""},
    {"parameter-attribute", parameters("<PARAMETER NAME='A' TYPE='STRING' VALU='8'/>"), "VALUE"},
    {"parameter-attribute", parameters("<PARAMETER NAME='A' TYPE='STRING' LPMHINT='ON'/>"),
     "LPM_HINT"},
    {"parameter-attribute", parameters("<PARAMETER NAME='A' TYPE='STRING' UNITS='bits'/>"), ""},
    {"parameter-attribute", parameters("<PARAMETER NAME='A' TYPE='STRING' WIDTHS='1'/>"), ""},
    {"port-type", ports("<PORT NAME='A' TYPE='INPTU'/>"), "INPUT"},
    {"port-type", ports("<PORT NAME='A' TYPE='Output'/>"), "OUTPUT"},
    {"port-type", ports("<PORT NAME='A' TYPE='BIDI'/>"), "BIDIR"},
    {"port-type", ports("<PORT NAME='A' TYPE='INOUT'/>"), "BIDIR"},
    {"port-type", ports("<PORT NAME='A' TYPE='IN'/>"), ""},
    {"port-type", ports("<PORT NAME='A' TYPE='INTEGER'/>"), ""},
    {"port-name", ports("<PORT Name='A' TYPE='INPUT'/>"), "NAME"},
    {"port-name", ports("<PORT TYPE='INPUT'/>"), ""},
    {"port-cnx-type", ports("<PORT NAME='A' TYPE='INPUT' CNX_TYPE='USEDPORT'/>"), "USED_PORT"},
    {"port-cnx-type", ports("<PORT NAME='A' TYPE='INPUT' CNX_TYPE='CONSTANTS'/>"), ""},
    {"port-attribute", ports("<PORT NAME='A' TYPE='INPUT' WITDH='8'/>"), "WIDTH"},
    {"port-attribute", ports("<PORT NAME='A' TYPE='INPUT' WIDTH2='8'/>"), "WIDTH"},
    {"port-attribute", ports("<PORT NAME='A' TYPE='INPUT' WIDTH3D='8'/>"), "WIDTH2D"},
    {"port-attribute", ports("<PORT NAME='A' TYPE='INPUT' VALUES='8'/>"), ""},
    {"high-probability", ports("<PORT NAME='A' TYPE='INPUT' HIGH_PROBABILITY='INPTU'/>"), ""},
    {"hidden-parameter-attribute", as_in("HIDDEN_PARAMETERS", "<PARAMETER NAME='A' VALEU='1'/>"),
     "VALUE"},
    {"hidden-parameter-attribute", as_in("HIDDEN_PARAMETERS", "<PARAMETER NAME='A' TYPES='1'/>"),
     ""},
    {"object-sub-tag", width_with("<VALUERULE>A</VALUERULE>"), "VALUE_RULE"},
    {"object-sub-tag", port_with("<State V='1'/>"), "STATE"},
    {"object-sub-tag", port_with("<VALUE_RULE>A</VALUE_RULE>"), ""},
    {"object-sub-tag", port_with("<RANGE/>"), ""},
    {"range-attribute", width_with("<FORCE_VALUE V='8' WEHN='A'/>"), "WHEN"},
    {"range-attribute", width_with("<FORCE_VALUE V='8' WHENCMD='A'/>"), "WHEN_CMD"},
    {"range-attribute", width_with("<FORCE_VALUE V='8' MIX='1'/>"), ""},
    {"range-attribute", width_with("<FORCE_VALUE V='8' UNLESS='A'/>"), ""},
    {"range-attribute", width_with("<FORCE_VALUE V='8' X='A'/>"), ""},
    {"range-attribute", width_with("<FORCE_RANGE MAX='8' MN='1'/>"), "MIN"},
    {"range-attribute", width_with("<FORCE_RANGE MAX='8' ELS='1'/>"), ""},
    {"range-attribute", port_with("<STATE V='8' Else='1'/>"), "ELSE"},
    {"range-attribute", port_with("<CONSTANT_RANGE MAXI='8'/>"), "MAX"},
    {"range-attribute", port_with("<CONSTANT_RANGE MAX='8' ELS='8'/>"), ""},
    {"range-sub-tag", width_with("<FORCE_RANGE MIN='1'><MXA>64</MXA></FORCE_RANGE>"), "MAX"},
    {"range-sub-tag", width_with("<FORCE_RANGE MIN='1'><MAXIMUM>64</MAXIMUM></FORCE_RANGE>"), ""},
    {"range-sub-tag", width_with("<FORCE_RANGE MIN='1' MAX='64'><V>3</V></FORCE_RANGE>"), ""},
    {"value-rule-sub-tag", width_with("<VALUE_RULE>A<THN>B</THN></VALUE_RULE>"), "THEN"},
    {"value-rule-sub-tag", width_with("<VALUE_RULE>A<WHEN>B</WHEN></VALUE_RULE>"), "IF"},
    {"value-rule-sub-tag", width_with("<VALUE_RULE>A<UNLESS>B</UNLESS></VALUE_RULE>"), ""},
    {"rule-without-data", as_in("RULES", "<RULE ENABLED='on'>A</RULE>"), "ON"},
    {"rule-without-data", as_in("RULES", "<RULE ENABLED='NO'>A</RULE>"), ""},
    {"rule-without-data", as_in("RULES", "<RULE ENABLED='OFF'>A</RULE>"), ""},
    {"rule-without-data", as_in("RULES", "<RULE REQUIRED_RULE='on'></RULE>"), ""},
    {"rules-sub-tag", as_in("RULES", "<RULES>A</RULES>"), "RULE"},
    {"rules-sub-tag", as_in("RULES", "<CONDITIONS>A</CONDITIONS>"), "CONDITION"},
    {"rules-sub-tag", as_in("RULES", "<MESSAGE>A</MESSAGE>"), ""},
    {"message-type", as_in("MESSAGES", "<MESSAGE TYPE='warning'>A</MESSAGE>"), "WARNING"},
    {"message-type", as_in("MESSAGES", "<MESSAGE TYPE='CRITICAL-WARNING'>A</MESSAGE>"),
     "CRITICAL_WARNING"},
    {"message-type", as_in("MESSAGES", "<MESSAGE TIPE='INFO'>A</MESSAGE>"), "TYPE"},
    {"message-type", as_in("MESSAGES", "<MESSAGE>TYPO='INFO'</MESSAGE>"), ""},
    {"message-type", as_in("MESSAGES", "<MESSAGE TYPE='FATAL'>A</MESSAGE>"), ""},
    {"message-sub-tag", as_in("MSGS", "<MSG TYPE='INFO'><TXT>A</TXT></MSG>"), "TEXT"},
    {"message-sub-tag", as_in("MSGS", "<MSG TYPE='INFO'><UNLESS>A</UNLESS></MSG>"), ""},
    {"messages-sub-tag", as_in("MESSAGES", "<MASSAGE TYPE='INFO'>A</MASSAGE>"), "MESSAGE"},
    {"messages-sub-tag", as_in("MESSAGES", "<MSGS TYPE='INFO'>A</MSGS>"), "MSG"},
    {"messages-sub-tag", as_in("MESSAGES", "<RULE>A</RULE>"), ""},
    {"macros-sub-tag", as_in("MACROS", "<MACROS NAME='A'/>"), "MACRO"},
    {"macros-sub-tag", as_in("MACROS", "<DEFINE NAME='A'/>"), ""},
    {"macro-sub-tag", as_in("MACROS", "<MACRO NAME='A'><DEFINTION>B</DEFINTION></MACRO>"),
     "DEFINITION"},
    {"macro-sub-tag", as_in("MACROS", "<MACRO NAME='A'><BODY>B</BODY></MACRO>"), ""},
    {"vector-name", as_in("WAVE_DATA", "<WAVE NMAE='A'/>"), "NAME"},
    {"vector-name", as_in("WAVE_DATA", "<WAVE/>"), ""},
    {"vector-display-truncation", as_in("WAVE_DATA", "<WAVE NAME='A' DISPLAY_TRUNCATION='low'/>"),
     "LOW"},
    {"vector-display-truncation", as_in("WAVE_DATA", "<WAVE NAME='A' DISPLAY_TRUNCATION='MID'/>"),
     ""},
    {"vector-attribute", as_in("WAVE_DATA", "<WAVE NAME='A' MAXTIME='9'/>"), "MAX_TIME"},
    {"vector-attribute", as_in("WAVE_DATA", "<WAVE NAME='A' COLOUR='red'/>"), ""},
    {"vector-sub-tag", wave("<STM>force a 1 0</STM>"), "STIM"},
    {"vector-sub-tag", wave("<NOTE>A</NOTE>"), ""},
    {"then-sub-tag", wave("<IF>A</IF><THEN><VECTORS>force a 1 0</VECTORS></THEN>"), "VECTOR"},
    {"then-sub-tag", wave("<IF>A</IF><THEN><DISPLAY>A</DISPLAY></THEN>"), ""},
    {"else-sub-tag", wave("<ELSE><STMI>force a 1 0</STMI></ELSE>"), "STIM"},
    {"else-sub-tag", wave("<ELSE><VALUE/></ELSE>"), ""},
    {"display-radix", wave("<DISPLAY>add wave -hxe data</DISPLAY>"), "-hex"},
    {"display-radix", wave("<DISPLAY NOTE='>'>add wave -Unsigned data</DISPLAY>"), "-unsigned"},
    {"display-radix", wave("<DISPLAY>add wave -fixed-point(4.4) data</DISPLAY>"), "-fixed_point"},
    {"display-radix", wave("<DISPLAY>add wave -fixed_point() data</DISPLAY>"), ""},
    {"display-radix", wave("<DISPLAY>add wave -oct data</DISPLAY>"), ""},
    {"display-command", wave("<DISPLAY>ad wave -hex data</DISPLAY>"), "add"},
    {"display-command", wave("<DISPLAY>add Wave -hex data</DISPLAY>"), "wave"},
    {"display-command", wave("<DISPLAY>add wave -hex</DISPLAY>"), ""},
    {"display-command", wave("<DISPLAY>show waves -hex data</DISPLAY>"), ""},
    {"display-command", wave("<DISPLAY/>"), ""},
    {"wizard-map-name", wizard_map("NAM='A'", ""), "NAME"},
    {"wizard-map-name", wizard_map("WIZARD_NAME='A'", ""), ""},
    {"wizard-map-attribute", wizard_map("NAME='A' MODUL_NAME='B'", ""), "MODULE_NAME"},
    {"wizard-map-attribute", wizard_map("NAME='A' INDX='B'", ""), ""},
    {"wizard-map-sub-tag", wizard_map("NAME='A'", "<PORTS NAME='B'/>"), "PORT"},
    {"wizard-map-sub-tag", wizard_map("NAME='A'", "<CONDITION/>"), ""},
    {"if-with-sub-tags", as_in("HTML_TEXT", "<INTRO><IF><T>A</T></IF></INTRO>"), ""},
    {"text-with-sub-tags", as_in("HTML_TEXT", "<INTRO><THEN>A<T>B</T></THEN></INTRO>"), ""},
};
// clang-format on

// What stands in a text from a place on.
std::string_view from_place(std::string_view text, const KIVO_PLACE& place) {
    for (std::int32_t line = 1; line < place.line; ++line) {
        text.remove_prefix(text.find('\n') + 1);
    }
    text.remove_prefix(static_cast<std::size_t>(place.column - 1));
    return text;
}

// The suggestion for the first message of that id; a word that is none without such a message.
std::string suggested(const std::string& id, const std::string& description) {
    const TemporaryFolder folder;
    KIVO_INFO info;
    info.process_xml_file(folder.write("description.xml", description));
    std::string word = "no such message";
    for (std::size_t index = info.error_list.size(); index-- > 0;) {
        if (info.get_error_id(index) == id) {
            word = suggested_word(id, info.get_error_facts(index),
                                  from_place(description, info.get_error_place(index)));
        }
    }
    info.delete_detached_objects();
    return word;
}

TEST(Suggestion, the_word_of_that_place_is_suggested_when_it_is_near) {
    for (const Case& row : kCases) {
        EXPECT_EQ(suggested(row.id, with_sections("\n  " + row.sections)), row.meant)
            << row.id << ' ' << row.sections;
    }
}

// The messages about a word in a place where no words are known.
const std::set<std::string> kWithoutWords = {
    "host-message",   "file-not-found", "file-not-opened",    "file-not-read", "read-error",
    "too-many-files", "invalid-file",   "xml-syntax",         "no-root",       "include-cycle",
    "type-clash",     "surplus-else",   "wizard-map-objects",
};

TEST(Suggestion, every_message_of_the_library_has_its_case) {
    std::set<std::string> cases = kWithoutWords;
    for (const Case& row : kCases) {
        cases.insert(row.id);
    }
    for (const MessageDescription& row : message_catalogue()) {
        if (row.severity == Severity::kError) {
            EXPECT_EQ(cases.count(std::string(row.id)), 1U) << row.id;
        }
    }
}

TEST(Suggestion, messages_without_words_get_none) {
    for (const std::string& id : kWithoutWords) {
        EXPECT_EQ(suggested_word(id, {}, "<PARAMETRS NAEM='A'/>"), "") << id;
    }
    EXPECT_EQ(suggested_word("", {}, ""), "");
}

KIVO_MESSAGE_FACTS facts_of(const std::string& attribute, const std::string& word,
                            const std::vector<std::string>& known) {
    KIVO_MESSAGE_FACTS facts;
    facts.attribute = attribute;
    facts.word = word;
    facts.known_words = known;
    return facts;
}

// The file may have changed since it was loaded, or be in an encoding that is read otherwise.
TEST(Suggestion, any_source_is_survived) {
    for (const MessageDescription& row : message_catalogue()) {
        for (const std::string_view source :
             {"", "<", "<PORT", "<PORT ", "<PORT N", "<PORT N=", "<PORT N='", "<PORT N='A", "< = >",
              "<>", ">", "PORT", "<PORT N=A>", "<PORT N/=''>", "\xFF\xFE<", "<A>", "<A>b c"}) {
            for (const char* attribute : {"", "NAME", "TYPE"}) {
                const KIVO_MESSAGE_FACTS facts = facts_of(attribute, "", {"INPUT"});
                EXPECT_EQ(suggested_word(row.id, facts, source), "") << row.id << ' ' << source;
                EXPECT_TRUE(words_to_list(row.id, facts, source).empty())
                    << row.id << ' ' << source;
            }
        }
    }
}

TEST(Suggestion, a_word_that_is_told_needs_no_source) {
    EXPECT_EQ(suggested_word("unknown-section", facts_of("", "PORST", {"PORTS"}), ""), "PORTS");
}

TEST(Suggestion, another_word_that_is_meant_is_suggested_only_where_it_is_known) {
    EXPECT_EQ(suggested_word("port-type", facts_of("TYPE", "inout", {"BIDIR"}), ""), "BIDIR");
    EXPECT_EQ(suggested_word("port-type", facts_of("TYPE", "inout", {"INPUT"}), ""), "");
}

TEST(Suggestion, an_attribute_that_is_there_is_not_missed) {
    const KIVO_MESSAGE_FACTS no_name = facts_of("NAME", "", {});
    EXPECT_EQ(suggested_word("port-name", no_name, "<PORT NAMES='a'>"), "NAME");
    EXPECT_EQ(suggested_word("port-name", no_name, "<PORT NAME='' NAMES='a'>"), "");
}

// What is listed for the first message of that id.
std::string known(const std::string& id, const std::string& sections) {
    const TemporaryFolder folder;
    const std::string description = with_sections(sections);
    KIVO_INFO info;
    info.process_xml_file(folder.write("description.xml", description));
    std::string words = "no such message";
    for (std::size_t index = info.error_list.size(); index-- > 0;) {
        if (info.get_error_id(index) == id) {
            words.clear();
            for (const std::string& word :
                 words_to_list(id, info.get_error_facts(index),
                               from_place(description, info.get_error_place(index)))) {
                words += (words.empty() ? "" : " ") + word;
            }
        }
    }
    info.delete_detached_objects();
    return words;
}

TEST(Suggestion, the_words_of_that_place_are_known) {
    EXPECT_EQ(known("parameter-type", parameters("<PARAMETER NAME='A' TYPE='ENUM'/>")),
              "INTEGER STRING");
    EXPECT_EQ(known("parameter-type", parameters("<PARAMETER NAME='A' TYPE=''/>")),
              "INTEGER STRING");
    EXPECT_EQ(known("message-type", as_in("MESSAGES", "<MESSAGE TYPE='FATAL'>A</MESSAGE>")),
              "CRITICAL_WARNING ERROR INFO WARNING");
    EXPECT_EQ(known("function-information-attribute", settings("<TIME_SCALE UNIT='ns'/>")),
              "VALUE");
    EXPECT_EQ(known("high-probability", ports("<PORT NAME='A' TYPE='INPUT' HIGH_PROBABILITY=''/>")),
              "whole numbers from 1 to 100");
    EXPECT_EQ(known("display-radix", wave("<DISPLAY>add wave -oct q</DISPLAY>")),
              "-bin -fixed_point -hex -signed -unsigned");
    EXPECT_EQ(known("display-command", wave("<DISPLAY>show wave -hex q</DISPLAY>")), "add");
}

TEST(Suggestion, only_words_that_fit_there_are_known) {
    EXPECT_EQ(known("object-sub-tag", port_with("<VALUE_RULE>A</VALUE_RULE>")),
              "CONSTANT_RANGE FORCE_RANGE FORCE_VALUE STATE");
    EXPECT_EQ(known("object-sub-tag", width_with("<STATE V='1'/>")),
              "FORCE_RANGE FORCE_VALUE VALUE_RULE");
    EXPECT_EQ(known("range-attribute", port_with("<FORCE_RANGE MAX='8' V='1'/>")),
              "IF MAX MIN WHEN WHEN_CMD");
    EXPECT_EQ(
        known("range-sub-tag", port_with("<CONSTANT_RANGE><LIMIT>8</LIMIT></CONSTANT_RANGE>")),
        "IF THEN TO V WHEN WHEN_CMD");
}

TEST(Suggestion, no_words_are_listed_where_none_was_read_or_they_are_many) {
    EXPECT_EQ(known("message-type", as_in("MESSAGES", "<MESSAGE>A</MESSAGE>")), "");
    EXPECT_EQ(known("parameter-name", parameters("<PARAMETER TYPE='STRING'/>")), "");
    EXPECT_EQ(known("rule-without-data", as_in("RULES", "<RULE ENABLED='OFF'>A</RULE>")), "");
    EXPECT_EQ(known("display-radix", wave("<DISPLAY>add wave -fixed_point() q</DISPLAY>")), "");
    EXPECT_EQ(known("unknown-section", "<ODD/>"), "");
    EXPECT_EQ(known("display-command", wave("<DISPLAY>add wave -hex</DISPLAY>")), "");
    EXPECT_TRUE(words_to_list("", {}, "").empty());
}

}  // namespace
