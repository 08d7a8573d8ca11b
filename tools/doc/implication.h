#pragma once

#include <optional>
#include <string_view>

// What a value rule with IF and THEN says, of which the library composes one condition.
struct Implication {
    std::string_view condition;
    std::string_view consequence;
    std::string_view alternative;  // empty: nothing is required otherwise
};

// The parts of a composed condition; nothing when the text is none.
std::optional<Implication> implication_of(std::string_view text);
