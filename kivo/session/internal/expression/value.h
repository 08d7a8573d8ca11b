#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kivo/session/internal/expression/fault.h"
#include "kivo/session/internal/expression/whole.h"

namespace kivo_session {

enum class ValueKind : std::uint8_t {
    kUnknown,
    kTruth,
    kInteger,  // of 64 bits
    kBig,      // an integer that does not fit 64 bits
    kReal,
    kText,
    kPort,  // a port, of which it is not yet clear what is asked
};

using WordId = std::uint32_t;     // a text in Words
using ReasonsId = std::uint32_t;  // a set of reasons in Reasons

// A value in 24 bytes. Two values are the same when their members are.
struct Value {
    static Value unknown(ReasonsId reasons) { return {reasons, 0, ValueKind::kUnknown}; }
    static Value truth(bool truth) { return {truth ? 1 : 0, 0, ValueKind::kTruth}; }
    static Value integer(std::int64_t integer) { return {integer, 0, ValueKind::kInteger}; }
    static Value whole(Whole whole);
    static Value real(double real);
    static Value text(WordId word) { return {word, 0, ValueKind::kText}; }
    static Value port(std::uint32_t port) { return {port, 0, ValueKind::kPort}; }

    bool is_unknown() const { return kind == ValueKind::kUnknown; }
    bool is_truth() const { return kind == ValueKind::kTruth; }
    bool is_text() const { return kind == ValueKind::kText; }
    bool is_whole() const { return kind == ValueKind::kInteger || kind == ValueKind::kBig; }
    bool is_number() const { return is_whole() || kind == ValueKind::kReal; }
    bool is_true() const { return is_truth() && low != 0; }
    bool is_false() const { return is_truth() && low == 0; }

    Whole as_whole() const;  // REQUIRES: is_whole()
    double as_real() const;  // REQUIRES: is_number()
    WordId word() const { return static_cast<WordId>(low); }
    ReasonsId reasons() const { return static_cast<ReasonsId>(low); }
    std::uint32_t port_index() const { return static_cast<std::uint32_t>(low); }

    bool operator==(const Value&) const = default;

    std::int64_t low = 0;
    std::int64_t high = 0;
    ValueKind kind = ValueKind::kUnknown;
};

// The texts that values are made of, each once. Those of a compiled description are shared; those
// that a session adds lie above them and can be given back.
class Words {
public:
    Words() = default;
    // REQUIRES: "base" outlives this and is not added to any more
    explicit Words(const Words* base) : base_(base), first_(base->size()) {}
    Words(const Words& other);
    Words& operator=(const Words&) = delete;

    WordId intern(std::string_view text);
    std::string_view text(WordId word) const;
    WordId size() const { return first_ + static_cast<WordId>(texts_.size()); }
    std::size_t used() const { return index_.size(); }
    // Forgets every own text that is not kept: a bit for each word.
    void keep_only(const std::vector<bool>& kept);

private:
    const Words* base_ = nullptr;
    WordId first_ = 0;
    std::deque<std::string> texts_;  // their bytes stay in place
    std::vector<WordId> free_;
    std::unordered_map<std::string_view, WordId> index_;
};

// Why a value is not known.
enum class ReasonKind : std::uint8_t { kFault, kCycle, kUnset, kRunTime };

// One reason: of a fault also where it stands. Faults come first in order, run time last.
struct Reason {
    static Reason fault(FaultId id, std::uint32_t text, std::uint32_t offset);
    static Reason cycle() { return {static_cast<std::uint64_t>(ReasonKind::kCycle) << 62}; }
    static Reason unset(std::uint32_t object);
    static Reason run_time(std::uint32_t object);

    ReasonKind kind() const { return static_cast<ReasonKind>(bits >> 62); }
    FaultId fault_id() const { return static_cast<FaultId>(bits >> 56 & 0x3F); }
    std::uint32_t text() const { return static_cast<std::uint32_t>(bits >> 24); }
    std::uint32_t offset() const { return bits & 0xFFFFFF; }
    std::uint32_t object() const { return static_cast<std::uint32_t>(bits); }

    bool operator==(const Reason&) const = default;
    auto operator<=>(const Reason&) const = default;  // NOLINT(modernize-use-nullptr)

    std::uint64_t bits = 0;
};

// Sets of reasons, each once, sorted. A set tells at most kMost reasons, the first in order, so
// that long chains of unknown values do not cost their square.
class ReasonSets {
public:
    static constexpr std::size_t kMost = 64;

    ReasonsId intern(std::vector<Reason> reasons);
    ReasonsId of(Reason reason);
    ReasonsId united(ReasonsId first, ReasonsId second);
    const std::vector<Reason>& reasons(ReasonsId set) const { return sets_[set]; }
    bool has(ReasonsId set, ReasonKind kind) const;
    // Whether a fault or a cycle is a reason.
    bool is_wrong(ReasonsId set) const;
    // Whether anything but run time is a reason.
    bool is_more_than_run_time(ReasonsId set) const;
    std::size_t size() const { return sets_.size(); }

private:
    struct Hash {
        std::size_t operator()(const std::vector<Reason>& reasons) const;
    };
    std::vector<std::vector<Reason>> sets_;
    std::unordered_map<std::vector<Reason>, ReasonsId, Hash> index_;
};

}  // namespace kivo_session
