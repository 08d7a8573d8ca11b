#pragma once

#include <cstdint>
#include <string>

#include "kivo/export.h"

// How an object is used.
enum KIVO_OBJ_USAGE_STATE : std::int32_t {
    KIVO_USAGE_UNUSED = 0,
    KIVO_USAGE_USED = 1,
    KIVO_USAGE_VARIABLE = 2,
    KIVO_USAGE_CONSTANT = 3,
};

// "UNUSED", "VARIABLE" and "CONSTANT" give their states, every other word KIVO_USAGE_USED.
KIVO_API KIVO_OBJ_USAGE_STATE translate_usage_state(const std::string& word);

// The word of a state, "UNDEFINED" for any other value.
KIVO_API std::string kivo_get_usage_state_as_string(KIVO_OBJ_USAGE_STATE state);
