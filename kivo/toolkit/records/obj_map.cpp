#include "kivo/toolkit/records/obj_map.h"

#include <functional>
#include <utility>

namespace {

// Names that differ in their last character alone, as numbered ones do, are neighbours: most of a
// description's names then meet a part of the table that the one before has brought to the cache.
std::uint32_t hash_of(std::string_view key) {
    if (key.empty()) {
        return 0;
    }
    const std::size_t stem = std::hash<std::string_view>{}(key.substr(0, key.size() - 1));
    const auto last = static_cast<std::uint32_t>(key.back()) & 0xF;
    return static_cast<std::uint32_t>(stem ^ (stem >> 32)) << 4 | last;
}

// Where a name goes when its bucket is taken: neighbours of the name that has it are passed over.
// Odd, so that the steps lead to every bucket.
constexpr std::size_t kStep = 17;

// Of neighbours, all but what their last characters differ in is the same.
std::uint8_t tag_of(std::uint32_t hash) {
    return static_cast<std::uint8_t>(0x80 | ((hash >> 25) ^ (hash & 0xF)));
}

}  // namespace

std::size_t KIVO_OBJ_MAP::find_bucket(std::string_view key, std::uint32_t hash) const {
    const std::size_t mask = tags_.size() - 1;
    const std::uint8_t tag = tag_of(hash);
    std::size_t bucket = hash & mask;
    while (tags_[bucket] != 0 &&
           (tags_[bucket] != tag || entries_[positions_[bucket]].key != key)) {
        bucket = (bucket + kStep) & mask;
    }
    return bucket;
}

std::size_t KIVO_OBJ_MAP::find_entry(std::string_view key, std::uint32_t hash,
                                     std::size_t& bucket) const {
    if (!tags_.empty()) {
        bucket = find_bucket(key, hash);
        return tags_[bucket] == 0 ? entries_.size() : positions_[bucket];
    }
    std::size_t position = 0;
    while (position < entries_.size() &&
           (entries_[position].hash != hash || entries_[position].key != key)) {
        ++position;
    }
    return position;
}

void KIVO_OBJ_MAP::enter(std::size_t bucket, std::uint32_t hash, std::size_t position) {
    tags_[bucket] = tag_of(hash);
    positions_[bucket] = static_cast<std::uint32_t>(position);
}

void KIVO_OBJ_MAP::grow() {
    const std::size_t size = tags_.empty() ? 4 * kFew : tags_.size() * 2;
    // Both at once or, when memory is short, neither.
    std::vector<std::uint32_t> positions(size);
    tags_ = std::vector<std::uint8_t>(size);
    positions_ = std::move(positions);
    for (std::size_t position = 0; position < entries_.size(); ++position) {
        const std::uint32_t hash = entries_[position].hash;
        std::size_t bucket = hash & (size - 1);
        while (tags_[bucket] != 0) {
            bucket = (bucket + kStep) & (size - 1);
        }
        enter(bucket, hash, position);
    }
}

KIVO_OBJ* KIVO_OBJ_MAP::look_up(const std::string& key) const {
    std::size_t bucket = 0;
    const std::size_t position = find_entry(key, hash_of(key), bucket);
    return position == entries_.size() ? nullptr : entries_[position].object;
}

KIVO_OBJ*& KIVO_OBJ_MAP::place_of(const std::string& key) {
    const std::uint32_t hash = hash_of(key);
    std::size_t bucket = 0;
    const std::size_t position = find_entry(key, hash, bucket);
    if (position != entries_.size()) {
        return entries_[position].object;
    }
    // Half of the buckets stays free, so that every probe ends soon.
    if (position >= kFew && (position + 1) * 2 > tags_.size()) {
        grow();
        bucket = find_bucket(key, hash);
    }
    entries_.push_back({key, nullptr, hash});
    if (!tags_.empty()) {
        enter(bucket, hash, position);
    }
    return entries_.back().object;
}

void KIVO_OBJ_MAP::set_at(const std::string& key, KIVO_OBJ* object) {
    place_of(key) = object;
}

void KIVO_OBJ_MAP::reset() {
    cursor_ = 0;
}

KIVO_OBJ* KIVO_OBJ_MAP::get_next_entry(std::string& key) {
    if (cursor_ < entries_.size()) {
        key = entries_[cursor_].key;
    }
    return get_next_object();
}

KIVO_OBJ* KIVO_OBJ_MAP::get_next_object() {
    return cursor_ < entries_.size() ? entries_[cursor_++].object : nullptr;
}
