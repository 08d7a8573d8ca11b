#pragma once

#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_list.h"

// A sequence of text pieces, or one piece of such a sequence. Of a piece, the host shows then_sub
// (a sequence) or else then_text when "condition" holds or is empty, and else_sub or else_text
// otherwise. A sequence uses text_elements alone. For one thread at a time.
//
// It belongs to what holds it: to its piece as then_sub or else_sub, to its sequence as one of the
// pieces that the library read, to its vector as description, to its help text as intro or end.
// REQUIRES: it is held by one of these at a time; within one text it may also be held twice
class KIVO_API KIVO_CONDITIONAL_TEXT : public KIVO_OBJ {
public:
    KIVO_CONDITIONAL_TEXT();
    KIVO_CONDITIONAL_TEXT(const KIVO_CONDITIONAL_TEXT&) = delete;
    KIVO_CONDITIONAL_TEXT& operator=(const KIVO_CONDITIONAL_TEXT&) = delete;
    // Deletes then_sub and else_sub and all pieces that came by add_owned_piece, as those that the
    // library read did, whatever text_elements holds by then; each once. Pieces that came into
    // text_elements in another way stay whose they are. Takes neither memory nor, however deep the
    // nesting, much of the stack.
    ~KIVO_CONDITIONAL_TEXT() override;

    // The piece under the cursor of text_elements, which advances; null at the end, and for a
    // record of another class. It stays the sequence's.
    KIVO_CONDITIONAL_TEXT* get_next_text_element();

    // Appends a piece to text_elements and takes it over: this sequence deletes it, and no other
    // one that took it over before. A host that deletes such a piece itself takes it out of
    // text_elements; the sequence then knows no more of it. When memory is short the piece stays
    // the caller's.
    // REQUIRES: piece != nullptr && piece != this
    void add_owned_piece(KIVO_CONDITIONAL_TEXT* piece);

    std::string condition;
    std::string then_text;
    std::string else_text;
    KIVO_CONDITIONAL_TEXT* then_sub = nullptr;  // this piece's; null: then_text is shown
    KIVO_CONDITIONAL_TEXT* else_sub = nullptr;  // this piece's; null: else_text is shown
    KIVO_OBJ_LIST text_elements;                // of KIVO_CONDITIONAL_TEXT, in document order
    // Of a sequence the XML element that holds it, of a piece the one that opened it (IF, T or
    // TEXT; a THEN or ELSE that stands alone); see KIVO_INFO::get_place.
    KIVO_MARK mark;

private:
    friend class KIVO_OWNING;

    // Chains of texts that are deleted together, through next_: the pieces that a sequence owns, or
    // what a destructor still has before it. A text is in one chain at most.
    KIVO_LOCAL void enter(KIVO_CONDITIONAL_TEXT*& chain);
    KIVO_LOCAL void leave_chain();
    KIVO_LOCAL void hand_over_parts(KIVO_CONDITIONAL_TEXT*& chain,
                                    const KIVO_CONDITIONAL_TEXT& top);

    KIVO_CONDITIONAL_TEXT* owned_ = nullptr;
    KIVO_CONDITIONAL_TEXT* next_ = nullptr;
    KIVO_CONDITIONAL_TEXT** link_ = nullptr;  // what points to this one in its chain; null: in none
    KIVO_RECORD_NOTE note_;
};
