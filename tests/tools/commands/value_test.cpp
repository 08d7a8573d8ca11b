#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/program.h"

namespace {

void expect_value(const std::vector<std::string>& request, const std::string& value) {
    std::vector<std::string> arguments = {"value"};
    arguments.insert(arguments.end(), request.begin(), request.end());
    const RunResult run = run_kivo(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, value + '\n') << testing::PrintToString(request);
    EXPECT_EQ(run.err, "");
}

TEST(Value, a_decimal_value_is_as_written) {
    expect_value({example("counter_info.xml"), "signed_offset", "offset", "80"}, "-12");
    expect_value({example("fifo_info.xml"), "overflow", "data", "400"}, "255");
}

TEST(Value, other_radixes_come_in_binary) {
    expect_value({example("fifo_info.xml"), "fill_and_drain", "data", "60"}, "0b10110010");
    expect_value({example("ram_info.xml"), "byte_writes", "byte_enable", "20"}, "0b01");
    expect_value({example("ram_info.xml"), "write_then_read", "data", "20"}, "0b1110110000000000");
}

TEST(Value, a_repeated_command_goes_on) {
    expect_value({example("fifo_info.xml"), "fill_and_drain", "clock", "190"}, "1");
    expect_value({example("fifo_info.xml"), "fill_and_drain", "clock", "200"}, "0");
}

TEST(Value, a_time_without_transition_says_so) {
    expect_value({example("fifo_info.xml"), "fill_and_drain", "data", "61"}, "no transition");
    expect_value({example("fifo_info.xml"), "fill_and_drain", "data", "-20"}, "no transition");
}

TEST(Value, the_last_command_of_a_signal_wins) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("<WAVE_DATA><WAVE NAME='w'><STIM>force a 1 5</STIM>"
                                    "<STIM>force b 2 5</STIM><STIM>force a 3 5</STIM>"
                                    "</WAVE></WAVE_DATA>"));
    expect_value({path, "w", "a", "5"}, "3");
    expect_value({path, "w", "b", "5"}, "2");
}

TEST(Value, an_unknown_vector_is_answered_with_the_known_ones) {
    const RunResult run = run_kivo({"value", example("fifo_info.xml"), "fill", "data", "0"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "kivo: error: no vector 'fill'; the vectors are: 'fill_and_drain', "
              "'streaming', 'overflow'\n");
}

TEST(Value, an_unknown_signal_is_answered_with_the_known_ones) {
    const RunResult run = run_kivo({"value", example("fifo_info.xml"), "streaming", "q", "0"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "kivo: error: vector 'streaming' drives no signal 'q'; its signals are: 'clock', "
              "'data', 'read', 'reset', 'write'\n");
}

TEST(Value, a_file_without_vectors_has_none) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a_info.xml", with_sections(""));
    EXPECT_EQ(run_kivo({"value", path, "w", "a", "0"}).err,
              "kivo: error: no vector 'w'; the vectors are: none\n");
}

TEST(Value, messages_of_the_file_are_reported_beside_the_value) {
    const std::string path = example("faulty_info.xml");
    const RunResult run = run_kivo({"value", path, "one_shot", "clock", "10"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "1\n");
    EXPECT_EQ(messages_in(run.err, path).size(), 23U);
}

TEST(Value, a_missing_file_is_a_failure) {
    const RunResult run = run_kivo({"value", "none_info.xml", "w", "a", "0"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err, "kivo: error: cannot read 'none_info.xml': No such file or directory\n");
}

TEST(Value, control_characters_of_a_value_are_escaped) {
    const TemporaryFolder folder;
    const std::string path = folder.write(
        "a_info.xml", with_sections("<WAVE_DATA><WAVE NAME='w'><STIM>force a x&#27;y 5</STIM>"
                                    "</WAVE></WAVE_DATA>"));
    expect_value({path, "w", "a", "5"}, "x\\x1By");
}

}  // namespace
