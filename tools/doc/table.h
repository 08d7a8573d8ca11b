#pragma once

#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/doc/html.h"

// A table that is no wider than the page: its rows are blocks on a phone, and those of a table of
// many columns wherever the page is narrow. Its first column names the row; columns without any
// content are left out.
class HtmlTable {
public:
    // No browser is quick with more; of those beyond, the table tells how many there are.
    static constexpr std::size_t kMostRows = 20000;

    // "style" is a class name, "label" says to those who do not see the table what it holds.
    HtmlTable(std::string_view style, std::string_view label, std::vector<std::string> heads)
        : style_(style), label_(label), heads_(std::move(heads)) {}

    // The markup of one cell per column, and the id of the row if it has one.
    // REQUIRES: as many cells as columns
    void add_row(std::vector<std::string> cells, std::string id = {}) {
        assert(cells.size() == heads_.size());
        if (rows_.size() == kMostRows) {
            ++left_out_;
            return;
        }
        rows_.push_back({std::move(id), std::move(cells)});
    }
    // Writes nothing when there is no row.
    void write(HtmlWriter& html) const;

private:
    struct Row {
        std::string id;
        std::vector<std::string> cells;
    };

    std::vector<std::size_t> columns_with_content() const;
    void write_rows(HtmlWriter& html) const;

    std::string style_;
    std::string label_;
    std::vector<std::string> heads_;
    std::vector<Row> rows_;
    std::size_t left_out_ = 0;
};

// Terms with what there is to say about each.
class FactList {
public:
    // "markup" is the markup of what there is to say; nothing is added when that is empty.
    void add(std::string_view term, std::string_view markup);
    // Writes nothing when nothing was added.
    void write(HtmlWriter& html) const;

private:
    HtmlWriter facts_;
};
