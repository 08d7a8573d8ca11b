#pragma once

#include <string>

#include "kivo/kivo.h"

// A conditional text of modest depth in one line: a sequence as "[PIECE PIECE]", a piece as
// "CONDITION?THEN:ELSE" without the ":" when there is nothing after it. A text and a sequence that
// should take each other's place are both written. Leaves the lists reset.
inline std::string written(KIVO_CONDITIONAL_TEXT* sequence) {  // NOLINT(misc-no-recursion)
    if (sequence == nullptr) {
        return "null";
    }
    const auto either = [](const std::string& text, KIVO_CONDITIONAL_TEXT* sub) {
        return sub == nullptr ? text : text + written(sub);
    };
    std::string pieces;
    sequence->text_elements.reset();
    while (const KIVO_CONDITIONAL_TEXT* piece = sequence->get_next_text_element()) {
        const std::string alternative = either(piece->else_text, piece->else_sub);
        pieces += (pieces.empty() ? "" : " ") + piece->condition + "?" +
                  either(piece->then_text, piece->then_sub) +
                  (alternative.empty() ? "" : ":" + alternative);
    }
    sequence->text_elements.reset();
    return "[" + pieces + "]";
}
