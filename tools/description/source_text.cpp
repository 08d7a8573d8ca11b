#include "tools/description/source_text.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

#include "kivo/toolkit/xml/internal/input_source.h"
#include "tools/text/letters.h"
#include "tools/text/utf8.h"

namespace {

// How much of a long source line is shown before and from the place, in bytes.
constexpr std::size_t kBefore = 60;
constexpr std::size_t kFrom = 100;

// How far characters are counted anew for a place.
constexpr std::size_t kCountedBytes = 4096;

bool is_line_end(char letter) {
    return letter == '\n' || letter == '\r';
}

// Moves a cut to the start of the character in which it would fall.
std::size_t at_character(std::string_view line, std::size_t cut) {
    const std::size_t first = cut > 3 ? cut - 3 : 0;
    for (std::size_t start = cut; cut < line.size() && start > first; --start) {
        if (start - 1 + utf8_length(line.substr(start - 1)) > cut) {
            return start - 1;
        }
    }
    return cut;
}

// The end of what begins at "begin", as a place names it.
std::size_t end_of_part(std::string_view text, std::size_t begin) {
    if (begin >= text.size() || is_line_end(text[begin])) {
        return std::min(begin, text.size());
    }
    if (text[begin] == '<') {
        const bool is_marked =
            begin + 1 < text.size() && std::strchr("/?!", text[begin + 1]) != nullptr;
        return end_of_name(text, begin + (is_marked ? 2 : 1));
    }
    return is_name_letter(text[begin]) ? end_of_name(text, begin)
                                       : begin + utf8_step(text.substr(begin));
}

// Not with the streams of the library of C++, which take want of memory for an end of the file.
TextBuffer read_file(const std::string& path) {
    KIVO_FILE file;
    TextBuffer text;
    if (!file.open(path) || !file.read_all(text)) {
        return make_text_buffer(0);
    }
    return text;
}

}  // namespace

bool is_name_letter(char letter) {
    return is_letter_or_digit(letter) || is_beyond_ascii(letter) || letter == '_' ||
           letter == ':' || letter == '-' || letter == '.';
}

std::size_t end_of_name(std::string_view text, std::size_t begin) {
    while (begin < text.size() && is_name_letter(text[begin])) {
        ++begin;
    }
    return begin;
}

SourceText::SourceText(const std::string& path) : buffer_(read_file(path)) {
    const char* const original = buffer_.data.get();
    convert_to_utf8(buffer_);
    text_ = buffer_.view();
    if (buffer_.data.get() != original) {
        // Its mark is gone: another one would be a character, which no document may begin with.
        encoding_ = SourceEncoding::kConverted;
    } else if (const std::size_t mark = utf8_mark_length(text_); mark > 0) {
        encoding_ = SourceEncoding::kUtf8;
        text_.remove_prefix(mark);
    }
}

void SourceText::count_lines() const {
    if (!line_starts_.empty()) {
        return;
    }
    line_starts_.push_back(0);
    for (std::size_t at = 0; at < text_.size(); ++at) {
        const bool is_pair = text_[at] == '\r' && at + 1 < text_.size() && text_[at + 1] == '\n';
        if (is_line_end(text_[at]) && !is_pair) {
            line_starts_.push_back(at + 1);
        }
    }
}

void SourceText::count_characters() const {
    if (!character_counts_.empty()) {
        return;
    }
    character_counts_.push_back({0, 0});
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text_.size(); at += utf8_step(text_.substr(at))) {
        if (at >= character_counts_.size() * kCountedBytes) {
            character_counts_.push_back({at, characters});
        }
        ++characters;
    }
}

std::size_t SourceText::characters_before(std::size_t offset) const {
    count_characters();
    const std::size_t known = std::min(offset / kCountedBytes, character_counts_.size() - 1);
    const CharacterCount* from = &character_counts_[known];
    // A character that lies across the border is counted with those before it.
    from -= from->offset > offset ? 1 : 0;
    std::size_t characters = from->characters;
    for (std::size_t at = from->offset; at < offset; at += utf8_step(text_.substr(at))) {
        ++characters;
    }
    return characters;
}

Position SourceText::position(std::size_t offset) const {
    count_lines();
    const auto next = std::upper_bound(line_starts_.begin(), line_starts_.end(), offset);
    const std::size_t start = *std::prev(next);
    return {static_cast<std::int32_t>(next - line_starts_.begin()),
            static_cast<std::int32_t>(offset - start + 1),
            static_cast<std::int32_t>(characters_before(offset) - characters_before(start) + 1)};
}

std::string_view SourceText::line(std::size_t number) const {
    const std::size_t start = line_starts_[number - 1];
    const std::size_t end = number < line_starts_.size() ? line_starts_[number] : text_.size();
    std::string_view line = text_.substr(start, end - start);
    while (!line.empty() && is_line_end(line.back())) {
        line.remove_suffix(1);
    }
    return line;
}

Excerpt SourceText::excerpt(const Position& position) const {
    const std::string_view whole = line(static_cast<std::size_t>(position.line));
    const std::size_t column = static_cast<std::size_t>(position.column - 1);
    const std::size_t pointed = at_character(whole, std::min(column, whole.size()));
    const std::size_t first = at_character(whole, pointed > kBefore ? pointed - kBefore : 0);
    const std::size_t last = at_character(whole, std::min(pointed + kFrom, whole.size()));
    Excerpt excerpt;
    excerpt.before = first > 0 ? "..." : "";
    excerpt.before += whole.substr(first, pointed - first);
    excerpt.from = whole.substr(pointed, last - pointed);
    excerpt.from += last < whole.size() ? "..." : "";
    return excerpt;
}

std::optional<std::size_t> SourceText::offset(std::int32_t line, std::int32_t column) const {
    count_lines();
    if (line < 1 || column < 1 || static_cast<std::size_t>(line) > line_starts_.size()) {
        return std::nullopt;
    }
    const std::size_t offset =
        line_starts_[static_cast<std::size_t>(line - 1)] + static_cast<std::size_t>(column - 1);
    return offset <= text_.size() ? std::optional(offset) : std::nullopt;
}

Place SourceText::place(const std::string& file, std::size_t begin, std::size_t end) const {
    Place place;
    place.file = file;
    place.start = position(begin);
    place.end = position(end);
    place.excerpt = excerpt(*place.start);
    return place;
}

Place SourceText::place(const std::string& file, std::size_t begin) const {
    if (last_end_ == 0 || last_begin_ != begin) {
        last_begin_ = begin;
        last_end_ = end_of_part(text_, begin);
    }
    return place(file, begin, last_end_);
}

const SourceText& Sources::at(const std::string& path) {
    return texts_.try_emplace(path, path).first->second;
}
