#pragma once

#include <string>
#include <string_view>

namespace kivo_session {

// Words that are no names of a designer's: reserved ones of any version of the language, and in
// VHDL the types and libraries that an instance itself needs. VHDL knows no case.
bool is_vhdl_word(std::string_view name);
bool is_verilog_word(std::string_view name);

// In lower case, whatever the locale.
std::string folded(std::string_view text);

}  // namespace kivo_session
