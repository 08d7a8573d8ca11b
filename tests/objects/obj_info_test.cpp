#include "kivo/objects/obj_info.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

const KIVO_OBJ_TYPE kAllTypes[] = {
    KIVO_OBJ_HIDDEN_PARAMETER, KIVO_OBJ_INPUT_PORT,  KIVO_OBJ_OUTPUT_PORT,
    KIVO_OBJ_BIDIR_PORT,       KIVO_OBJ_BURIED_PORT, KIVO_OBJ_INTEGER_PARAMETER,
    KIVO_OBJ_STRING_PARAMETER, KIVO_OBJ_MACRO,       KIVO_OBJ_UNKNOWN,
};

std::vector<KIVO_RULE_ELEMENT*> rules_of(KIVO_OBJ_INFO& object) {
    std::vector<KIVO_RULE_ELEMENT*> rules;
    object.reset_rule_list();
    while (KIVO_RULE_ELEMENT* rule = object.get_next_rule_element()) {
        rules.push_back(rule);
    }
    return rules;
}

class CountedRule : public KIVO_RULE_ELEMENT {
public:
    explicit CountedRule(int* deaths) : deaths_(deaths) {}
    ~CountedRule() override { ++*deaths_; }

private:
    int* deaths_;
};

}  // namespace

TEST(ObjInfo, types_have_fixed_numbers) {
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(kAllTypes[i], i);
    }
}

TEST(ObjInfo, new_object_has_the_initial_values) {
    KIVO_OBJ_INFO object("width", KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(object.get_name(), "width");
    EXPECT_EQ(object.get_obj_type(), KIVO_OBJ_INTEGER_PARAMETER);
    EXPECT_EQ(object.get_default_value(), "");
    EXPECT_EQ(object.get_value_array(), "");
    EXPECT_EQ(object.get_default_index(), -1);
    EXPECT_FALSE(object.lpm_hint);
    EXPECT_TRUE(object.async);
    EXPECT_FALSE(object.clock);
    EXPECT_EQ(object.get_initial_vec_state(), "0");
    EXPECT_EQ(object.get_clock_period(), "");
    EXPECT_EQ(object.get_port_width(), "");
    EXPECT_EQ(object.get_port_width2d(), "");
    EXPECT_EQ(object.get_high_probability(), 50);
    EXPECT_EQ(object.get_usage_state(), 1);
    EXPECT_EQ(object.get_dependency_position(), -1);
    EXPECT_EQ(object.get_current_value(), "");
    EXPECT_EQ(object.get_arguments(), "");
    EXPECT_EQ(object.get_cnx_type(), 3);
    EXPECT_EQ(object.get_next_rule_element(), nullptr);
}

TEST(ObjInfo, accessors_return_the_fields) {
    KIVO_OBJ_INFO object("a", KIVO_OBJ_INPUT_PORT);
    object.name = "b";
    object.obj_type = KIVO_OBJ_BIDIR_PORT;
    object.default_value = "default";
    object.value_array = "values";
    object.default_index = 4;
    object.initial_vec_state = "1";
    object.clock_period = "10 ns";
    object.port_width = "w";
    object.port_width2d = "w2";
    object.high_probability = 7;
    object.usage_state = KIVO_USAGE_VARIABLE;
    object.dependency_position = 3;
    object.current_value = "now";
    object.arguments = "x, y";
    object.cnx_type = 2;
    EXPECT_EQ(object.get_name(), "b");
    EXPECT_EQ(object.get_obj_type(), KIVO_OBJ_BIDIR_PORT);
    EXPECT_EQ(object.get_default_value(), "default");
    EXPECT_EQ(object.get_value_array(), "values");
    EXPECT_EQ(object.get_default_index(), 4);
    EXPECT_EQ(object.get_initial_vec_state(), "1");
    EXPECT_EQ(object.get_clock_period(), "10 ns");
    EXPECT_EQ(object.get_port_width(), "w");
    EXPECT_EQ(object.get_port_width2d(), "w2");
    EXPECT_EQ(object.get_high_probability(), 7);
    EXPECT_EQ(object.get_usage_state(), KIVO_USAGE_VARIABLE);
    EXPECT_EQ(object.get_dependency_position(), 3);
    EXPECT_EQ(object.get_current_value(), "now");
    EXPECT_EQ(object.get_arguments(), "x, y");
    EXPECT_EQ(object.get_cnx_type(), 2);
}

TEST(ObjInfo, each_type_has_its_text_and_some_have_none) {
    const char* const texts[] = {"Hidden parameter", "Input port", "Output port",
                                 "Bidir port",       "",           "Integer parameter",
                                 "String parameter", "",           ""};
    for (const KIVO_OBJ_TYPE type : kAllTypes) {
        EXPECT_EQ(KIVO_OBJ_INFO("a", type).get_obj_type_as_string(), texts[type]) << type;
    }
    for (const int type : {-1, 9, 1000}) {
        EXPECT_EQ(KIVO_OBJ_INFO("a", static_cast<KIVO_OBJ_TYPE>(type)).get_obj_type_as_string(), "")
            << type;
    }
}

TEST(ObjInfo, types_are_ports_parameters_or_neither) {
    for (const KIVO_OBJ_TYPE type : kAllTypes) {
        EXPECT_EQ(kivo_is_port(type), type >= 1 && type <= 4) << type;
        EXPECT_EQ(kivo_is_parameter(type), type == 5 || type == 6) << type;
    }
}

TEST(ObjInfo, only_input_ports_report_async_and_clock_and_only_parameters_lpm_hint) {
    for (const KIVO_OBJ_TYPE type : kAllTypes) {
        KIVO_OBJ_INFO object("a", type);
        EXPECT_EQ(object.is_async(), type == KIVO_OBJ_INPUT_PORT) << type;
        EXPECT_FALSE(object.is_clock()) << type;
        EXPECT_FALSE(object.is_lpm_hint()) << type;
        object.clock = true;
        object.lpm_hint = true;
        EXPECT_EQ(object.is_clock(), type == KIVO_OBJ_INPUT_PORT) << type;
        EXPECT_EQ(object.is_lpm_hint(),
                  type == KIVO_OBJ_INTEGER_PARAMETER || type == KIVO_OBJ_STRING_PARAMETER)
            << type;
        object.async = false;
        EXPECT_FALSE(object.is_async()) << type;
    }
}

TEST(ObjInfo, copy_takes_the_flags_as_the_accessors_report_them) {
    KIVO_OBJ_INFO input("a", KIVO_OBJ_INPUT_PORT);
    input.clock = true;
    input.lpm_hint = true;
    KIVO_OBJ_INFO input_copy(&input);
    EXPECT_TRUE(input_copy.async);
    EXPECT_TRUE(input_copy.clock);
    EXPECT_FALSE(input_copy.lpm_hint);

    KIVO_OBJ_INFO output("b", KIVO_OBJ_OUTPUT_PORT);
    output.clock = true;
    KIVO_OBJ_INFO output_copy(&output);
    EXPECT_TRUE(output.async);
    EXPECT_FALSE(output_copy.async);
    EXPECT_FALSE(output_copy.clock);
    output_copy.obj_type = KIVO_OBJ_INPUT_PORT;
    EXPECT_FALSE(output_copy.is_async());

    KIVO_OBJ_INFO parameter("c", KIVO_OBJ_STRING_PARAMETER);
    parameter.lpm_hint = true;
    EXPECT_TRUE(KIVO_OBJ_INFO(&parameter).is_lpm_hint());
}

TEST(ObjInfo, copy_has_every_other_field_of_its_source) {
    KIVO_OBJ_INFO source("b", KIVO_OBJ_BIDIR_PORT);
    source.default_value = "default";
    source.value_array = "values";
    source.default_index = 4;
    source.initial_vec_state = "1";
    source.clock_period = "10 ns";
    source.port_width = "w";
    source.port_width2d = "w2";
    source.high_probability = 7;
    source.usage_state = KIVO_USAGE_VARIABLE;
    source.dependency_position = 3;
    source.current_value = "now";
    source.arguments = "x, y";
    source.cnx_type = 2;
    source.mark = {3, 14};
    const KIVO_OBJ_INFO copy(&source);
    EXPECT_EQ(copy.name, "b");
    EXPECT_EQ(copy.obj_type, KIVO_OBJ_BIDIR_PORT);
    EXPECT_EQ(copy.default_value, "default");
    EXPECT_EQ(copy.value_array, "values");
    EXPECT_EQ(copy.default_index, 4);
    EXPECT_EQ(copy.initial_vec_state, "1");
    EXPECT_EQ(copy.clock_period, "10 ns");
    EXPECT_EQ(copy.port_width, "w");
    EXPECT_EQ(copy.port_width2d, "w2");
    EXPECT_EQ(copy.high_probability, 7);
    EXPECT_EQ(copy.usage_state, KIVO_USAGE_VARIABLE);
    EXPECT_EQ(copy.dependency_position, 3);
    EXPECT_EQ(copy.current_value, "now");
    EXPECT_EQ(copy.arguments, "x, y");
    EXPECT_EQ(copy.cnx_type, 2);
    EXPECT_EQ(copy.mark.file, 3u);
    EXPECT_EQ(copy.mark.offset, 14u);
}

TEST(ObjInfo, copy_shares_the_rule_elements_and_leaves_the_cursor_of_its_source_at_the_end) {
    KIVO_RULE_ELEMENT first;
    KIVO_RULE_ELEMENT second;
    KIVO_OBJ_INFO source("a", KIVO_OBJ_INPUT_PORT);
    source.add_rule(&first);
    source.add_rule(&second);
    source.get_next_rule_element();
    KIVO_OBJ_INFO copy(&source);
    EXPECT_EQ(source.get_next_rule_element(), nullptr);
    EXPECT_EQ(copy.get_next_rule_element(), &first);
    EXPECT_EQ(rules_of(copy), (std::vector<KIVO_RULE_ELEMENT*>{&first, &second}));
}

TEST(ObjInfo, rule_added_to_a_copy_is_not_one_of_its_source) {
    KIVO_RULE_ELEMENT rule;
    KIVO_OBJ_INFO source("a", KIVO_OBJ_INPUT_PORT);
    KIVO_OBJ_INFO copy(&source);
    copy.add_rule(&rule);
    EXPECT_TRUE(rules_of(source).empty());
}

TEST(ObjInfo, value_without_an_index_is_the_default_too) {
    KIVO_OBJ_INFO object("a", KIVO_OBJ_STRING_PARAMETER);
    object.add_value("ON", -1);
    EXPECT_EQ(object.value_array, "ON");
    EXPECT_EQ(object.default_value, "ON");
    EXPECT_EQ(object.default_index, -1);
}

TEST(ObjInfo, value_with_an_index_leaves_no_default_text) {
    KIVO_OBJ_INFO object("a", KIVO_OBJ_STRING_PARAMETER);
    object.default_value = "before";
    object.add_value("A, B, C", 2);
    EXPECT_EQ(object.value_array, "A, B, C");
    EXPECT_EQ(object.default_value, "");
    EXPECT_EQ(object.default_index, 2);
    object.add_value("X", -1);
    EXPECT_EQ(object.value_array, "X");
    EXPECT_EQ(object.default_value, "X");
    EXPECT_EQ(object.default_index, 2);
    object.add_value("Y", 0);
    EXPECT_EQ(object.default_index, 0);
    object.add_value("Z", -2);
    EXPECT_EQ(object.default_value, "");
    EXPECT_EQ(object.default_index, -2);
}

TEST(ObjInfo, rules_come_in_the_order_in_which_they_were_added) {
    KIVO_RULE_ELEMENT first;
    KIVO_RULE_ELEMENT second;
    KIVO_OBJ_INFO object("a", KIVO_OBJ_INPUT_PORT);
    object.add_rule(&first);
    object.add_rule(&second);
    EXPECT_EQ(object.get_next_rule_element(), &first);
    EXPECT_EQ(object.get_next_rule_element(), &second);
    EXPECT_EQ(object.get_next_rule_element(), nullptr);
}

TEST(ObjInfo, two_walks_over_the_rules_need_a_reset_in_between) {
    KIVO_RULE_ELEMENT rule;
    KIVO_OBJ_INFO object("a", KIVO_OBJ_INPUT_PORT);
    object.add_rule(&rule);
    EXPECT_EQ(object.get_next_rule_element(), &rule);
    EXPECT_EQ(object.get_next_rule_element(), nullptr);
    EXPECT_EQ(object.get_next_rule_element(), nullptr);
    object.reset_rule_list();
    EXPECT_EQ(object.get_next_rule_element(), &rule);
}

TEST(ObjInfo, record_that_is_no_rule_element_comes_as_null) {
    KIVO_OBJ other;
    KIVO_RULE_ELEMENT rule;
    KIVO_OBJ_INFO object("a", KIVO_OBJ_INPUT_PORT);
    object.rule_list.add_at_tail(&other);
    object.add_rule(&rule);
    EXPECT_EQ(object.get_next_rule_element(), nullptr);
    EXPECT_EQ(object.get_next_rule_element(), &rule);
}

TEST(ObjInfo, destruction_leaves_the_rule_elements_alone) {
    int deaths = 0;
    CountedRule rule(&deaths);
    {
        KIVO_OBJ_INFO source("a", KIVO_OBJ_INPUT_PORT);
        source.add_rule(&rule);
        const KIVO_OBJ_INFO copy(&source);
    }
    EXPECT_EQ(deaths, 0);
}

TEST(ObjInfo, strings_are_returned_by_value) {
    static_assert(
        std::is_same_v<decltype(&KIVO_OBJ_INFO::get_name), std::string (KIVO_OBJ_INFO::*)() const>);
    KIVO_OBJ_INFO object("a", KIVO_OBJ_INPUT_PORT);
    const std::string name = object.get_name();
    object.name = "b";
    EXPECT_EQ(name, "a");
}

TEST(RuleElement, new_one_is_empty_with_kind_0) {
    const KIVO_RULE_ELEMENT rule;
    EXPECT_EQ(rule.text1, "");
    EXPECT_EQ(rule.text2, "");
    EXPECT_EQ(rule.text3, "");
    EXPECT_EQ(rule.rule_kind, 0);
}

TEST(RuleElement, kinds_have_fixed_numbers) {
    const KIVO_RULE_KIND kinds[] = {
        KIVO_RULE_WHEN_CMD,        KIVO_RULE_FORCED_RANGE, KIVO_RULE_FORCED_VALUE,
        KIVO_RULE_CONSTANT_RANGE,  KIVO_RULE_REQUIRED,     KIVO_RULE_NOT_REQUIRED,
        KIVO_RULE_PORT_VALUE,      KIVO_RULE_PORT_RANGE,   KIVO_RULE_CRITICAL_WARNING,
        KIVO_RULE_WARNING,         KIVO_RULE_ERROR,        KIVO_RULE_INFO,
        KIVO_RULE_NO_MESSAGE_TYPE,
    };
    for (int i = 0; i < 13; ++i) {
        EXPECT_EQ(kinds[i], i);
    }
}
