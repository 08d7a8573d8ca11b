#pragma once

#include <cstdint>
#include <optional>
#include <string>

// Lines, columns and characters count from 1. Columns count the bytes of the text as UTF-8, as the
// library does; characters its code points, a byte that is not UTF-8 being one.
struct Position {
    std::int32_t line = 1;
    std::int32_t column = 1;
    std::int32_t character = 1;
};

// A part of a source line, cut in two where the place begins.
struct Excerpt {
    std::string before;
    std::string from;
};

// Where something stands. The end is the place after the last character: of the tag's name where
// an element begins ("<PORT"), else of the name, reference or single character that stands there.
struct Place {
    std::string file;               // empty: unknown
    std::optional<Position> start;  // none: only the file is known
    std::optional<Position> end;    // known when the start is; on the same line
    std::optional<Excerpt> excerpt;
};
