#include "tools/description/object_names.h"

#include <algorithm>
#include <functional>

#include "kivo/session/internal/near_word.h"

namespace {

constexpr std::size_t kShortest = 3;
constexpr std::size_t kLongest = 64;
// The most names that are compared with one that is looked up, for each of its hashes.
constexpr std::ptrdiff_t kMostCompared = 16;

bool is_comparable(std::string_view name) {
    return name.size() >= kShortest && name.size() <= kLongest;
}

bool is_of(ObjectNames::Kind kind, KIVO_OBJ_TYPE type) {
    return kind == ObjectNames::Kind::kParameters ? kivo_is_parameter(type) : kivo_is_port(type);
}

std::vector<std::size_t> keys_of(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(), LESS_C_STRING::fold);
    const std::hash<std::string> hash;
    std::vector<std::size_t> keys = {hash(lower)};
    for (std::size_t at = 0; at < lower.size(); ++at) {
        std::string shorter = lower;
        shorter.erase(at, 1);
        keys.push_back(hash(shorter));
    }
    return keys;
}

}  // namespace

ObjectNames::ObjectNames(const KIVO_INFO& info, Kind kind) {
    // A copy, because walking moves the cursor.
    KIVO_OBJ_MAP objects = info.object_map;
    objects.reset();
    std::string name;
    while (const KIVO_OBJ* object = objects.get_next_entry(name)) {
        if (is_of(kind, static_cast<const KIVO_OBJ_INFO*>(object)->obj_type) &&
            is_comparable(name)) {
            add(name);
        }
    }
    std::sort(keys_.begin(), keys_.end());
}

void ObjectNames::add(const std::string& name) {
    for (const std::size_t key : keys_of(name)) {
        keys_.emplace_back(key, names_.size());
    }
    names_.push_back(name);
}

std::string ObjectNames::nearest(std::string_view name) const {
    if (!is_comparable(name)) {
        return {};
    }
    std::vector<std::string_view> candidates;
    for (const std::size_t key : keys_of(name)) {
        auto at = std::lower_bound(keys_.begin(), keys_.end(), std::pair(key, std::size_t{0}));
        const auto last = at + std::min(kMostCompared, keys_.end() - at);
        for (; at != last && at->first == key; ++at) {
            candidates.push_back(names_[at->second]);
        }
    }
    return std::string(nearest_word(name, candidates, 1));
}
