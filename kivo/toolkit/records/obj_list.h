#pragma once

#include <cstddef>
#include <vector>

#include "kivo/export.h"
#include "kivo/toolkit/records/obj.h"

// A list of records with one cursor. It does not own what it holds. The cursor of a new list
// stands at the start and is a position: an item added later is reached by a cursor that stood
// at the end.
class KIVO_API KIVO_OBJ_LIST {
public:
    virtual ~KIVO_OBJ_LIST();

    virtual void add_at_tail(KIVO_OBJ* object);
    // Puts the cursor on the first item.
    virtual void reset();
    // Returns the item under the cursor and advances; null at the end.
    virtual KIVO_OBJ* get_next_value();

private:
    // Most lists hold one or two items, which then need no memory of their own; all that come
    // after stand in rest_.
    static constexpr std::size_t kFew = 2;

    KIVO_OBJ* few_[kFew] = {};
    std::size_t few_size_ = 0;
    std::vector<KIVO_OBJ*> rest_;
    std::size_t cursor_ = 0;
};
