#include "tools/doc/table.h"

#include <algorithm>

#include "tools/text/text_steps.h"
#include "tools/text/text_width.h"

namespace {

// Tables with more columns show each row as a block where the page is not at its full width.
constexpr std::size_t kMostColumns = 4;
// Wider words may be broken after an underscore, and much wider ones anywhere.
constexpr std::size_t kWideWord = 12;
constexpr std::size_t kLongWord = 24;

// A text whose wide words may be broken after their underscores, so that no column needs more room
// than it is worth.
class CellText {
public:
    explicit CellText(std::string_view text) {
        while (!text.empty()) {
            add_word(taken_until(text, kBlanks));
            const std::string_view from_blanks = text;
            skip_blanks(text);
            markup_ += escape_html(from_blanks.substr(0, from_blanks.size() - text.size()));
        }
    }

    const std::string& markup() const { return markup_; }
    // Whether a word needs to be broken anywhere.
    bool has_long_word() const { return has_long_word_; }

private:
    void add_word(std::string_view word) {
        const bool is_wide = text_width(word) > kWideWord;
        while (!word.empty()) {
            const std::size_t underscore = is_wide ? word.find('_') : std::string_view::npos;
            const bool is_last = underscore == std::string_view::npos;
            const std::string_view part = is_last ? word : word.substr(0, underscore + 1);
            word.remove_prefix(part.size());
            markup_ += escape_html(part);
            markup_ += word.empty() ? "" : "<wbr/>";
            has_long_word_ = has_long_word_ || text_width(part) > kLongWord;
        }
    }

    std::string markup_;
    bool has_long_word_ = false;
};

}  // namespace

std::string code_cell(std::string_view text) {
    const CellText cell(text);
    return text.empty() ? std::string()
                        : (cell.has_long_word() ? "<code class=\"long\">" : "<code>") +
                              cell.markup() + "</code>";
}

std::string text_cell(std::string_view text) {
    const CellText cell(text);
    return cell.has_long_word() ? "<span class=\"long\">" + cell.markup() + "</span>"
                                : cell.markup();
}

std::vector<std::size_t> HtmlTable::columns_with_content() const {
    std::vector<std::size_t> columns;
    for (std::size_t column = 0; column < heads_.size(); ++column) {
        const bool has_content =
            column == 0 || std::any_of(rows_.begin(), rows_.end(),
                                       [column](const auto& row) { return !row[column].empty(); });
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
    for (const std::vector<std::string>& cells : rows_) {
        const HtmlScope row(html, "tr");
        for (const std::size_t column : columns) {
            const HtmlAttribute attribute = column == 0
                                                ? HtmlAttribute{"scope", "row"}
                                                : HtmlAttribute{"data-label", heads_[column]};
            const HtmlScope cell(html, column == 0 ? "th" : "td", {attribute});
            html.markup(cells[column]);
        }
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
