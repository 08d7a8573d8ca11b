#include <algorithm>
#include <string>
#include <vector>

#include "tools/show/parts.h"
#include "tools/text/text_escape.h"

namespace {

// Deeper nesting is shown at this depth: indentation must not outgrow the text.
constexpr std::size_t kDeepest = 40;
constexpr std::size_t kStep = 2;

// What is still to be shown, the last first: a heading line, a text, or the rest of a sequence.
struct Task {
    std::string text;
    KIVO_CONDITIONAL_TEXT* sequence = nullptr;
    std::size_t indent = 0;
};

class TextPrinter {
public:
    explicit TextPrinter(Page& page) : page_(page) {}

    void print(KIVO_CONDITIONAL_TEXT& text, std::size_t indent);

private:
    void open(KIVO_CONDITIONAL_TEXT* sequence, std::size_t indent);
    void print_piece(KIVO_CONDITIONAL_TEXT& piece, std::size_t indent);
    void add_branch(KIVO_CONDITIONAL_TEXT* sequence, const std::string& text, std::size_t indent);

    Page& page_;
    std::vector<Task> tasks_;
};

void TextPrinter::open(KIVO_CONDITIONAL_TEXT* sequence, std::size_t indent) {
    sequence->text_elements.reset();
    tasks_.push_back({{}, sequence, std::min(indent, kDeepest)});
}

void TextPrinter::add_branch(KIVO_CONDITIONAL_TEXT* sequence, const std::string& text,
                             std::size_t indent) {
    if (sequence != nullptr) {
        open(sequence, indent);
    } else if (!text.empty()) {
        tasks_.push_back({join_lines(text), nullptr, std::min(indent, kDeepest)});
    }
}

// The tasks of a piece are done after it, last added first.
void TextPrinter::print_piece(KIVO_CONDITIONAL_TEXT& piece, std::size_t indent) {
    const bool has_else = piece.else_sub != nullptr || !piece.else_text.empty();
    const bool is_plain = piece.condition.empty() && !has_else;
    const std::size_t deeper = is_plain ? indent : indent + kStep;
    if (has_else) {
        add_branch(piece.else_sub, piece.else_text, deeper);
        tasks_.push_back({"else", nullptr, indent});
    }
    add_branch(piece.then_sub, piece.then_text, deeper);
    if (!is_plain) {
        page_.code("if " + join_lines(piece.condition), indent);
    }
}

void TextPrinter::print(KIVO_CONDITIONAL_TEXT& text, std::size_t indent) {
    open(&text, indent);
    while (!tasks_.empty()) {
        const Task task = tasks_.back();
        KIVO_CONDITIONAL_TEXT* const piece =
            task.sequence == nullptr ? nullptr : task.sequence->get_next_text_element();
        if (piece != nullptr) {
            print_piece(*piece, task.indent);
            continue;
        }
        tasks_.pop_back();
        if (task.sequence == nullptr) {
            page_.prose(task.text, task.indent);
        }
    }
}

void show_part(Page& page, const char* label, KIVO_CONDITIONAL_TEXT* text) {
    if (text != nullptr) {
        page.label(label, 2);
        show_conditional_text(page, *text, 4);
    }
}

}  // namespace

void show_conditional_text(Page& page, KIVO_CONDITIONAL_TEXT& text, std::size_t indent) {
    TextPrinter(page).print(text, indent);
}

void show_help_text(Page& page, KIVO_INFO& info) {
    const KIVO_TEXT_OBJ* const help = info.html_text;
    if (help == nullptr) {
        return;
    }
    Facts facts;
    facts.add("Title", help->title);
    facts.add("Header", help->header);
    if (facts.table().empty() && help->intro == nullptr && help->end == nullptr) {
        return;
    }
    page.heading("Help text");
    page.table(facts.table(), 2);
    show_part(page, "Introduction", help->intro);
    show_part(page, "End", help->end);
}
