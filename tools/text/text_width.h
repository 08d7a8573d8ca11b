#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// How much room texts take on a terminal, and what fits into a room. Columns are those of
// fixed-width letters: two for East Asian wide characters and emoji, none for characters that
// combine with the one before. All but text_width expect what escape_text gives.

// The columns of a text as escape_text shows it.
std::size_t text_width(std::string_view text);

// A character together with those that combine with it.
struct TextCell {
    std::string_view text;
    std::size_t width;
};

// The cells of a text, in order; they point into it.
std::vector<TextCell> text_cells(std::string_view text);

// The longest part at the start or at the end of a text that is at most so many columns wide; no
// character loses what combines with it.
std::string_view start_within(std::string_view text, std::size_t width);
std::string_view end_within(std::string_view text, std::size_t width);

// The text when it is at most so many columns wide, else its start and the mark, an ellipsis of one
// column.
// REQUIRES: width >= 1
std::string shortened_to(std::string_view text, std::size_t width,
                         std::string_view mark = "\u2026");

// Breaks a text at blanks into lines of at most "width"; a word that is wider itself is broken
// after ";" and "," and beside wide characters. What then still does not fit stays whole. At least
// one line.
std::vector<std::string> wrap_text(std::string_view text, std::size_t width);
