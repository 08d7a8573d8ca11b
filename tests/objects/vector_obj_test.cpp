#include "kivo/objects/vector_obj.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>

#include "kivo/objects/conditional_text.h"
#include "tests/support/memory_shortage.h"

namespace {

// Counts the objects of its class that are gone.
template <typename Base>
class Counted : public Base {
public:
    explicit Counted(int& deleted) : deleted_(deleted) {}
    ~Counted() override { ++deleted_; }

private:
    int& deleted_;
};

// A vector that deletes its display objects, as a vector itself does not.
class OwningVector : public KIVO_VECTOR_OBJ {
public:
    OwningVector() : KIVO_VECTOR_OBJ("w") {}
    ~OwningVector() override {
        display_format_map.reset();
        std::string port;
        while (const KIVO_OBJ* format = display_format_map.get_next_entry(port)) {
            delete format;
        }
    }
};

const KIVO_VECTOR_DISPLAY_OBJ* format_of(const KIVO_VECTOR_OBJ& vector, const std::string& port) {
    return dynamic_cast<const KIVO_VECTOR_DISPLAY_OBJ*>(vector.display_format_map.look_up(port));
}

TEST(VectorObj, begins_with_its_name_and_the_defaults) {
    KIVO_VECTOR_OBJ vector("w");
    EXPECT_EQ(vector.name, "w");
    EXPECT_EQ(vector.max_time, -1);
    EXPECT_EQ(vector.time_step, 1);
    EXPECT_EQ(vector.index, -1);
    EXPECT_FALSE(vector.truncate_low);
    EXPECT_EQ(vector.caption, "");
    EXPECT_EQ(vector.wave_condition, nullptr);
    EXPECT_EQ(vector.description, nullptr);
    EXPECT_EQ(vector.stimulus_list.get_next_value(), nullptr);
    std::string port;
    EXPECT_EQ(vector.display_format_map.get_next_entry(port), nullptr);
}

TEST(VectorObj, cannot_be_copied) {
    EXPECT_FALSE(std::is_copy_constructible_v<KIVO_VECTOR_OBJ>);
    EXPECT_FALSE(std::is_copy_assignable_v<KIVO_VECTOR_OBJ>);
}

TEST(VectorObj, deletes_condition_and_description) {
    int deleted = 0;
    {
        KIVO_VECTOR_OBJ vector("w");
        vector.wave_condition = new Counted<KIVO_RULE_ELEMENT>(deleted);
        vector.description = new Counted<KIVO_CONDITIONAL_TEXT>(deleted);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(VectorObj, deletes_neither_stimulus_nor_display_formats) {
    int deleted = 0;
    const auto entry = std::make_unique<Counted<KIVO_RULE_ELEMENT>>(deleted);
    const auto format = std::make_unique<Counted<KIVO_VECTOR_DISPLAY_OBJ>>(deleted);
    {
        KIVO_VECTOR_OBJ vector("w");
        vector.add_vector_stimulus(entry.get());
        vector.display_format_map.set_at("p", format.get());
    }
    EXPECT_EQ(deleted, 0);
}

TEST(VectorObj, stimulus_entries_come_in_the_order_added) {
    KIVO_RULE_ELEMENT first("force a 0 0", "", "", 2);
    KIVO_RULE_ELEMENT second("force b 0 0", "", "", 2);
    KIVO_VECTOR_OBJ vector("w");
    vector.add_vector_stimulus(&first);
    vector.add_vector_stimulus(&second);
    EXPECT_EQ(vector.get_next_vector_stimulus(), &first);
    EXPECT_EQ(vector.get_next_vector_stimulus(), &second);
    EXPECT_EQ(vector.get_next_vector_stimulus(), nullptr);
    EXPECT_EQ(vector.get_next_vector_stimulus(), nullptr);
    vector.stimulus_list.reset();
    EXPECT_EQ(vector.get_next_vector_stimulus(), &first);
}

TEST(VectorObj, a_stimulus_entry_of_another_class_is_null) {
    KIVO_OBJ other;
    KIVO_RULE_ELEMENT entry;
    KIVO_VECTOR_OBJ vector("w");
    vector.stimulus_list.add_at_tail(&other);
    vector.add_vector_stimulus(&entry);
    EXPECT_EQ(vector.get_next_vector_stimulus(), nullptr);
    EXPECT_EQ(vector.get_next_vector_stimulus(), &entry);
}

TEST(VectorDisplayFormat, is_stored_under_its_port) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    const KIVO_VECTOR_DISPLAY_OBJ* format = format_of(vector, "q");
    ASSERT_NE(format, nullptr);
    EXPECT_EQ(format->port_name, "q");
    EXPECT_EQ(format->radix, DRO_RADIX_FIXED_POINT);
    EXPECT_EQ(format->description, "8.4");
    EXPECT_EQ(format_of(vector, "Q"), nullptr);
}

TEST(VectorDisplayFormat, queries_answer_what_is_stored) {
    OwningVector vector;
    vector.add_vector_display_format("b", DRO_RADIX_BINARY, "");
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    EXPECT_EQ(vector.get_vector_display_format("b"), DRO_RADIX_BINARY);
    EXPECT_EQ(vector.get_vector_display_format_description("b"), "");
    EXPECT_EQ(vector.get_vector_display_format("q"), DRO_RADIX_FIXED_POINT);
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "8.4");
}

TEST(VectorDisplayFormat, a_port_without_one_is_hexadecimal) {
    const KIVO_VECTOR_OBJ vector("w");
    EXPECT_EQ(vector.get_vector_display_format("none"), DRO_RADIX_HEX);
    EXPECT_EQ(vector.get_vector_display_format_description("none"), "");
}

TEST(VectorDisplayFormat, an_object_of_another_class_is_none) {
    KIVO_RULE_ELEMENT other;
    KIVO_VECTOR_OBJ vector("w");
    vector.display_format_map.set_at("p", &other);
    EXPECT_EQ(vector.get_vector_display_format("p"), DRO_RADIX_HEX);
    EXPECT_EQ(vector.get_vector_display_format_description("p"), "");
    vector.set_vector_display_format_description("p", "8.4");
    EXPECT_EQ(vector.get_vector_display_format_description("p"), "");
}

TEST(VectorDisplayFormat, a_later_one_of_the_port_is_in_force) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    vector.add_vector_display_format("q", DRO_RADIX_BINARY, "");
    EXPECT_EQ(vector.get_vector_display_format("q"), DRO_RADIX_BINARY);
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "");
    std::string port;
    EXPECT_NE(vector.display_format_map.get_next_entry(port), nullptr);
    EXPECT_EQ(vector.display_format_map.get_next_entry(port), nullptr);
}

TEST(VectorDisplayFormat, a_replaced_one_that_an_earlier_call_made_is_deleted) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    vector.add_vector_display_format("p", DRO_RADIX_BINARY, "");
    const std::ptrdiff_t before = living_pieces();
    vector.add_vector_display_format("q", DRO_RADIX_BINARY, "");
    EXPECT_EQ(living_pieces(), before);
}

TEST(VectorDisplayFormat, a_replaced_one_that_a_host_put_there_is_the_hosts_again) {
    int deleted = 0;
    {
        auto hosts = std::make_unique<Counted<KIVO_VECTOR_DISPLAY_OBJ>>(deleted);
        OwningVector vector;
        vector.add_vector_display_format("q", DRO_RADIX_BINARY, "");
        // A copy of what the library made is the host's too.
        KIVO_VECTOR_DISPLAY_OBJ copy = *format_of(vector, "q");
        vector.display_format_map.set_at("p", hosts.get());
        vector.display_format_map.set_at("r", &copy);
        vector.add_vector_display_format("p", DRO_RADIX_BINARY, "");
        vector.add_vector_display_format("r", DRO_RADIX_SIGNED, "");
        EXPECT_EQ(deleted, 0);
        EXPECT_NE(format_of(vector, "p"), hosts.get());
        hosts.reset();
        EXPECT_EQ(deleted, 1);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(VectorDisplayFormat, a_replaced_one_stays_that_a_host_gave_to_another_port_too) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    vector.display_format_map.set_at("p", vector.display_format_map.look_up("q"));
    vector.add_vector_display_format("q", DRO_RADIX_BINARY, "");
    EXPECT_EQ(vector.get_vector_display_format_description("p"), "8.4");
    EXPECT_EQ(vector.get_vector_display_format("q"), DRO_RADIX_BINARY);
}

TEST(VectorDisplayFormat, may_be_replaced_by_its_own_strings) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    const KIVO_VECTOR_DISPLAY_OBJ* format = format_of(vector, "q");
    vector.add_vector_display_format(format->port_name, DRO_RADIX_FIXED_POINT, format->description);
    EXPECT_EQ(format_of(vector, "q")->port_name, "q");
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "8.4");
}

TEST(VectorDisplayFormat, the_description_can_be_set) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    vector.set_vector_display_format_description("q", "4.8");
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "4.8");
    EXPECT_EQ(vector.get_vector_display_format("q"), DRO_RADIX_FIXED_POINT);
    vector.set_vector_display_format_description("q", "");
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "");
}

TEST(VectorDisplayFormat, setting_a_description_adds_no_format) {
    KIVO_VECTOR_OBJ vector("w");
    vector.set_vector_display_format_description("q", "4.8");
    EXPECT_EQ(format_of(vector, "q"), nullptr);
    EXPECT_EQ(vector.get_vector_display_format_description("q"), "");
}

TEST(FormatDisplayString, converts_to_hexadecimal_without_a_format) {
    const KIVO_VECTOR_OBJ vector("w");
    EXPECT_EQ(vector.format_display_string("p", "1010", DRO_RADIX_BINARY), "A");
    EXPECT_EQ(vector.format_display_string("p", "10", DRO_RADIX_UNSIGNED), "A");
}

TEST(FormatDisplayString, leaves_a_value_of_the_ports_radix_untouched) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "8.4");
    vector.add_vector_display_format("b", DRO_RADIX_BINARY, "");
    EXPECT_EQ(vector.format_display_string("p", "0x_what", DRO_RADIX_HEX), "0x_what");
    EXPECT_EQ(vector.format_display_string("p", "0f", DRO_RADIX_HEX), "0f");
    EXPECT_EQ(vector.format_display_string("b", "0b01", DRO_RADIX_BINARY), "0b01");
    EXPECT_EQ(vector.format_display_string("q", "01.50", DRO_RADIX_FIXED_POINT), "01.50");
}

TEST(FormatDisplayString, converts_to_the_ports_radix) {
    OwningVector vector;
    vector.add_vector_display_format("b", DRO_RADIX_BINARY, "");
    vector.add_vector_display_format("s", DRO_RADIX_SIGNED, "");
    vector.add_vector_display_format("u", DRO_RADIX_UNSIGNED, "");
    vector.add_vector_display_format("o", DRO_RADIX_OCTAL, "");
    EXPECT_EQ(vector.format_display_string("b", "F", DRO_RADIX_HEX), "1111");
    EXPECT_EQ(vector.format_display_string("s", "F", DRO_RADIX_HEX), "-1");
    EXPECT_EQ(vector.format_display_string("u", "F", DRO_RADIX_HEX), "15");
    EXPECT_EQ(vector.format_display_string("o", "101010", DRO_RADIX_BINARY), "52");
}

TEST(FormatDisplayString, converts_to_fixed_point) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "4.4");
    vector.add_vector_display_format("s", DRO_RADIX_FIXED_POINT, "s4.4");
    EXPECT_EQ(vector.format_display_string("q", "18", DRO_RADIX_HEX), "1.5");
    EXPECT_EQ(vector.format_display_string("s", "11111100", DRO_RADIX_BINARY), "-0.25");
}

TEST(FormatDisplayString, fixed_point_without_description_leaves_the_value) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "4.4");
    vector.set_vector_display_format_description("q", "");
    EXPECT_EQ(vector.format_display_string("q", "18", DRO_RADIX_HEX), "18");
}

TEST(FormatDisplayString, radix_none_leaves_the_value) {
    OwningVector vector;
    vector.add_vector_display_format("p", DRO_RADIX_NONE, "");
    EXPECT_EQ(vector.format_display_string("p", "1010", DRO_RADIX_BINARY), "1010");
}

TEST(FormatDisplayString, leaves_a_value_that_does_not_convert) {
    OwningVector vector;
    vector.add_vector_display_format("q", DRO_RADIX_FIXED_POINT, "4.4");
    vector.add_vector_display_format("n", DRO_RADIX_FIXED_POINT, "nonsense");
    EXPECT_EQ(vector.format_display_string("p", "", DRO_RADIX_BINARY), "");
    EXPECT_EQ(vector.format_display_string("p", "12", DRO_RADIX_BINARY), "12");
    EXPECT_EQ(vector.format_display_string("q", "G", DRO_RADIX_HEX), "G");
    EXPECT_EQ(vector.format_display_string("n", "18", DRO_RADIX_HEX), "18");
}

}  // namespace
