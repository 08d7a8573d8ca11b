#include "kivo/objects/text_obj.h"

#include "kivo/objects/conditional_text.h"

KIVO_TEXT_OBJ::KIVO_TEXT_OBJ() = default;

KIVO_TEXT_OBJ::~KIVO_TEXT_OBJ() {
    if (end != intro) {
        delete end;
    }
    delete intro;
}
