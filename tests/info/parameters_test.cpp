#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/info/internal/reader.h"
#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// What a parameter's attributes can set: value array, default value, default index, hint,
// connection.
std::string fields_of(const KIVO_OBJ_INFO* object) {
    if (object == nullptr) {
        return "no object";
    }
    return object->get_value_array() + "|" + object->get_default_value() + "|" +
           std::to_string(object->get_default_index()) + "|" +
           std::to_string(object->is_lpm_hint()) + "|" + std::to_string(object->get_cnx_type());
}

// A section with one integer parameter "P".
std::string parameter(const std::string& attributes, const std::string& sub_elements = "") {
    return "<PARAMETERS><PARAMETER NAME='P' TYPE='INTEGER' " + attributes + ">" + sub_elements +
           "</PARAMETER></PARAMETERS>";
}

const char* const kUnknownP = "Kivofunction Object P is of unknown type ";

}  // namespace

TEST(Parameters, section_without_parameters_yields_nothing) {
    for (const char* section :
         {"<PARAMETERS/>", "<PARAMETER_RULES/>", "<PARAMETERS>text</PARAMETERS>",
          "<PARAMETERS><PORT NAME='p' TYPE='INPUT'/><parameter NAME='q' TYPE='INTEGER'/>"
          "<PARAMETERS><PARAMETER NAME='r' TYPE='INTEGER'/></PARAMETERS></PARAMETERS>"}) {
        SCOPED_TRACE(section);
        Loaded store(section);
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(Parameters, type_gives_the_kind) {
    Loaded store(
        "<PARAMETERS><PARAMETER NAME='I' TYPE='INTEGER'/><PARAMETER TYPE='STRING' NAME='S'/>"
        "</PARAMETERS>");
    EXPECT_TRUE(store.clean);
    const KIVO_OBJ_INFO* integer = store.info.get_next_kivo_obj();
    const KIVO_OBJ_INFO* text = store.info.get_next_kivo_obj();
    ASSERT_NE(integer, nullptr);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    EXPECT_EQ(integer->get_name(), "I");
    EXPECT_EQ(integer->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(integer->get_obj_type_as_string(), "Integer parameter");
    EXPECT_EQ(text->get_name(), "S");
    EXPECT_EQ(text->get_obj_type(), KIVO_OBJ_STRING_PARAMETER);
    EXPECT_EQ(text->get_obj_type_as_string(), "String parameter");
}

TEST(Parameters, fields_that_no_attribute_names_keep_their_initial_values) {
    Loaded store(parameter(""));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "||-1|0|3");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("P")), std::vector<Rule>());
}

TEST(Parameters, unknown_type_of_a_new_name_makes_no_object) {
    for (const char* type : {"integer", "string", "Integer", "BOOLEAN", "INTEGER ", " STRING",
                             "INTEGERS", "INPUT", ""}) {
        SCOPED_TRACE(type);
        Loaded store("<PARAMETERS><PARAMETER NAME='P' TYPE='" + std::string(type) +
                     "' NO_SUCH_ATTRIBUTE='1'><NO_SUCH_TAG/></PARAMETER></PARAMETERS>");
        EXPECT_EQ(store.messages(), (Messages{"Parameter type " + std::string(type) +
                                                  " of parameter P is not a recognized parameter "
                                                  "type ",
                                              kUnknownP}));
        EXPECT_EQ(store.info.get_kivo_obj("P"), nullptr);
    }
}

TEST(Parameters, unknown_type_of_a_known_name_still_applies_the_attributes) {
    Loaded store(parameter("") +
                 "<PARAMETERS><PARAMETER NAME='P' TYPE='BOOLEAN' VALUE='1'/></PARAMETERS>");
    EXPECT_EQ(
        store.messages(),
        Messages{"Parameter type BOOLEAN of parameter P is not a recognized parameter type "});
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "1|1|-1|0|3");
    EXPECT_EQ(store.info.get_kivo_obj("P")->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
}

TEST(Parameters, name_is_required) {
    const Messages missing{"Name atrribute is missing from PARAMETER tag "};
    for (const char* attributes : {"TYPE='INTEGER'", "NAME='' TYPE='INTEGER'", "", "name='P'",
                                   "NAME='' NO_SUCH_ATTRIBUTE='1' CNX_TYPE='X'"}) {
        SCOPED_TRACE(attributes);
        Loaded store("<PARAMETERS><PARAMETER " + std::string(attributes) +
                     "><NO_SUCH_TAG/></PARAMETER></PARAMETERS>");
        EXPECT_EQ(store.messages(), missing);
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(Parameters, type_of_a_nameless_parameter_is_reported_before_the_name) {
    Loaded store("<PARAMETERS><PARAMETER TYPE='REAL'/></PARAMETERS>");
    EXPECT_EQ(store.messages(),
              (Messages{"Parameter type REAL of parameter  is not a recognized parameter type ",
                        "Name atrribute is missing from PARAMETER tag "}));
}

TEST(Parameters, name_of_blanks_is_a_name) {
    Loaded store("<PARAMETERS><PARAMETER NAME='  ' TYPE='INTEGER'/></PARAMETERS>");
    EXPECT_TRUE(store.clean);
    EXPECT_NE(store.info.get_kivo_obj("  "), nullptr);
}

TEST(Parameters, attributes_set_the_fields) {
    struct Row {
        const char* attributes;
        const char* fields;
    };
    const Row rows[] = {
        {"VALUE='8'", "8|8|-1|0|3"},
        {"DEFAULT_VALUE='4'", "|4|-1|0|3"},
        // Attributes are applied in the order of their names, so VALUE has the last word.
        {"VALUE='8' DEFAULT_VALUE='4'", "8|8|-1|0|3"},
        {"DEFAULT_VALUE='4' VALUE='8'", "8|8|-1|0|3"},
        {"DEFAULT_VALUE='4' VALUE=''", "||-1|0|3"},
        {"DEFAULT_VALUE_INDEX='2' VALUE='a b c'", "a b c|a b c|2|0|3"},
        {"LPM_HINT='ON'", "||-1|1|3"},
        {"LPM_HINT='on'", "||-1|0|3"},
        {"LPM_HINT='OFF'", "||-1|0|3"},
        {"LPM_HINT='TRUE'", "||-1|0|3"},
        {"LPM_HINT='ON '", "||-1|0|3"},
        {"LPM_HINT=''", "||-1|0|3"},
        {"CNX_TYPE='CONSTANT'", "||-1|0|1"},
        {"CNX_TYPE='PRIVATE'", "||-1|0|0"},
        {"CNX_TYPE='PRIVATE' DEFAULT_VALUE='4' DEFAULT_VALUE_INDEX='1' LPM_HINT='ON' VALUE='8'",
         "8|8|1|1|0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        Loaded store(parameter(row.attributes));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), row.fields);
    }
}

TEST(Parameters, default_index_is_read_as_far_as_it_is_a_number) {
    struct Row {
        const char* text;
        std::int32_t index;
    };
    const Row rows[] = {
        {"0", 0},
        {"1", 1},
        {"-1", -1},
        {"+7", 7},
        {" 3x", 3},
        {"&#9;&#10;12 13", 12},
        {"007", 7},
        {"3.9", 3},
        {"0x10", 0},
        {"abc", 0},
        {"", 0},
        {" ", 0},
        {"-", 0},
        {"- 3", 0},
        {"+-3", 0},
        {"2147483647", 2147483647},
        {"2147483648", -2147483647 - 1},
        {"-2147483648", -2147483647 - 1},
        {"4294967295", -1},
        {"4294967296", 0},
        {"4294967297", 1},
        {"99999999999999999999", -1},
        {"-99999999999999999999", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Loaded store(parameter("DEFAULT_VALUE_INDEX='" + std::string(row.text) + "'"));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_kivo_obj("P")->get_default_index(), row.index);
    }
}

TEST(Parameters, other_connections_are_reported_and_change_nothing) {
    for (const char* value : {"USED_PORT", "constant", "Private", "", "CONSTANT "}) {
        SCOPED_TRACE(value);
        Loaded store(parameter("CNX_TYPE='PRIVATE'") + "<PARAMETER_RULES><PARAMETER NAME='P' " +
                     "CNX_TYPE='" + value + "' VALUE='8'/></PARAMETER_RULES>");
        EXPECT_EQ(store.messages(),
                  Messages{"Attribute value " + std::string(value) +
                           " is not a recognized value for attribute CNX_TYPE (found in parameter "
                           "P )"});
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "8|8|-1|0|0");
    }
}

TEST(Parameters, unknown_attributes_are_reported_and_change_nothing) {
    for (const char* name : {"WIDTH", "ASYNC", "value", "Lpm_Hint", "VALUES", "ARGUMENTS",
                             "DEFINITION", "INITIAL_VEC_STATE", "x:VALUE"}) {
        SCOPED_TRACE(name);
        Loaded store(parameter(std::string(name) + "='ON'"));
        EXPECT_EQ(
            store.messages(),
            Messages{"Attribute " + std::string(name) +
                     " is not a recognized attribute for parameters (found in parameter P )"});
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "||-1|0|3");
    }
}

TEST(Parameters, messages_come_by_attribute_name_and_then_of_the_sub_elements) {
    Loaded store(parameter("ZETA='1' CNX_TYPE='X' beta='2' ALPHA='3'", "<BAD/><WORSE/>"));
    EXPECT_EQ(store.messages(),
              (Messages{"Attribute ALPHA is not a recognized attribute for parameters (found in "
                        "parameter P )",
                        "Attribute beta is not a recognized attribute for parameters (found in "
                        "parameter P )",
                        "Attribute value X is not a recognized value for attribute CNX_TYPE (found "
                        "in parameter P )",
                        "Attribute ZETA is not a recognized attribute for parameters (found in "
                        "parameter P )",
                        "Sub tag BAD is not a valid sub tag of PORT ",
                        "Sub tag WORSE is not a valid sub tag of PORT "}));
}

TEST(Parameters, sub_elements_become_rules) {
    Loaded store(parameter("", "<FORCE_VALUE V='1'/><VALUE_RULE>P > 0</VALUE_RULE>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("P")),
              (std::vector<Rule>{{"1", "", "", 2}, {"", "", "P > 0", 4}}));
}

TEST(Parameters, repeated_declaration_overwrites_fields_and_adds_rules) {
    Loaded store(parameter("VALUE='8' LPM_HINT='ON'", "<FORCE_VALUE V='1'/>") +
                 parameter("VALUE='9'", "<FORCE_VALUE V='2'/>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "9|9|-1|1|3");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("P")),
              (std::vector<Rule>{{"1", "", "", 2}, {"2", "", "", 2}}));
    EXPECT_NE(store.info.get_next_kivo_obj(), nullptr);
    EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
}

TEST(Parameters, declaration_of_another_kind_leaves_the_first_untouched) {
    Loaded store(parameter("VALUE='8'") +
                 "<PARAMETERS><PARAMETER NAME='P' TYPE='STRING' VALUE='9' NO_SUCH='1'>"
                 "<FORCE_VALUE V='2'/><BAD/></PARAMETER></PARAMETERS>");
    EXPECT_EQ(
        store.messages(),
        Messages{"Kivofunction Object P of different type Integer parameter already exists "});
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "8|8|-1|0|3");
    EXPECT_EQ(store.info.get_kivo_obj("P")->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("P")), std::vector<Rule>());
}

TEST(Parameters, names_differ_by_letter_case) {
    Loaded store(
        "<PARAMETERS><PARAMETER NAME='P' TYPE='INTEGER'/><PARAMETER NAME='p' TYPE='STRING'/>"
        "</PARAMETERS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_kivo_obj("P")->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(store.info.get_kivo_obj("p")->get_obj_type(), KIVO_OBJ_STRING_PARAMETER);
}

TEST(Parameters, bad_element_does_not_end_the_section) {
    Loaded store(
        "<PARAMETERS><PARAMETER/><PARAMETER NAME='A' TYPE='X'/>"
        "<PARAMETER NAME='P' TYPE='INTEGER'/></PARAMETERS>");
    EXPECT_EQ(store.messages().size(), 3U);
    EXPECT_NE(store.info.get_kivo_obj("P"), nullptr);
}

TEST(ParameterRules, add_to_a_declared_parameter) {
    Loaded store(parameter("VALUE='8'", "<FORCE_VALUE V='1'/>") +
                 "<PARAMETER_RULES><PARAMETER NAME='P'><VALUE_RULE>P != 3</VALUE_RULE></PARAMETER>"
                 "</PARAMETER_RULES>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "8|8|-1|0|3");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("P")),
              (std::vector<Rule>{{"1", "", "", 2}, {"", "", "P != 3", 4}}));
}

TEST(ParameterRules, undeclared_name_is_reported_once) {
    Loaded store(
        "<PARAMETER_RULES><PARAMETER NAME='P' NO_SUCH='1'><BAD/></PARAMETER></PARAMETER_RULES>");
    EXPECT_EQ(store.messages(), Messages{kUnknownP});
    EXPECT_EQ(store.info.get_kivo_obj("P"), nullptr);
}

TEST(ParameterRules, may_declare_too) {
    Loaded store(
        "<PARAMETER_RULES><PARAMETER NAME='P' TYPE='INTEGER' VALUE='8'/></PARAMETER_RULES>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "8|8|-1|0|3");
}

TEST(ParameterRules, reach_objects_of_every_type) {
    for (const char* declaration : {"<PORTS><PORT NAME='P' TYPE='OUTPUT'/></PORTS>",
                                    "<HIDDEN_PARAMETERS><PARAMETER NAME='P'/></HIDDEN_PARAMETERS>",
                                    "<MACROS><MACRO NAME='P'/></MACROS>"}) {
        SCOPED_TRACE(declaration);
        Loaded store(declaration + std::string("<PARAMETER_RULES><PARAMETER NAME='P' VALUE='8'>"
                                               "</PARAMETER></PARAMETER_RULES>"));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "8|8|-1|0|3");
    }
}

TEST(ParameterRules, included_file_is_read_after_the_including_one) {
    Loaded store("");
    const std::string declaration =
        store.folder.write("declaration.xml", "<ROOT>" + parameter("") + "</ROOT>");
    EXPECT_FALSE(store.load("<INCLUDE FILE='" + declaration + "'/>" +
                            "<PARAMETER_RULES><PARAMETER NAME='P' VALUE='1'/></PARAMETER_RULES>"));
    EXPECT_EQ(store.messages(), Messages{kUnknownP});
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "||-1|0|3");
}

TEST(ParameterRules, included_file_may_refer_to_parameters_of_the_including_one) {
    Loaded store("");
    const std::string rules = store.folder.write("rules.xml",
                                                 "<ROOT><PARAMETER_RULES><PARAMETER NAME='P' "
                                                 "VALUE='1'/></PARAMETER_RULES></ROOT>");
    EXPECT_TRUE(store.load("<INCLUDE FILE='" + rules + "'/>" + parameter("")));
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("P")), "1|1|-1|0|3");
}

TEST(ParameterFields, null_object_yields_no_message_and_reads_nothing) {
    KIVO_XML_ELEMENT never_touched;
    KIVO_INFO info;
    process_parameter_fields(nullptr, never_touched, MessagePoster(&info));
    EXPECT_TRUE(info.error_list.empty());
}
