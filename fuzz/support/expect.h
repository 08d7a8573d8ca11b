#pragma once

#include <string_view>

// What a driver holds against the library or the program: a promise that does not hold is told and
// ends the run, which is how the search notices.
void expect(bool holds, std::string_view promise);
// The same, with what was seen, shown with visible escapes.
void expect(bool holds, std::string_view promise, std::string_view seen);

// Two answers that have to be one.
void expect_same(std::string_view first, std::string_view second, std::string_view promise);
