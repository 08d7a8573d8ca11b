#include <gtest/gtest.h>

#include <string>

#include "kivo/kivo.h"
#include "tests/support/description.h"
#include "tests/support/rules.h"

namespace {

// What one command does to a new vector: the formats as "PORT RADIX DESCRIPTION;" and the messages.
struct Outcome {
    std::string formats;
    Messages messages;
};

Outcome outcome_of(const std::string& command) {
    LoadedStore store;
    KIVO_VECTOR_OBJ* vector = store.info.add_vector_object("v");
    store.info.process_display_format_string(vector, command);
    Outcome outcome;
    std::string key;
    while (KIVO_OBJ* object = vector->display_format_map.get_next_entry(key)) {
        const auto& format = dynamic_cast<KIVO_VECTOR_DISPLAY_OBJ&>(*object);
        EXPECT_EQ(format.port_name, key);
        outcome.formats +=
            key + " " + std::to_string(format.radix) + " " + format.description + ";";
    }
    outcome.messages = store.messages();
    return outcome;
}

Messages invalid(const std::string& command) {
    return {"Invalid display format specification string " + command};
}

}  // namespace

TEST(DisplayCommand, accepted) {
    struct Row {
        const char* command;
        const char* formats;
    };
    const Row rows[] = {
        {"add wave -bin data", "data 0 ;"},
        {"add wave -signed data", "data 1 ;"},
        {"add wave -unsigned data", "data 2 ;"},
        {"add wave -hex data", "data 3 ;"},
        {"add wave -hex data ", "data 3 ;"},
        {"add wave -hex data more of it", "data 3 ;"},
        {"add wave -hex \tdata\n", "\tdata\n 3 ;"},
        {"add wave -hex d[3]", "d[3] 3 ;"},
        {"add wave -fixed_point(8.4) q ", "q 5 8.4;"},
        {"add wave -fixed_point(s8.4) q", "q 5 s8.4;"},
        // Nothing asks for the end of the description, nor what stands after it.
        {"add wave -fixed_point(8.4 q", "q 5 8.4;"},
        {"add wave -fixed_point(8.4)x q", "q 5 8.4;"},
        {"add wave -fixed_point((8.4)) q", "q 5 (8.4;"},
        {"add wave -fixed_point(anything) q", "q 5 anything;"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.command);
        const Outcome outcome = outcome_of(row.command);
        EXPECT_EQ(outcome.formats, row.formats);
        EXPECT_EQ(outcome.messages, Messages());
    }
}

TEST(DisplayCommand, malformed_is_invalid) {
    for (const char* command : {"",
                                " ",
                                "add",
                                "add wave",
                                "add wave ",
                                "add wave -hex",
                                "add wave -hex ",
                                "ADD wave -hex data",
                                "add WAVE -hex data",
                                "Add wave -hex data",
                                " add wave -hex data",
                                "add  wave -hex data",
                                "add wave  -hex data",
                                "add wave -hex  data",
                                "add\twave -hex data",
                                "wave add -hex data",
                                "remove wave -hex data",
                                "add waves -hex data",
                                "add wave -oct",
                                "ADD wave -oct data",
                                "add wave -fixed_point() "}) {
        SCOPED_TRACE(command);
        const Outcome outcome = outcome_of(command);
        EXPECT_EQ(outcome.formats, "");
        EXPECT_EQ(outcome.messages, invalid(command));
    }
}

TEST(DisplayCommand, unknown_radix_shows_what_is_left_of_the_option) {
    struct Row {
        const char* option;
        const char* rest;
    };
    const Row rows[] = {
        {"-oct", ""},
        {"-HEX", ""},
        {"hex", ""},
        {"-none", ""},
        {"-fixed_point", ""},
        {"-fixed_point(", ""},
        {"-fixed_point()", ""},
        {"-fixed_point()x", "x"},
        {"-fixed_point()x)y", "x)y"},
        {"-Fixed_point(8.4)", "8.4)"},
        {"-other(8.4)x", "8.4)x"},
        {"-hex(8)", "8)"},
        {"(8.4)", "8.4)"},
        {"-fixed_point)", ""},
    };
    for (const Row& row : rows) {
        const std::string command = "add wave " + std::string(row.option) + " data ";
        SCOPED_TRACE(command);
        const Outcome outcome = outcome_of(command);
        EXPECT_EQ(outcome.formats, "");
        EXPECT_EQ(outcome.messages,
                  (Messages{"Unknown radix " + std::string(row.rest) +
                                "used to specify display format for port data",
                            "Invalid display format specification string " + command}));
    }
}

TEST(DisplayCommand, later_format_of_a_port_is_in_force) {
    LoadedStore store;
    KIVO_VECTOR_OBJ* vector = store.info.add_vector_object("v");
    store.info.process_display_format_string(vector, "add wave -fixed_point(8.4) q");
    store.info.process_display_format_string(vector, "add wave -fixed_point(4.8) q");
    EXPECT_EQ(vector->get_vector_display_format("q"), DRO_RADIX_FIXED_POINT);
    EXPECT_EQ(vector->get_vector_display_format_description("q"), "4.8");
    store.info.process_display_format_string(vector, "add wave -bin q");
    EXPECT_EQ(vector->get_vector_display_format("q"), DRO_RADIX_BINARY);
    EXPECT_EQ(vector->get_vector_display_format_description("q"), "");
    EXPECT_EQ(store.messages(), Messages());
}

TEST(DisplayCommand, refused_command_leaves_the_format_in_force) {
    LoadedStore store;
    KIVO_VECTOR_OBJ* vector = store.info.add_vector_object("v");
    store.info.process_display_format_string(vector, "add wave -bin q");
    store.info.process_display_format_string(vector, "add wave -oct q");
    EXPECT_EQ(vector->get_vector_display_format("q"), DRO_RADIX_BINARY);
    EXPECT_EQ(store.messages(),
              (Messages{"Unknown radix used to specify display format for port q",
                        "Invalid display format specification string add wave -oct q"}));
}

TEST(DisplayCommand, formats_of_different_vectors_are_separate) {
    LoadedStore store;
    store.info.process_display_format_string(store.info.add_vector_object("v"), "add wave -bin q");
    EXPECT_EQ(store.info.add_vector_object("w")->get_vector_display_format("q"), DRO_RADIX_HEX);
}
