#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

std::string hidden(const std::string& attributes, const std::string& sub_elements = "") {
    return "<HIDDEN_PARAMETERS><PARAMETER " + attributes + ">" + sub_elements +
           "</PARAMETER></HIDDEN_PARAMETERS>";
}

}  // namespace

TEST(HiddenParameters, section_without_parameters_yields_nothing) {
    for (const char* section : {"<HIDDEN_PARAMETERS/>",
                                "<HIDDEN_PARAMETERS><PORT NAME='p' TYPE='INPUT'/>"
                                "<Parameter NAME='q'/></HIDDEN_PARAMETERS>"}) {
        SCOPED_TRACE(section);
        Loaded store(section);
        EXPECT_TRUE(store.clean);
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(HiddenParameters, value_is_value_array_and_default) {
    Loaded store(hidden("NAME='H' VALUE='a b'"));
    EXPECT_TRUE(store.clean);
    const KIVO_OBJ_INFO* object = store.info.get_kivo_obj("H");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_HIDDEN_PARAMETER);
    EXPECT_EQ(object->get_obj_type_as_string(), "Hidden parameter");
    EXPECT_EQ(object->get_value_array(), "a b");
    EXPECT_EQ(object->get_default_value(), "a b");
    EXPECT_EQ(object->get_default_index(), -1);
    EXPECT_EQ(object->get_cnx_type(), 3);
}

TEST(HiddenParameters, value_is_optional) {
    Loaded store(hidden("NAME='H'"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_kivo_obj("H")->get_value_array(), "");
}

TEST(HiddenParameters, name_is_required) {
    for (const char* attributes : {"VALUE='1'", "NAME=''", "NAME='' NO_SUCH='1'", ""}) {
        SCOPED_TRACE(attributes);
        Loaded store(hidden(attributes, "<FORCE_VALUE V='1'/>"));
        EXPECT_EQ(store.messages(), Messages{"Name atrribute is missing from PARAMETER tag "});
        EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
    }
}

TEST(HiddenParameters, unknown_attributes_are_reported_without_the_name) {
    for (const char* name : {"TYPE", "DEFAULT_VALUE", "LPM_HINT", "CNX_TYPE", "value"}) {
        SCOPED_TRACE(name);
        Loaded store(hidden("NAME='H' " + std::string(name) + "='INTEGER'"));
        EXPECT_EQ(store.messages(),
                  Messages{"Attribute " + std::string(name) +
                           " is not a recognized attribute for hidden parameters "});
        const KIVO_OBJ_INFO* object = store.info.get_kivo_obj("H");
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_HIDDEN_PARAMETER);
        EXPECT_EQ(object->get_default_value(), "");
        EXPECT_EQ(object->get_cnx_type(), 3);
    }
}

TEST(HiddenParameters, messages_come_by_attribute_name) {
    Loaded store(hidden("NAME='H' ZETA='1' beta='2' VALUE='3' ALPHA='4'"));
    EXPECT_EQ(store.messages(),
              (Messages{"Attribute ALPHA is not a recognized attribute for hidden parameters ",
                        "Attribute beta is not a recognized attribute for hidden parameters ",
                        "Attribute ZETA is not a recognized attribute for hidden parameters "}));
    EXPECT_EQ(store.info.get_kivo_obj("H")->get_value_array(), "3");
}

TEST(HiddenParameters, name_of_another_object_changes_nothing) {
    Loaded store("<PARAMETERS><PARAMETER NAME='H' TYPE='INTEGER' VALUE='1'/></PARAMETERS>" +
                 hidden("NAME='H' VALUE='2' NO_SUCH='1'", "<FORCE_VALUE V='1'/>"));
    EXPECT_EQ(
        store.messages(),
        Messages{"Kivofunction Object H of different type Integer parameter already exists "});
    EXPECT_EQ(store.info.get_kivo_obj("H")->get_value_array(), "1");
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("H")), std::vector<Rule>());
}

TEST(HiddenParameters, same_name_again_overwrites_the_value) {
    Loaded store(hidden("NAME='H' VALUE='1'") + hidden("NAME='H' VALUE='2'"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_kivo_obj("H")->get_value_array(), "2");
    EXPECT_EQ(store.info.get_kivo_obj("H")->get_default_value(), "2");
}

TEST(HiddenParameters, forced_values_are_the_only_sub_elements_and_others_are_not_reported) {
    Loaded store(hidden("NAME='H'",
                        "<STATE V='1'/><VALUE_RULE>H</VALUE_RULE><FORCE_RANGE MAX='2'/>"
                        "<CONSTANT_RANGE MAX='2'/><BAD/><FORCE_VALUE V='3' BAD='1'><BAD/>"
                        "</FORCE_VALUE>"));
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(rules_of(store.info.get_kivo_obj("H")), (std::vector<Rule>{{"3", "", "", 2}}));
}
