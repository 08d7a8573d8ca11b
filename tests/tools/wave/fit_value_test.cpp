#include "tools/wave/fit_value.h"

#include <gtest/gtest.h>

namespace {

struct FitRow {
    const char* shown;
    DRO_MEMORY_RADIXES radix;
    std::size_t columns;
    const char* cut_high;  // where the high end is cut
    const char* cut_low;
};

// clang-format off
constexpr FitRow kRows[] = {
    { "CAFE",    DRO_RADIX_HEX,         4, "CAFE",   "CAFE" },
    { "CAFE",    DRO_RADIX_HEX,         3, "~FE",    "CA~" },
    { "CAFE",    DRO_RADIX_HEX,         2, "",       "" },
    { "CAFE",    DRO_RADIX_HEX,         1, "",       "" },
    { "CAFE",    DRO_RADIX_HEX,         0, "",       "" },
    { "10xz",    DRO_RADIX_BINARY,      3, "~xz",    "10~" },
    { "-128",    DRO_RADIX_SIGNED,      4, "-128",   "-128" },
    { "-128",    DRO_RADIX_SIGNED,      3, "~",      "~" },
    { "12800",   DRO_RADIX_UNSIGNED,    4, "~",      "~" },
    { "12800",   DRO_RADIX_UNSIGNED,    2, "",       "" },
    // Of decimal places the low ones may go, as long as there is one.
    { "-3.1415", DRO_RADIX_FIXED_POINT, 7, "-3.1415", "-3.1415" },
    { "-3.1415", DRO_RADIX_FIXED_POINT, 6, "~",      "-3.14~" },
    { "-3.1415", DRO_RADIX_FIXED_POINT, 5, "~",      "-3.1~" },
    { "-3.1415", DRO_RADIX_FIXED_POINT, 4, "~",      "~" },
    { "1.25e9",  DRO_RADIX_FIXED_POINT, 5, "~",      "~" },
    // Numbers that their radix cannot show, which are written as they are.
    { "-128",    DRO_RADIX_HEX,         3, "~",      "~" },
    { "+128",    DRO_RADIX_BINARY,      3, "~",      "~" },
    { "3.75",    DRO_RADIX_HEX,         3, "~",      "~" },
    { "IDLE",    DRO_RADIX_HEX,         3, "~LE",    "ID~" },
    { "\u5E45\u5E45\u5E45", DRO_RADIX_NONE, 4, "~\u5E45", "\u5E45~" },
};
// clang-format on

TEST(FitValue, no_wrong_number_can_be_read_where_a_value_is_cut) {
    for (const FitRow& row : kRows) {
        EXPECT_EQ(fit_value(row.shown, row.radix, false, row.columns, "~"), row.cut_high)
            << row.shown << " in " << row.columns;
        EXPECT_EQ(fit_value(row.shown, row.radix, true, row.columns, "~"), row.cut_low)
            << row.shown << " in " << row.columns;
    }
}

}  // namespace
