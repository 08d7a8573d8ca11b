#include "kivo/toolkit/records/obj_list.h"

KIVO_OBJ_LIST::~KIVO_OBJ_LIST() = default;

void KIVO_OBJ_LIST::append(KIVO_OBJ* object) {
    if (few_size_ < kFew) {
        few_[few_size_++] = object;
    } else {
        rest_.push_back(object);
    }
}

void KIVO_OBJ_LIST::add_at_tail(KIVO_OBJ* object) {
    append(object);
    note_.shares_ = true;
}

void KIVO_OBJ_LIST::reset() {
    cursor_ = 0;
}

KIVO_OBJ* KIVO_OBJ_LIST::get_next_value() {
    if (cursor_ < few_size_) {
        return few_[cursor_++];
    }
    return cursor_ < few_size_ + rest_.size() ? rest_[cursor_++ - few_size_] : nullptr;
}
