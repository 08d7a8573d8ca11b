#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/info/internal/reader.h"
#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// What a port's attributes can set: clock and asynchronous flag as stored, usage, probability,
// width, second width, default value, initial state, clock period, connection.
std::string fields_of(const KIVO_OBJ_INFO* object) {
    if (object == nullptr) {
        return "no object";
    }
    return std::to_string(object->clock) + "|" + std::to_string(object->async) + "|" +
           std::to_string(object->get_usage_state()) + "|" +
           std::to_string(object->get_high_probability()) + "|" + object->get_port_width() + "|" +
           object->get_port_width2d() + "|" + object->get_default_value() + "|" +
           object->get_initial_vec_state() + "|" + object->get_clock_period() + "|" +
           std::to_string(object->get_cnx_type());
}

const char* const kInitialFields = "0|1|1|50||||0||3";

// A section with one input port "p".
std::string port(const std::string& attributes, const std::string& sub_elements = "") {
    return "<PORTS><PORT NAME='p' TYPE='INPUT' " + attributes + ">" + sub_elements +
           "</PORT></PORTS>";
}

const char* const kUnknownP = "Kivofunction Object p is of unknown type ";

}  // namespace

TEST(Ports, section_without_ports_yields_nothing) {
    for (const char* section :
         {"<PORTS/>", "<PORT_RULES/>", "<PORTS>text</PORTS>",
          "<PORTS><PARAMETER NAME='P' TYPE='INTEGER'/><port NAME='p' TYPE='INPUT'/></PORTS>"}) {
        SCOPED_TRACE(section);
        Loaded store(section);
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(Ports, type_gives_the_kind) {
    struct Row {
        const char* type;
        KIVO_OBJ_TYPE kind;
        const char* text;
    };
    const Row rows[] = {
        {"INPUT", KIVO_OBJ_INPUT_PORT, "Input port"},
        {"OUTPUT", KIVO_OBJ_OUTPUT_PORT, "Output port"},
        {"BIDIR", KIVO_OBJ_BIDIR_PORT, "Bidir port"},
        {"BURIED", KIVO_OBJ_BURIED_PORT, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        Loaded store("<PORTS><PORT NAME='p' TYPE='" + std::string(row.type) + "'/></PORTS>");
        EXPECT_TRUE(store.clean);
        const KIVO_OBJ_INFO* object = store.info.get_kivo_obj("p");
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get_obj_type(), row.kind);
        EXPECT_EQ(object->get_obj_type_as_string(), row.text);
        EXPECT_EQ(fields_of(object), kInitialFields);
    }
}

TEST(Ports, unknown_type_of_a_new_name_makes_no_object) {
    for (const char* type : {"input", "INOUT", "Bidir", "INPUT ", " OUTPUT", "INTEGER", ""}) {
        SCOPED_TRACE(type);
        Loaded store("<PORTS><PORT NAME='p' TYPE='" + std::string(type) +
                     "' NO_SUCH_ATTRIBUTE='1'><NO_SUCH_TAG/></PORT></PORTS>");
        EXPECT_EQ(store.messages(), (Messages{"Port type " + std::string(type) +
                                                  " of port p is not a recognized port type ",
                                              kUnknownP}));
        EXPECT_EQ(store.info.get_kivo_obj("p"), nullptr);
    }
}

TEST(Ports, unknown_type_of_a_known_name_still_applies_the_attributes) {
    Loaded store(port("") + "<PORTS><PORT NAME='p' TYPE='INOUT' WIDTH='8'/></PORTS>");
    EXPECT_EQ(store.messages(),
              Messages{"Port type INOUT of port p is not a recognized port type "});
    EXPECT_EQ(store.info.get_kivo_obj("p")->get_port_width(), "8");
}

TEST(Ports, name_is_required) {
    const Messages missing{"Name atrribute is missing from PORT tag "};
    for (const char* attributes : {"TYPE='INPUT'", "NAME='' TYPE='INPUT'", "", "name='p'",
                                   "NAME='' NO_SUCH_ATTRIBUTE='1' HIGH_PROBABILITY='0'"}) {
        SCOPED_TRACE(attributes);
        Loaded store("<PORTS><PORT " + std::string(attributes) + "><BAD/></PORT></PORTS>");
        EXPECT_EQ(store.messages(), missing);
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(Ports, type_of_a_nameless_port_is_reported_before_the_name) {
    Loaded store("<PORTS><PORT TYPE='INOUT'/></PORTS>");
    EXPECT_EQ(store.messages(), (Messages{"Port type INOUT of port  is not a recognized port type ",
                                          "Name atrribute is missing from PORT tag "}));
}

TEST(Ports, attributes_set_the_fields) {
    struct Row {
        const char* attributes;
        const char* fields;
    };
    const Row rows[] = {
        {"", kInitialFields},
        {"IS_CLOCK_PORT='TRUE'", "1|1|1|50||||0||3"},
        {"IS_CLOCK_PORT='true'", "0|1|1|50||||0||3"},
        {"IS_CLOCK_PORT='ON'", "0|1|1|50||||0||3"},
        {"ASYNC='TRUE'", "0|1|1|50||||0||3"},
        {"ASYNC='FALSE'", "0|0|1|50||||0||3"},
        {"ASYNC='true'", "0|0|1|50||||0||3"},
        {"ASYNC=''", "0|0|1|50||||0||3"},
        {"USAGE='UNUSED'", "0|1|0|50||||0||3"},
        {"USAGE='USED'", "0|1|1|50||||0||3"},
        {"USAGE='VARIABLE'", "0|1|2|50||||0||3"},
        {"USAGE='CONSTANT'", "0|1|3|50||||0||3"},
        {"USAGE='used'", "0|1|1|50||||0||3"},
        {"USAGE='unused'", "0|1|1|50||||0||3"},
        {"USAGE='whatever'", "0|1|1|50||||0||3"},
        {"HIGH_PROBABILITY='1'", "0|1|1|1||||0||3"},
        {"HIGH_PROBABILITY='2'", "0|1|1|2||||0||3"},
        {"HIGH_PROBABILITY='99'", "0|1|1|99||||0||3"},
        {"HIGH_PROBABILITY='100'", "0|1|1|100||||0||3"},
        {"HIGH_PROBABILITY=' +30%'", "0|1|1|30||||0||3"},
        {"HIGH_PROBABILITY='4294967297'", "0|1|1|1||||0||3"},
        {"WIDTH='N + 1'", "0|1|1|50|N + 1|||0||3"},
        {"WIDTH2D=' M '", "0|1|1|50|| M ||0||3"},
        {"DEFAULT_VALUE='1'", "0|1|1|50|||1|0||3"},
        {"INITIAL_VEC_STATE='Z'", "0|1|1|50||||Z||3"},
        {"INITIAL_VEC_STATE=''", "0|1|1|50||||||3"},
        {"CLOCK_PERIOD='10 ns'", "0|1|1|50||||0|10 ns|3"},
        {"CNX_TYPE='USED_PORT'", "0|1|1|50||||0||2"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        Loaded store(port(row.attributes));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("p")), row.fields);
    }
}

TEST(Ports, clock_of_an_input_port_stays_asynchronous) {
    Loaded store("<PORTS><PORT NAME='clock' TYPE='INPUT' IS_CLOCK_PORT='TRUE'/></PORTS>");
    EXPECT_TRUE(store.info.get_kivo_obj("clock")->is_clock());
    EXPECT_TRUE(store.info.get_kivo_obj("clock")->is_async());
}

TEST(Ports, flags_are_stored_for_every_kind_and_reported_for_input_ports) {
    for (const char* type : {"OUTPUT", "BIDIR", "BURIED"}) {
        SCOPED_TRACE(type);
        Loaded store("<PORTS><PORT NAME='p' IS_CLOCK_PORT='TRUE' ASYNC='TRUE' TYPE='" +
                     std::string(type) + "'/></PORTS>");
        const KIVO_OBJ_INFO* object = store.info.get_kivo_obj("p");
        ASSERT_NE(object, nullptr);
        EXPECT_TRUE(object->clock);
        EXPECT_TRUE(object->async);
        EXPECT_FALSE(object->is_clock());
        EXPECT_FALSE(object->is_async());
    }
}

TEST(Ports, impossible_probabilities_are_reported_and_change_nothing) {
    for (const char* value :
         {"0", "101", "-5", "-1", "x", "", " ", "1000000", "4294967296", "99999999999999999999"}) {
        SCOPED_TRACE(value);
        Loaded store(port("HIGH_PROBABILITY='" + std::string(value) + "'"));
        EXPECT_EQ(store.messages(),
                  Messages{"Invalid value for high probability " + std::string(value) +
                           ", it should be an integer between 0 and 100"});
        EXPECT_EQ(store.info.get_kivo_obj("p")->get_high_probability(), 50);
    }
}

TEST(Ports, other_connections_are_reported_and_change_nothing) {
    for (const char* value : {"CONSTANT", "PRIVATE", "used_port", ""}) {
        SCOPED_TRACE(value);
        Loaded store(port("CNX_TYPE='" + std::string(value) + "'"));
        EXPECT_EQ(store.messages(), Messages{"Attribute value " + std::string(value) +
                                             " is not a recognized value for attribute CNX_TYPE "
                                             "(found for port p )"});
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("p")), kInitialFields);
    }
}

TEST(Ports, unknown_attributes_are_reported_and_change_nothing) {
    for (const char* name :
         {"VALUE", "LPM_HINT", "DEFAULT_VALUE_INDEX", "width", "WIDTH3D", "Async", "ARGUMENTS"}) {
        SCOPED_TRACE(name);
        Loaded store(port(std::string(name) + "='ON'"));
        EXPECT_EQ(store.messages(),
                  Messages{"Attribute " + std::string(name) +
                           " is not a recognized attribute for ports (found for port p )"});
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("p")), kInitialFields);
    }
}

TEST(Ports, messages_come_by_attribute_name_and_then_of_the_sub_elements) {
    Loaded store(port("ZETA='1' HIGH_PROBABILITY='0' CNX_TYPE='X' beta='2'", "<BAD/>"));
    EXPECT_EQ(
        store.messages(),
        (Messages{"Attribute beta is not a recognized attribute for ports (found for port p )",
                  "Attribute value X is not a recognized value for attribute CNX_TYPE (found "
                  "for port p )",
                  "Invalid value for high probability 0, it should be an integer between 0 "
                  "and 100",
                  "Attribute ZETA is not a recognized attribute for ports (found for port p )",
                  "Sub tag BAD is not a valid sub tag of PORT "}));
}

TEST(Ports, repeated_declaration_overwrites_fields_and_adds_rules) {
    Loaded store(port("WIDTH='8' ASYNC='FALSE'", "<STATE V='0'/>") +
                 port("WIDTH='9'", "<STATE V='1'/>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("p")), "0|0|1|50|9|||0||3");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("p")),
              (std::vector<Rule>{{"0", "", "", 2}, {"1", "", "", 2}}));
}

TEST(Ports, declaration_of_another_kind_leaves_the_first_untouched) {
    struct Row {
        const char* first;
        const char* text;
    };
    const Row rows[] = {
        {"<PORTS><PORT NAME='p' TYPE='OUTPUT'/></PORTS>", "Output port"},
        {"<PORTS><PORT NAME='p' TYPE='BURIED'/></PORTS>", ""},
        {"<PARAMETERS><PARAMETER NAME='p' TYPE='STRING'/></PARAMETERS>", "String parameter"},
        {"<HIDDEN_PARAMETERS><PARAMETER NAME='p'/></HIDDEN_PARAMETERS>", "Hidden parameter"},
        {"<MACROS><MACRO NAME='p'/></MACROS>", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.first);
        Loaded store(row.first + port("WIDTH='9' NO_SUCH='1'", "<STATE V='1'/><BAD/>"));
        EXPECT_EQ(store.messages(), Messages{"Kivofunction Object p of different type " +
                                             std::string(row.text) + " already exists "});
        EXPECT_EQ(store.info.get_kivo_obj("p")->get_port_width(), "");
        EXPECT_EQ(rules_of(store.info.get_kivo_obj("p")), std::vector<Rule>());
    }
}

TEST(PortRules, add_to_a_declared_port) {
    Loaded store(
        "<PORTS><PORT NAME='p' TYPE='INPUT' WIDTH='8'/></PORTS>"
        "<PORT_RULES><PORT NAME='p'><STATE V='1'/></PORT></PORT_RULES>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("p")), "0|1|1|50|8|||0||3");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("p")), (std::vector<Rule>{{"1", "", "", 2}}));
}

TEST(PortRules, reach_objects_of_every_type) {
    for (const char* declaration : {"<PARAMETERS><PARAMETER NAME='p' TYPE='STRING'/></PARAMETERS>",
                                    "<HIDDEN_PARAMETERS><PARAMETER NAME='p'/></HIDDEN_PARAMETERS>",
                                    "<MACROS><MACRO NAME='p'/></MACROS>"}) {
        SCOPED_TRACE(declaration);
        Loaded store(declaration +
                     std::string("<PORT_RULES><PORT NAME='p' WIDTH='8'/></PORT_RULES>"));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_kivo_obj("p")->get_port_width(), "8");
    }
}

TEST(PortRules, undeclared_name_is_reported_once) {
    Loaded store("<PORT_RULES><PORT NAME='p' NO_SUCH='1'><BAD/></PORT></PORT_RULES>");
    EXPECT_EQ(store.messages(), Messages{kUnknownP});
}

TEST(PortFields, null_object_yields_no_message_and_reads_nothing) {
    KIVO_XML_ELEMENT never_touched;
    KIVO_INFO info;
    process_port_fields(nullptr, never_touched, MessagePoster(&info));
    EXPECT_TRUE(info.error_list.empty());
}
