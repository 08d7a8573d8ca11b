#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/export.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"

// A map from names (exact bytes) to records, with constant-time look-up and one cursor that walks
// it in order of first insertion; for one thread at a time.
//
// It does not own what it holds: neither its destruction nor an assignment to it deletes a record,
// and a copy holds the same records. Who deletes them is said where the map is a member. A record
// must not be deleted while a look-up or a walk may still reach it.
//
// The cursor of a new map stands at the start and is a position: an entry added later is reached by
// a cursor that stood at the end.
class KIVO_API KIVO_OBJ_MAP {
public:
    // The record stored under the key, or null.
    KIVO_OBJ* look_up(const std::string& key) const;
    // Stores the record, which stays whose it was, under the key: in place of an earlier one of the
    // same key, which is not deleted, or else as a new last entry. The cursor stays. When memory is
    // short the map is left as it was.
    void set_at(const std::string& key, KIVO_OBJ* object);
    // Puts the cursor on the first entry.
    void reset();
    // Returns the record under the cursor, writes its key and advances; null at the end, where the
    // key is left alone.
    KIVO_OBJ* get_next_entry(std::string& key);

private:
    friend class KIVO_ITEMS;

    struct Entry {
        std::string key;
        KIVO_OBJ* object;
        std::uint32_t hash;
    };
    // Where a key is, or where it would be added.
    struct Spot {
        std::size_t position;  // of its entry; after the last one for an unknown key
        std::size_t bucket;    // of no meaning without buckets
        std::uint32_t hash;
    };

    KIVO_LOCAL Spot find_spot(std::string_view key) const;
    // Adds an entry or, when memory is short, changes nothing.
    // REQUIRES: "spot" is what find_spot gave for the key, which is unknown
    KIVO_LOCAL void add_at(const Spot& spot, const std::string& key, KIVO_OBJ* object);
    // The bucket that holds the key's entry, or the free one where it belongs.
    KIVO_LOCAL std::size_t find_bucket(std::string_view key, std::uint32_t hash) const;
    KIVO_LOCAL void enter(std::size_t bucket, std::uint32_t hash, std::size_t position);
    KIVO_LOCAL void grow();

    // Up to this many entries are searched one by one, without buckets.
    static constexpr std::size_t kFew = 8;

    std::vector<Entry> entries_;
    // Open addressing over a power of two of buckets. A byte of each, 0 for a free one, tells most
    // keys apart: so many fit into the cache that a new key is entered without waiting for memory.
    std::vector<std::uint8_t> tags_;
    std::vector<std::uint32_t> positions_;
    std::size_t cursor_ = 0;
    KIVO_CONTAINER_NOTE note_;
};
