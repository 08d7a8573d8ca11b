#include "tools/terminal/page.h"

#include "tools/text/text_escape.h"

void Facts::add(std::string_view label, std::string_view text) {
    if (!text.empty()) {
        table_.add_row({std::string(label), join_lines(text)});
    }
}

void Page::heading(std::string_view title) {
    text_ += text_.empty() ? "" : "\n";
    text_ += stream_.paint(Style::kBold, escape_text(title));
    text_ += '\n';
}

void Page::sub_heading(std::string_view title) {
    text_ += "\n  ";
    text_ += stream_.paint(Style::kBold, escape_text(title));
    text_ += '\n';
}

void Page::table(const Table& table, std::size_t indent) {
    text_ += table.render(indent, stream_);
}

void Page::code(std::string_view text, std::size_t indent) {
    text_ += render_code(text, indent);
}

void Page::prose(std::string_view text, std::size_t indent) {
    text_ += render_prose(text, indent);
}

void Page::label(std::string_view text, std::size_t indent) {
    text_.append(indent, ' ');
    text_ += stream_.paint(Style::kDim, escape_text(text));
    text_ += '\n';
}
