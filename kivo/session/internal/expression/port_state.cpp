#include "kivo/session/internal/expression/port_state.h"

#include <algorithm>
#include <iterator>

namespace kivo_session {

namespace {

constexpr const char* kStateWords[] = {"UNUSED", "USED", "VARIABLE", "CONSTANT"};

}  // namespace

const char* word_of(PortState state) {
    return kStateWords[static_cast<std::size_t>(state)];
}

std::optional<PortState> state_of_word(std::string_view word) {
    const auto* const found = std::find(std::begin(kStateWords), std::end(kStateWords), word);
    return found == std::end(kStateWords)
               ? std::nullopt
               : std::optional(static_cast<PortState>(found - std::begin(kStateWords)));
}

}  // namespace kivo_session
