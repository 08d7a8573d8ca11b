#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Steps through texts that are meant to be UTF-8.

// The length of the well-formed sequence at the start of a text, 0 when there is none.
// REQUIRES: !text.empty()
std::size_t utf8_length(std::string_view text);

// The length of the character at the start of a text: of the sequence there, or of the one byte
// that begins none.
// REQUIRES: !text.empty()
std::size_t utf8_step(std::string_view text);

// The code point of a well-formed sequence.
std::uint32_t utf8_code(std::string_view sequence);
