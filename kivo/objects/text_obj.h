#pragma once

#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/records/obj.h"

class KIVO_CONDITIONAL_TEXT;

// The help page of a function.
class KIVO_API KIVO_TEXT_OBJ : public KIVO_OBJ {
public:
    KIVO_TEXT_OBJ();
    KIVO_TEXT_OBJ(const KIVO_TEXT_OBJ&) = delete;
    KIVO_TEXT_OBJ& operator=(const KIVO_TEXT_OBJ&) = delete;
    // Deletes intro and end.
    ~KIVO_TEXT_OBJ() override;

    std::string title;
    std::string header;
    KIVO_CONDITIONAL_TEXT* intro = nullptr;  // null: none
    KIVO_CONDITIONAL_TEXT* end = nullptr;    // null: none
};
