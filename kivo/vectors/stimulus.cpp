#include "kivo/vectors/stimulus.h"

#include <cassert>
#include <string_view>

#include "kivo/objects/rule_element.h"
#include "kivo/vectors/internal/stimulus_syntax.h"

namespace {

// Whether an item that stands at "start" comes up at "time" when it repeats. In 64 bits, so that
// the lowest time divided by -1 has a result.
bool comes_up(std::int64_t time, std::int64_t period, std::int64_t start) {
    if (period == 0) {
        return start != 0 && time / start == 0;
    }
    return time % period == start;
}

// One walk over the items of a command.
class Walk {
public:
    Walk(std::string_view signal, std::int32_t time) : signal_(signal), time_(time) {}

    void run(std::string_view items) {
        walk_items(items, first_two_, saved_,
                   [this](const StimulusItem& item) { return reaches_match(item); });
    }

    std::string_view signal() const { return signal_; }
    std::string_view value() const { return value_; }

private:
    // True when the item makes the transition that ends the walk.
    bool reaches_match(const StimulusItem& item) {
        switch (kind_of(item)) {
            case StimulusItemKind::kNothing:
                return false;
            case StimulusItemKind::kRepeat:
                repeat(item.time);
                return false;
            case StimulusItemKind::kCancel:
                cancel(item.time);
                return false;
            case StimulusItemKind::kValue:
                break;
        }
        return matches(item);
    }

    void cancel(std::int32_t from) {
        if (time_ >= from) {
            value_ = {};
            signal_ = {};
        }
    }

    bool matches(const StimulusItem& item) {
        if (item.time != time_) {
            return false;
        }
        value_ = item.value;
        return true;
    }

    void repeat(std::int32_t period) {
        if (period > time_ || saved_ < 2) {
            return;
        }
        const auto& [first, second] = first_two_;
        // The first item follows no blanks, so it always has a value.
        if (comes_up(time_, period, first.time)) {
            value_ = first.value;
        }
        if (value_.empty() && comes_up(time_, period, second.time)) {
            value_ = second.value;
        }
    }

    std::string_view signal_;
    std::string_view value_;
    std::int32_t time_;
    // The items that repeats go back to; kept split, so that a repeat costs the same whatever their
    // length.
    StimulusItem first_two_[2];
    int saved_ = 0;
};

bool evaluate(std::string_view command, std::int32_t time, std::string& signal,
              std::string& value) {
    StimulusHead head;
    if (!take_head(command, head)) {
        signal.clear();
        value.clear();
        return false;
    }
    Walk walk(head.signal, time);
    walk.run(command);
    signal.assign(walk.signal());
    value.assign(walk.value());
    if (value.empty()) {
        return false;
    }
    if (head.radix != DRO_RADIX_SIGNED) {
        write_as_binary(head, value);
    }
    return true;
}

}  // namespace

// By value is the interface that hosts are built against.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool kivo_get_transition_at_time(std::string command, std::int32_t time, std::string& signal,
                                 std::string& value) {
    return evaluate(command, time, signal, value);
}

bool kivo_get_vector_transition(KIVO_OBJ_LIST* stimulus, std::int32_t time, std::string& signal,
                                std::string& value) {
    assert(stimulus != nullptr);
    while (const KIVO_OBJ* object = stimulus->get_next_value()) {
        const auto* entry = dynamic_cast<const KIVO_RULE_ELEMENT*>(object);
        if (entry != nullptr && evaluate(entry->text1, time, signal, value)) {
            return true;
        }
    }
    stimulus->reset();
    return false;
}

bool kivo_stimulus_exists(KIVO_OBJ_LIST* stimulus, const std::string& signal) {
    assert(stimulus != nullptr);
    stimulus->reset();
    while (const KIVO_OBJ* object = stimulus->get_next_value()) {
        const auto* entry = dynamic_cast<const KIVO_RULE_ELEMENT*>(object);
        if (entry == nullptr) {
            continue;
        }
        std::string_view command = entry->text1;
        StimulusHead head;
        if (take_head(command, head) && head.signal == signal) {
            return true;
        }
    }
    return false;
}
