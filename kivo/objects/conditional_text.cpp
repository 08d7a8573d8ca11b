#include "kivo/objects/conditional_text.h"

#include <memory>
#include <vector>

KIVO_CONDITIONAL_TEXT::KIVO_CONDITIONAL_TEXT() = default;

KIVO_CONDITIONAL_TEXT::~KIVO_CONDITIONAL_TEXT() {
    // Nesting is as deep as the description: everything below is taken apart here, one by one, so
    // that no destructor finds anything to descend into.
    std::vector<std::unique_ptr<KIVO_CONDITIONAL_TEXT>> doomed;
    const auto take_apart = [&doomed](KIVO_CONDITIONAL_TEXT& text) {
        for (KIVO_CONDITIONAL_TEXT** sub : {&text.then_sub, &text.else_sub}) {
            if (*sub != nullptr) {
                doomed.emplace_back(*sub);
                *sub = nullptr;
            }
        }
        text.text_elements.reset();
        for (; text.owned_pieces_ > 0; --text.owned_pieces_) {
            doomed.emplace_back(text.get_next_text_element());
        }
    };
    take_apart(*this);
    while (!doomed.empty()) {
        const std::unique_ptr<KIVO_CONDITIONAL_TEXT> next = std::move(doomed.back());
        doomed.pop_back();
        take_apart(*next);
    }
}

KIVO_CONDITIONAL_TEXT* KIVO_CONDITIONAL_TEXT::get_next_text_element() {
    return dynamic_cast<KIVO_CONDITIONAL_TEXT*>(text_elements.get_next_value());
}

void KIVO_CONDITIONAL_TEXT::add_owned_piece(KIVO_CONDITIONAL_TEXT* piece) {
    text_elements.add_at_tail(piece);
    ++owned_pieces_;
}
