#pragma once

#include <array>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

// What a message of a description can be, in the words of each kind of output.
struct MessageSeverity {
    KIVO_RULE_KIND kind;
    KIVO_SEVERITY severity;
    const char* word;   // for people
    const char* id;     // in JSON
    const char* style;  // of a page
    const char* title;  // above several
};

// The gravest first.
// clang-format off
constexpr std::array<MessageSeverity, 4> kMessageSeverities = {{
    { KIVO_RULE_ERROR,            KIVO_SEVERITY::kError,
      "error",            "error",            "error",    "Errors"            },
    { KIVO_RULE_CRITICAL_WARNING, KIVO_SEVERITY::kCriticalWarning,
      "critical warning", "critical-warning", "critical", "Critical warnings" },
    { KIVO_RULE_WARNING,          KIVO_SEVERITY::kWarning,
      "warning",          "warning",          "warning",  "Warnings"          },
    { KIVO_RULE_INFO,             KIVO_SEVERITY::kInfo,
      "info",             "info",             "info",     "Information"       },
}};
// clang-format on
