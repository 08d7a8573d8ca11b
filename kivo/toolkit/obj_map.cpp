#include "kivo/toolkit/obj_map.h"

#include <functional>
#include <utility>

namespace {

std::uint32_t hash_of(const std::string& key) {
    const std::size_t hash = std::hash<std::string>{}(key);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace

std::size_t KIVO_OBJ_MAP::find_bucket(const std::string& key, std::uint32_t hash) const {
    const std::size_t mask = buckets_.size() - 1;
    std::size_t at = hash & mask;
    while (buckets_[at].entry != 0 &&
           (buckets_[at].hash != hash || entries_[buckets_[at].entry - 1].key != key)) {
        at = (at + 1) & mask;
    }
    return at;
}

void KIVO_OBJ_MAP::grow() {
    std::vector<Bucket> grown(buckets_.empty() ? 8 : buckets_.size() * 2);
    const std::size_t mask = grown.size() - 1;
    for (const Bucket& bucket : buckets_) {
        if (bucket.entry == 0) {
            continue;
        }
        std::size_t at = bucket.hash & mask;
        while (grown[at].entry != 0) {
            at = (at + 1) & mask;
        }
        grown[at] = bucket;
    }
    buckets_ = std::move(grown);
}

KIVO_OBJ* KIVO_OBJ_MAP::look_up(const std::string& key) const {
    if (buckets_.empty()) {
        return nullptr;
    }
    const Bucket& found = buckets_[find_bucket(key, hash_of(key))];
    return found.entry == 0 ? nullptr : entries_[found.entry - 1].object;
}

KIVO_OBJ*& KIVO_OBJ_MAP::place_of(const std::string& key) {
    // Half of the buckets stays free, so that every probe ends soon.
    if ((entries_.size() + 1) * 2 > buckets_.size()) {
        grow();
    }
    const std::uint32_t hash = hash_of(key);
    Bucket& bucket = buckets_[find_bucket(key, hash)];
    if (bucket.entry == 0) {
        entries_.push_back({key, nullptr});
        bucket = {hash, static_cast<std::uint32_t>(entries_.size())};
    }
    return entries_[bucket.entry - 1].object;
}

void KIVO_OBJ_MAP::set_at(const std::string& key, KIVO_OBJ* object) {
    place_of(key) = object;
}

void KIVO_OBJ_MAP::reset() {
    cursor_ = 0;
}

KIVO_OBJ* KIVO_OBJ_MAP::get_next_entry(std::string& key) {
    if (cursor_ >= entries_.size()) {
        return nullptr;
    }
    const Entry& entry = entries_[cursor_++];
    key = entry.key;
    return entry.object;
}
