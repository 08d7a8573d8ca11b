#pragma once

#include <cstdint>
#include <string_view>

namespace kivo_session {

enum class Operator : std::uint8_t {
    kOr,
    kAnd,
    kEqual,
    kUnlike,
    kLess,
    kAtMost,
    kGreater,
    kAtLeast,
    kAdd,
    kSubtract,
    kMultiply,
    kDivide,
    kRemainder,
    kModulo,
    kQuotient,
    kPower,
    kPlus,
    kMinus,
    kNot,
};

// From loosest to tightest; operators of one level are read from left to right, but for comparisons
// and powers, which do not follow one another.
enum class Level : std::uint8_t { kOr, kAnd, kComparison, kSum, kProduct, kSign, kPower, kNot };

// One spelling of an operator.
struct OperatorRow {
    std::string_view spelling;
    Operator operation;
    Level level;
};

inline constexpr std::uint8_t kNoOperator = 0xFF;

const OperatorRow& operator_row(std::uint8_t row);

// The row of a spelling, words in any letter case; kNoOperator when there is none.
std::uint8_t find_operator(std::string_view spelling);

// The row of the sign "+" or "-".
std::uint8_t sign_row(char sign);

// Whether an operator stands between its operands.
bool is_binary(Operator operation);
bool is_comparison(Operator operation);
// "and", "gte", ...: a spelling of letters.
bool is_word(std::string_view spelling);

enum class Function : std::uint8_t { kAbs, kCeil, kFloor, kLog, kLog2, kMax, kMin };

struct FunctionRow {
    std::string_view name;
    Function function;
    std::uint8_t fewest_arguments;
    bool takes_more;
};

// Null when no function has the name.
const FunctionRow* find_function(std::string_view name);

}  // namespace kivo_session
