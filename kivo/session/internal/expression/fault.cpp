#include "kivo/session/internal/expression/fault.h"

#include <iterator>

namespace kivo_session {

namespace {

struct FaultRow {
    FaultId id;
    const char* name;
    const char* text;
};

// clang-format off
constexpr FaultRow kFaults[] = {
    { FaultId::kExpressionSyntax, "expression-syntax", "this is no expression"                         },
    { FaultId::kUnknownName,      "unknown-name",      "nothing has this name"                         },
    { FaultId::kMacroArguments,   "macro-arguments",   "the number of arguments is wrong"              },
    { FaultId::kMacroRecursion,   "macro-recursion",   "the macro uses itself"                         },
    { FaultId::kTextTooLong,      "text-too-long",     "the text is longer than 65536 bytes"           },
    { FaultId::kTooDeep,          "too-deep",          "more than 256 operators and parentheses are open" },
    { FaultId::kDefaultIndex,     "default-index",     "DEFAULT_VALUE_INDEX lies outside the list"     },
    { FaultId::kStateWord,        "state-word",        "a state is UNUSED, USED, VARIABLE, CONSTANT or a whole number" },
    { FaultId::kIllTyped,         "ill-typed",         "a value of another kind is needed here"        },
    { FaultId::kDivisionByZero,   "division-by-zero",  "the divisor is 0"                              },
    { FaultId::kDomain,           "domain",            "there is no result for this operand"           },
    { FaultId::kTooLarge,         "too-large",         "the number does not fit 128 bits"              },
    { FaultId::kTooManySteps,     "too-many-steps",    "more than 1000000 steps are needed"            },
};
// clang-format on

constexpr bool is_in_order() {
    for (std::size_t i = 0; i < std::size(kFaults); ++i) {
        if (kFaults[i].id != static_cast<FaultId>(i)) {
            return false;
        }
    }
    return std::size(kFaults) == static_cast<std::size_t>(FaultId::kTooManySteps) + 1;
}
static_assert(is_in_order());

}  // namespace

const char* fault_name(FaultId id) {
    return kFaults[static_cast<std::size_t>(id)].name;
}

const char* fault_text(FaultId id) {
    return kFaults[static_cast<std::size_t>(id)].text;
}

}  // namespace kivo_session
