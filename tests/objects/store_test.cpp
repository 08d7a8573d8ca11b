#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "kivo/toolkit/records/internal/record_pool.h"
#include "tests/support/counted.h"
#include "tests/support/description.h"

namespace {

using Messages = std::vector<std::string>;

std::vector<std::string> object_names(KIVO_INFO& info) {
    std::vector<std::string> names;
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        names.push_back(object->name);
    }
    return names;
}

}  // namespace

TEST(Store, new_store_is_empty) {
    KIVO_INFO info;
    EXPECT_EQ(info.function_name, "");
    EXPECT_TRUE(info.error_list.empty());
    EXPECT_EQ(info.html_text, nullptr);
    EXPECT_EQ(info.vhdl_library, "");
    EXPECT_EQ(info.time_scale, "");
    EXPECT_EQ(info.time_delta, "");
    EXPECT_EQ(info.start_time, 0);
    EXPECT_EQ(info.get_next_error_message(), "");
    EXPECT_EQ(info.get_next_kivo_obj(), nullptr);
    EXPECT_EQ(info.get_next_fn_rule_element(), nullptr);
    EXPECT_EQ(info.get_next_msg(), nullptr);
    EXPECT_EQ(info.get_next_vector_obj(), nullptr);
    EXPECT_EQ(info.get_next_wizard_map(), nullptr);
    EXPECT_TRUE(info.get_sorted_obj_map().empty());
    EXPECT_EQ(info.get_simulation_library(), "");
}

TEST(Store, new_object_is_stored_under_its_name) {
    KIVO_INFO info;
    KIVO_OBJ_INFO* object = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->name, "a");
    EXPECT_EQ(object->obj_type, KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(info.get_kivo_obj("a"), object);
    EXPECT_EQ(info.get_kivo_obj("A"), nullptr);
    EXPECT_EQ(info.get_kivo_obj("b"), nullptr);
    EXPECT_TRUE(info.error_list.empty());
}

TEST(Store, object_of_the_same_type_is_found_and_not_changed) {
    KIVO_INFO info;
    KIVO_OBJ_INFO* object = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    object->default_value = "1";
    EXPECT_EQ(info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT), object);
    EXPECT_EQ(object->default_value, "1");
    EXPECT_EQ(object_names(info).size(), 1u);
    EXPECT_TRUE(info.error_list.empty());
}

TEST(Store, object_of_another_type_is_refused) {
    KIVO_INFO info;
    KIVO_OBJ_INFO* object = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(info.add_kivo_object("a", KIVO_OBJ_OUTPUT_PORT), nullptr);
    EXPECT_EQ(messages_of(info),
              (Messages{"Kivofunction Object a of different type Input port already exists "}));
    EXPECT_EQ(info.add_kivo_object("a", KIVO_OBJ_UNKNOWN), object);
    EXPECT_EQ(object->obj_type, KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(info.error_list.size(), 1u);
}

TEST(Store, message_about_another_type_has_no_text_for_macros_and_buried_ports) {
    KIVO_INFO info;
    info.add_kivo_object("m", KIVO_OBJ_MACRO);
    info.add_kivo_object("b", KIVO_OBJ_BURIED_PORT);
    EXPECT_EQ(info.add_kivo_object("m", KIVO_OBJ_INTEGER_PARAMETER), nullptr);
    EXPECT_EQ(info.add_kivo_object("b", KIVO_OBJ_INTEGER_PARAMETER), nullptr);
    EXPECT_EQ(messages_of(info),
              (Messages{"Kivofunction Object m of different type  already exists ",
                        "Kivofunction Object b of different type  already exists "}));
}

TEST(Store, new_name_of_unknown_type_is_refused) {
    KIVO_INFO info;
    EXPECT_EQ(info.add_kivo_object("n", KIVO_OBJ_UNKNOWN), nullptr);
    EXPECT_EQ(messages_of(info), (Messages{"Kivofunction Object n is of unknown type "}));
    EXPECT_EQ(info.get_kivo_obj("n"), nullptr);
    EXPECT_TRUE(object_names(info).empty());
}

TEST(Store, objects_are_walked_in_order_of_first_insertion) {
    KIVO_INFO info;
    for (const char* name : {"z", "A", "m"}) {
        info.add_kivo_object(name, KIVO_OBJ_INPUT_PORT);
    }
    EXPECT_EQ(object_names(info), (Messages{"z", "A", "m"}));
    EXPECT_EQ(info.get_next_kivo_obj(), nullptr);
    info.reset_kivo_obj_map();
    EXPECT_NE(info.get_next_kivo_obj(), nullptr);
}

TEST(Store, object_cursor_is_a_position) {
    KIVO_INFO info;
    KIVO_OBJ_INFO* first = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(info.get_next_kivo_obj(), first);
    EXPECT_EQ(info.get_next_kivo_obj(), nullptr);
    KIVO_OBJ_INFO* later = info.add_kivo_object("b", KIVO_OBJ_INPUT_PORT);
    EXPECT_EQ(info.get_next_kivo_obj(), later);
}

TEST(Store, sorted_map_orders_names_without_their_case) {
    KIVO_INFO info;
    for (const char* name : {"b", "A", "a2"}) {
        info.add_kivo_object(name, KIVO_OBJ_INPUT_PORT);
    }
    Messages names;
    for (const auto& [name, object] : info.get_sorted_obj_map()) {
        names.push_back(name);
        EXPECT_EQ(object, info.get_kivo_obj(name)) << name;
    }
    EXPECT_EQ(names, (Messages{"A", "a2", "b"}));
}

TEST(Store, sorted_map_keeps_the_later_of_two_names_that_differ_in_case) {
    KIVO_INFO info;
    info.add_kivo_object("x", KIVO_OBJ_INPUT_PORT);
    KIVO_OBJ_INFO* later = info.add_kivo_object("X", KIVO_OBJ_OUTPUT_PORT);
    const auto sorted = info.get_sorted_obj_map();
    ASSERT_EQ(sorted.size(), 1u);
    EXPECT_EQ(sorted.begin()->second, later);
}

TEST(Store, sorted_map_starts_at_the_first_object_and_leaves_the_cursor_at_the_end) {
    KIVO_INFO info;
    info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    info.add_kivo_object("b", KIVO_OBJ_INPUT_PORT);
    info.get_next_kivo_obj();
    EXPECT_EQ(info.get_sorted_obj_map().size(), 2u);
    EXPECT_EQ(info.get_next_kivo_obj(), nullptr);
}

TEST(Store, function_rules_come_in_document_order_and_then_null_until_the_reset) {
    Loaded loaded("<RULES><RULE>1</RULE></RULES><RULES><RULE>2</RULE><RULE>3</RULE></RULES>");
    loaded.load("<RULES><RULE>4</RULE></RULES>");
    KIVO_INFO& info = loaded.info;
    for (int walk = 0; walk < 2; ++walk) {
        info.reset_fn_rule_list();
        for (const char* text : {"1", "2", "3", "4"}) {
            KIVO_RULE_ELEMENT* rule = info.get_next_fn_rule_element();
            ASSERT_NE(rule, nullptr) << text;
            EXPECT_EQ(rule->text3, text);
        }
        EXPECT_EQ(info.get_next_fn_rule_element(), nullptr);
        EXPECT_EQ(info.get_next_fn_rule_element(), nullptr);
    }
}

TEST(Store, function_rules_of_included_files_come_in_load_order) {
    const TemporaryFolder folder;
    const std::string included =
        folder.write("included.xml", "<ROOT><RULES><RULE>2</RULE></RULES></ROOT>");
    Loaded loaded("<INCLUDE FILE='" + included + "'/><RULES><RULE>1</RULE></RULES>");
    EXPECT_EQ(loaded.info.get_next_fn_rule_element()->text3, "1");
    EXPECT_EQ(loaded.info.get_next_fn_rule_element()->text3, "2");
    EXPECT_EQ(loaded.info.get_next_fn_rule_element(), nullptr);
}

TEST(Store, messages_are_walked_like_rules) {
    Loaded loaded(
        "<MESSAGES><MESSAGE TYPE='INFO'>1</MESSAGE></MESSAGES>"
        "<MSGS><MSG TYPE='ERROR'>2</MSG></MSGS>");
    KIVO_INFO& info = loaded.info;
    for (int walk = 0; walk < 2; ++walk) {
        EXPECT_EQ(info.get_next_msg()->text1, "1");
        EXPECT_EQ(info.get_next_msg()->text1, "2");
        EXPECT_EQ(info.get_next_msg(), nullptr);
        EXPECT_EQ(info.get_next_msg(), nullptr);
        info.reset_message_list();
    }
}

TEST(Store, record_of_another_class_comes_as_null) {
    LoadedStore store;
    KIVO_INFO& info = store.info;
    info.object_map.set_at("o", new KIVO_OBJ);
    info.fn_rule_list.add_at_tail(new KIVO_OBJ);
    info.message_list.add_at_tail(new KIVO_OBJ);
    EXPECT_EQ(info.get_kivo_obj("o"), nullptr);
    EXPECT_EQ(info.get_next_kivo_obj(), nullptr);
    EXPECT_EQ(info.get_next_fn_rule_element(), nullptr);
    EXPECT_EQ(info.get_next_msg(), nullptr);
}

TEST(Store, vector_added_again_is_the_first_one) {
    LoadedStore store;
    KIVO_VECTOR_OBJ* vector = store.info.add_vector_object("v");
    ASSERT_NE(vector, nullptr);
    EXPECT_EQ(vector->name, "v");
    EXPECT_EQ(store.info.add_vector_object("v"), vector);
    EXPECT_EQ(store.info.get_vector_obj("v"), vector);
    EXPECT_TRUE(store.info.error_list.empty());
}

TEST(Store, unknown_vector_is_null_and_adds_nothing) {
    KIVO_INFO info;
    EXPECT_EQ(info.get_vector_obj("v"), nullptr);
    EXPECT_EQ(info.get_next_vector_obj(), nullptr);
}

TEST(Store, vectors_are_walked_in_order_of_first_insertion) {
    LoadedStore store;
    KIVO_INFO& info = store.info;
    KIVO_VECTOR_OBJ* second = info.add_vector_object("z");
    KIVO_VECTOR_OBJ* first = info.add_vector_object("a");
    for (int walk = 0; walk < 2; ++walk) {
        EXPECT_EQ(info.get_next_vector_obj(), second);
        EXPECT_EQ(info.get_next_vector_obj(), first);
        EXPECT_EQ(info.get_next_vector_obj(), nullptr);
        info.reset_vector_map();
    }
}

TEST(Store, wizard_map_added_again_is_the_first_one) {
    LoadedStore store;
    KIVO_WIZARD_MAP* map = store.info.add_wizard_map("w");
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->name, "w");
    EXPECT_EQ(store.info.add_wizard_map("w"), map);
    EXPECT_TRUE(store.info.error_list.empty());
}

TEST(Store, wizard_maps_are_walked_in_order_of_first_insertion) {
    LoadedStore store;
    KIVO_INFO& info = store.info;
    KIVO_WIZARD_MAP* second = info.add_wizard_map("z");
    KIVO_WIZARD_MAP* first = info.add_wizard_map("a");
    for (int walk = 0; walk < 2; ++walk) {
        EXPECT_EQ(info.get_next_wizard_map(), second);
        EXPECT_EQ(info.get_next_wizard_map(), first);
        EXPECT_EQ(info.get_next_wizard_map(), nullptr);
        info.reset_wizard_map_map();
    }
}

TEST(Store, destruction_deletes_objects_rules_messages_and_help_text_only) {
    int objects = 0;
    int rules = 0;
    int messages = 0;
    int texts = 0;
    int others = 0;
    Counted<KIVO_RULE_ELEMENT> on_object(&others);
    Counted<KIVO_VECTOR_OBJ> vector(&others, "v");
    Counted<KIVO_WIZARD_MAP> wizard_map(&others, "w");
    {
        KIVO_INFO info;
        auto* object = new Counted<KIVO_OBJ_INFO>(&objects, "a", KIVO_OBJ_INPUT_PORT);
        object->add_rule(&on_object);
        info.object_map.set_at("a", object);
        info.fn_rule_list.add_at_tail(new Counted<KIVO_RULE_ELEMENT>(&rules));
        info.fn_rule_list.add_at_tail(new Counted<KIVO_RULE_ELEMENT>(&rules));
        info.message_list.add_at_tail(new Counted<KIVO_RULE_ELEMENT>(&messages));
        info.html_text = new Counted<KIVO_TEXT_OBJ>(&texts);
        info.vector_map.set_at("v", &vector);
        info.wizard_map_map.set_at("w", &wizard_map);
        // Wherever the cursors stand.
        info.get_next_kivo_obj();
        info.get_next_fn_rule_element();
        info.get_next_msg();
    }
    EXPECT_EQ(objects, 1);
    EXPECT_EQ(rules, 2);
    EXPECT_EQ(messages, 1);
    EXPECT_EQ(texts, 1);
    EXPECT_EQ(others, 0);
}

TEST(Store, detached_objects_are_deleted_exactly_once_though_copies_share_them) {
    int rules = 0;
    int vectors = 0;
    int maps = 0;
    int objects = 0;
    KIVO_INFO info;
    auto* shared = new Counted<KIVO_RULE_ELEMENT>(&rules);
    KIVO_OBJ_INFO* object = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    object->add_rule(shared);
    object->add_rule(shared);
    auto* map = new Counted<KIVO_WIZARD_MAP>(&maps, "w");
    info.wizard_map_map.set_at("w", map);
    map->add_kivo_object(object);
    auto* own = new Counted<KIVO_OBJ_INFO>(&objects, "b", KIVO_OBJ_INPUT_PORT);
    own->add_rule(shared);
    map->obj_map.set_at("b", own);
    map->condition = new Counted<KIVO_RULE_ELEMENT>(&rules);
    auto* vector = new Counted<KIVO_VECTOR_OBJ>(&vectors, "v");
    info.vector_map.set_at("v", vector);
    vector->add_vector_stimulus(new Counted<KIVO_RULE_ELEMENT>(&rules));
    vector->wave_condition = new Counted<KIVO_RULE_ELEMENT>(&rules);

    info.delete_detached_objects();
    EXPECT_EQ(rules, 4);
    EXPECT_EQ(vectors, 1);
    EXPECT_EQ(maps, 1);
    EXPECT_EQ(objects, 1);
    EXPECT_EQ(info.get_next_vector_obj(), nullptr);
    EXPECT_EQ(info.get_next_wizard_map(), nullptr);
    EXPECT_EQ(info.get_vector_obj("v"), nullptr);
    ASSERT_EQ(info.get_kivo_obj("a"), object);
    object->reset_rule_list();
    EXPECT_EQ(object->get_next_rule_element(), nullptr);

    info.delete_detached_objects();
    EXPECT_EQ(rules, 4);
}

TEST(Store, detached_objects_are_deleted_exactly_once_in_whatever_order_they_lie_in_memory) {
    constexpr int kRules = 5000;
    int deaths = 0;
    KIVO_INFO info;
    std::vector<KIVO_RULE_ELEMENT*> rules;
    {
        const RecordPool pool;
        for (int i = 0; i < kRules; ++i) {
            rules.push_back(new Counted<KIVO_RULE_ELEMENT>(&deaths));
        }
    }
    KIVO_OBJ_INFO* const forwards = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
    KIVO_OBJ_INFO* const mixed = info.add_kivo_object("b", KIVO_OBJ_INPUT_PORT);
    for (std::size_t i = 0; i < rules.size(); ++i) {
        forwards->add_rule(rules[i]);
        mixed->add_rule(rules[i * 7919 % rules.size()]);
    }
    info.message_list.add_at_tail(rules[1234]);

    info.delete_detached_objects();
    EXPECT_EQ(deaths, kRules - 1);
}

TEST(Store, what_the_store_owns_is_not_detached) {
    int deaths = 0;
    {
        KIVO_INFO info;
        auto* rule = new Counted<KIVO_RULE_ELEMENT>(&deaths);
        auto* message = new Counted<KIVO_RULE_ELEMENT>(&deaths);
        info.fn_rule_list.add_at_tail(rule);
        info.message_list.add_at_tail(message);
        KIVO_OBJ_INFO* object = info.add_kivo_object("a", KIVO_OBJ_INPUT_PORT);
        object->add_rule(rule);
        object->add_rule(message);
        info.html_text = new Counted<KIVO_TEXT_OBJ>(&deaths);
        info.delete_detached_objects();
        EXPECT_EQ(deaths, 0);
        EXPECT_NE(info.html_text, nullptr);
        info.reset_fn_rule_list();
        info.reset_message_list();
        EXPECT_EQ(info.get_next_fn_rule_element(), rule);
        EXPECT_EQ(info.get_next_msg(), message);
    }
    EXPECT_EQ(deaths, 3);
}

TEST(Store, can_be_loaded_again_after_its_detached_objects_are_gone) {
    const char* const sections =
        "<PARAMETERS><PARAMETER NAME='p' TYPE='INTEGER'><VALUE_RULE>p > 0</VALUE_RULE></PARAMETER>"
        "</PARAMETERS><WAVE_DATA><WAVE NAME='w'><STIM>force a 0 0</STIM>"
        "<DESCRIPTION><T>text</T></DESCRIPTION><WAVE_CONDITION>p</WAVE_CONDITION>"
        "<DISPLAY>add wave -hex a</DISPLAY></WAVE></WAVE_DATA>"
        "<WIZARD_DATA><PARAMETER NAME='g' TYPE='STRING'><VALUE_RULE>g</VALUE_RULE></PARAMETER>"
        "<WIZARD_MAP NAME='m'><WIZARD_CONDITION>p</WIZARD_CONDITION></WIZARD_MAP></WIZARD_DATA>"
        "<HTML_TEXT><TITLE>t</TITLE><INTRO><T>i</T></INTRO></HTML_TEXT>";
    Loaded loaded(sections);
    KIVO_INFO& info = loaded.info;
    EXPECT_EQ(loaded.messages(), Messages());
    for (int round = 0; round < 3; ++round) {
        EXPECT_NE(info.get_vector_obj("w"), nullptr);
        info.reset_wizard_map_map();
        EXPECT_NE(info.get_next_wizard_map(), nullptr);
        info.delete_detached_objects();
        EXPECT_EQ(info.get_vector_obj("w"), nullptr);
        EXPECT_EQ(info.get_next_wizard_map(), nullptr);
        EXPECT_EQ(info.html_text->title, "t");
        EXPECT_EQ(info.get_next_kivo_obj(), info.get_kivo_obj("p"));
        EXPECT_TRUE(loaded.load(sections));
    }
}
