#include "kivo/objects/conditional_text.h"

#include <cassert>

KIVO_CONDITIONAL_TEXT::KIVO_CONDITIONAL_TEXT() = default;

KIVO_CONDITIONAL_TEXT::~KIVO_CONDITIONAL_TEXT() {
    // Nesting is as deep as the description: everything below is taken apart here, one by one, so
    // that no destructor finds anything to descend into. What is met twice is in one chain all the
    // same, and nothing is deleted before everything is in it.
    leave_chain();
    KIVO_CONDITIONAL_TEXT* whole = nullptr;
    KIVO_CONDITIONAL_TEXT* taken_apart = nullptr;
    hand_over_parts(whole, *this);
    while (whole != nullptr) {
        KIVO_CONDITIONAL_TEXT& next = *whole;
        next.hand_over_parts(whole, *this);
        next.enter(taken_apart);
    }
    while (taken_apart != nullptr) {
        delete taken_apart;  // leaves the chain
    }
}

KIVO_CONDITIONAL_TEXT* KIVO_CONDITIONAL_TEXT::get_next_text_element() {
    return dynamic_cast<KIVO_CONDITIONAL_TEXT*>(text_elements.get_next_value());
}

void KIVO_CONDITIONAL_TEXT::add_owned_piece(KIVO_CONDITIONAL_TEXT* piece) {
    assert(piece != nullptr && piece != this);
    text_elements.add_at_tail(piece);
    piece->enter(owned_);
}

void KIVO_CONDITIONAL_TEXT::enter(KIVO_CONDITIONAL_TEXT*& chain) {
    leave_chain();
    next_ = chain;
    link_ = &chain;
    if (chain != nullptr) {
        chain->link_ = &next_;
    }
    chain = this;
}

void KIVO_CONDITIONAL_TEXT::leave_chain() {
    if (link_ == nullptr) {
        return;
    }
    *link_ = next_;
    if (next_ != nullptr) {
        next_->link_ = link_;
    }
    next_ = nullptr;
    link_ = nullptr;
}

// Puts the sub-texts and the owned pieces into the chain, all but the text that is being destroyed.
void KIVO_CONDITIONAL_TEXT::hand_over_parts(KIVO_CONDITIONAL_TEXT*& chain,
                                            const KIVO_CONDITIONAL_TEXT& top) {
    for (KIVO_CONDITIONAL_TEXT** sub : {&then_sub, &else_sub}) {
        if (*sub != nullptr && *sub != &top) {
            (*sub)->enter(chain);
        }
        *sub = nullptr;
    }
    while (owned_ != nullptr) {
        owned_->enter(chain);
    }
}
