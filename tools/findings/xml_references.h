#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Whether XML allows a character.
bool is_xml_character(std::uint32_t code);

// What stands between the "&" at "begin" and the ";" that closes the reference; empty without one.
std::string_view reference_at(std::string_view text, std::size_t begin);

// Whether "#10" or "#xA", which a reference holds, stands for a character that XML allows.
bool is_allowed_reference(std::string_view reference);

// The offset of the "&" of the reference that is broken off at "at", or npos.
std::size_t start_of_reference(std::string_view text, std::size_t at);
