#pragma once

#include <string>
#include <string_view>

// A copy that cannot steer a terminal: control characters, characters that turn the direction of
// writing and bytes that are not UTF-8 become visible escapes ("\n", "\x1B", "\u202E", "\xE9").
std::string escape_text(std::string_view text);

// A copy whose line breaks and the white space around them are single blanks, without white space
// at its ends: what an author broke over lines for the sake of the file.
std::string join_lines(std::string_view text);
