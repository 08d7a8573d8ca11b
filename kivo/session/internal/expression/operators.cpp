#include "kivo/session/internal/expression/operators.h"

#include <algorithm>
#include <iterator>

#include "kivo/toolkit/less_c_string.h"

namespace kivo_session {

namespace {

// clang-format off
constexpr OperatorRow kOperators[] = {
    { "||",   Operator::kOr,        Level::kOr         },
    { "or",   Operator::kOr,        Level::kOr         },
    { "&&",   Operator::kAnd,       Level::kAnd        },
    { "and",  Operator::kAnd,       Level::kAnd        },
    { "==",   Operator::kEqual,     Level::kComparison },
    { "!=",   Operator::kUnlike,    Level::kComparison },
    { "<",    Operator::kLess,      Level::kComparison },
    { "lt",   Operator::kLess,      Level::kComparison },
    { "<=",   Operator::kAtMost,    Level::kComparison },
    { "lte",  Operator::kAtMost,    Level::kComparison },
    { ">",    Operator::kGreater,   Level::kComparison },
    { "gt",   Operator::kGreater,   Level::kComparison },
    { ">=",   Operator::kAtLeast,   Level::kComparison },
    { "gte",  Operator::kAtLeast,   Level::kComparison },
    { "+",    Operator::kAdd,       Level::kSum        },
    { "-",    Operator::kSubtract,  Level::kSum        },
    { "*",    Operator::kMultiply,  Level::kProduct    },
    { "/",    Operator::kDivide,    Level::kProduct    },
    { "%",    Operator::kRemainder, Level::kProduct    },
    { "mod",  Operator::kModulo,    Level::kProduct    },
    { "div",  Operator::kQuotient,  Level::kProduct    },
    { "quot", Operator::kQuotient,  Level::kProduct    },
    { "^",    Operator::kPower,     Level::kPower      },
    { "!",    Operator::kNot,       Level::kNot        },
    { "not",  Operator::kNot,       Level::kNot        },
    // Signs come last: a search for their spelling finds the sum.
    { "+",    Operator::kPlus,      Level::kSign       },
    { "-",    Operator::kMinus,     Level::kSign       },
};

constexpr FunctionRow kFunctions[] = {
    // name     function         arguments  more
    { "abs",   Function::kAbs,   1,         false },
    { "ceil",  Function::kCeil,  1,         false },
    { "floor", Function::kFloor, 1,         false },
    { "log",   Function::kLog,   1,         false },
    { "log2",  Function::kLog2,  1,         false },
    { "max",   Function::kMax,   1,         true  },
    { "min",   Function::kMin,   1,         true  },
};
// clang-format on

constexpr std::size_t kLongestOperator = 4;

}  // namespace

const OperatorRow& operator_row(std::uint8_t row) {
    return kOperators[row];
}

std::uint8_t find_operator(std::string_view spelling) {
    if (spelling.size() > kLongestOperator) {
        return kNoOperator;
    }
    for (std::size_t row = 0; row < std::size(kOperators); ++row) {
        if (kOperators[row].spelling.size() == spelling.size() &&
            LESS_C_STRING::compare(kOperators[row].spelling, spelling) == 0) {
            return static_cast<std::uint8_t>(row);
        }
    }
    return kNoOperator;
}

std::uint8_t sign_row(char sign) {
    return static_cast<std::uint8_t>(std::size(kOperators) - (sign == '-' ? 1 : 2));
}

bool is_binary(Operator operation) {
    return operation < Operator::kPlus;
}

bool is_comparison(Operator operation) {
    return operation >= Operator::kEqual && operation <= Operator::kAtLeast;
}

bool is_word(std::string_view spelling) {
    const char first = static_cast<char>(LESS_C_STRING::fold(spelling.front()));
    return first >= 'a' && first <= 'z';
}

const FunctionRow* find_function(std::string_view name) {
    const auto* const found = std::find_if(std::begin(kFunctions), std::end(kFunctions),
                                           [name](const auto& row) { return row.name == name; });
    return found == std::end(kFunctions) ? nullptr : found;
}

}  // namespace kivo_session
