#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kivo/export.h"
#include "kivo/toolkit/obj.h"

// A map from names (exact bytes) to records, with constant-time look-up and one cursor that walks
// it in order of first insertion. It does not own what it holds. The cursor of a new map stands at
// the start and is a position: an entry added later is reached by a cursor that stood at the end.
class KIVO_API KIVO_OBJ_MAP {
public:
    // The record stored under the key, or null.
    KIVO_OBJ* look_up(const std::string& key) const;
    // Stores the record under the key, in place of an earlier one of the same key.
    void set_at(const std::string& key, KIVO_OBJ* object);
    // Puts the cursor on the first entry.
    void reset();
    // Returns the record under the cursor, writes its key and advances; null at the end, where the
    // key is left alone.
    KIVO_OBJ* get_next_entry(std::string& key);

private:
    friend class KIVO_INFO;

    struct Entry {
        std::string key;
        KIVO_OBJ* object;
    };
    // Has the hash too, so that a probe that misses touches nothing else.
    struct Bucket {
        std::uint32_t hash = 0;
        std::uint32_t entry = 0;  // 1 + its position, 0 for a free bucket
    };

    // Where the key's record is stored, to be written: null for a new key, which is added.
    KIVO_LOCAL KIVO_OBJ*& place_of(const std::string& key);
    // The bucket that holds the key's entry, or the free one where it belongs.
    KIVO_LOCAL std::size_t find_bucket(const std::string& key, std::uint32_t hash) const;
    KIVO_LOCAL void grow();

    std::vector<Entry> entries_;
    std::vector<Bucket> buckets_;  // open addressing; a power of two in size
    std::size_t cursor_ = 0;
};
