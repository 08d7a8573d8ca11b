#include <gtest/gtest.h>

#include "kivo/kivo.h"

namespace {

const std::string kExamples = KIVO_EXAMPLES;

TEST(HostOfSharedLibrary, loads_a_description_and_walks_it) {
    KIVO_INFO info;
    EXPECT_TRUE(info.set_function_name("FIFO", kExamples));
    info.reset_error_message_list();
    EXPECT_EQ(info.get_next_error_message(), "");
    EXPECT_EQ(info.function_name, "FIFO");
    int ports = 0;
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        ports += kivo_is_port(object->get_obj_type()) ? 1 : 0;
    }
    EXPECT_GT(ports, 0);
    EXPECT_EQ(info.get_sorted_obj_map().count("no such object"), 0u);
    info.delete_detached_objects();
}

TEST(HostOfSharedLibrary, looks_beside_the_library_when_no_directory_is_named) {
    KIVO_INFO info;
    EXPECT_FALSE(info.set_function_name("Nowhere", ""));
    ASSERT_EQ(info.error_list.size(), 1u);
    const std::string& message = info.error_list.front();
    EXPECT_NE(message.find("/nowhere_info.xml not found"), std::string::npos) << message;
    EXPECT_EQ(message.find("XML source file /"), 0u) << message;
}

TEST(HostOfSharedLibrary, recovers_classes_by_downcast) {
    KIVO_INFO info;
    KIVO_OBJ* object = info.add_kivo_object("P", KIVO_OBJ_INPUT_PORT);
    EXPECT_NE(dynamic_cast<KIVO_OBJ_INFO*>(object), nullptr);
    EXPECT_EQ(dynamic_cast<KIVO_RULE_ELEMENT*>(object), nullptr);
}

TEST(HostOfSharedLibrary, evaluates_stimulus_and_translates) {
    std::string signal;
    std::string value;
    EXPECT_TRUE(kivo_get_transition_at_time("force -hex data A 0,F 10", 10, signal, value));
    EXPECT_EQ(signal, "data");
    EXPECT_EQ(value, "0b1111");
    EXPECT_EQ(kivo_translate_text_to_hdl("a lt b", KIVO_HDL_VERILOG), "a < b");
    EXPECT_EQ(init_nhdl_translator_map().size(), 9u);
    EXPECT_EQ(kivo_get_usage_state_as_string(translate_usage_state("CONSTANT")), "CONSTANT");
}

}  // namespace
