#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/terminal/terminal.h"

// The width that output is laid out for, whatever the width of the terminal, so that the same
// description gives the same text everywhere.
constexpr std::size_t kPageWidth = 100;

// Rows of cells in aligned columns. A row may carry notes, which stand below it. Columns in which
// no row has anything are left out; wide ones are wrapped. Cells and notes are escaped here, and of
// a cell of more than 20,000 bytes the beginning is shown.
class Table {
public:
    // Without headings, the first column is painted like one.
    Table() = default;
    explicit Table(std::vector<std::string> headings) : headings_(std::move(headings)) {}

    void add_row(std::vector<std::string> cells);
    // REQUIRES: a row to stand below
    void add_note(std::string_view text);
    bool empty() const { return rows_.empty(); }

    // The lines of the table, each indented.
    std::string render(std::size_t indent, const Stream& stream) const;

private:
    struct Row {
        std::vector<std::string> cells;
        std::vector<std::string> notes;
    };

    std::vector<std::size_t> column_widths(std::size_t indent) const;
    void render_row(std::string& out, const Row& row, std::size_t indent,
                    const std::vector<std::size_t>& widths, const Stream& stream) const;

    std::vector<std::string> headings_;
    std::vector<Row> rows_;
};

// Texts, escaped and wrapped, each line indented: of a command or condition, the lines after the
// first a little deeper.
std::string render_code(std::string_view text, std::size_t indent);
std::string render_prose(std::string_view text, std::size_t indent);
