#include "kivo/vectors/stimulus.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/objects/rule_element.h"
#include "tests/vectors/stimulus_reference.h"

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

struct Answer {
    bool made;
    std::string signal;
    std::string value;

    bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
    return out << (answer.made ? "true" : "false") << ", signal \"" << answer.signal
               << "\", value \"" << answer.value << '"';
}

Answer yes(const std::string& signal, const std::string& value) {
    return {true, signal, value};
}

Answer no(const std::string& signal) {
    return {false, signal, ""};
}

// What one command says about one time. Nothing of what the strings held before may survive.
Answer ask(const std::string& command, std::int32_t time) {
    Answer answer{false, "left", "over"};
    answer.made = kivo_get_transition_at_time(command, time, answer.signal, answer.value);
    return answer;
}

Answer ask_reference(const std::string& command, std::int32_t time) {
    Answer answer{false, "left", "over"};
    answer.made =
        stimulus_reference::get_transition_at_time(command, time, answer.signal, answer.value);
    return answer;
}

// A list of commands that owns them.
class Stimulus {
public:
    Stimulus(std::initializer_list<std::string> commands) {
        for (const std::string& command : commands) {
            add(command);
        }
    }
    explicit Stimulus(const std::vector<std::string>& commands) {
        for (const std::string& command : commands) {
            add(command);
        }
    }

    void add(const std::string& command) {
        entries_.push_back(std::make_unique<KIVO_RULE_ELEMENT>(command, "", "", 2));
        list.add_at_tail(entries_.back().get());
    }

    Answer next_at(std::int32_t time) {
        Answer answer{false, "left", "over"};
        answer.made = kivo_get_vector_transition(&list, time, answer.signal, answer.value);
        return answer;
    }

    bool drives(const std::string& signal) { return kivo_stimulus_exists(&list, signal); }

    // The command under the cursor, which advances; "end" after the last.
    std::string next_command() {
        const auto* entry = dynamic_cast<const KIVO_RULE_ELEMENT*>(list.get_next_value());
        return entry == nullptr ? "end" : entry->text1;
    }

    KIVO_OBJ_LIST list;

private:
    std::vector<std::unique_ptr<KIVO_OBJ>> entries_;
};

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

// Plain items

TEST(StimulusTransition, an_item_makes_a_transition_at_exactly_its_time) {
    const std::string command = "force a 0 0,1 10";
    EXPECT_EQ(ask(command, 0), yes("a", "0"));
    EXPECT_EQ(ask(command, 10), yes("a", "1"));
    EXPECT_EQ(ask(command, 5), no("a"));
    EXPECT_EQ(ask(command, 9), no("a"));
    EXPECT_EQ(ask(command, 11), no("a"));
    EXPECT_EQ(ask(command, -1), no("a"));
}

TEST(StimulusTransition, the_first_of_two_items_at_one_time_counts) {
    EXPECT_EQ(ask("force a 0 5,1 5", 5), yes("a", "0"));
}

TEST(StimulusTransition, an_at_sign_may_stand_before_a_time) {
    EXPECT_EQ(ask("force a 1 @7", 7), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 @7", 0), no("a"));
    EXPECT_EQ(ask("force a 0 0,1 @7,0 9", 7), yes("a", "1"));
}

TEST(StimulusTransition, only_one_at_sign_and_only_at_the_front_is_dropped) {
    EXPECT_EQ(ask("force a 1 @@7", 7), no("a"));
    EXPECT_EQ(ask("force a 1 @@7", 0), yes("a", "1"));
    EXPECT_EQ(ask("force a 1  @7", 7), no("a"));
    EXPECT_EQ(ask("force a 1  @7", 0), yes("a", "1"));
}

TEST(StimulusTransition, a_lone_at_sign_is_time_zero) {
    EXPECT_EQ(ask("force a 1 @", 0), yes("a", "1"));
    EXPECT_EQ(ask("force a @ @", 0), yes("a", "@"));
}

TEST(StimulusTransition, times_read_their_leading_number) {
    EXPECT_EQ(ask("force a 1 12ns", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 12 13", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1   12", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 \t+12", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 @ 12", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 -12", -12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 000000000000000000012", 12), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 never", 0), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 0x10", 0), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 - 5", 0), yes("a", "1"));
}

TEST(StimulusTransition, times_of_every_length_are_read_alike) {
    for (std::int64_t time = 1; time <= kHighest; time *= 10) {
        for (const std::int64_t near : {time - 1, time, time + 1}) {
            const std::string command = "force a 1 " + std::to_string(near);
            EXPECT_EQ(ask(command, static_cast<std::int32_t>(near)), yes("a", "1")) << command;
        }
    }
}

TEST(StimulusTransition, times_keep_their_low_32_bits) {
    EXPECT_EQ(ask("force a 1 2147483647", kHighest), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 -2147483648", kLowest), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 2147483648", kLowest), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 4294967297", 1), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 99999999999999999999", -1), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 -99999999999999999999", 0), yes("a", "1"));
}

TEST(StimulusTransition, blanks_before_items_are_skipped) {
    EXPECT_EQ(ask("force a   0 0, 1 10", 0), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 0, 1 10", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,\t\n\v\f\r 1 10", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0 , 1 10 ", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a \t0 0", 0), yes("a", "0"));
}

TEST(StimulusTransition, only_a_blank_ends_a_value) {
    EXPECT_EQ(ask("force a 1\t2 5", 5), yes("a", "1\t2"));
    EXPECT_EQ(ask("force a 1\t5", 5), no("a"));
}

TEST(StimulusTransition, an_item_without_value_or_time_is_ignored) {
    EXPECT_EQ(ask("force a 1,0 5", 5), yes("a", "0"));
    EXPECT_EQ(ask("force a 1,0 5", 0), no("a"));
    EXPECT_EQ(ask("force a 1 ,0 5", 0), no("a"));
    EXPECT_EQ(ask("force a 1 ,0 5", 5), yes("a", "0"));
    EXPECT_EQ(ask("force a -c,1 5", 5), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r", 20), no("a"));
}

TEST(StimulusTransition, after_an_empty_item_the_rest_is_one_item) {
    EXPECT_EQ(ask("force a ,1 10,0 20", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a ,1 10,0 20", 20), no("a"));
    EXPECT_EQ(ask("force a 0 0,,1 10,0 20", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,,1 10,0 20", 20), no("a"));
    EXPECT_EQ(ask("force a 0 0, , 1 10,0 20", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,,,1 10", 10), yes("a", ",1"));
    EXPECT_EQ(ask("force a ,,1 10", 10), yes("a", ",1"));
    EXPECT_EQ(ask("force a ,1,2 10", 10), yes("a", "1,2"));
    EXPECT_EQ(ask("force a ,-c 5,1 10", 10), no(""));
    EXPECT_EQ(ask("force a ,", 0), no("a"));
    EXPECT_EQ(ask("force a 1 0,", 0), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 0,", 1), no("a"));
    EXPECT_EQ(ask("force a ,   ", 0), no("a"));
}

TEST(StimulusTransition, unknown_keywords_are_plain_values) {
    EXPECT_EQ(ask("force a -x 5", 5), yes("a", "-x"));
    EXPECT_EQ(ask("force a - 5", 5), yes("a", "-"));
    EXPECT_EQ(ask("force a -R 5", 5), yes("a", "-R"));
    EXPECT_EQ(ask("force a -rep 5", 5), yes("a", "-rep"));
    EXPECT_EQ(ask("force a -repeats 5", 5), yes("a", "-repeats"));
    EXPECT_EQ(ask("force a -cance 5", 5), yes("a", "-cance"));
    EXPECT_EQ(ask("force a r 5", 5), yes("a", "r"));
}

TEST(StimulusTransition, nul_bytes_are_ordinary_characters) {
    using namespace std::string_literals;
    EXPECT_EQ(ask("force a\0b \0 5"s, 5), yes("a\0b"s, "\0"s));
    EXPECT_EQ(ask("force a 1 5\0"s, 5), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 \0005"s, 0), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 \0"s, 0), yes("a", "1"));
    EXPECT_EQ(ask("force\0 a 1 5"s, 5), no(""));
    EXPECT_EQ(ask("force a -r\0 5"s, 5), yes("a", "-r\0"s));
}

TEST(StimulusTransition, bytes_above_127_are_ordinary_characters) {
    EXPECT_EQ(ask("force \xE4 \xFF 5", 5), yes("\xE4", "\xFF"));
    EXPECT_EQ(ask("force a \xA0 5,\xA0 1 6", 6), no("a"));
}

// The head of a command

TEST(StimulusTransition, only_force_is_a_command) {
    for (const char* command :
         {"", " ", "set a 1 0", "Force a 1 0", "FORCE a 1 0", "forc a 1 0", "forced a 1 0",
          " force a 1 0", "force\ta 1 0", "\tforce a 1 0", "force,a 1 0", "-hex force a 1 0"}) {
        for (const std::int32_t time : {kLowest, -1, 0, 1, kHighest}) {
            EXPECT_EQ(ask(command, time), no("")) << '"' << command << "\" at " << time;
        }
    }
}

TEST(StimulusTransition, a_command_without_items_names_its_signal_only) {
    EXPECT_EQ(ask("force", 0), no(""));
    EXPECT_EQ(ask("force ", 0), no(""));
    EXPECT_EQ(ask("force a", 0), no("a"));
    EXPECT_EQ(ask("force a ", 0), no("a"));
    EXPECT_EQ(ask("force a  \t ", 0), no("a"));
    EXPECT_EQ(ask("force -hex", 0), no(""));
    EXPECT_EQ(ask("force -hex a", 0), no("a"));
}

TEST(StimulusTransition, two_blanks_before_the_signal_leave_it_empty) {
    EXPECT_EQ(ask("force  a 1 0", 1), yes("", "a"));
    EXPECT_EQ(ask("force -hex  1 0", 0), yes("", "0b0001"));
}

TEST(StimulusTransition, only_one_option_is_read) {
    EXPECT_EQ(ask("force -hex -bin F 0", 0), yes("-bin", "0b1111"));
}

TEST(StimulusTransition, decimal_values_stay_as_written) {
    EXPECT_EQ(ask("force a 12 0", 0), yes("a", "12"));
    EXPECT_EQ(ask("force -signed a -1 0", 0), yes("a", "-1"));
    EXPECT_EQ(ask("force -unsigned a 255 0", 0), yes("a", "255"));
    EXPECT_EQ(ask("force a what 0", 0), yes("a", "what"));
}

TEST(StimulusTransition, unknown_options_leave_values_decimal) {
    for (const char* option : {"-", "-x", "-HEX", "-hexx", "-bin(2)", "-oct", "-fixed_point",
                               "-fixed_point(", "-fixed_point()", "-fixed_point()8.4",
                               "-fixed_points(8.4)", "-Fixed_point(8.4)", "--hex", "-signed(4)"}) {
        EXPECT_EQ(ask("force " + std::string(option) + " a 10 0", 0), yes("a", "10")) << option;
    }
}

TEST(StimulusTransition, binary_values_get_the_prefix) {
    EXPECT_EQ(ask("force -bin a 0101 0", 0), yes("a", "0b0101"));
}

TEST(StimulusTransition, hexadecimal_values_become_binary) {
    EXPECT_EQ(ask("force -hex a F 0", 0), yes("a", "0b1111"));
    EXPECT_EQ(ask("force -hex data 0 0,F 10,-repeat 20", 30), yes("data", "0b1111"));
    EXPECT_EQ(ask("force -hex data 0 0,F 10,-repeat 20", 31), no("data"));
}

TEST(StimulusTransition, fixed_point_values_become_binary) {
    EXPECT_EQ(ask("force -fixed_point(4.4) a 1.5 0", 0), yes("a", "0b00011000"));
    EXPECT_EQ(ask("force -fixed_point(s4.4) a -0.25 0", 0), yes("a", "0b11111100"));
    EXPECT_EQ(ask("force -fixed_point(4.4 a 1.5 0", 0), yes("a", "0b00011000"));
    EXPECT_EQ(ask("force -fixed_point(4.4)(1.1) a 1.5 0", 0), yes("a", "0b00011000"));
}

TEST(StimulusTransition, a_value_that_does_not_convert_is_kept_after_the_prefix) {
    EXPECT_EQ(ask("force -hex a G 0", 0), yes("a", "0bG"));
    EXPECT_EQ(ask("force -fixed_point(4.4) a one 0", 0), yes("a", "0bone"));
    EXPECT_EQ(ask("force -fixed_point(nonsense) a 1.5 0", 0), yes("a", "0b1.5"));
}

// Repeats

TEST(StimulusRepeat, the_first_two_items_come_up_in_every_period) {
    for (const char* keyword : {"-r", "-repeat"}) {
        const std::string command = "force a 0 0,1 10," + std::string(keyword) + " 20";
        EXPECT_EQ(ask(command, 30), yes("a", "1")) << command;
        EXPECT_EQ(ask(command, 40), yes("a", "0")) << command;
        EXPECT_EQ(ask(command, 20), yes("a", "0")) << command;
        EXPECT_EQ(ask(command, 15), no("a")) << command;
        EXPECT_EQ(ask(command, 35), no("a")) << command;
        EXPECT_EQ(ask(command, 10), yes("a", "1")) << command;
        EXPECT_EQ(ask(command, 0), yes("a", "0")) << command;
    }
}

TEST(StimulusRepeat, times_of_repeats_may_have_an_at_sign) {
    EXPECT_EQ(ask("force a 0 @0,1 @10,-r @20", 30), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 @0,1 @10,-r @20", 40), yes("a", "0"));
}

TEST(StimulusRepeat, a_period_above_the_time_does_nothing) {
    EXPECT_EQ(ask("force a 0 3,1 4,-r 5", 4), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 4,1 2,-r 9,x 99", 8), no("a"));
    EXPECT_EQ(ask("force a 0 8,1 0,-r 8", 16), yes("a", "1"));
    EXPECT_EQ(ask("force a x 5,1 0,-r 5", 5), yes("a", "x"));
}

TEST(StimulusRepeat, items_beyond_the_second_do_not_repeat) {
    EXPECT_EQ(ask("force a 0 0,1 10,2 15,-r 20", 15), yes("a", "2"));
    EXPECT_EQ(ask("force a 0 0,1 10,2 15,-r 20", 35), no("a"));
}

TEST(StimulusRepeat, two_items_are_needed) {
    EXPECT_EQ(ask("force a -r 20", 40), no("a"));
    EXPECT_EQ(ask("force a -r 20,0 0,1 10", 40), no("a"));
    EXPECT_EQ(ask("force a 0 0,-r 20", 30), no("a"));
}

TEST(StimulusRepeat, the_repeat_itself_may_be_the_second_item) {
    EXPECT_EQ(ask("force a 0 0,-r 20", 40), yes("a", "0"));
    // Its own time never comes up in its own period, but does in that of a later one.
    EXPECT_EQ(ask("force a 0 0,-r 20,-r 30", 50), yes("a", "-r"));
}

TEST(StimulusRepeat, keywords_may_be_the_items_that_repeat) {
    EXPECT_EQ(ask("force a -r 7,0 1,-r 20", 27), yes("a", "-r"));
    EXPECT_EQ(ask("force a -cancel 30,0 1,-r 20", 21), yes("a", "0"));
    EXPECT_EQ(ask("force a -cancel 30,0 1,-r 35", 65), yes("", "-cancel"));
}

TEST(StimulusRepeat, an_item_after_a_blank_supplies_no_value_as_the_second) {
    EXPECT_EQ(ask("force a 0 0, 1 10,-r 20", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0, 1 10,-r 20", 30), no("a"));
    EXPECT_EQ(ask("force a 0 0, 1 10,-r 20", 40), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 0,1 10, -r 20", 30), yes("a", "1"));
}

TEST(StimulusRepeat, other_white_space_is_a_value_of_the_second) {
    EXPECT_EQ(ask("force a 0 0,\t1 10,-r 20", 30), yes("a", "\t1"));
    EXPECT_EQ(ask("force a 0 0,\t1 10,-r 20", 10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,\t 10 5,-r 20", 30), yes("a", "\t"));
}

TEST(StimulusRepeat, blanks_before_the_first_item_are_no_part_of_it) {
    EXPECT_EQ(ask("force a  0 0,1 10,-r 20", 40), yes("a", "0"));
}

TEST(StimulusRepeat, an_unreadable_item_still_repeats) {
    EXPECT_EQ(ask("force a 1,0 5,-r 20", 40), yes("a", "1"));
    EXPECT_EQ(ask("force a 1 5,0,-r 20", 40), yes("a", "0"));
    EXPECT_EQ(ask("force a 1,0 5,-r 20", 0), no("a"));
}

TEST(StimulusRepeat, an_item_taken_as_the_whole_rest_is_not_saved) {
    EXPECT_EQ(ask("force a 0 0,,-r 20", 40), no("a"));
    EXPECT_EQ(ask("force a 0 0,1 10,,-r 20", 30), yes("a", "1"));
}

TEST(StimulusRepeat, the_first_item_goes_before_the_second) {
    EXPECT_EQ(ask("force a 0 5,1 5,-r 20", 25), yes("a", "0"));
}

TEST(StimulusRepeat, a_later_exact_match_replaces_a_repeat) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r 20,x 30", 30), yes("a", "x"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r 20,x 30", 50), yes("a", "1"));
}

TEST(StimulusRepeat, a_later_repeat_replaces_an_earlier_one_by_the_first_item_only) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r 20,-r 15", 30), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r 15,-r 20", 30), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 3,1 7,-r 10,-r 6", 13), yes("a", "0"));
}

TEST(StimulusRepeat, a_cancel_after_a_repeat_undoes_it) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r 20,-c 30", 30), no(""));
    EXPECT_EQ(ask("force a 0 0,1 10,-r 20,-c 31", 30), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 10,-c 30,-r 20", 30), yes("", "1"));
}

TEST(StimulusRepeat, period_zero_matches_all_times_before_the_items_own) {
    const std::string command = "force a 0 20,1 40,-r 0";
    EXPECT_EQ(ask(command, 0), yes("a", "0"));
    EXPECT_EQ(ask(command, 19), yes("a", "0"));
    EXPECT_EQ(ask(command, 20), yes("a", "0"));
    EXPECT_EQ(ask(command, 21), yes("a", "1"));
    EXPECT_EQ(ask(command, 39), yes("a", "1"));
    EXPECT_EQ(ask(command, 41), no("a"));
    EXPECT_EQ(ask(command, -1), no("a"));
}

TEST(StimulusRepeat, period_zero_looks_at_the_size_of_a_time_only) {
    EXPECT_EQ(ask("force a 0 -20,1 -40,-r 0", 19), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 -20,1 -40,-r 0", 20), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 -20,1 -40,-r 0", 40), no("a"));
}

TEST(StimulusRepeat, period_zero_with_items_at_zero_matches_nothing) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r 0", 5), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 0,-r 0", 5), no("a"));
    EXPECT_EQ(ask("force a 0 10,1 0,-r 0", 5), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 10,1 0,-r 0", 15), no("a"));
    EXPECT_EQ(ask("force a 0 0,1 never,-r never", 5), no("a"));
}

TEST(StimulusRepeat, negative_periods_and_times_divide_towards_zero) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r -20", 30), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 -10,-r -20", -10), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 -5,-r -20", -15), no("a"));
    EXPECT_EQ(ask("force a 0 3,1 -5,-r -10", -5), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 3,1 -5,-r -20,x 9", -5), yes("a", "1"));
}

TEST(StimulusRepeat, extreme_numbers_are_no_trap) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r -2147483648", kLowest), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 3,1 10,-r -2147483648", kLowest), no("a"));
    EXPECT_EQ(ask("force a 0 5,1 -1,-r 0", kLowest), no("a"));
    EXPECT_EQ(ask("force a 0 -1,1 -1,-r 0", kHighest), no("a"));
    EXPECT_EQ(ask("force a 0 -2147483648,1 -1,-r 0", kHighest), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 5,1 0,-r -1", 7), yes("a", "1"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r 2147483647", kHighest), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 5,1 10,-r 1", kHighest), no("a"));
}

// -1 as a period is above the lowest time; as a remainder it is reached from above.
TEST(StimulusRepeat, period_minus_one_leaves_no_remainder) {
    EXPECT_EQ(ask("force a 0 0,1 10,-r -1", kLowest), no("a"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r -1", -1), yes("a", "0"));
    EXPECT_EQ(ask("force a 0 0,1 10,-r -1", kHighest), yes("a", "0"));
}

// Cancels

TEST(StimulusCancel, releases_the_signal_from_its_time_on) {
    for (const char* keyword : {"-c", "-cancel"}) {
        const std::string command = "force a 1 5," + std::string(keyword) + " 8";
        EXPECT_EQ(ask(command, 5), yes("a", "1")) << command;
        EXPECT_EQ(ask(command, 7), no("a")) << command;
        EXPECT_EQ(ask(command, 8), no("")) << command;
        EXPECT_EQ(ask(command, 9), no("")) << command;
        EXPECT_EQ(ask(command, kHighest), no("")) << command;
    }
}

TEST(StimulusCancel, does_not_undo_an_earlier_exact_match) {
    EXPECT_EQ(ask("force a 1 10,-c 8", 10), yes("a", "1"));
}

TEST(StimulusCancel, leaves_a_later_item_its_value_but_no_signal) {
    EXPECT_EQ(ask("force a -c 8,1 10", 10), yes("", "1"));
    EXPECT_EQ(ask("force a -c 8,1 7", 7), yes("a", "1"));
    EXPECT_EQ(ask("force -hex a -c 8,F 10", 10), yes("", "0b1111"));
}

TEST(StimulusCancel, without_a_number_cancels_from_zero_on) {
    EXPECT_EQ(ask("force a -c never", 0), no(""));
    EXPECT_EQ(ask("force a -c never", -1), no("a"));
    EXPECT_EQ(ask("force a -c @8", 8), no(""));
}

// Sizes

TEST(StimulusTransition, megabyte_tokens_are_read) {
    const std::string large(1 << 20, 'x');
    EXPECT_TRUE(ask("force " + large + " 1 5", 5) == yes(large, "1"));
    EXPECT_TRUE(ask("force a " + large + " 5", 5) == yes("a", large));
    EXPECT_TRUE(ask("force a 1 " + std::string(1 << 20, '0') + "5", 5) == yes("a", "1"));
    EXPECT_TRUE(ask("force a 1 5" + large, 5) == yes("a", "1"));
    EXPECT_TRUE(ask("force -" + large + " a 1 5", 5) == yes("a", "1"));
    EXPECT_TRUE(ask(large, 5) == no(""));
    EXPECT_TRUE(ask("force a " + std::string(1 << 20, ' ') + "1 5", 5) == yes("a", "1"));
    EXPECT_TRUE(ask("force a " + std::string(1 << 20, ',') + "1 5", 5) ==
                yes("a", std::string((1 << 20) - 1, ',') + "1"));
}

TEST(StimulusTransition, the_last_of_200000_items_is_reached) {
    const std::string command = "force a " + repeated("0 1, ", 200000) + "1 5";
    EXPECT_EQ(ask(command, 5), yes("a", "1"));
    EXPECT_EQ(ask(command, 1), yes("a", "0"));
    EXPECT_EQ(ask(command, 6), no("a"));
}

// Would take hours if every repeat read the saved items again.
TEST(StimulusRepeat, many_repeats_of_a_megabyte_item_end) {
    const std::string value(1 << 20, '1');
    const std::string zeros(1 << 20, '0');
    const std::string command =
        "force a " + value + " " + zeros + "1,0 " + zeros + "2" + repeated(",-r 3", 200000);
    EXPECT_TRUE(ask(command, 301) == yes("a", value));
    EXPECT_TRUE(ask(command, 302) == yes("a", "0"));
    EXPECT_TRUE(ask(command, 303) == no("a"));
    EXPECT_TRUE(ask("force a " + value + " 1, 0 2" + repeated(", -r 3", 200000), 302) == no("a"));
}

TEST(StimulusTransition, every_prefix_of_a_command_is_answered) {
    const std::string command = "force -fixed_point(8.4) q 1.5 @0, 2.25 10,-repeat 20,,-cancel 100";
    for (std::size_t length = 0; length <= command.size(); ++length) {
        const std::string prefix = command.substr(0, length);
        for (const std::int32_t time : {-1, 0, 10, 20, 30, 100}) {
            EXPECT_EQ(ask(prefix, time), ask_reference(prefix, time))
                << '"' << prefix << "\" at " << time;
        }
    }
}

// Lists of commands

TEST(VectorTransition, goes_on_after_the_command_that_made_a_transition) {
    Stimulus stimulus = {"force a 1 5", "force b 0 6", "force c 1 5"};
    EXPECT_EQ(stimulus.next_at(5), yes("a", "1"));
    EXPECT_EQ(stimulus.next_at(5), yes("c", "1"));
    EXPECT_EQ(stimulus.next_at(5).made, false);
}

TEST(VectorTransition, starts_again_after_the_end) {
    Stimulus stimulus = {"force a 1 5", "force b 0 6"};
    EXPECT_EQ(stimulus.next_at(7), no("b"));
    EXPECT_EQ(stimulus.next_command(), "force a 1 5");
    EXPECT_EQ(stimulus.next_at(5), no("b"));
    EXPECT_EQ(stimulus.next_at(5), yes("a", "1"));
}

TEST(VectorTransition, starts_where_the_cursor_stands) {
    Stimulus stimulus = {"force a 1 5", "force b 1 5"};
    stimulus.next_command();
    EXPECT_EQ(stimulus.next_at(5), yes("b", "1"));
}

TEST(VectorTransition, leaves_what_the_last_command_left) {
    EXPECT_EQ(Stimulus({"force a 1 5", "force b 1 5"}).next_at(9), no("b"));
    EXPECT_EQ(Stimulus({"force a 1 5", "set b 1 5"}).next_at(9), no(""));
    EXPECT_EQ(Stimulus({"force a 1 5", "force b -c 3"}).next_at(9), no(""));
}

TEST(VectorTransition, an_empty_list_writes_nothing) {
    EXPECT_EQ(Stimulus({}).next_at(5), (Answer{false, "left", "over"}));
}

TEST(VectorTransition, passes_over_what_is_no_rule_element) {
    KIVO_OBJ other;
    KIVO_RULE_ELEMENT entry("force a 1 5", "", "", 2);
    KIVO_OBJ_LIST list;
    list.add_at_tail(&other);
    list.add_at_tail(&entry);
    list.add_at_tail(&other);
    std::string signal;
    std::string value;
    EXPECT_TRUE(kivo_get_vector_transition(&list, 5, signal, value));
    EXPECT_EQ(signal, "a");
    EXPECT_FALSE(kivo_get_vector_transition(&list, 5, signal, value));
    EXPECT_EQ(list.get_next_value(), &other);
}

TEST(VectorTransition, leaves_the_commands_as_they_are) {
    Stimulus stimulus = {"force -hex a F 5"};
    EXPECT_EQ(stimulus.next_at(5), yes("a", "0b1111"));
    stimulus.list.reset();
    EXPECT_EQ(stimulus.next_command(), "force -hex a F 5");
}

TEST(VectorTransition, else_commands_are_not_evaluated) {
    KIVO_RULE_ELEMENT entry("force a 1 5", "force b 1 6", "cond", 2);
    KIVO_OBJ_LIST list;
    list.add_at_tail(&entry);
    std::string signal;
    std::string value;
    EXPECT_FALSE(kivo_get_vector_transition(&list, 6, signal, value));
}

TEST(VectorTransition, uses_the_lists_own_iteration) {
    class Endless : public KIVO_OBJ_LIST {
    public:
        void reset() override { ++resets; }
        KIVO_OBJ* get_next_value() override { return ++asked % 3 == 0 ? nullptr : &entry; }

        KIVO_RULE_ELEMENT entry{"force a 1 5", "", "", 2};
        int asked = 0;
        int resets = 0;
    };
    Endless list;
    std::string signal;
    std::string value;
    EXPECT_FALSE(kivo_get_vector_transition(&list, 9, signal, value));
    EXPECT_EQ(list.asked, 3);
    EXPECT_EQ(list.resets, 1);
    EXPECT_TRUE(kivo_get_vector_transition(&list, 5, signal, value));
    EXPECT_EQ(list.resets, 1);
}

TEST(StimulusExists, finds_the_signal_of_force_commands) {
    for (const char* command :
         {"force a 0 0", "force -bin a 0 0", "force -hex a", "force a", "force -what a 0 0",
          "force -fixed_point(8.4) a 0 0", "force a ,,"}) {
        EXPECT_TRUE(Stimulus({command}).drives("a")) << command;
    }
}

TEST(StimulusExists, does_not_find_other_signals) {
    for (const char* command :
         {"", "force", "force ab 0 0", "force A 0 0", "force  a 0 0", "set a 0 0", "Force a 0 0",
          "force -bin -hex a 0 0", "force b a 0", "force a\t0 0", "force -bin", "-a", "force -a"}) {
        EXPECT_FALSE(Stimulus({command}).drives("a")) << command;
    }
    EXPECT_FALSE(Stimulus({}).drives("a"));
}

TEST(StimulusExists, a_command_without_signal_drives_the_empty_name) {
    EXPECT_TRUE(Stimulus({"force"}).drives(""));
    EXPECT_TRUE(Stimulus({"force -hex"}).drives(""));
    EXPECT_FALSE(Stimulus({"set"}).drives(""));
}

TEST(StimulusExists, starts_at_the_first_command_and_stops_after_the_one_found) {
    Stimulus stimulus = {"force a 0 0", "force b 0 0", "force c 0 0"};
    stimulus.next_command();
    stimulus.next_command();
    EXPECT_TRUE(stimulus.drives("a"));
    EXPECT_EQ(stimulus.next_command(), "force b 0 0");
    EXPECT_TRUE(stimulus.drives("b"));
    EXPECT_EQ(stimulus.next_command(), "force c 0 0");
}

TEST(StimulusExists, leaves_the_cursor_at_the_end_without_one) {
    Stimulus stimulus = {"force a 0 0"};
    EXPECT_FALSE(stimulus.drives("b"));
    EXPECT_EQ(stimulus.next_command(), "end");
}

TEST(StimulusExists, passes_over_what_is_no_rule_element) {
    KIVO_OBJ other;
    KIVO_RULE_ELEMENT entry("force a 1 5", "", "", 2);
    KIVO_OBJ_LIST list;
    list.add_at_tail(&other);
    list.add_at_tail(&entry);
    EXPECT_TRUE(kivo_stimulus_exists(&list, "a"));
}

// Random commands, compared with the plain transcription

class CommandMaker {
public:
    std::string make() {
        std::string command = pick({"force", "force", "force", "force", "force", "force", "force",
                                    "force", "force", "Force", "forc", ""});
        command += gap();
        if (below(2) == 0) {
            command += pick({"-bin", "-hex", "-hex", "-signed", "-unsigned", "-fixed_point(4.4)",
                             "-fixed_point(s3.2)", "-fixed_point()", "-fixed_point",
                             "-fixed_point(2.2", "-fixed_pointy(2.2)", "-x", "-", "-hexx"});
            command += gap();
        }
        command += pick(
            {"a", "a", "data", "clk[3]", "a_very_long_signal_name_of_a_bus[31..0]", "-r", "", "@"});
        command += gap();
        const int items = below(8);
        for (int i = 0; i < items; ++i) {
            command += item();
            command += i + 1 < items || below(6) == 0 ? comma() : "";
        }
        for (int mutations = below(3) == 0 ? 1 + below(3) : 0; mutations > 0; --mutations) {
            mutate(command);
        }
        return command;
    }

    std::int32_t time() {
        switch (below(8)) {
            case 0:
                return std::stoi(pick({"2147483647", "-2147483648", "-1", "0", "2147483646"}));
            case 1:
                return -below(20);
            default:
                return below(20);
        }
    }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

private:
    std::string pick(std::initializer_list<const char*> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }

    std::string gap() { return below(12) == 0 ? pick({"", "  ", "\t", " \t ", " \n"}) : " "; }

    std::string comma() {
        return below(4) == 0 ? pick({", ", " ,", ",,", ", ,", ",\t", " , ", ",\t ", ",  "}) : ",";
    }

    std::string item() {
        const std::string word =
            below(3) == 0 ? pick({"-r", "-repeat", "-r", "-c", "-cancel", "-R", "-rep", "-"})
                          : pick({"0", "1", "0", "1", "F", "X", "10", "-1", "1.5", "2.25", "", "@",
                                  "0b101", "longer_than_a_short_string"});
        return word + gap() + number();
    }

    std::string number() {
        if (below(4) != 0) {
            return (below(8) == 0 ? "@" : "") + std::to_string(below(12));
        }
        return pick({"",
                     "@",
                     "0",
                     "0",
                     "0",
                     "-3",
                     "-1",
                     "-20",
                     "+4",
                     "7n",
                     "n",
                     " 5",
                     "@ 5",
                     "@@5",
                     "2147483647",
                     "-2147483648",
                     "007",
                     " ",
                     "4294967296",
                     "4294967301",
                     "99999999999999999999",
                     "-99999999999999999999",
                     "123456789",
                     "1234567890",
                     "000000000005",
                     "5 6"});
    }

    void mutate(std::string& command) {
        if (command.empty()) {
            return;
        }
        const std::size_t at = static_cast<std::size_t>(below(static_cast<int>(command.size())));
        constexpr std::string_view kLetters = std::string_view(" ,@-rc0159()\t\0\xE4", 15);
        const char letter = kLetters[static_cast<std::size_t>(below(kLetters.size()))];
        switch (below(4)) {
            case 0:
                command.erase(at, 1);
                break;
            case 1:
                command.insert(at, 1, letter);
                break;
            case 2:
                command[at] = letter;
                break;
            default:
                command.insert(at, command.substr(at, static_cast<std::size_t>(below(12))));
        }
    }

    std::mt19937 random_{20240229};
};

TEST(StimulusTransition, random_commands_answer_as_the_plain_transcription) {
    CommandMaker maker;
    int transitions = 0;
    for (int i = 0; i < 120000; ++i) {
        const std::string command = maker.make();
        for (int times = 0; times < 3; ++times) {
            const std::int32_t time = maker.time();
            const Answer expected = ask_reference(command, time);
            ASSERT_EQ(ask(command, time), expected)
                << testing::PrintToString(command) << " at " << time;
            transitions += expected.made ? 1 : 0;
        }
    }
    // Both answers occur often, else the comparison would say little.
    EXPECT_GT(transitions, 20000);
    EXPECT_LT(transitions, 340000);
}

TEST(VectorTransition, random_lists_answer_as_the_plain_transcription) {
    CommandMaker maker;
    for (int i = 0; i < 2000; ++i) {
        std::vector<std::string> commands(static_cast<std::size_t>(maker.below(6)));
        for (std::string& command : commands) {
            command = maker.make();
        }
        Stimulus stimulus(commands);
        Stimulus same(commands);
        const std::int32_t time = maker.time();
        Answer expected{true, "left", "over"};
        while (expected.made) {
            expected = {false, "left", "over"};
            expected.made = stimulus_reference::get_vector_transition(
                &same.list, time, expected.signal, expected.value);
            ASSERT_EQ(stimulus.next_at(time), expected)
                << testing::PrintToString(commands) << " at " << time;
        }
        for (const char* signal : {"a", "data", "", "-r", "F"}) {
            ASSERT_EQ(stimulus.drives(signal),
                      stimulus_reference::stimulus_exists(&same.list, signal))
                << testing::PrintToString(commands) << ", " << signal;
            ASSERT_EQ(stimulus.next_command(), same.next_command());
        }
    }
}

}  // namespace
