#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/doc/names.h"

// Texts of a description as markup. An empty text gives none; of one of more than 20,000 bytes the
// beginning is shown, and how much is missing.

// As it is: in letters of one width, or like other text.
std::string code_cell(std::string_view text);
std::string text_cell(std::string_view text);

// An expression, condition or value: names link to what has them, and the digits of long numbers
// stand in groups, which copying leaves out.
std::string expression_cell(const PageNames& names, std::string_view text);
// A command, whose values may be in any radix: names link.
std::string command_cell(const PageNames& names, std::string_view text);
// Prose: names that no word of a sentence can be link.
std::string prose(const PageNames& names, std::string_view text);

// How many things of a kind ("value") are left out after those that stand there.
std::string more_markup(std::size_t count, const std::string& noun);

// "20 000 ns", the digits in groups; the scale as with_unit has it.
std::string time_cell(std::int64_t time, const std::string& scale);
