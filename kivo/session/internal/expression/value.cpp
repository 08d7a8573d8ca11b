#include "kivo/session/internal/expression/value.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <iterator>
#include <limits>
#include <utility>

namespace kivo_session {

namespace {

// Bits of a reason of a fault: 2 kind, 6 id, 32 text, 24 offset.
constexpr std::uint32_t kOffsetMask = 0xFFFFFF;

}  // namespace

Value Value::whole(Whole whole) {
    if (whole >= std::numeric_limits<std::int64_t>::min() &&
        whole <= std::numeric_limits<std::int64_t>::max()) {
        return integer(static_cast<std::int64_t>(whole));
    }
    return {static_cast<std::int64_t>(whole), static_cast<std::int64_t>(whole >> 64),
            ValueKind::kBig};
}

Value Value::real(double real) {
    Value value{0, 0, ValueKind::kReal};
    // One zero: it is equal to its negative, and equal values are the same.
    real = real == 0 ? 0 : real;
    std::memcpy(&value.low, &real, sizeof(real));
    return value;
}

Whole Value::as_whole() const {
    assert(is_whole());
    if (kind == ValueKind::kInteger) {
        return low;
    }
    return static_cast<Whole>(static_cast<UnsignedWhole>(static_cast<std::uint64_t>(high)) << 64 |
                              static_cast<std::uint64_t>(low));
}

double Value::as_real() const {
    assert(is_number());
    if (kind != ValueKind::kReal) {
        return static_cast<double>(as_whole());
    }
    double real = 0;
    std::memcpy(&real, &low, sizeof(real));
    return real;
}

Words::Words(const Words& other)
    : base_(other.base_), first_(other.first_), texts_(other.texts_), free_(other.free_) {
    for (const auto& [text, word] : other.index_) {
        index_.emplace(texts_[word - first_], word);
    }
}

WordId Words::intern(std::string_view text) {
    if (base_ != nullptr) {
        if (const auto found = base_->index_.find(text); found != base_->index_.end()) {
            return found->second;
        }
    }
    if (const auto found = index_.find(text); found != index_.end()) {
        return found->second;
    }
    WordId word = size();
    if (free_.empty()) {
        texts_.emplace_back(text);
    } else {
        word = free_.back();
        texts_[word - first_] = text;
        free_.pop_back();
    }
    index_.emplace(texts_[word - first_], word);
    return word;
}

std::string_view Words::text(WordId word) const {
    const Words* words = this;
    while (word < words->first_) {
        words = words->base_;
    }
    return words->texts_[word - words->first_];
}

void Words::keep_only(const std::vector<bool>& kept) {
    for (auto entry = index_.begin(); entry != index_.end();) {
        const WordId word = entry->second;
        if (word < kept.size() && kept[word]) {
            ++entry;
            continue;
        }
        free_.push_back(word);
        entry = index_.erase(entry);
        texts_[word - first_] = std::string();
    }
}

Reason Reason::fault(FaultId id, std::uint32_t text, std::uint32_t offset) {
    return {static_cast<std::uint64_t>(ReasonKind::kFault) << 62 |
            static_cast<std::uint64_t>(id) << 56 | static_cast<std::uint64_t>(text) << 24 |
            std::min(offset, kOffsetMask)};
}

Reason Reason::unset(std::uint32_t object) {
    return {static_cast<std::uint64_t>(ReasonKind::kUnset) << 62 | object};
}

Reason Reason::run_time(std::uint32_t object) {
    return {static_cast<std::uint64_t>(ReasonKind::kRunTime) << 62 | object};
}

std::size_t ReasonSets::Hash::operator()(const std::vector<Reason>& reasons) const {
    std::uint64_t hash = reasons.size();
    for (const Reason reason : reasons) {
        hash = (hash ^ reason.bits) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32;
    }
    return hash;
}

ReasonsId ReasonSets::intern(std::vector<Reason> reasons) {
    if (reasons.size() > kMost) {
        reasons.resize(kMost);
    }
    const auto next = static_cast<ReasonsId>(sets_.size());
    const auto [entry, is_new] = index_.try_emplace(std::move(reasons), next);
    if (is_new) {
        sets_.push_back(entry->first);
    }
    return entry->second;
}

ReasonsId ReasonSets::of(Reason reason) {
    return intern({reason});
}

ReasonsId ReasonSets::united(ReasonsId first, ReasonsId second) {
    if (first == second) {
        return first;
    }
    std::vector<Reason> both;
    both.reserve(sets_[first].size() + sets_[second].size());
    std::set_union(sets_[first].begin(), sets_[first].end(), sets_[second].begin(),
                   sets_[second].end(), std::back_inserter(both));
    return intern(std::move(both));
}

bool ReasonSets::has(ReasonsId set, ReasonKind kind) const {
    const std::vector<Reason>& reasons = sets_[set];
    return std::any_of(reasons.begin(), reasons.end(),
                       [kind](Reason reason) { return reason.kind() == kind; });
}

bool ReasonSets::is_wrong(ReasonsId set) const {
    return !sets_[set].empty() && sets_[set].front().kind() <= ReasonKind::kCycle;
}

bool ReasonSets::is_more_than_run_time(ReasonsId set) const {
    return !sets_[set].empty() && sets_[set].front().kind() != ReasonKind::kRunTime;
}

}  // namespace kivo_session
