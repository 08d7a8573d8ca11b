#include "tools/doc/table.h"

#include <algorithm>

#include "tools/text/cut_text.h"

namespace {

// Tables with more columns show each row as a block where the page is not at its full width.
constexpr std::size_t kMostColumns = 4;
}  // namespace

std::vector<std::size_t> HtmlTable::columns_with_content() const {
    std::vector<std::size_t> columns;
    for (std::size_t column = 0; column < heads_.size(); ++column) {
        const bool has_content =
            column == 0 || std::any_of(rows_.begin(), rows_.end(), [column](const Row& row) {
                return !row.cells[column].empty();
            });
        if (has_content) {
            columns.push_back(column);
        }
    }
    return columns;
}

void HtmlTable::write(HtmlWriter& html) const {
    if (rows_.empty()) {
        return;
    }
    write_rows(html);
    if (left_out_ > 0) {
        html.element("p", {{"class", "note"}}, and_more(left_out_, "row"));
    }
}

void HtmlTable::write_rows(HtmlWriter& html) const {
    const std::vector<std::size_t> columns = columns_with_content();
    // Focus lets the keyboard scroll it.
    const HtmlScope frame(
        html, "div",
        {{"class", "scroll"}, {"role", "region"}, {"aria-label", label_}, {"tabindex", "0"}});
    const std::string style = columns.size() > kMostColumns ? style_ + " many" : style_;
    const HtmlScope table(html, "table", {{"class", style}});
    {
        const HtmlScope head(html, "thead");
        const HtmlScope row(html, "tr");
        for (const std::size_t column : columns) {
            html.element("th", {{"scope", "col"}}, heads_[column]);
        }
    }
    const HtmlScope body(html, "tbody");
    for (const auto& [id, cells] : rows_) {
        if (id.empty()) {
            html.open("tr");
        } else {
            html.open("tr", {{"id", id}});
        }
        for (const std::size_t column : columns) {
            const HtmlAttribute attribute = column == 0
                                                ? HtmlAttribute{"scope", "row"}
                                                : HtmlAttribute{"data-label", heads_[column]};
            const HtmlScope cell(html, column == 0 ? "th" : "td", {attribute});
            html.markup(cells[column]);
        }
        html.close();
    }
}

void FactList::add(std::string_view term, std::string_view markup) {
    if (markup.empty()) {
        return;
    }
    const HtmlScope pair(facts_, "div");
    facts_.element("dt", term);
    const HtmlScope fact(facts_, "dd");
    facts_.markup(markup);
}

void FactList::write(HtmlWriter& html) const {
    if (!facts_.empty()) {
        const HtmlScope list(html, "dl", {{"class", "facts"}});
        html.markup(facts_.result());
    }
}
