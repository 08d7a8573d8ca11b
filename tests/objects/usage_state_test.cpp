#include "kivo/objects/usage_state.h"

#include <gtest/gtest.h>

TEST(UsageState, three_words_have_a_state_of_their_own) {
    EXPECT_EQ(translate_usage_state("UNUSED"), KIVO_USAGE_UNUSED);
    EXPECT_EQ(translate_usage_state("VARIABLE"), KIVO_USAGE_VARIABLE);
    EXPECT_EQ(translate_usage_state("CONSTANT"), KIVO_USAGE_CONSTANT);
}

TEST(UsageState, every_other_word_means_used) {
    for (const char* word : {"USED", "", "unused", "Variable", "constant", " UNUSED", "UNUSED ",
                             "CONSTANTS", "UNDEFINED"}) {
        EXPECT_EQ(translate_usage_state(word), KIVO_USAGE_USED) << '"' << word << '"';
    }
}

TEST(UsageState, each_state_has_its_word) {
    EXPECT_EQ(kivo_get_usage_state_as_string(KIVO_USAGE_UNUSED), "UNUSED");
    EXPECT_EQ(kivo_get_usage_state_as_string(KIVO_USAGE_USED), "USED");
    EXPECT_EQ(kivo_get_usage_state_as_string(KIVO_USAGE_VARIABLE), "VARIABLE");
    EXPECT_EQ(kivo_get_usage_state_as_string(KIVO_USAGE_CONSTANT), "CONSTANT");
}

TEST(UsageState, any_other_value_is_undefined) {
    for (const int value : {-2147483647, -1, 4, 7, 2147483647}) {
        EXPECT_EQ(kivo_get_usage_state_as_string(static_cast<KIVO_OBJ_USAGE_STATE>(value)),
                  "UNDEFINED")
            << value;
    }
}

TEST(UsageState, states_have_fixed_numbers) {
    EXPECT_EQ(KIVO_USAGE_UNUSED, 0);
    EXPECT_EQ(KIVO_USAGE_USED, 1);
    EXPECT_EQ(KIVO_USAGE_VARIABLE, 2);
    EXPECT_EQ(KIVO_USAGE_CONSTANT, 3);
}
