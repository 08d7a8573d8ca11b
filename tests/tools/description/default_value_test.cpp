#include "tools/description/default_value.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

std::optional<std::string> default_at(std::int32_t index, const std::string& list) {
    KIVO_OBJ_INFO object("M", KIVO_OBJ_STRING_PARAMETER);
    object.value_array = list;
    object.default_value = "as text";
    object.default_index = index;
    return default_of(object);
}

TEST(DefaultValue, lists_are_split_at_semicolons) {
    EXPECT_EQ(list_items("A;B;C"), (Items{"A", "B", "C"}));
    EXPECT_EQ(list_items("A"), Items{"A"});
    EXPECT_EQ(list_items(" A b ;\n\tC; "), (Items{"A b", "C"}));
    EXPECT_EQ(list_items(";;A;;B;"), (Items{"A", "B"}));
    EXPECT_EQ(list_items(""), Items());
    EXPECT_EQ(list_items(" ; "), Items());
}

TEST(DefaultValue, an_index_names_an_item_of_the_list) {
    EXPECT_EQ(default_at(0, "A;B"), "A");
    EXPECT_EQ(default_at(1, "A; B"), "B");
    EXPECT_EQ(default_at(0, "A"), "A");
}

TEST(DefaultValue, without_an_index_the_default_is_the_text) {
    EXPECT_EQ(default_at(-1, "A;B"), "as text");
    EXPECT_EQ(default_at(std::numeric_limits<std::int32_t>::min(), "A;B"), "as text");
}

TEST(DefaultValue, an_index_beyond_the_list_names_nothing) {
    EXPECT_EQ(default_at(2, "A;B"), std::nullopt);
    EXPECT_EQ(default_at(2, "A;B;"), std::nullopt);
    EXPECT_EQ(default_at(0, ""), std::nullopt);
    EXPECT_EQ(default_at(std::numeric_limits<std::int32_t>::max(), "A;B"), std::nullopt);
}

TEST(DefaultValue, the_note_on_a_missing_item_tells_the_index) {
    KIVO_OBJ_INFO object("M", KIVO_OBJ_STRING_PARAMETER);
    object.default_index = 7;
    EXPECT_EQ(missing_default(object), "index 7 (the list has no such item)");
}

}  // namespace
