#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/export.h"
#include "kivo/toolkit/records/obj.h"

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
        std::uint32_t hash;
    };

    // Like get_next_entry, for who does not ask for keys.
    KIVO_LOCAL KIVO_OBJ* get_next_object();
    // Where the key's record is stored, to be written: null for a new key, which is added.
    KIVO_LOCAL KIVO_OBJ*& place_of(const std::string& key);
    // The bucket that holds the key's entry, or the free one where it belongs.
    KIVO_LOCAL std::size_t find_bucket(std::string_view key, std::uint32_t hash) const;
    // The position of the key's entry, that behind the last for an unknown key. "bucket" becomes
    // what find_bucket gives, when there are buckets.
    KIVO_LOCAL std::size_t find_entry(std::string_view key, std::uint32_t hash,
                                      std::size_t& bucket) const;
    KIVO_LOCAL void enter(std::size_t bucket, std::uint32_t hash, std::size_t position);
    KIVO_LOCAL void grow();

    // So many entries need no buckets.
    static constexpr std::size_t kFew = 8;

    std::vector<Entry> entries_;
    // Open addressing over a power of two of buckets. A byte of each, 0 for a free one, tells most
    // keys apart: so many fit into the cache that a new key is entered without waiting for memory.
    std::vector<std::uint8_t> tags_;
    std::vector<std::uint32_t> positions_;
    std::size_t cursor_ = 0;
};
