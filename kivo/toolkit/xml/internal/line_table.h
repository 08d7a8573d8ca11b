#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// Where the lines of a text begin, so that an offset can be told as line and column after the
// text itself is gone. LF, CR LF and a lone CR end a line.
class LineTable {
public:
    // Both saturate: what lies beyond 32 bits is told as the largest number that fits.
    struct Position {
        std::int32_t line;    // from 1
        std::int32_t column;  // in bytes, from 1
    };

    LineTable() = default;
    explicit LineTable(std::string_view text);

    // For a text that is looked at part by part: adds the lines that end in this one.
    void add_lines(std::string_view text, std::size_t begin, std::size_t end);

    Position locate(std::size_t offset) const;

private:
    // Of a part from "at" to "last" that has no CR, and of one that has.
    void add_line_feeds(const char* text, const char* at, const char* last);
    void add_line_ends(std::string_view text, const char* at, const char* last);

    // Of every line but the first; 32 bits, as the marks that are looked up in it.
    std::vector<std::uint32_t> starts_;
};
