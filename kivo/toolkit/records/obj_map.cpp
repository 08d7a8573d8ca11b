#include "kivo/toolkit/records/obj_map.h"

#include <cassert>
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

// Where a name goes when its bucket is taken: it skips the neighbours of the name that has it.
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

KIVO_OBJ_MAP::Spot KIVO_OBJ_MAP::find_spot(std::string_view key) const {
    const std::uint32_t hash = hash_of(key);
    if (!tags_.empty()) {
        const std::size_t bucket = find_bucket(key, hash);
        return {tags_[bucket] == 0 ? entries_.size() : positions_[bucket], bucket, hash};
    }
    std::size_t position = 0;
    while (position < entries_.size() &&
           (entries_[position].hash != hash || entries_[position].key != key)) {
        ++position;
    }
    return {position, 0, hash};
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
    const std::size_t position = find_spot(key).position;
    return position == entries_.size() ? nullptr : entries_[position].object;
}

void KIVO_OBJ_MAP::add_at(const Spot& spot, const std::string& key, KIVO_OBJ* object) {
    assert(spot.position == entries_.size());
    std::size_t bucket = spot.bucket;
    // Half of the buckets stays free, so that every probe ends soon.
    if (spot.position >= kFew && (spot.position + 1) * 2 > tags_.size()) {
        grow();
        bucket = find_bucket(key, spot.hash);
    }
    entries_.push_back({key, object, spot.hash});
    if (!tags_.empty()) {
        enter(bucket, spot.hash, spot.position);
    }
}

void KIVO_OBJ_MAP::set_at(const std::string& key, KIVO_OBJ* object) {
    const Spot spot = find_spot(key);
    if (spot.position == entries_.size()) {
        add_at(spot, key, object);
    } else {
        entries_[spot.position].object = object;
    }
    note_.shares_ = true;
}

void KIVO_OBJ_MAP::reset() {
    cursor_ = 0;
}

KIVO_OBJ* KIVO_OBJ_MAP::get_next_entry(std::string& key) {
    if (cursor_ == entries_.size()) {
        return nullptr;
    }
    const Entry& entry = entries_[cursor_];
    key = entry.key;
    ++cursor_;
    return entry.object;
}
