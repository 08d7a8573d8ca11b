#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A copy that cannot steer a terminal: control characters, characters that turn the direction of
// writing and bytes that are not UTF-8 become visible escapes ("\n", "\x1B", "\u202E", "\xE9").
std::string escape_text(std::string_view text);

// A copy whose line breaks and the white space around them are single blanks, without white space
// at its ends: what an author broke over lines for the sake of the file.
std::string join_lines(std::string_view text);

// The number of code points of a UTF-8 text, which is how wide a terminal shows most of them.
std::size_t text_width(std::string_view text);

// Breaks a text at blanks into lines of at most "width", where its words allow it; at least one
// line.
std::vector<std::string> wrap_text(std::string_view text, std::size_t width);
