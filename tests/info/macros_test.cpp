#include <gtest/gtest.h>

#include <string>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// Value array, default value and arguments of a macro.
std::string fields_of(const KIVO_OBJ_INFO* object) {
    if (object == nullptr) {
        return "no object";
    }
    return object->get_value_array() + "|" + object->get_default_value() + "|" +
           object->get_arguments();
}

}  // namespace

TEST(Macros, empty_section_yields_nothing) {
    Loaded store("<MACROS/><MACROS>text</MACROS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
}

TEST(Macros, attributes_and_definition) {
    struct Row {
        const char* macro;
        const char* fields;
    };
    const Row rows[] = {
        {"<MACRO NAME='M' DEFINITION='a+b' ARGUMENTS='a,b'/>", "a+b|a+b|a,b"},
        {"<MACRO ARGUMENTS=' a ' DEFINITION=' d ' NAME='M'/>", " d | d | a "},
        {"<MACRO NAME='M' DEFINITION='d'/>", "d|d|"},
        {"<MACRO NAME='M'><DEFINITION>x</DEFINITION></MACRO>", "x|x|"},
        {"<MACRO NAME='M' ARGUMENTS='a'><DEFINITION>x</DEFINITION></MACRO>", "x|x|a"},
        {"<MACRO NAME='M' DEFINITION='d'><DEFINITION>x</DEFINITION></MACRO>", "x|x|"},
        // The element takes the attribute's place also where it says nothing.
        {"<MACRO NAME='M' DEFINITION='d' ARGUMENTS='a'><DEFINITION/></MACRO>", "||"},
        {"<MACRO NAME='M' ARGUMENTS='a'/>", "||"},
        {"<MACRO NAME='M' DEFINITION='' ARGUMENTS='a'/>", "||"},
        {"<MACRO NAME='M'/>", "||"},
        // Neither the text nor what stands after the first element is read.
        {"<MACRO NAME='M'>text</MACRO>", "||"},
        {"<MACRO NAME='M'><DEFINITION>x</DEFINITION><DEFINITION>y</DEFINITION><BODY/></MACRO>",
         "x|x|"},
        {"<MACRO NAME='M' TYPE='INTEGER' VALUE='1' definition='d'/>", "||"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.macro);
        Loaded store("<MACROS>" + std::string(row.macro) + "</MACROS>");
        EXPECT_TRUE(store.clean);
        const KIVO_OBJ_INFO* object = store.info.get_kivo_obj("M");
        EXPECT_EQ(fields_of(object), row.fields);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get_obj_type(), KIVO_OBJ_MACRO);
        EXPECT_EQ(object->get_obj_type_as_string(), "");
        EXPECT_EQ(object->get_default_index(), -1);
    }
}

TEST(Macros, first_sub_element_must_be_the_definition) {
    for (const char* tag : {"BODY", "definition", "ARGUMENTS"}) {
        SCOPED_TRACE(tag);
        Loaded store("<MACROS><MACRO NAME='M'><" + std::string(tag) + ">b</" + tag +
                     "><DEFINITION>x</DEFINITION></MACRO></MACROS>");
        EXPECT_EQ(store.messages(), Messages{"Sub tag" + std::string(tag) +
                                             " is not a recognized sub-tag for macros "});
        EXPECT_EQ(fields_of(store.info.get_kivo_obj("M")), "||");
    }
}

TEST(Macros, attribute_stands_when_the_first_sub_element_is_refused) {
    Loaded store("<MACROS><MACRO NAME='M' DEFINITION='d'><BODY/></MACRO></MACROS>");
    EXPECT_EQ(store.messages(), Messages{"Sub tagBODY is not a recognized sub-tag for macros "});
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("M")), "d|d|");
}

TEST(Macros, without_a_name_nothing_is_made_but_the_sub_element_is_examined) {
    Loaded store("<MACROS><MACRO DEFINITION='d'/><MACRO><BODY/></MACRO></MACROS>");
    EXPECT_EQ(store.messages(), Messages{"Sub tagBODY is not a recognized sub-tag for macros "});
    EXPECT_EQ(store.info.get_next_kivo_obj(), nullptr);
}

TEST(Macros, empty_name_is_a_name) {
    Loaded store("<MACROS><MACRO NAME='' DEFINITION='d'/></MACROS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("")), "d|d|");
}

TEST(Macros, same_name_again_overwrites_what_it_gives) {
    Loaded store(
        "<MACROS><MACRO NAME='M' DEFINITION='d' ARGUMENTS='a'/>"
        "<MACRO NAME='M' DEFINITION='e'/></MACROS>");
    EXPECT_TRUE(store.clean);
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("M")), "e|e|a");
    EXPECT_TRUE(
        store.load("<MACROS><MACRO NAME='M' DEFINITION='f' ARGUMENTS='b'/>"
                   "<MACRO NAME='M' ARGUMENTS='c'/></MACROS>"));
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("M")), "f|f|b");
}

TEST(Macros, name_of_another_object_stores_nothing) {
    Loaded store(
        "<PARAMETERS><PARAMETER NAME='M' TYPE='STRING' VALUE='v'/></PARAMETERS>"
        "<MACROS><MACRO NAME='M' DEFINITION='d' ARGUMENTS='a'><BODY/></MACRO></MACROS>");
    EXPECT_EQ(store.messages(),
              (Messages{"Kivofunction Object M of different type String parameter already exists ",
                        "Sub tagBODY is not a recognized sub-tag for macros "}));
    EXPECT_EQ(fields_of(store.info.get_kivo_obj("M")), "v|v|");
}

TEST(Macros, other_sub_elements_are_reported) {
    for (const char* tag : {"DEFINITION", "macro", "RULE"}) {
        SCOPED_TRACE(tag);
        Loaded store("<MACROS><" + std::string(tag) + " NAME='M'/><MACRO NAME='K'/></MACROS>");
        EXPECT_EQ(store.messages(), Messages{"Sub element tag " + std::string(tag) +
                                             " is not a valid sub tag of the main tag MACROS"});
        EXPECT_EQ(store.info.get_kivo_obj("M"), nullptr);
        EXPECT_NE(store.info.get_kivo_obj("K"), nullptr);
    }
}
