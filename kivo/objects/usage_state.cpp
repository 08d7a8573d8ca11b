#include "kivo/objects/usage_state.h"

KIVO_OBJ_USAGE_STATE translate_usage_state(const std::string& word) {
    if (word == "UNUSED") {
        return KIVO_USAGE_UNUSED;
    }
    if (word == "VARIABLE") {
        return KIVO_USAGE_VARIABLE;
    }
    if (word == "CONSTANT") {
        return KIVO_USAGE_CONSTANT;
    }
    return KIVO_USAGE_USED;
}

std::string kivo_get_usage_state_as_string(KIVO_OBJ_USAGE_STATE state) {
    switch (state) {
        case KIVO_USAGE_UNUSED:
            return "UNUSED";
        case KIVO_USAGE_USED:
            return "USED";
        case KIVO_USAGE_VARIABLE:
            return "VARIABLE";
        case KIVO_USAGE_CONSTANT:
            return "CONSTANT";
    }
    return "UNDEFINED";
}
