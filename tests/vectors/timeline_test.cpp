#include "kivo/vectors/timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "kivo/vectors/stimulus.h"

namespace {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

struct Answer {
    bool made = false;
    std::string signal;
    std::string value;

    bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Answer& answer) {
    return out << (answer.made ? "true" : "false") << ", signal \"" << answer.signal
               << "\", value \"" << answer.value << '"';
}

// What the timeline says about one time of its range.
Answer told(const KIVO_TIMELINE& timeline, std::int32_t time) {
    const auto run = std::lower_bound(
        timeline.runs.begin(), timeline.runs.end(), time,
        [](const KIVO_TIMELINE_RUN& left, std::int32_t right) { return left.last < right; });
    if (run == timeline.runs.end() || time < run->first) {
        return {false, timeline.signal, ""};
    }
    if (run->released) {
        return {false, "", ""};
    }
    return {true, run->nameless ? "" : timeline.signal, timeline.values.at(run->value)};
}

Answer asked(const std::string& command, std::int32_t time) {
    Answer answer;
    answer.made = kivo_get_transition_at_time(command, time, answer.signal, answer.value);
    return answer;
}

void expect_runs_in_order(const KIVO_TIMELINE& timeline, std::int64_t from) {
    std::int64_t free_from = from;
    const KIVO_TIMELINE_RUN* before = nullptr;
    for (const KIVO_TIMELINE_RUN& run : timeline.runs) {
        EXPECT_GE(run.first, free_from);
        EXPECT_GE(run.last, run.first);
        EXPECT_LT(run.last, timeline.end);
        if (before != nullptr && free_from == run.first) {
            EXPECT_TRUE(before->value != run.value || before->released != run.released ||
                        before->nameless != run.nameless)
                << "two runs that are one, at " << run.first;
        }
        before = &run;
        free_from = std::int64_t{run.last} + 1;
    }
}

// False, with a failure, when the timeline and the answers at single times differ.
bool agrees(const std::string& command, std::int32_t from, std::int32_t to,
            std::size_t limit = kNoLimit) {
    const KIVO_TIMELINE timeline = kivo_get_timeline(command, from, to, limit);
    expect_runs_in_order(timeline, from);
    EXPECT_EQ(timeline.is_complete, timeline.end == std::int64_t{to} + 1) << command;
    for (std::int64_t time = from; time < timeline.end; ++time) {
        const auto at = static_cast<std::int32_t>(time);
        if (told(timeline, at) != asked(command, at)) {
            ADD_FAILURE() << command << " at " << time << ": " << told(timeline, at)
                          << " instead of " << asked(command, at);
            return false;
        }
    }
    return !testing::Test::HasFailure();
}

std::string described(const KIVO_TIMELINE& timeline) {
    std::string text;
    for (const KIVO_TIMELINE_RUN& run : timeline.runs) {
        text += (text.empty() ? "" : " ") + std::to_string(run.first);
        if (run.last != run.first) {
            text += ".." + std::to_string(run.last);
        }
        text += run.nameless ? "?" : "=";
        text += run.released ? "released" : timeline.values.at(run.value);
    }
    return text;
}

std::string timeline_of(const std::string& command, std::int32_t from, std::int32_t to) {
    return described(kivo_get_timeline(command, from, to, kNoLimit));
}

TEST(Timeline, plain_values_in_any_order) {
    EXPECT_EQ(timeline_of("force a 1 10,0 0", 0, 50), "0=0 10=1");
}

TEST(Timeline, of_two_values_at_one_time_the_first_counts) {
    EXPECT_EQ(timeline_of("force a 1 10,0 10", 0, 50), "10=1");
}

TEST(Timeline, times_outside_the_range_are_left_out) {
    EXPECT_EQ(timeline_of("force a 1 9,2 10,3 20,4 21", 10, 20), "10=2 20=3");
}

TEST(Timeline, repeat_comes_up_from_its_period_on) {
    EXPECT_EQ(timeline_of("force a 0 0,1 10,-r 20", 0, 60), "0=0 10=1 20=0 30=1 40=0 50=1 60=0");
}

TEST(Timeline, repeat_with_period_zero_is_one_run) {
    EXPECT_EQ(timeline_of("force a 0 5,1 9,-r 0", 0, kHighest), "0..5=0 6..9=1");
}

TEST(Timeline, release_lasts_to_the_end) {
    EXPECT_EQ(timeline_of("force a 1 5,-c 8", 0, 20), "5=1 8..20=released");
}

TEST(Timeline, release_is_broken_by_an_earlier_item) {
    EXPECT_EQ(timeline_of("force a 1 12,-c 8", 0, 20), "8..11=released 12=1 13..20=released");
}

TEST(Timeline, value_after_a_cancel_has_no_signal) {
    EXPECT_EQ(timeline_of("force a -c 8,1 10", 0, 12), "8..9=released 10?1 11..12=released");
}

TEST(Timeline, values_of_hexadecimal_commands_are_binary) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("force -hex a F 0,0F 5,f 9", 0, 9, kNoLimit);
    EXPECT_TRUE(timeline.has_binary_values);
    EXPECT_EQ(timeline.values, (std::vector<std::string>{"0b1111", "0b00001111"}));
    EXPECT_EQ(described(timeline), "0=0b1111 5=0b00001111 9=0b1111");
}

TEST(Timeline, malformed_command_tells_nothing) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("set a 1 0", 0, 100, kNoLimit);
    EXPECT_EQ(timeline.signal, "");
    EXPECT_TRUE(timeline.runs.empty());
    EXPECT_TRUE(timeline.is_complete);
    EXPECT_EQ(timeline.end, 101);
}

TEST(Timeline, empty_range_tells_nothing) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("force a 1 0", 5, 4, kNoLimit);
    EXPECT_TRUE(timeline.runs.empty());
    EXPECT_TRUE(timeline.is_complete);
}

TEST(Timeline, stops_before_the_transition_beyond_the_limit) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("force a 0 0,1 1,-r 2", 0, 1000, 4);
    EXPECT_EQ(described(timeline), "0=0 1=1 2=0 3=1");
    EXPECT_FALSE(timeline.is_complete);
    EXPECT_EQ(timeline.end, 4);
}

TEST(Timeline, as_many_transitions_as_the_limit_are_complete) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("force a 0 0,1 100", 0, 1000, 2);
    EXPECT_TRUE(timeline.is_complete);
    EXPECT_EQ(timeline.end, 1001);
}

TEST(Timeline, limit_zero_stops_at_the_first_transition) {
    const KIVO_TIMELINE timeline = kivo_get_timeline("force a 0 7", 0, 1000, 0);
    EXPECT_FALSE(timeline.is_complete);
    EXPECT_EQ(timeline.end, 7);
}

TEST(Timeline, reaches_both_ends_of_time) {
    EXPECT_EQ(timeline_of("force a 1 -2147483648,0 2147483647", kLowest, kHighest),
              "-2147483648=1 2147483647=0");
    EXPECT_EQ(timeline_of("force a 1 0,0 1073741824,-r 2147483647", kLowest, kHighest),
              "0=1 1073741824=0 2147483647=1");
    EXPECT_EQ(timeline_of("force a -c -2147483648", kLowest, kHighest),
              "-2147483648..2147483647=released");
    EXPECT_TRUE(agrees("force a 0 0,1 -1,-r -2147483648,-c 2147483640", kHighest - 50, kHighest));
    EXPECT_TRUE(agrees("force a 0 0,1 -1,-r -1,-r 7", kLowest, kLowest + 50));
}

TEST(Timeline, agrees_with_the_answers_at_single_times) {
    const std::vector<std::string> commands = {
        "",
        "force",
        "force a",
        "force  1 0",
        "force a 0 0, 1 10,-r 20",
        "force a 0 0 ,1 10,-r 20",
        "force a 0 0,1 10,-r 20,-c 55",
        "force a 0 0,1 10,-c 25,-r 20",
        "force a 0 0,1 10,-r 20,-c 25,-r 30",
        "force a 0 0,1 10,-r 20,-r 8",
        "force a -r 5,0 1,1 2",
        "force a 1 3,-r 5",
        "force a -r 5,-c 9,-r 7",
        "force a 0 -3,1 2,-r -7",
        "force a 0 -3,1 -9,-r 0",
        "force a 0 0,1 9,-r 0",
        "force a 0 9,1 0,-r 0",
        "force a 0 4,1 9,-r 0,-r 3,-c 7",
        "force a 0 4,,1 9,-r 3",
        "force a 0,1 9,-r 3",
        "force -fixed_point(s2.2) a 0.5 0,-1.25 2,7 3,-r 4",
        "force -hex a G 0,F 2,f 3,-r 4",
        "force -unsigned a 3 @1,4 @x,5 6y",
    };
    for (const std::string& command : commands) {
        EXPECT_TRUE(agrees(command, -40, 120)) << command;
    }
}

class RandomCommand {
public:
    explicit RandomCommand(std::uint32_t seed) : random_(seed) {}

    std::string next() {
        std::string command = one_of({"force ", "force ", "force ", "force -bin ", "force -hex ",
                                      "force -fixed_point(s4.2) ", "force -x "});
        command += "sig ";
        for (int left = number(0, 7); left > 0; --left) {
            command += item() + one_of({",", ",", ",", ",", ", ", " ,", ",,"});
        }
        return command + item();
    }

    std::int32_t number(int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random_);
    }

private:
    std::string one_of(const std::vector<std::string>& choices) {
        return choices[static_cast<std::size_t>(number(0, static_cast<int>(choices.size()) - 1))];
    }

    std::string item() {
        const std::string keyword =
            one_of({"0", "1", "F", "10", "-1.5", "-r", "-r", "-repeat", "-c", "-cancel", "-q", ""});
        const std::string time = std::to_string(number(0, 9) == 0 ? 0 : number(-12, 40));
        return keyword + one_of({" ", " ", " ", " @", "  ", ""}) + time;
    }

    std::mt19937 random_;
};

TEST(Timeline, agrees_on_random_commands) {
    RandomCommand random(20240611);
    for (int i = 0; i < 20000; ++i) {
        const std::string command = random.next();
        const std::int32_t from = random.number(-30, 20);
        ASSERT_TRUE(agrees(command, from, from + random.number(0, 130))) << "number " << i;
    }
}

TEST(Timeline, agrees_on_random_commands_up_to_a_limit) {
    RandomCommand random(7);
    for (int i = 0; i < 5000; ++i) {
        const std::string command = random.next();
        const auto limit = static_cast<std::size_t>(random.number(0, 12));
        ASSERT_TRUE(agrees(command, -20, 100, limit)) << "number " << i << ", limit " << limit;
    }
}

TEST(Timeline, last_item_time_does_not_depend_on_the_range) {
    const auto last = [](const std::string& command) {
        return kivo_get_timeline(command, 0, 0, 0).last_item_time;
    };
    EXPECT_EQ(last("force a 0 0,1 30,0 20"), 30);
    EXPECT_EQ(last("force a 0 0,1 30,-c 45"), 45);
    EXPECT_EQ(last("force a 0 0,1 30,-r 40"), 80);
    EXPECT_EQ(last("force a 0 -7"), -7);
    EXPECT_EQ(last("force a"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(last("set a 1 0"), std::numeric_limits<std::int64_t>::min());
}

// What costs work by the time step, or by the command's length for each transition, does not come
// to an end within the time that a test may take.
std::size_t runs_of(const std::string& command, std::int32_t to) {
    return kivo_get_timeline(command, 0, to, 2'000'000).runs.size();
}

TEST(Timeline, long_ranges_cost_their_transitions) {
    EXPECT_EQ(runs_of("force a 0 0,1 10,-r 20", 1'000'000), 100001u);
    EXPECT_EQ(runs_of("force a 0 0,1 1000000000", kHighest), 2u);
    EXPECT_EQ(runs_of("force a 0 1,1 2,-r 0,-c 5", kHighest), 3u);
    EXPECT_EQ(runs_of("force a 0 0,1 1,-r 2", kHighest), 2'000'000u);
}

TEST(Timeline, repeats_without_a_period_count_towards_the_limit_at_each_time) {
    // The first item's value comes up at all times before 100, the second one's at the rest of
    // those before 200.
    const std::string command = "force a 1 100,0 200,-r 0";
    const KIVO_TIMELINE cut = kivo_get_timeline(command, 0, 1000, 30);
    EXPECT_FALSE(cut.is_complete);
    EXPECT_EQ(cut.end, 30);
    EXPECT_EQ(described(cut), "0..29=1");
    EXPECT_EQ(kivo_get_timeline(command, 40, 1000, 30).end, 70);
    EXPECT_EQ(kivo_get_timeline(command, 0, 1000, 0).end, 0);
    EXPECT_EQ(kivo_get_timeline(command, 0, 1000, 150).end, 150);
    EXPECT_EQ(described(kivo_get_timeline(command, 0, 1000, 150)), "0..100=1 101..149=0");
    EXPECT_TRUE(kivo_get_timeline(command, 0, 1000, 201).is_complete);
    EXPECT_FALSE(kivo_get_timeline(command, 0, 1000, 200).is_complete);
}

TEST(Timeline, long_commands_cost_their_length) {
    std::string values = "force a 0 0";
    std::string repeats = "force a 0 0,1 1";
    std::string ended = "force a 0 0,1 1";
    for (int i = 1; i <= 100000; ++i) {
        values += ",1 " + std::to_string(i * 7);
        repeats += ",-r " + std::to_string(i % 1000 + 1);
        ended += ",-r " + std::to_string(i) + ",-c " + std::to_string(i);
    }
    // 100,001 items and 99,999 repetitions, of which 9,999 coincide with an item and 10,000 stand
    // beside one of the same value.
    EXPECT_EQ(runs_of(values + ",-r 20", 1'000'000), 180001u);
    EXPECT_EQ(runs_of(repeats, 100'000), 3u);
    EXPECT_EQ(runs_of(ended, 1'000'000), 3u);
}

}  // namespace
