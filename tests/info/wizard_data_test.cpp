#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

KIVO_WIZARD_MAP* map_of(Loaded& store, const std::string& name) {
    return dynamic_cast<KIVO_WIZARD_MAP*>(store.info.wizard_map_map.look_up(name));
}

// The object of a map, null when there is no such map either.
KIVO_OBJ_INFO* object_of(Loaded& store, const std::string& map, const std::string& name) {
    const KIVO_WIZARD_MAP* found = map_of(store, map);
    return found == nullptr ? nullptr : found->get_kivo_obj(name);
}

// Wizard, module and the two flags.
std::string fields_of(const KIVO_WIZARD_MAP* map) {
    if (map == nullptr) {
        return "no map";
    }
    return map->wizard_name + "|" + map->get_module_name() + "|" +
           std::to_string(map->map_constants) + "|" + std::to_string(map->map_used_ports);
}

std::string condition_of(const KIVO_WIZARD_MAP* map) {
    if (map == nullptr || map->condition == nullptr) {
        return "none";
    }
    EXPECT_EQ(map->condition->text1, "");
    EXPECT_EQ(map->condition->text2, "");
    EXPECT_EQ(map->condition->rule_kind, 2);
    return map->condition->text3;
}

// Names and value arrays of a map's objects, in order.
std::string objects_of(KIVO_WIZARD_MAP* map) {
    if (map == nullptr) {
        return "no map";
    }
    std::string objects;
    map->obj_map.reset();
    while (const KIVO_OBJ_INFO* object = map->get_next_kivo_obj()) {
        objects += (objects.empty() ? "" : " ") + object->name + "=" + object->value_array;
    }
    map->obj_map.reset();
    return objects;
}

// A section with one map "A".
std::string map_a(const std::string& attributes, const std::string& sub_elements = "") {
    return "<WIZARD_DATA><WIZARD_MAP NAME='A' " + attributes + ">" + sub_elements +
           "</WIZARD_MAP></WIZARD_DATA>";
}

}  // namespace

TEST(WizardData, section_without_maps_yields_nothing) {
    for (const char* section :
         {"<WIZARD_DATA/>", "<WIZARD_DATA>text</WIZARD_DATA>",
          "<WIZARD_DATA><MACRO NAME='A'/><wizard_map NAME='A'/></WIZARD_DATA>",
          "<WIZARD_DATA NAME='A'><WIZARD_CONDITION>c</WIZARD_CONDITION></WIZARD_DATA>"}) {
        SCOPED_TRACE(section);
        Loaded store(section);
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_next_wizard_map(), nullptr);
    }
}

TEST(WizardData, name_is_required) {
    for (const char* attributes : {"", "NAME=''", "MODULE_NAME='m' BAD='1'", "name='A'"}) {
        SCOPED_TRACE(attributes);
        Loaded store("<WIZARD_DATA><WIZARD_MAP " + std::string(attributes) +
                     "><BAD/><PARAMETER/></WIZARD_MAP></WIZARD_DATA>");
        EXPECT_EQ(store.messages(), Messages{"Name atrribute is missing from WIZARD_MAP tag "});
        EXPECT_EQ(store.info.get_next_wizard_map(), nullptr);
    }
}

TEST(WizardData, attributes_set_the_fields) {
    struct Row {
        const char* attributes;
        const char* fields;
    };
    const Row rows[] = {
        {"", "||0|0"},
        {"WIZARD_NAME='w'", "w||0|0"},
        {"MODULE_NAME='m'", "|m|0|0"},
        {"MAP_CONSTANTS='ON'", "||1|0"},
        {"MAP_CONSTANTS='on'", "||0|0"},
        {"MAP_CONSTANTS='YES'", "||0|0"},
        {"MAP_CONSTANTS='1'", "||0|0"},
        {"MAP_CONSTANTS='TRUE'", "||0|0"},
        {"MAP_CONSTANTS=''", "||0|0"},
        {"MAP_USED_PORTS='ON'", "||0|1"},
        {"MAP_USED_PORTS='on'", "||0|0"},
        {"MAP_USED_PORTS='OFF'", "||0|0"},
        {"WIZARD_NAME=' w ' MODULE_NAME='m' MAP_CONSTANTS='ON' MAP_USED_PORTS='ON'", " w |m|1|1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        Loaded store(map_a(row.attributes));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(fields_of(map_of(store, "A")), row.fields);
        EXPECT_EQ(condition_of(map_of(store, "A")), "none");
    }
}

TEST(WizardData, function_name_stands_in_for_the_module_name) {
    Loaded store("");
    store.folder.write("my_fifo_info.xml",
                       "<ROOT><WIZARD_DATA><WIZARD_MAP NAME='A'/>"
                       "<WIZARD_MAP NAME='B' MODULE_NAME=''/>"
                       "<WIZARD_MAP NAME='C' MODULE_NAME='m'/></WIZARD_DATA></ROOT>");
    EXPECT_TRUE(store.info.set_function_name("My_Fifo", store.folder.path("")));
    EXPECT_EQ(map_of(store, "A")->get_module_name(), "My_Fifo");
    EXPECT_EQ(map_of(store, "B")->get_module_name(), "My_Fifo");
    EXPECT_EQ(map_of(store, "C")->get_module_name(), "m");
}

TEST(WizardData, unknown_attributes_are_reported_in_their_order) {
    Loaded store(map_a("VALUE='1' TYPE='2' Wizard_Name='w' map_constants='ON'"));
    const auto message = [](const std::string& name) {
        return "Attribute " + name +
               " is not a recognized attribute for vector stimulus (found in vector A )";
    };
    EXPECT_EQ(store.messages(), (Messages{message("map_constants"), message("TYPE"),
                                          message("VALUE"), message("Wizard_Name")}));
    EXPECT_EQ(fields_of(map_of(store, "A")), "||0|0");
}

TEST(WizardData, unknown_sub_elements_are_reported) {
    Loaded store(map_a("", "<MACRO/><WIZARD_MAP NAME='B'/><parameter NAME='P'/>"));
    EXPECT_EQ(store.messages(), (Messages{"Unrecognized Sub tag MACRO for WIZARD_MAP tag",
                                          "Unrecognized Sub tag WIZARD_MAP for WIZARD_MAP tag",
                                          "Unrecognized Sub tag parameter for WIZARD_MAP tag"}));
    EXPECT_EQ(map_of(store, "B"), nullptr);
}

TEST(WizardData, conditions) {
    struct Row {
        const char* sub_elements;
        const char* condition;
    };
    const Row rows[] = {
        {"<WIZARD_CONDITION>a == 1</WIZARD_CONDITION>", "a == 1"},
        {"<WIZARD_CONDITION> a </WIZARD_CONDITION>", " a "},
        {"<WIZARD_CONDITION CONDITION='b'/>", "b"},
        {"<WIZARD_CONDITION CONDITION='b' OTHER='c'/>", "b"},
        {"<WIZARD_CONDITION CONDITION='b'>a</WIZARD_CONDITION>", "a"},
        {"<WIZARD_CONDITION CONDITION='b'><IF>a</IF></WIZARD_CONDITION>", "b"},
        {"<WIZARD_CONDITION><CONDITION>a</CONDITION></WIZARD_CONDITION>", "none"},
        {"<WIZARD_CONDITION/>", "none"},
        {"<WIZARD_CONDITION CONDITION=''/>", "none"},
        {"<WIZARD_CONDITION condition='b'/>", "none"},
        {"<WIZARD_CONDITION>a</WIZARD_CONDITION><WIZARD_CONDITION>b</WIZARD_CONDITION>", "b"},
        {"<WIZARD_CONDITION>a</WIZARD_CONDITION><WIZARD_CONDITION CONDITION='b'/>", "b"},
        {"<WIZARD_CONDITION>a</WIZARD_CONDITION><WIZARD_CONDITION/>", "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sub_elements);
        Loaded store(map_a("", row.sub_elements));
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(condition_of(map_of(store, "A")), row.condition);
    }
}

TEST(WizardData, replaced_condition_can_still_be_looked_at) {
    Loaded store(map_a("", "<WIZARD_CONDITION>a</WIZARD_CONDITION>"));
    const KIVO_RULE_ELEMENT* first = map_of(store, "A")->condition;
    EXPECT_TRUE(store.load(map_a("", "<WIZARD_CONDITION>b</WIZARD_CONDITION>")));
    EXPECT_EQ(condition_of(map_of(store, "A")), "b");
    EXPECT_EQ(first->text3, "a");
}

TEST(WizardData, parameters_and_ports_become_objects_of_the_map_alone) {
    Loaded store(map_a("",
                       "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'>"
                       "<FORCE_RANGE MAX='3'/></PARAMETER>"
                       "<PORT NAME='p' TYPE='INPUT' WIDTH='8'><STATE V='1'/></PORT>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    KIVO_OBJ_INFO* parameter = object_of(store, "A", "P");
    KIVO_OBJ_INFO* port = object_of(store, "A", "p");
    ASSERT_NE(parameter, nullptr);
    ASSERT_NE(port, nullptr);
    EXPECT_EQ(parameter->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(parameter->get_value_array(), "1");
    EXPECT_EQ(rules_of(parameter), (std::vector<Rule>{{"3", "", "", 1}}));
    EXPECT_EQ(port->get_obj_type(), KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(port->get_port_width(), "8");
    EXPECT_EQ(rules_of(port), (std::vector<Rule>{{"1", "", "", 2}}));
}

TEST(WizardData, type_gives_the_kind) {
    struct Row {
        const char* element;
        KIVO_OBJ_TYPE kind;
    };
    const Row rows[] = {
        {"<PARAMETER NAME='N' TYPE='STRING'/>", KIVO_OBJ_STRING_PARAMETER},
        {"<PARAMETER NAME='N' TYPE='INTEGER'/>", KIVO_OBJ_INTEGER_PARAMETER},
        {"<PORT NAME='N' TYPE='INPUT'/>", KIVO_OBJ_INPUT_PORT},
        {"<PORT NAME='N' TYPE='OUTPUT'/>", KIVO_OBJ_OUTPUT_PORT},
        {"<PORT NAME='N' TYPE='BIDIR'/>", KIVO_OBJ_BIDIR_PORT},
        {"<PORT NAME='N' TYPE='BURIED'/>", KIVO_OBJ_BURIED_PORT},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element);
        Loaded store(map_a("", row.element));
        EXPECT_TRUE(store.clean);
        const KIVO_OBJ_INFO* object = object_of(store, "A", "N");
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get_obj_type(), row.kind);
    }
}

TEST(WizardData, unknown_types_of_new_names_make_nothing) {
    struct Row {
        const char* element;
        Messages messages;
    };
    const Row rows[] = {
        {"<PARAMETER NAME='W' VALUE='1' BAD='1'><BAD/></PARAMETER>", {}},
        {"<PORT NAME='W' WIDTH='1' BAD='1'><BAD/></PORT>", {}},
        {"<PARAMETER NAME='W' TYPE='REAL' BAD='1'/>",
         {"Parameter type REAL of parameter W is not a recognized parameter type "}},
        {"<PORT NAME='W' TYPE='INOUT' BAD='1'/>",
         {"Port type INOUT of port W is not a recognized port type "}},
        {"<PARAMETER NAME='W' TYPE='integer'/>",
         {"Parameter type integer of parameter W is not a recognized parameter type "}},
        {"<PARAMETER TYPE='INPUT'/>",
         {"Parameter type INPUT of parameter  is not a recognized parameter type ",
          "Name atrribute is missing from PARAMETER tag "}},
        {"<PORT TYPE=''/>",
         {"Port type  of port  is not a recognized port type ",
          "Name atrribute is missing from PORT tag "}},
        {"<PARAMETER TYPE='INTEGER' BAD='1'/>", {"Name atrribute is missing from PARAMETER tag "}},
        {"<PARAMETER NAME=''/>", {"Name atrribute is missing from PARAMETER tag "}},
        {"<PORT NAME='' BAD='1'/>", {"Name atrribute is missing from PORT tag "}},
    };
    for (const Row& row : rows) {
        // In a map and in the generic one alike.
        for (const std::string& section :
             {map_a("", row.element), "<WIZARD_DATA><WIZARD_MAP NAME='A'/>" +
                                          std::string(row.element) + "</WIZARD_DATA>"}) {
            SCOPED_TRACE(section);
            Loaded store(section);
            EXPECT_EQ(store.messages(), row.messages);
            EXPECT_EQ(objects_of(map_of(store, "A")), "");
        }
    }
}

TEST(WizardData, known_name_keeps_its_type_and_has_its_fields_read_again) {
    struct Row {
        const char* second;
        Messages messages;
    };
    const Row rows[] = {
        {"<PARAMETER NAME='P' TYPE='STRING' VALUE='2'/>", {}},
        {"<PARAMETER NAME='P' VALUE='2'/>", {}},
        {"<PARAMETER NAME='P' TYPE='REAL' VALUE='2'/>",
         {"Parameter type REAL of parameter P is not a recognized parameter type "}},
        {"<PORT NAME='P' TYPE='INPUT' DEFAULT_VALUE='2'/>", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.second);
        Loaded store(
            map_a("", "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/>" + std::string(row.second)));
        EXPECT_EQ(store.messages(), row.messages);
        const KIVO_OBJ_INFO* object = object_of(store, "A", "P");
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
        EXPECT_EQ(object->get_default_value(), "2");
    }
}

TEST(WizardData, messages_of_the_fields_are_posted) {
    Loaded store(map_a("",
                       "<PARAMETER NAME='P' TYPE='INTEGER' BAD='1'><STATE V='1'/></PARAMETER>"
                       "<PORT NAME='p' TYPE='INPUT' VALUE='1'><VALUE_RULE/></PORT>"));
    EXPECT_EQ(
        store.messages(),
        (Messages{"Attribute BAD is not a recognized attribute for parameters (found in parameter "
                  "P )",
                  "Sub tag STATE is not a valid sub tag of PORT ",
                  "Attribute VALUE is not a recognized attribute for ports (found for port p )",
                  "Sub tag VALUE_RULE is not a valid sub tag of PORT "}));
}

TEST(WizardData, same_map_name_reopens_the_map) {
    const std::string second = map_a("WIZARD_NAME='v' MAP_CONSTANTS='OFF'",
                                     "<PARAMETER NAME='Q' TYPE='STRING' VALUE='2'/>"
                                     "<PARAMETER NAME='P' VALUE='3'/>");
    Loaded store(map_a("WIZARD_NAME='w' MODULE_NAME='m' MAP_CONSTANTS='ON' MAP_USED_PORTS='ON'",
                       "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/>"
                       "<WIZARD_CONDITION>c</WIZARD_CONDITION>") +
                 second);
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(map_of(store, "A")), "v|m|0|1");
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=3 Q=2");
    EXPECT_EQ(condition_of(map_of(store, "A")), "c");
    EXPECT_NE(store.info.get_next_wizard_map(), nullptr);
    EXPECT_EQ(store.info.get_next_wizard_map(), nullptr);
}

TEST(WizardData, name_under_which_something_else_is_stored_is_passed_over) {
    KIVO_RULE_ELEMENT stranger;
    Loaded store("");
    store.info.wizard_map_map.set_at("A", &stranger);
    EXPECT_TRUE(store.load(map_a("BAD='1'", "<BAD/>")));
    EXPECT_EQ(store.info.wizard_map_map.look_up("A"), &stranger);
}

// --- Generic objects.

TEST(GenericWizardObjects, reach_every_map_that_has_none_of_the_name) {
    Loaded store(
        "<WIZARD_DATA>"
        "<WIZARD_MAP NAME='A'><PARAMETER NAME='P' TYPE='STRING' VALUE='own'/></WIZARD_MAP>"
        "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='generic'/>"
        "<WIZARD_MAP NAME='B'/></WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=own");
    EXPECT_EQ(objects_of(map_of(store, "B")), "P=generic");
    EXPECT_EQ(object_of(store, "A", "P")->get_obj_type(), KIVO_OBJ_STRING_PARAMETER);
    EXPECT_EQ(object_of(store, "B", "P")->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(store.info.get_kivo_obj("P"), nullptr);
}

TEST(GenericWizardObjects, are_not_a_map_of_the_store) {
    Loaded store(
        "<WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER'><FORCE_VALUE V='1'/></PARAMETER>"
        "</WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_next_wizard_map(), nullptr);
    EXPECT_EQ(map_of(store, "generic"), nullptr);
}

TEST(GenericWizardObjects, are_another_map_than_one_called_generic) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='generic'/><PARAMETER NAME='P' TYPE='INTEGER'/>"
        "</WIZARD_DATA>");
    EXPECT_EQ(objects_of(map_of(store, "generic")), "P=");
}

TEST(GenericWizardObjects, reach_maps_wherever_they_stand_in_the_section) {
    Loaded store(
        "<WIZARD_DATA><PORT NAME='p' TYPE='INPUT'/><WIZARD_MAP NAME='A'/>"
        "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/></WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "p= P=1");
}

TEST(GenericWizardObjects, own_definition_wins_also_where_it_stands_later) {
    Loaded store(
        "<WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER' VALUE='generic'/>"
        "<WIZARD_MAP NAME='A'><PARAMETER NAME='P' TYPE='STRING' VALUE='own'/></WIZARD_MAP>"
        "</WIZARD_DATA>");
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=own");
}

TEST(GenericWizardObjects, names_differ_by_letter_case) {
    Loaded store(
        "<WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER' VALUE='generic'/>"
        "<WIZARD_MAP NAME='A'><PARAMETER NAME='p' TYPE='STRING' VALUE='own'/></WIZARD_MAP>"
        "</WIZARD_DATA>");
    EXPECT_EQ(objects_of(map_of(store, "A")), "p=own P=generic");
}

TEST(GenericWizardObjects, reach_maps_of_earlier_sections_and_not_of_later_ones) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='A'/></WIZARD_DATA>"
        "<WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/></WIZARD_DATA>"
        "<WIZARD_DATA><WIZARD_MAP NAME='B'/></WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=1");
    EXPECT_EQ(objects_of(map_of(store, "B")), "");
}

TEST(GenericWizardObjects, of_an_included_file_reach_the_maps_of_the_including_one) {
    Loaded store("");
    const std::string generic = store.folder.write(
        "generic.xml",
        "<ROOT><WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/></WIZARD_DATA></ROOT>");
    EXPECT_TRUE(store.load("<INCLUDE FILE='" + generic + "'/>" + map_a("")));
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=1");
}

TEST(GenericWizardObjects, each_section_starts_anew) {
    Loaded store(
        "<WIZARD_DATA><PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'/></WIZARD_DATA>"
        "<WIZARD_DATA><PARAMETER NAME='P' VALUE='2'/><WIZARD_MAP NAME='A'/></WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "");
}

TEST(GenericWizardObjects, same_name_again_has_its_fields_read_again) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='A'/>"
        "<PARAMETER NAME='P' TYPE='INTEGER' VALUE='1'><FORCE_VALUE V='1'/></PARAMETER>"
        "<PARAMETER NAME='P' TYPE='STRING' VALUE='2'><FORCE_VALUE V='2'/></PARAMETER>"
        "</WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=2");
    EXPECT_EQ(object_of(store, "A", "P")->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(rules_of(object_of(store, "A", "P")),
              (std::vector<Rule>{{"1", "", "", 2}, {"2", "", "", 2}}));
}

TEST(GenericWizardObjects, copies_are_separate_but_share_their_rule_elements) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='A'/><WIZARD_MAP NAME='B'/>"
        "<PARAMETER NAME='P' TYPE='INTEGER'><FORCE_VALUE V='1'/></PARAMETER>"
        "</WIZARD_DATA>");
    KIVO_OBJ_INFO* of_a = object_of(store, "A", "P");
    KIVO_OBJ_INFO* of_b = object_of(store, "B", "P");
    ASSERT_NE(of_a, nullptr);
    ASSERT_NE(of_b, nullptr);
    EXPECT_NE(of_a, of_b);
    KIVO_RULE_ELEMENT* shared = of_a->get_next_rule_element();
    EXPECT_NE(shared, nullptr);
    EXPECT_EQ(of_b->get_next_rule_element(), shared);

    EXPECT_TRUE(store.load(map_a("",
                                 "<PARAMETER NAME='P' VALUE='2'><FORCE_VALUE V='3'/>"
                                 "</PARAMETER>")));
    EXPECT_EQ(of_a->get_value_array(), "2");
    EXPECT_EQ(rules_of(of_a), (std::vector<Rule>{{"1", "", "", 2}, {"3", "", "", 2}}));
    EXPECT_EQ(of_b->get_value_array(), "");
    EXPECT_EQ(rules_of(of_b), (std::vector<Rule>{{"1", "", "", 2}}));
}

TEST(GenericWizardObjects, copies_have_the_flags_that_are_reported) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='A'/><PORT NAME='i' TYPE='INPUT'/>"
        "<PORT NAME='o' TYPE='OUTPUT' IS_CLOCK_PORT='TRUE'/></WIZARD_DATA>");
    ASSERT_NE(object_of(store, "A", "i"), nullptr);
    ASSERT_NE(object_of(store, "A", "o"), nullptr);
    EXPECT_TRUE(object_of(store, "A", "i")->async);
    EXPECT_FALSE(object_of(store, "A", "o")->async);
    EXPECT_FALSE(object_of(store, "A", "o")->clock);
}

// Leaks where they are not released; LeakSanitizer tells.
TEST(GenericWizardObjects, rules_that_no_map_takes_are_released) {
    Loaded store(
        "<WIZARD_DATA><WIZARD_MAP NAME='A'><PARAMETER NAME='P' TYPE='INTEGER' VALUE='own'/>"
        "</WIZARD_MAP><PARAMETER NAME='P' TYPE='INTEGER'><FORCE_VALUE V='1'/></PARAMETER>"
        "</WIZARD_DATA>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(objects_of(map_of(store, "A")), "P=own");
    EXPECT_EQ(rules_of(object_of(store, "A", "P")), std::vector<Rule>());
}
