#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kivo_session {

// The states of a port, as values of the nodes that hold them; in the order of the store's codes.
enum class PortState : std::uint8_t { kUnused, kUsed, kVariable, kConstant };

inline bool is_connected(PortState state) {
    return state == PortState::kUsed || state == PortState::kVariable;
}

const char* word_of(PortState state);
// Nothing for any other word.
std::optional<PortState> state_of_word(std::string_view word);

inline bool is_state_word(std::string_view word) {
    return state_of_word(word).has_value();
}

}  // namespace kivo_session
