#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/description.h"

namespace {

using Messages = std::vector<std::string>;

std::string section(const std::string& sub_elements) {
    return "<FUNCTION_INFORMATION>" + sub_elements + "</FUNCTION_INFORMATION>";
}

std::string libraries(const std::string& setting) {
    KIVO_INFO info;
    info.vhdl_library = setting;
    return info.get_simulation_library();
}

}  // namespace

TEST(FunctionInformation, empty_section_changes_nothing_and_posts_nothing) {
    Loaded loaded("<FUNCTION_INFORMATION/><FUNCTION_INFORMATION> </FUNCTION_INFORMATION>");
    EXPECT_TRUE(loaded.clean);
    EXPECT_EQ(loaded.info.vhdl_library, "");
    EXPECT_EQ(loaded.info.start_time, 0);
    EXPECT_EQ(loaded.info.time_scale, "");
    EXPECT_EQ(loaded.info.time_delta, "");
}

TEST(FunctionInformation, four_settings_are_read) {
    Loaded loaded(
        section("<VHDL_LIBRARY NAME='ieee.std'/><START_TIME VALUE='12'/>"
                "<TIME_SCALE VALUE=' ns '/><TIME_DELTA VALUE='100'/>"));
    EXPECT_EQ(loaded.messages(), Messages());
    EXPECT_EQ(loaded.info.vhdl_library, "ieee.std");
    EXPECT_EQ(loaded.info.start_time, 12);
    EXPECT_EQ(loaded.info.time_scale, " ns ");
    EXPECT_EQ(loaded.info.time_delta, "100");
}

TEST(FunctionInformation, attributes_of_the_section_are_not_looked_at) {
    EXPECT_TRUE(Loaded("<FUNCTION_INFORMATION NAME='x' VALUE='y'/>").clean);
}

TEST(FunctionInformation, start_time_is_read_up_to_the_first_other_character) {
    const struct {
        const char* text;
        std::int32_t number;
    } rows[] = {{"20ns", 20}, {"-5", -5}, {" +7", 7},        {"soon", 0},
                {"0", 0},     {"1.5", 1}, {"4294967297", 1}, {"2147483647", 2147483647}};
    for (const auto& row : rows) {
        Loaded loaded(
            section("<START_TIME VALUE='99'/><START_TIME VALUE='" + std::string(row.text) + "'/>"));
        EXPECT_TRUE(loaded.clean) << row.text;
        EXPECT_EQ(loaded.info.start_time, row.number) << row.text;
    }
}

TEST(FunctionInformation, empty_or_missing_value_leaves_the_earlier_setting) {
    Loaded loaded(
        section("<START_TIME VALUE='20ns'/><START_TIME VALUE=''/><START_TIME/>"
                "<VHDL_LIBRARY NAME='a'/><VHDL_LIBRARY NAME=''/>"
                "<TIME_SCALE VALUE='b'/><TIME_SCALE/>"
                "<TIME_DELTA VALUE='c'/><TIME_DELTA VALUE=''/>"));
    EXPECT_TRUE(loaded.clean);
    EXPECT_EQ(loaded.info.start_time, 20);
    EXPECT_EQ(loaded.info.vhdl_library, "a");
    EXPECT_EQ(loaded.info.time_scale, "b");
    EXPECT_EQ(loaded.info.time_delta, "c");
}

TEST(FunctionInformation, later_settings_overwrite_earlier_ones) {
    const TemporaryFolder folder;
    const std::string included =
        folder.write("a.xml", "<ROOT>" + section("<TIME_DELTA VALUE='included'/>") + "</ROOT>");
    Loaded loaded("<INCLUDE FILE='" + included + "'/>" +
                  section("<TIME_SCALE VALUE='1'/><TIME_SCALE VALUE='2'/><TIME_DELTA VALUE='x'/>"
                          "<VHDL_LIBRARY NAME='one'/>") +
                  section("<VHDL_LIBRARY NAME='two'/>"));
    EXPECT_TRUE(loaded.clean);
    EXPECT_EQ(loaded.info.time_scale, "2");
    EXPECT_EQ(loaded.info.vhdl_library, "two");
    EXPECT_EQ(loaded.info.time_delta, "included");
}

TEST(FunctionInformation, unknown_sub_element_is_reported_and_skipped) {
    Loaded loaded(
        section("<TIME VALUE='1'><A/></TIME><time_scale VALUE='2'/><TIME_DELTA VALUE='3'/>"));
    EXPECT_EQ(loaded.messages(),
              (Messages{"Sub element tag TIME is not a valid sub tag of the main tag "
                        "FUNCTION_INFORMATION",
                        "Sub element tag time_scale is not a valid sub tag of the main tag "
                        "FUNCTION_INFORMATION"}));
    EXPECT_EQ(loaded.info.time_scale, "");
    EXPECT_EQ(loaded.info.time_delta, "3");
}

TEST(FunctionInformation, each_setting_knows_one_attribute) {
    const struct {
        const char* tag;
        const char* unknown;
    } rows[] = {{"VHDL_LIBRARY", "VALUE"},
                {"START_TIME", "NAME"},
                {"TIME_SCALE", "NAME"},
                {"TIME_DELTA", "NAME"}};
    for (const auto& row : rows) {
        const std::string tag = row.tag;
        Loaded loaded(section("<" + tag + " " + row.unknown + "='1' ZOO='2'/>"));
        EXPECT_EQ(loaded.messages(),
                  (Messages{"Sub tag" + std::string(row.unknown) +
                                " is not a recognized sub-tag for " + tag + " ",
                            "Sub tagZOO is not a recognized sub-tag for " + tag + " "}));
    }
}

TEST(FunctionInformation, lower_case_attribute_is_unknown_and_stores_nothing) {
    Loaded loaded(section("<START_TIME value='5'/>"));
    EXPECT_EQ(loaded.messages(),
              (Messages{"Sub tagvalue is not a recognized sub-tag for START_TIME "}));
    EXPECT_EQ(loaded.info.start_time, 0);
}

TEST(FunctionInformation, only_the_first_child_of_a_setting_is_reported) {
    Loaded loaded(section("<TIME_SCALE VALUE='1'><ONE/><TWO/><THREE/></TIME_SCALE>"));
    EXPECT_EQ(loaded.messages(),
              (Messages{"Sub tagONE is not a recognized sub-tag for TIME_SCALE "}));
    EXPECT_EQ(loaded.info.time_scale, "1");
}

TEST(FunctionInformation, attributes_are_reported_before_the_child) {
    Loaded loaded(section("<VHDL_LIBRARY B='' A=''><C/></VHDL_LIBRARY>"));
    EXPECT_EQ(loaded.messages(),
              (Messages{"Sub tagA is not a recognized sub-tag for VHDL_LIBRARY ",
                        "Sub tagB is not a recognized sub-tag for VHDL_LIBRARY ",
                        "Sub tagC is not a recognized sub-tag for VHDL_LIBRARY "}));
}

TEST(SimulationLibrary, names_without_their_units_each_with_a_semicolon) {
    EXPECT_EQ(libraries(""), "");
    EXPECT_EQ(libraries("lib"), "lib;");
    EXPECT_EQ(libraries("lib;"), "lib;");
    EXPECT_EQ(libraries("ieee.std_logic_1164; work.pkg"), "ieee;work;");
    EXPECT_EQ(libraries("a.b.c;d"), "a;d;");
}

TEST(SimulationLibrary, empty_entries_give_nothing) {
    EXPECT_EQ(libraries("a;;b.c;"), "a;b;");
    EXPECT_EQ(libraries(";"), "");
    EXPECT_EQ(libraries(";;;"), "");
    EXPECT_EQ(libraries(";a"), "a;");
}

TEST(SimulationLibrary, only_leading_white_space_is_removed) {
    EXPECT_EQ(libraries(" x .y"), "x ;");
    EXPECT_EQ(libraries("\t a ; b "), "a ;b ;");
}

TEST(SimulationLibrary, entry_without_a_name_gives_a_lone_semicolon) {
    EXPECT_EQ(libraries(".a"), ";");
    EXPECT_EQ(libraries("a;.b;c"), "a;;c;");
    EXPECT_EQ(libraries(" "), ";");
    EXPECT_EQ(libraries(" ;a"), ";a;");
}

TEST(SimulationLibrary, is_made_from_what_was_read) {
    Loaded loaded(section("<VHDL_LIBRARY NAME='ieee.std_logic_1164; work.pkg'/>"));
    EXPECT_EQ(loaded.info.get_simulation_library(), "ieee;work;");
    EXPECT_EQ(loaded.info.vhdl_library, "ieee.std_logic_1164; work.pkg");
}
