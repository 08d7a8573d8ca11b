#include "tools/doc/cell.h"

#include <algorithm>

#include "tools/doc/html.h"
#include "tools/text/cut_text.h"
#include "tools/text/text_steps.h"
#include "tools/text/text_width.h"
#include "tools/text/words.h"

namespace {

// Wider words may be broken after an underscore, and much wider ones anywhere.
constexpr std::size_t kWideWord = 12;
constexpr std::size_t kLongWord = 24;
// Shorter numbers are read at a glance.
constexpr std::size_t kLongNumber = 5;
constexpr std::size_t kGroup = 3;

// A page is for browsers: of longer texts it shows the beginning.
constexpr std::size_t kLongText = 20000;

constexpr std::string_view kDigits = "0123456789";

enum class Links { kNone, kAll, kOutstanding };

struct CellStyle {
    const PageNames* names = nullptr;
    Links links = Links::kNone;
    bool has_groups = false;
};

// The digits of a whole number in groups of three from its end.
std::string grouped(std::string_view digits) {
    std::string markup;
    std::size_t size = digits.size() < kLongNumber ? digits.size() : (digits.size() - 1) % 3 + 1;
    while (!digits.empty()) {
        const std::string group(digits.substr(0, size));
        markup += markup.empty() ? group : "<span class=\"group\">" + group + "</span>";
        digits.remove_prefix(size);
        size = kGroup;
    }
    return markup;
}

// A text whose wide words may be broken after their underscores, so that no column needs more room
// than it is worth.
class CellText {
public:
    CellText(std::string_view whole, const CellStyle& style) : style_(style) {
        const CutText cut = cut_text(whole, kLongText);
        left_out_ = cut.left_out;
        std::string_view text = cut.shown;
        while (!text.empty()) {
            add_word(taken_until(text, kBlanks));
            const std::string_view from_blanks = text;
            skip_blanks(text);
            markup_ += escape_html(from_blanks.substr(0, from_blanks.size() - text.size()));
        }
    }

    const std::string& markup() const { return markup_; }
    // What says that something is missing; empty when nothing is.
    std::string more() const {
        return left_out_ == 0 ? std::string() : more_markup(left_out_, "character");
    }
    // Whether a word needs to be broken anywhere.
    bool has_long_word() const { return has_long_word_; }

private:
    void add_word(std::string_view word) {
        is_wide_ = text_width(word) > kWideWord;
        note_long_parts(word);
        while (!word.empty()) {
            word.remove_prefix(add_token(word));
        }
    }

    void note_long_parts(std::string_view word) {
        while (!word.empty()) {
            const std::size_t underscore = is_wide_ ? word.find('_') : std::string_view::npos;
            const bool is_last = underscore == std::string_view::npos;
            const std::string_view part = is_last ? word : word.substr(0, underscore + 1);
            word.remove_prefix(part.size());
            has_long_word_ = has_long_word_ || text_width(part) > kLongWord;
        }
    }

    // Adds the first name, number or run of other bytes, and returns its length.
    std::size_t add_token(std::string_view rest) {
        if (const std::size_t name = length_of_name(rest); name > 0) {
            add_name(rest.substr(0, name), rest.size() > name);
            return name;
        }
        if (const std::size_t digits = std::min(rest.find_first_not_of(kDigits), rest.size());
            digits > 0) {
            const bool is_whole = style_.has_groups && !is_quoted_ && last_ != '.';
            const std::string_view number = rest.substr(0, digits);
            markup_ += is_whole ? grouped(number) : std::string(number);
            last_ = '0';
            return digits;
        }
        std::size_t length = 0;
        while (length < rest.size() && kDigits.find(rest[length]) == std::string_view::npos &&
               length_of_name(rest.substr(length, 1)) == 0) {
            is_quoted_ = is_quoted_ != (rest[length] == '"');
            last_ = rest[length++];
        }
        markup_ += escape_html(rest.substr(0, length));
        return length;
    }

    void add_name(std::string_view name, bool is_followed) {
        const std::string* const id = link_of(name);
        last_ = 'a';
        if (id != nullptr) {
            markup_ += "<a href=\"#" + *id + "\">";
        }
        add_breakable(name, is_followed);
        markup_ += id != nullptr ? "</a>" : "";
    }

    const std::string* link_of(std::string_view name) const {
        const bool may_link = style_.links == Links::kAll ||
                              (style_.links == Links::kOutstanding && stands_out(name));
        return may_link && !is_quoted_ ? style_.names->find(name) : nullptr;
    }

    void add_breakable(std::string_view name, bool is_followed) {
        while (!name.empty()) {
            const std::size_t underscore = is_wide_ ? name.find('_') : std::string_view::npos;
            const bool is_last = underscore == std::string_view::npos;
            const std::string_view part = is_last ? name : name.substr(0, underscore + 1);
            name.remove_prefix(part.size());
            markup_ += escape_html(part);
            markup_ += !is_last && (is_followed || !name.empty()) ? "<wbr/>" : "";
        }
    }

    CellStyle style_;
    std::string markup_;
    std::size_t left_out_ = 0;
    bool has_long_word_ = false;
    bool is_wide_ = false;    // the word in hand
    bool is_quoted_ = false;  // what comes next
    char last_ = ' ';         // of what came before: '0' for a number, 'a' for a name
};

std::string in_code(std::string_view text, const CellStyle& style) {
    const CellText cell(text, style);
    return text.empty() ? std::string()
                        : (cell.has_long_word() ? "<code class=\"long\">" : "<code>") +
                              cell.markup() + "</code>" + cell.more();
}

}  // namespace

std::string more_markup(std::size_t count, const std::string& noun) {
    return " <em class=\"note\">" + and_more(count, noun) + "</em>";
}

std::string code_cell(std::string_view text) {
    return in_code(text, {});
}

std::string text_cell(std::string_view text) {
    const CellText cell(text, {});
    return (cell.has_long_word() ? "<span class=\"long\">" + cell.markup() + "</span>"
                                 : cell.markup()) +
           cell.more();
}

std::string expression_cell(const PageNames& names, std::string_view text) {
    return in_code(text, {&names, Links::kAll, true});
}

std::string command_cell(const PageNames& names, std::string_view text) {
    return in_code(text, {&names, Links::kAll, false});
}

std::string prose(const PageNames& names, std::string_view text) {
    const CellText cell(text, {&names, Links::kOutstanding, false});
    return cell.markup() + cell.more();
}

std::string time_cell(std::int64_t time, const std::string& scale) {
    return CellText(with_unit(time, scale), {nullptr, Links::kNone, true}).markup();
}
