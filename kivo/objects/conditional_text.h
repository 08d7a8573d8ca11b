#pragma once

#include <cstddef>
#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_list.h"

// A sequence of text pieces, or one piece of such a sequence. Of a piece, the host shows then_sub
// (a sequence) or else then_text when "condition" holds or is empty, and else_sub or else_text
// otherwise. A sequence uses text_elements alone.
class KIVO_API KIVO_CONDITIONAL_TEXT : public KIVO_OBJ {
public:
    KIVO_CONDITIONAL_TEXT();
    KIVO_CONDITIONAL_TEXT(const KIVO_CONDITIONAL_TEXT&) = delete;
    KIVO_CONDITIONAL_TEXT& operator=(const KIVO_CONDITIONAL_TEXT&) = delete;
    // Deletes then_sub and else_sub, and the pieces of a sequence that the library read; pieces
    // that somebody else put into text_elements stay theirs.
    ~KIVO_CONDITIONAL_TEXT() override;

    // The piece under the cursor of text_elements, which advances; null at the end.
    KIVO_CONDITIONAL_TEXT* get_next_text_element();

    // Appends a piece that this sequence deletes with itself.
    // REQUIRES: text_elements holds no pieces of somebody else
    void add_owned_piece(KIVO_CONDITIONAL_TEXT* piece);

    std::string condition;
    std::string then_text;
    std::string else_text;
    KIVO_CONDITIONAL_TEXT* then_sub = nullptr;
    KIVO_CONDITIONAL_TEXT* else_sub = nullptr;
    KIVO_OBJ_LIST text_elements;

private:
    std::size_t owned_pieces_ = 0;  // the first ones of text_elements
};
