#include "kivo/toolkit/obj_map.h"

#include <functional>

namespace {

std::uint32_t hash_of(const std::string& key) {
    const std::size_t hash = std::hash<std::string>{}(key);
    return static_cast<std::uint32_t>(hash ^ (hash >> 32));
}

}  // namespace

std::size_t KIVO_OBJ_MAP::find_bucket(const std::string& key, std::uint32_t hash) const {
    const std::size_t mask = buckets_.size() - 1;
    std::size_t bucket = hash & mask;
    while (buckets_[bucket] != 0) {
        const Entry& entry = entries_[buckets_[bucket] - 1];
        if (entry.hash == hash && entry.key == key) {
            break;
        }
        bucket = (bucket + 1) & mask;
    }
    return bucket;
}

void KIVO_OBJ_MAP::grow() {
    buckets_.assign(buckets_.empty() ? 8 : buckets_.size() * 2, 0);
    const std::size_t mask = buckets_.size() - 1;
    for (std::size_t position = 0; position < entries_.size(); ++position) {
        std::size_t bucket = entries_[position].hash & mask;
        while (buckets_[bucket] != 0) {
            bucket = (bucket + 1) & mask;
        }
        buckets_[bucket] = static_cast<std::uint32_t>(position + 1);
    }
}

KIVO_OBJ* KIVO_OBJ_MAP::look_up(const std::string& key) const {
    if (buckets_.empty()) {
        return nullptr;
    }
    const std::uint32_t found = buckets_[find_bucket(key, hash_of(key))];
    return found == 0 ? nullptr : entries_[found - 1].object;
}

KIVO_OBJ*& KIVO_OBJ_MAP::place_of(const std::string& key) {
    // A quarter of the buckets stays free, so that every probe ends soon.
    if ((entries_.size() + 1) * 4 > buckets_.size() * 3) {
        grow();
    }
    const std::uint32_t hash = hash_of(key);
    std::uint32_t& bucket = buckets_[find_bucket(key, hash)];
    if (bucket == 0) {
        entries_.push_back({key, nullptr, hash});
        bucket = static_cast<std::uint32_t>(entries_.size());
    }
    return entries_[bucket - 1].object;
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
