#include "kivo/objects/wizard_map.h"

#include <gtest/gtest.h>

#include <memory>

#include "kivo/objects/rule_element.h"

namespace {

// Maps leave their objects to whoever holds them.
using Object = std::unique_ptr<KIVO_OBJ_INFO>;

}  // namespace

TEST(WizardMapObject, fields_of_a_new_map) {
    KIVO_WIZARD_MAP map("w");
    EXPECT_EQ(map.name, "w");
    EXPECT_EQ(map.wizard_name, "");
    EXPECT_EQ(map.module_name, "");
    EXPECT_EQ(map.get_module_name(), "");
    EXPECT_FALSE(map.map_constants);
    EXPECT_FALSE(map.map_used_ports);
    EXPECT_EQ(map.condition, nullptr);
    EXPECT_EQ(map.get_next_kivo_obj(), nullptr);
    EXPECT_EQ(map.get_kivo_obj(""), nullptr);
}

TEST(WizardMapObject, module_name_is_returned) {
    KIVO_WIZARD_MAP map("w");
    map.module_name = "m";
    EXPECT_EQ(map.get_module_name(), "m");
}

TEST(WizardMapObject, new_name_and_type_make_an_object) {
    KIVO_WIZARD_MAP map("w");
    const Object object(map.add_kivo_object("P", KIVO_OBJ_INTEGER_PARAMETER));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->get_name(), "P");
    EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(map.get_kivo_obj("P"), object.get());
    EXPECT_EQ(map.get_kivo_obj("p"), nullptr);
}

TEST(WizardMapObject, new_name_of_unknown_type_makes_nothing) {
    KIVO_WIZARD_MAP map("w");
    EXPECT_EQ(map.add_kivo_object("P", KIVO_OBJ_UNKNOWN), nullptr);
    EXPECT_EQ(map.get_kivo_obj("P"), nullptr);
    EXPECT_EQ(map.get_next_kivo_obj(), nullptr);
}

TEST(WizardMapObject, known_name_gives_its_object_whatever_the_type) {
    KIVO_WIZARD_MAP map("w");
    const Object object(map.add_kivo_object("P", KIVO_OBJ_INTEGER_PARAMETER));
    for (const KIVO_OBJ_TYPE type : {KIVO_OBJ_INTEGER_PARAMETER, KIVO_OBJ_STRING_PARAMETER,
                                     KIVO_OBJ_INPUT_PORT, KIVO_OBJ_UNKNOWN}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(map.add_kivo_object("P", type), object.get());
        EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    }
}

TEST(WizardMapObject, copy_shares_the_rules_of_its_source) {
    KIVO_RULE_ELEMENT rule;
    KIVO_OBJ_INFO source("p", KIVO_OBJ_OUTPUT_PORT);
    source.port_width = "8";
    source.add_rule(&rule);
    KIVO_WIZARD_MAP map("w");
    const Object copy(map.add_kivo_object(&source));
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), &source);
    EXPECT_EQ(map.get_kivo_obj("p"), copy.get());
    EXPECT_EQ(copy->get_port_width(), "8");
    EXPECT_FALSE(copy->async);
    EXPECT_EQ(copy->get_next_rule_element(), &rule);
    EXPECT_EQ(copy->get_next_rule_element(), nullptr);
}

TEST(WizardMapObject, copy_takes_the_place_of_the_object_of_its_name) {
    KIVO_OBJ_INFO source("p", KIVO_OBJ_OUTPUT_PORT);
    KIVO_WIZARD_MAP map("w");
    const Object first(map.add_kivo_object("p", KIVO_OBJ_INPUT_PORT));
    const Object copy(map.add_kivo_object(&source));
    EXPECT_NE(copy, first);
    EXPECT_EQ(map.get_kivo_obj("p"), copy.get());
    EXPECT_EQ(map.get_next_kivo_obj(), copy.get());
    EXPECT_EQ(map.get_next_kivo_obj(), nullptr);
}

TEST(WizardMapObject, walk_gives_the_objects_in_order_of_insertion) {
    KIVO_WIZARD_MAP map("w");
    const Object second(map.add_kivo_object("b", KIVO_OBJ_INPUT_PORT));
    const Object first(map.add_kivo_object("a", KIVO_OBJ_INPUT_PORT));
    for (int walk = 0; walk < 2; ++walk) {
        map.obj_map.reset();
        EXPECT_EQ(map.get_next_kivo_obj(), second.get());
        EXPECT_EQ(map.get_next_kivo_obj(), first.get());
        EXPECT_EQ(map.get_next_kivo_obj(), nullptr);
    }
}

TEST(WizardMapObject, leaves_objects_and_condition_alone) {
    KIVO_RULE_ELEMENT condition("", "", "c", KIVO_RULE_FORCED_VALUE);
    Object object;
    {
        KIVO_WIZARD_MAP map("w");
        map.condition = &condition;
        object.reset(map.add_kivo_object("p", KIVO_OBJ_INPUT_PORT));
    }
    EXPECT_EQ(condition.text3, "c");
    EXPECT_EQ(object->get_name(), "p");
}
