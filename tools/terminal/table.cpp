#include "tools/terminal/table.h"

#include <algorithm>
#include <utility>

#include "tools/text/text_escape.h"

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kNoteIndent = 4;
constexpr std::size_t kHangingIndent = 4;
// Narrower columns read worse than lines that are too long.
constexpr std::size_t kNarrowest = 16;

std::size_t width_of_line(const std::vector<std::size_t>& widths, std::size_t indent) {
    std::size_t total = indent;
    for (const std::size_t width : widths) {
        total += width == 0 ? 0 : width + kGap;
    }
    return total - std::min(total, kGap);
}

// Takes from the widest column, down to the next narrower one at most, until the line fits.
void fit_to_page(std::vector<std::size_t>& widths, std::size_t indent) {
    for (;;) {
        const std::size_t total = width_of_line(widths, indent);
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (total <= kPageWidth || widest == widths.end() || *widest <= kNarrowest) {
            return;
        }
        std::size_t runner_up = kNarrowest;
        for (auto at = widths.begin(); at != widths.end(); ++at) {
            if (at != widest) {
                runner_up = std::max(runner_up, *at);
            }
        }
        const std::size_t wanted = *widest - std::min(*widest, total - kPageWidth);
        const std::size_t least = std::max(std::min(runner_up, *widest - 1), kNarrowest);
        *widest = std::max(wanted, least);
    }
}

void append_padded(std::string& out, std::string_view text, std::size_t width) {
    out += text;
    out.append(width - std::min(width, text_width(text)), ' ');
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
        cell = escape_text(cell);
    }
    rows_.push_back({std::move(cells), {}});
}

void Table::add_note(std::string_view text) {
    rows_.back().notes.emplace_back(text);
}

std::vector<std::size_t> Table::column_widths(std::size_t indent) const {
    std::vector<std::size_t> widths;
    for (const Row& row : rows_) {
        widths.resize(std::max(widths.size(), row.cells.size()));
        for (std::size_t column = 0; column < row.cells.size(); ++column) {
            widths[column] = std::max(widths[column], text_width(row.cells[column]));
        }
    }
    for (std::size_t column = 0; column < std::min(widths.size(), headings_.size()); ++column) {
        if (widths[column] > 0) {
            widths[column] = std::max(widths[column], text_width(headings_[column]));
        }
    }
    fit_to_page(widths, indent);
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
            append_padded(text, part, widths[column] + kGap);
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
                append_padded(line, headings_[column], widths[column] + kGap);
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
