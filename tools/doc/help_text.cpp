#include "tools/doc/help_text.h"

#include <string>
#include <vector>

#include "tools/doc/cell.h"
#include "tools/text/text_escape.h"
#include "tools/text/text_steps.h"

namespace {

struct Branch {
    const std::string& text;
    KIVO_CONDITIONAL_TEXT* sub;

    bool is_empty() const { return sub == nullptr && text.empty(); }
};

// Walks the tree of texts with a list of what is still to be done in place of recursion.
class HelpWriter {
public:
    HelpWriter(HtmlWriter& html, const PageNames& names, const KIVO_SESSION* session)
        : html_(html), names_(names), session_(session) {}

    void write(KIVO_CONDITIONAL_TEXT* sequence);

private:
    enum class Step { kSequence, kPiece, kElse, kClose };
    struct Task {
        Step step;
        KIVO_CONDITIONAL_TEXT* text;
    };

    void perform(const Task& task);
    void plan_pieces(KIVO_CONDITIONAL_TEXT& sequence);
    void write_piece(KIVO_CONDITIONAL_TEXT& piece);
    void write_decided(KIVO_CONDITIONAL_TEXT& piece);
    void write_branch(const Branch& branch);
    void open_branch(std::string_view lead, std::string_view condition);

    HtmlWriter& html_;
    const PageNames& names_;
    const KIVO_SESSION* session_;  // decides the conditions; null: all branches are shown
    std::vector<Task> tasks_;      // the next one last
};

void HelpWriter::write(KIVO_CONDITIONAL_TEXT* sequence) {
    tasks_.push_back({Step::kSequence, sequence});
    while (!tasks_.empty()) {
        const Task task = tasks_.back();
        tasks_.pop_back();
        perform(task);
    }
}

void HelpWriter::perform(const Task& task) {
    switch (task.step) {
        case Step::kSequence:
            plan_pieces(*task.text);
            break;
        case Step::kPiece:
            write_piece(*task.text);
            break;
        case Step::kElse:
            open_branch("Otherwise", "");
            write_branch({task.text->else_text, task.text->else_sub});
            break;
        case Step::kClose:
            html_.close();
            break;
    }
}

void HelpWriter::plan_pieces(KIVO_CONDITIONAL_TEXT& sequence) {
    const auto first = static_cast<std::ptrdiff_t>(tasks_.size());
    sequence.text_elements.reset();
    while (KIVO_CONDITIONAL_TEXT* piece = sequence.get_next_text_element()) {
        tasks_.push_back({Step::kPiece, piece});
    }
    std::reverse(tasks_.begin() + first, tasks_.end());
}

void HelpWriter::write_branch(const Branch& branch) {
    if (branch.sub != nullptr) {
        tasks_.push_back({Step::kSequence, branch.sub});
    } else {
        write_paragraphs(html_, names_, branch.text);
    }
}

void HelpWriter::open_branch(std::string_view lead, std::string_view condition) {
    html_.open("div", {{"class", "branch"}});
    tasks_.push_back({Step::kClose, nullptr});
    const HtmlScope line(html_, "p", {{"class", "condition"}});
    html_.text(lead);
    if (!condition.empty()) {
        html_.text(" ");
        html_.markup(expression_cell(names_, join_lines(condition)));
    }
}

// Of a condition that is not decided, nothing.
void HelpWriter::write_decided(KIVO_CONDITIONAL_TEXT& piece) {
    const KIVO_TRUTH truth = session_->holds(piece.condition);
    if (truth == KIVO_TRUTH::kYes) {
        write_branch({piece.then_text, piece.then_sub});
    } else if (truth == KIVO_TRUTH::kNo) {
        write_branch({piece.else_text, piece.else_sub});
    }
}

void HelpWriter::write_piece(KIVO_CONDITIONAL_TEXT& piece) {
    const Branch then_branch = {piece.then_text, piece.then_sub};
    const Branch else_branch = {piece.else_text, piece.else_sub};
    if (piece.condition.empty()) {
        write_branch(then_branch);
        return;
    }
    if (session_ != nullptr) {
        write_decided(piece);
        return;
    }
    if (then_branch.is_empty()) {
        if (!else_branch.is_empty()) {
            open_branch("Unless", piece.condition);
            write_branch(else_branch);
        }
        return;
    }
    if (!else_branch.is_empty()) {
        tasks_.push_back({Step::kElse, &piece});
    }
    open_branch("If", piece.condition);
    write_branch(then_branch);
}

}  // namespace

void write_help_text(HtmlWriter& html, const PageNames& names, KIVO_CONDITIONAL_TEXT* sequence,
                     const KIVO_SESSION* session) {
    if (sequence != nullptr) {
        HelpWriter(html, names, session).write(sequence);
    }
}

void write_paragraphs(HtmlWriter& html, const PageNames& names, std::string_view text) {
    while (!text.empty()) {
        std::string paragraph;
        while (!text.empty()) {
            const std::string_view line = taken_line(text);
            if (is_blank(line)) {
                break;
            }
            paragraph.append(line).append("\n");
        }
        if (!paragraph.empty()) {
            const HtmlScope line(html, "p");
            html.markup(prose(names, join_lines(paragraph)));
        }
    }
}
