#include "kivo/objects/conditional_text.h"

#include <memory>
#include <utility>
#include <vector>

#include "kivo/info/internal/reader.h"

namespace {

// clang-format off
constexpr MessageText kIfWithSubTags = {
    MessageId::kIfWithSubTags,
    "IF tag in conditional text sequences cannot have sub-tags"};
constexpr MessageText kTextWithSubTags = {
    MessageId::kTextWithSubTags,
    "Can't have conditional text as well as sub-tags at the same level {element}"};
// clang-format on

using Text = std::unique_ptr<KIVO_CONDITIONAL_TEXT>;

// Takes the place of what a piece held, which nobody has seen yet.
void replace(KIVO_CONDITIONAL_TEXT*& sub, Text sequence) {
    delete sub;
    sub = sequence.release();
}

// One sequence while it is read, with the piece that is still open.
class Sequence {
public:
    explicit Sequence(KIVO_XML_ELEMENT* element)
        : element_(element), sequence_(std::make_unique<KIVO_CONDITIONAL_TEXT>()) {
        sequence_->mark = element->mark();
    }

    // The next sub-element of the walk, null at the end.
    KIVO_XML_ELEMENT* advance() {
        current_ = current_ == nullptr ? element_->get_first_sub_element()
                                       : element_->get_next_sub_element();
        return current_;
    }
    KIVO_XML_ELEMENT& current() const { return *current_; }

    Text finish() {
        close_piece();
        return std::move(sequence_);
    }

    void close_piece() {
        if (piece_ != nullptr) {
            sequence_->add_owned_piece(piece_.get());
            static_cast<void>(piece_.release());
        }
    }

    void take_nested(std::string_view tag, Text nested) {
        KIVO_CONDITIONAL_TEXT& piece = open_piece();
        if (tag == "T" || tag == "TEXT" || tag == "THEN") {
            piece.then_text.clear();
            replace(piece.then_sub, std::move(nested));
        } else if (tag == "ELSE") {
            piece.else_text.clear();
            replace(piece.else_sub, std::move(nested));
        }
    }

    void take_text(std::string_view tag, std::string_view text) {
        if (tag == "T" || tag == "TEXT") {
            open_piece().then_text = text;
            close_piece();
        } else if (tag == "IF") {
            open_piece().condition = text;
        } else if (tag == "THEN") {
            open_piece().then_text = text;
            replace(open_piece().then_sub, nullptr);
        } else if (tag == "ELSE") {
            open_piece().else_text = text;
            replace(open_piece().else_sub, nullptr);
            close_piece();
        }
    }

private:
    // The open piece; a new one when there is none, so that a THEN or ELSE that stands alone is
    // not lost.
    KIVO_CONDITIONAL_TEXT& open_piece() {
        if (piece_ == nullptr) {
            piece_ = std::make_unique<KIVO_CONDITIONAL_TEXT>();
            piece_->mark = current_->mark();
        }
        return *piece_;
    }

    KIVO_XML_ELEMENT* element_;
    KIVO_XML_ELEMENT* current_ = nullptr;
    Text sequence_;
    Text piece_;
};

// Reads one sub-element but for its own sub-elements; true when those are to be read as a nested
// sequence.
bool begin_sub_element(Sequence& sequence, KIVO_XML_ELEMENT& sub, const MessagePoster& poster) {
    const std::string_view tag = sub.tag_name();
    const std::string_view text = sub.text();
    if (tag == "T" || tag == "TEXT" || tag == "IF") {
        sequence.close_piece();
    }
    if (!sub.has_sub_elements()) {
        if (!text.empty()) {
            sequence.take_text(tag, text);
        }
        return false;
    }
    if (tag == "IF" || !text.empty()) {
        poster.post({.says = tag == "IF" ? kIfWithSubTags : kTextWithSubTags,
                     .mark = sub.mark(),
                     .element = tag});
        return false;
    }
    return true;
}

}  // namespace

std::unique_ptr<KIVO_CONDITIONAL_TEXT> KIVO_INFO::process_conditional_text(
    KIVO_XML_ELEMENT& element) {
    if (!element.has_sub_elements()) {
        return nullptr;
    }
    const MessagePoster poster(this);
    // The sequences that are being read, each nested in the one before: their depth is the
    // description's, so they are kept here and not on the stack.
    std::vector<Sequence> open;
    open.emplace_back(&element);
    for (;;) {
        if (KIVO_XML_ELEMENT* sub = open.back().advance()) {
            if (begin_sub_element(open.back(), *sub, poster)) {
                open.emplace_back(sub);
            }
            continue;
        }
        Text finished = open.back().finish();
        open.pop_back();
        if (open.empty()) {
            return finished;
        }
        open.back().take_nested(open.back().current().tag_name(), std::move(finished));
    }
}
