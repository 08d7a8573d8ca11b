#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kivo_session {

// What can be wrong with a text.
enum class FaultId : std::uint8_t {
    kExpressionSyntax,
    kUnknownName,
    kMacroArguments,
    kMacroRecursion,
    kTextTooLong,
    kTooDeep,
    kDefaultIndex,
    kStateWord,
    // From here on: what arises with values, and may be absorbed.
    kIllTyped,
    kDivisionByZero,
    kDomain,
    kTooLarge,
    kTooManySteps,
};

// "expression-syntax", ...
const char* fault_name(FaultId id);

// What is wrong when nothing more is known than the id.
const char* fault_text(FaultId id);

// What is wrong with a text, and with which bytes of it.
struct Fault {
    FaultId id = FaultId::kExpressionSyntax;
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    std::string text;
};

}  // namespace kivo_session
