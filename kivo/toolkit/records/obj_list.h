#pragma once

#include <cstddef>
#include <vector>

#include "kivo/export.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"

// A list of records with one cursor, for one thread at a time.
//
// It does not own what it holds: neither its destruction nor an assignment to it deletes a record,
// and a copy holds the same records. Who deletes them is said where the list is a member. A record
// must not be deleted while a walk may still reach it.
//
// The cursor of a new list stands at the start and is a position: an item added later is reached by
// a cursor that stood at the end.
class KIVO_API KIVO_OBJ_LIST {
public:
    virtual ~KIVO_OBJ_LIST();

    // Appends a record, which stays whose it was. The cursor stays; the same record may stand in a
    // list more than once. When memory is short the list is left as it was.
    virtual void add_at_tail(KIVO_OBJ* object);
    // Puts the cursor on the first item.
    virtual void reset();
    // Returns the item under the cursor and advances; null at the end, and for a null item.
    virtual KIVO_OBJ* get_next_value();

private:
    friend class KIVO_ITEMS;

    KIVO_LOCAL void append(KIVO_OBJ* object);

    // Most lists hold one or two items, which then need no memory of their own; all that come
    // after stand in rest_.
    static constexpr std::size_t kFew = 2;

    KIVO_OBJ* few_[kFew] = {};
    std::vector<KIVO_OBJ*> rest_;
    std::size_t cursor_ = 0;
    unsigned char few_size_ = 0;
    KIVO_CONTAINER_NOTE note_;
};
