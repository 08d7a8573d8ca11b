#include "kivo/toolkit/obj_list.h"

KIVO_OBJ_LIST::~KIVO_OBJ_LIST() = default;

void KIVO_OBJ_LIST::add_at_tail(KIVO_OBJ* object) {
    // Most lists hold one or two items; three fit the smallest block of memory.
    if (items_.capacity() == 0) {
        items_.reserve(3);
    }
    items_.push_back(object);
}

void KIVO_OBJ_LIST::reset() {
    cursor_ = 0;
}

KIVO_OBJ* KIVO_OBJ_LIST::get_next_value() {
    return cursor_ < items_.size() ? items_[cursor_++] : nullptr;
}
