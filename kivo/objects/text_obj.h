#pragma once

#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"

class KIVO_CONDITIONAL_TEXT;

// The help page of a function. A plain record: hosts read and write its fields.
//
// The one that a store holds as html_text goes with the store, and so do those that loads of the
// store made and a later HTML_TEXT section replaced: hosts may go on reading them until then. One
// that a host put there and a load replaced is the host's again.
class KIVO_API KIVO_TEXT_OBJ : public KIVO_OBJ {
public:
    KIVO_TEXT_OBJ();
    KIVO_TEXT_OBJ(const KIVO_TEXT_OBJ&) = delete;
    KIVO_TEXT_OBJ& operator=(const KIVO_TEXT_OBJ&) = delete;
    // Deletes intro and end, and all below them.
    // REQUIRES: no other record holds them, but intro and end may be one text
    ~KIVO_TEXT_OBJ() override;

    std::string title;
    std::string header;
    KIVO_CONDITIONAL_TEXT* intro = nullptr;  // a sequence, this record's; null: none
    KIVO_CONDITIONAL_TEXT* end = nullptr;    // a sequence, this record's; null: none

private:
    friend class KIVO_OWNING;

    KIVO_RECORD_NOTE note_;
};
