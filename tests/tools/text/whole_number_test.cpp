#include "tools/text/whole_number.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

TEST(WholeNumber, digits_are_read_as_far_as_the_type_reaches) {
    EXPECT_EQ(whole_number<std::int32_t>("0"), 0);
    EXPECT_EQ(whole_number<std::int32_t>("-0"), 0);
    EXPECT_EQ(whole_number<std::int32_t>("007"), 7);
    EXPECT_EQ(whole_number<std::int32_t>("2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(whole_number<std::int32_t>("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(whole_number<std::uint8_t>("255"), 255);
}

TEST(WholeNumber, nothing_else_is_a_number) {
    for (const char* const text : {"", "-", "+1", " 1", "1 ", "1.0", "0x1", "1e3", "--1",
                                   "2147483648", "-2147483649", "99999999999999999999"}) {
        EXPECT_FALSE(whole_number<std::int32_t>(text).has_value()) << text;
    }
    EXPECT_FALSE(whole_number<std::uint8_t>("-1").has_value());
    EXPECT_FALSE(whole_number<std::uint8_t>("256").has_value());
}

}  // namespace
