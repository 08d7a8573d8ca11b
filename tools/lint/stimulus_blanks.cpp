#include <algorithm>

#include "tools/lint/stimulus.h"

namespace {

// clang-format off
constexpr LintRow kBeforeForce = {
    "command-blank", "{} before {}: the command is not evaluated"};
constexpr LintRow kTooMany = {
    "command-blank", "several blanks before {}: one blank separates the parts of a command"};
constexpr LintRow kNotABlank = {
    "command-blank", "{} where a blank belongs: it separates nothing"};
// clang-format on

// The run of white space, of any script, at that place.
std::string_view run_of_blanks(std::string_view text, std::size_t at) {
    std::size_t end = at;
    while (end < text.size()) {
        const std::size_t length = blank_length(text.substr(end));
        if (length == 0) {
            break;
        }
        end += length;
    }
    return text.substr(at, end - at);
}

bool is_foreign(std::string_view blank) {
    return static_cast<unsigned char>(blank.front()) >= 0x80;
}

// Walks through a command as the library does, which takes a blank for the end of a word and no
// other white space.
class BlankCheck {
public:
    explicit BlankCheck(const CommandSpot& at) : at_(at), text_(at.source()) {}

    void run() {
        const std::string_view before = run_of_blanks(text_, 0);
        position_ = before.size();
        if (!before.empty()) {
            at_.post_at(kBeforeForce, position_, word_size(), name_of_blank(before),
                        quoted(text_.substr(position_, word_size())));
        }
        pass_word();
        pass_gap();
        if (text_.substr(position_, 1) == "-") {
            pass_word();
            pass_gap();
        }
        pass_word();
        pass_gap_before_items();
        while (position_ < text_.size()) {
            pass_item();
        }
    }

private:
    std::size_t word_size() const {
        std::size_t end = position_;
        while (end < text_.size() && blank_length(text_.substr(end)) == 0) {
            ++end;
        }
        return end - position_;
    }

    void pass_word() { position_ += word_size(); }

    void post_no_blank(std::string_view blank) {
        at_.post(kNotABlank, text_, blank.substr(0, blank_length(blank)), name_of_blank(blank));
    }

    // The first character of the run that is no blank, and all after it.
    static std::string_view from_other(std::string_view run) {
        return run.substr(std::min(run.find_first_not_of(' '), run.size()));
    }

    // Between two words of which one blank is the end of the first.
    void pass_gap() {
        const std::string_view gap = run_of_blanks(text_, position_);
        position_ += gap.size();
        if (position_ == text_.size()) {
            return;
        }
        const std::string_view other = from_other(gap);
        if (!other.empty()) {
            post_no_blank(other);
        } else if (gap.size() > 1) {
            const std::size_t size = word_size();
            at_.post_at(kTooMany, position_, size, quoted(text_.substr(position_, size)));
        }
    }

    void pass_gap_before_items() {
        const std::string_view gap = run_of_blanks(text_, position_);
        position_ += gap.size();
        if (position_ < text_.size() && gap.front() != ' ') {
            post_no_blank(gap);
        } else {
            post_foreign(gap);
        }
    }

    // White space before and after what the library reads as a number does not count.
    void post_foreign(std::string_view gap) {
        while (!gap.empty() && !is_foreign(gap)) {
            gap.remove_prefix(1);
        }
        if (!gap.empty()) {
            post_no_blank(gap);
        }
    }

    void pass_item() {
        const std::size_t end = std::min(text_.find_first_of(",;", position_), text_.size());
        pass_blanks();
        position_ = std::min(position_ + word_size(), end);
        const std::string_view gap = run_of_blanks(text_, position_);
        if (position_ + gap.size() < end && !gap.empty() && gap.front() != ' ') {
            post_no_blank(gap);
            position_ += gap.size();
        }
        while (position_ < end) {
            pass_blanks();
            position_ += position_ < end ? 1 : 0;
        }
        position_ = end + 1;
    }

    void pass_blanks() {
        const std::string_view blanks = run_of_blanks(text_, position_);
        post_foreign(blanks);
        position_ += blanks.size();
    }

    const CommandSpot& at_;
    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

void check_blanks(const CommandSpot& at) {
    BlankCheck(at).run();
}
