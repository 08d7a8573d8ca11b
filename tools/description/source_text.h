#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/toolkit/xml/internal/encoding.h"
#include "tools/description/place.h"

// What the bytes of a file are, whatever its XML declaration says.
enum class SourceEncoding {
    kDeclared,   // nothing tells; the declaration counts
    kUtf8,       // a byte-order mark says so
    kConverted,  // of more bytes a character, and UTF-8 only since it was read
};

// A file as the library's places count it: as UTF-8 without a byte-order mark, in lines that LF,
// CR LF or a lone CR ends. Empty when it cannot be read.
class SourceText {
public:
    explicit SourceText(const std::string& path);

    std::string_view text() const { return text_; }
    SourceEncoding encoding() const { return encoding_; }

    // The offset of a line and column; nothing beyond the text.
    std::optional<std::size_t> offset(std::int32_t line, std::int32_t column) const;

    // The place from "begin" to before "end", both in the same line, in a file that is called so.
    Place place(const std::string& file, std::size_t begin, std::size_t end) const;
    // The place of what begins at "begin".
    Place place(const std::string& file, std::size_t begin) const;

private:
    struct CharacterCount {
        std::size_t offset;
        std::size_t characters;  // before the offset
    };

    void count_lines() const;
    void count_characters() const;
    std::size_t characters_before(std::size_t offset) const;
    Position position(std::size_t offset) const;
    std::string_view line(std::size_t number) const;
    Excerpt excerpt(const Position& position) const;

    TextBuffer buffer_;
    std::string_view text_;  // of the buffer, without a byte-order mark
    SourceEncoding encoding_ = SourceEncoding::kDeclared;
    // Made when the first place is asked for: most files have none.
    mutable std::vector<std::size_t> line_starts_;
    mutable std::vector<CharacterCount> character_counts_;
    // What was asked for last: an element with many faults may have a long name.
    mutable std::size_t last_begin_ = 0;
    mutable std::size_t last_end_ = 0;
};

// The files of one description, each read once.
class Sources {
public:
    const SourceText& at(const std::string& path);

private:
    std::map<std::string, SourceText> texts_;
};

// Whether a letter can be part of a name in XML; every byte beyond ASCII counts as one.
bool is_name_letter(char letter);

// The end of the run of such letters from "begin" on.
std::size_t end_of_name(std::string_view text, std::size_t begin);
