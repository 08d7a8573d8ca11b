#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/terminal/table.h"
#include "tools/terminal/terminal.h"

// Labels and what they stand for; those of which nothing is known are left out.
class Facts {
public:
    void add(std::string_view label, std::string_view text);
    const Table& table() const { return table_; }

private:
    Table table_;
};

// What a command prints for people to read: headed sections of tables and texts.
class Page {
public:
    // REQUIRES: the stream outlives the page
    explicit Page(const Stream& stream) : stream_(stream) {}

    // Starts a section, with an empty line between it and what stands before.
    void heading(std::string_view title);
    // The same, one level below.
    void sub_heading(std::string_view title);
    void table(const Table& table, std::size_t indent);
    void code(std::string_view text, std::size_t indent);
    void prose(std::string_view text, std::size_t indent);
    // What the indented lines below it are.
    void label(std::string_view text, std::size_t indent);

    const std::string& text() const { return text_; }

private:
    const Stream& stream_;
    std::string text_;
};
