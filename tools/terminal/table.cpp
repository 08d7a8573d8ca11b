#include "tools/terminal/table.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "tools/text/cut_text.h"
#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNoteIndent = 4;
constexpr std::size_t kHangingIndent = 4;
// Narrower columns read worse than lines that are too long.
constexpr std::size_t kNarrowest = 16;
// Of words that cannot be broken, a column is as wide as this at most.
constexpr std::size_t kWidestWord = kPageWidth / 2;

// In bytes.
constexpr std::size_t kLongCell = 20000;

struct Column {
    std::size_t width = 0;
    std::size_t least = kNarrowest;
};

// The widest part of a text that stays whole wherever it is wrapped.
std::size_t widest_word(std::string_view text) {
    std::size_t widest = 0;
    for (const std::string& part : wrap_text(text, 1)) {
        widest = std::max(widest, text_width(part));
    }
    return widest;
}

std::size_t width_of_line(const std::vector<Column>& columns, std::size_t indent) {
    std::size_t total = indent;
    for (const Column& column : columns) {
        total += column.width == 0 ? 0 : column.width + kGap;
    }
    return total - std::min(total, kGap);
}

// Takes from the widest column that can be narrower, a step at a time, until the line fits.
void fit_to_page(std::vector<Column>& columns, std::size_t indent) {
    const auto spare_width = [](const Column& column) {
        return column.width > column.least ? column.width : 0;
    };
    while (width_of_line(columns, indent) > kPageWidth) {
        const auto widest = std::max_element(columns.begin(), columns.end(),
                                             [&](const Column& left, const Column& right) {
                                                 return spare_width(left) < spare_width(right);
                                             });
        if (widest == columns.end() || spare_width(*widest) == 0) {
            return;
        }
        --widest->width;
    }
}

// A cell that is too wide moves those after it to the right.
void append_cell(std::string& out, std::string_view text, std::size_t width) {
    out += text;
    out.append(width - std::min(width, text_width(text)) + kGap, ' ');
}

// The beginning of what is too long for a table, and how much is missing.
std::string shown_part(std::string_view text) {
    const CutText cut = cut_text(text, kLongCell);
    const std::string shown = escape_text(cut.shown);
    return cut.left_out == 0 ? shown : shown + ' ' + and_more(cut.left_out, "character");
}

void drop_trailing_blanks(std::string& out) {
    out.erase(out.find_last_not_of(' ') + 1);
}

std::string render_lines(std::string_view text, std::size_t first, std::size_t others) {
    std::string out;
    for (const std::string& line : wrap_text(escape_text(text), kPageWidth - others)) {
        out.append(out.empty() ? first : others, ' ');
        out += line;
        out += '\n';
    }
    return out;
}

}  // namespace

void Table::add_row(std::vector<std::string> cells) {
    for (std::string& cell : cells) {
        cell = shown_part(cell);
    }
    rows_.push_back({std::move(cells), {}});
}

void Table::add_note(std::string_view text) {
    assert(!rows_.empty());
    rows_.back().notes.emplace_back(text);
}

std::vector<std::size_t> Table::column_widths(std::size_t indent) const {
    std::vector<Column> columns;
    for (const Row& row : rows_) {
        columns.resize(std::max(columns.size(), row.cells.size()));
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const std::size_t width = text_width(row.cells[i]);
            columns[i].width = std::max(columns[i].width, width);
            if (width > columns[i].least) {
                const std::size_t word = std::min(widest_word(row.cells[i]), kWidestWord);
                columns[i].least = std::max(columns[i].least, word);
            }
        }
    }
    for (std::size_t i = 0; i < std::min(columns.size(), headings_.size()); ++i) {
        if (columns[i].width > 0) {
            columns[i].width = std::max(columns[i].width, text_width(headings_[i]));
        }
    }
    fit_to_page(columns, indent);
    std::vector<std::size_t> widths;
    widths.reserve(columns.size());
    for (const Column& column : columns) {
        widths.push_back(column.width);
    }
    return widths;
}

void Table::render_row(std::string& out, const Row& row, std::size_t indent,
                       const std::vector<std::size_t>& widths, const Stream& stream) const {
    std::vector<std::vector<std::string>> cells;
    std::size_t height = 1;
    for (std::size_t column = 0; column < row.cells.size(); ++column) {
        cells.push_back(wrap_text(row.cells[column], std::max<std::size_t>(widths[column], 1)));
        height = std::max(height, cells.back().size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        std::string text(indent, ' ');
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (widths[column] == 0) {
                continue;
            }
            const bool has_line = line < cells[column].size();
            const std::string_view part = has_line ? cells[column][line] : std::string_view();
            const std::size_t before = text.size();
            append_cell(text, part, widths[column]);
            if (column == 0 && headings_.empty()) {
                text.replace(before, part.size(), stream.paint(Style::kDim, part));
            }
        }
        drop_trailing_blanks(text);
        out += text;
        out += '\n';
    }
}

std::string Table::render(std::size_t indent, const Stream& stream) const {
    const std::vector<std::size_t> widths = column_widths(indent);
    std::string out;
    if (!headings_.empty()) {
        std::string line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            if (widths[column] > 0) {
                append_cell(line, headings_[column], widths[column]);
            }
        }
        drop_trailing_blanks(line);
        out.append(indent, ' ');
        out += stream.paint(Style::kDim, line);
        out += '\n';
    }
    for (const Row& row : rows_) {
        render_row(out, row, indent, widths, stream);
        for (const std::string& note : row.notes) {
            out += render_code(note, indent + kNoteIndent);
        }
    }
    return out;
}

std::string render_code(std::string_view text, std::size_t indent) {
    return render_lines(text, indent, indent + kHangingIndent);
}

std::string render_prose(std::string_view text, std::size_t indent) {
    return render_lines(text, indent, indent);
}
