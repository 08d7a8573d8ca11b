#include "tools/text/text_width.h"

#include <utf8proc.h>

#include <algorithm>
#include <cassert>

#include "tools/text/text_escape.h"
#include "tools/text/utf8.h"

namespace {

bool is_plain(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char letter) { return letter >= ' ' && letter <= '~'; });
}

std::size_t width_of(std::string_view sequence) {
    const auto code = static_cast<utf8proc_int32_t>(utf8_code(sequence));
    const unsigned bound = utf8proc_get_property(code)->boundclass;
    // Vowels and finals of a syllable that its first consonant begins are drawn within that.
    const bool is_joined = bound == UTF8PROC_BOUNDCLASS_V || bound == UTF8PROC_BOUNDCLASS_T;
    return is_joined ? 0 : static_cast<std::size_t>(utf8proc_charwidth(code));
}

// The first character of a text that is not empty; a byte that is none takes a column.
TextCell first_character(std::string_view text) {
    const std::size_t length = utf8_length(text);
    return length == 0 ? TextCell{text.substr(0, 1), 1}
                       : TextCell{text.substr(0, length), width_of(text.substr(0, length))};
}

TextCell first_cell(std::string_view text) {
    TextCell cell = first_character(text);
    std::size_t length = cell.text.size();
    while (length < text.size()) {
        const TextCell next = first_character(text.substr(length));
        if (next.width > 0) {
            break;
        }
        length += next.text.size();
    }
    return {text.substr(0, length), cell.width};
}

// Whether a line may end between two cells of a word.
bool is_break(const TextCell& before, const TextCell& after) {
    return before.text == ";" || before.text == "," || (before.width > 1 && after.width > 1);
}

// The parts of a word between which it may be broken.
std::vector<std::string_view> parts_of(std::string_view word) {
    std::vector<std::string_view> parts;
    const std::vector<TextCell> cells = text_cells(word);
    std::size_t length = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        length += cells[i].text.size();
        if (i + 1 == cells.size() || is_break(cells[i], cells[i + 1])) {
            parts.push_back(word.substr(0, length));
            word.remove_prefix(length);
            length = 0;
        }
    }
    return parts;
}

class LineBreaker {
public:
    explicit LineBreaker(std::size_t width) : width_(width) {}

    void add(std::string_view blanks, std::string_view word) {
        const std::size_t wide = text_width(word);
        if (used_ > 0 && !word.empty() && used_ + blanks.size() + wide > width_) {
            start_line();
        } else {
            lines_.back() += blanks;
            used_ += blanks.size();
        }
        if (used_ + wide <= width_) {
            append(word, wide);
        } else {
            add_parts(word);
        }
    }

    std::vector<std::string> lines() { return std::move(lines_); }

private:
    void start_line() {
        lines_.emplace_back();
        used_ = 0;
    }

    void append(std::string_view text, std::size_t wide) {
        lines_.back() += text;
        used_ += wide;
    }

    void add_parts(std::string_view word) {
        bool is_first = true;
        for (const std::string_view part : parts_of(word)) {
            const std::size_t wide = text_width(part);
            if (!is_first && used_ + wide > width_) {
                start_line();
            }
            append(part, wide);
            is_first = false;
        }
    }

    const std::size_t width_;
    std::vector<std::string> lines_{1};
    std::size_t used_ = 0;
};

}  // namespace

std::size_t text_width(std::string_view text) {
    if (is_plain(text)) {
        return text.size();
    }
    const std::string shown = escape_text(text);
    std::size_t width = 0;
    for (std::string_view rest = shown; !rest.empty();) {
        const TextCell character = first_character(rest);
        width += character.width;
        rest.remove_prefix(character.text.size());
    }
    return width;
}

std::vector<TextCell> text_cells(std::string_view text) {
    std::vector<TextCell> cells;
    while (!text.empty()) {
        cells.push_back(first_cell(text));
        text.remove_prefix(cells.back().text.size());
    }
    return cells;
}

std::string_view start_within(std::string_view text, std::size_t width) {
    std::size_t length = 0;
    while (length < text.size()) {
        const TextCell cell = first_cell(text.substr(length));
        if (cell.width > width) {
            break;
        }
        width -= cell.width;
        length += cell.text.size();
    }
    return text.substr(0, length);
}

std::string_view end_within(std::string_view text, std::size_t width) {
    std::size_t total = text_width(text);
    while (total > width) {
        const TextCell cell = first_cell(text);
        total -= cell.width;
        text.remove_prefix(cell.text.size());
    }
    return text;
}

std::string shortened_to(std::string_view text, std::size_t width, std::string_view mark) {
    assert(width >= 1);
    return text_width(text) <= width ? std::string(text)
                                     : std::string(start_within(text, width - 1)).append(mark);
}

std::vector<std::string> wrap_text(std::string_view text, std::size_t width) {
    LineBreaker breaker(width);
    while (!text.empty()) {
        // A word with the blanks before it, which go when the line is broken there.
        const std::size_t start = std::min(text.find_first_not_of(' '), text.size());
        const std::size_t end = std::min(text.find(' ', start), text.size());
        breaker.add(text.substr(0, start), text.substr(start, end - start));
        text.remove_prefix(end);
    }
    return breaker.lines();
}
