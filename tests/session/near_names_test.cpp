#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "tests/session/fixture.h"

namespace {

constexpr int kManyTimes = 200;

std::string one_parameter() {
    return in("PARAMETERS", integer("WIDTH", "VALUE='8'"));
}

// How often a session that is asked many times tells which name was probably meant.
int times_told(const KIVO_SESSION& session) {
    int told = 0;
    for (int i = 0; i < kManyTimes; ++i) {
        KIVO_FAULT fault;
        session.holds("WIDHT gt 1", &fault);
        const std::vector<KIVO_FAULT> faults = session.evaluate("WIDHT").faults;
        const bool is_told = fault.text.find("did you mean WIDTH?") != std::string::npos &&
                             faults.size() == 1 && faults[0].text == fault.text &&
                             session.nearest_name("WIDHT") == "WIDTH";
        told += is_told ? 1 : 0;
    }
    return told;
}

}  // namespace

TEST(NearNames, are_told_however_often_a_session_is_asked) {
    const Described d(one_parameter());
    EXPECT_EQ(times_told(d.session), kManyTimes);
}

TEST(NearNames, are_told_to_forks_that_are_asked_at_the_same_time) {
    const Described d(one_parameter());
    const KIVO_SESSION first = d.session.fork();
    const KIVO_SESSION second = d.session.fork();
    int first_told = 0;
    int second_told = 0;
    std::thread one([&] { first_told = times_told(first); });
    std::thread other([&] { second_told = times_told(second); });
    one.join();
    other.join();
    EXPECT_EQ(first_told, kManyTimes);
    EXPECT_EQ(second_told, kManyTimes);
}

TEST(NearNames, of_a_description_that_is_wrong_everywhere_are_looked_for_a_hundred_times) {
    std::string rules;
    for (int i = 0; i < kManyTimes; ++i) {
        rules += "<RULE>WIDHT gt 1</RULE>";
    }
    const Described d(one_parameter() + in("RULES", rules));
    const std::vector<KIVO_FAULT>& faults = d.session.faults();
    EXPECT_EQ(faults.size(), static_cast<std::size_t>(kManyTimes));
    EXPECT_EQ(std::count_if(faults.begin(), faults.end(),
                            [](const KIVO_FAULT& fault) {
                                return fault.text.find("did you mean") != std::string::npos;
                            }),
              100);
    EXPECT_EQ(times_told(d.session), kManyTimes);
}
