#pragma once

#include <string_view>

// Reads a Value Change Dump as strictly as it is written, and ends the run where it is none: every
// signal has its code and one value at the start, times ascend, values have the width declared.
void expect_dump(std::string_view dump);
