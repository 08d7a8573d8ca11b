#include "kivo/vectors/timeline.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <map>
#include <queue>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "kivo/vectors/internal/stimulus_syntax.h"

namespace {

// Times are 64 bits wide here, so that there is one after the last of 32 bits.
using Time = std::int64_t;

constexpr Time kNever = std::numeric_limits<Time>::max();

// A value that the command gives at one time, if nothing earlier in the command does.
struct PlainValue {
    Time time = 0;
    std::string_view value;
    Time nameless_from = kNever;  // a cancel that stands before it in the command clears the name
};

struct Repeat {
    Time period = 0;
    std::size_t cancels_before = 0;
};

// The items of a command, sorted by what they do.
struct Items {
    StimulusItem first_two[2];
    std::vector<PlainValue> values;
    std::vector<Repeat> repeats;  // those that have two items to go back to
    std::vector<Time> cancels;
    Time last_time = std::numeric_limits<Time>::min();
};

Items split_items(std::string_view text) {
    Items items;
    int saved = 0;
    Time earliest_cancel = kNever;
    walk_items(text, items.first_two, saved, [&](const StimulusItem& item) {
        const StimulusItemKind kind = kind_of(item);
        if (kind != StimulusItemKind::kNothing) {
            const Time periods = kind == StimulusItemKind::kRepeat ? 2 : 1;
            items.last_time = std::max(items.last_time, item.time * periods);
        }
        switch (kind) {
            case StimulusItemKind::kNothing:
                break;
            case StimulusItemKind::kValue:
                items.values.push_back({item.time, item.value, earliest_cancel});
                break;
            case StimulusItemKind::kRepeat:
                if (saved == 2) {
                    items.repeats.push_back({item.time, items.cancels.size()});
                }
                break;
            case StimulusItemKind::kCancel:
                items.cancels.push_back(item.time);
                earliest_cancel = std::min<Time>(earliest_cancel, item.time);
                break;
        }
        return false;
    });
    return items;
}

// For each period the time from which its repeats make no transition any more: a cancel ends the
// repeats that stand before it in the command, and the last of the repeats to end counts.
std::map<Time, Time> ends_by_period(const Items& items) {
    std::vector<Time> earliest_from(items.cancels.size() + 1, kNever);
    for (std::size_t i = items.cancels.size(); i-- > 0;) {
        earliest_from[i] = std::min(earliest_from[i + 1], items.cancels[i]);
    }
    std::map<Time, Time> ends;
    for (const Repeat& repeat : items.repeats) {
        const Time end = earliest_from[repeat.cancels_before];
        const auto [found, is_new] = ends.emplace(repeat.period, end);
        found->second = std::max(found->second, end);
    }
    return ends;
}

// Which of the two items of a repeat gives the value; the first goes before the second.
enum class Source { kFirst, kSecond, kNone };

// Times from "next" up to before "end" in equal steps.
struct Series {
    Time next = 0;
    Time end = 0;
    Time step = 1;
    Source source = Source::kNone;

    bool is_over() const { return next >= end; }
};

struct IsLater {
    bool operator()(const Series& left, const Series& right) const {
        return left.next > right.next;
    }
};

// The times from "from" up to before "end" whose remainder by "step" is "remainder". The sign of a
// remainder is that of the time.
Series times_with_remainder(Time from, Time end, Time step, Time remainder) {
    if (std::abs(remainder) >= step) {
        return {};
    }
    if (remainder > 0) {
        from = std::max<Time>(from, 0);
    } else if (remainder < 0) {
        end = std::min<Time>(end, 0);
    }
    const Time ahead = ((remainder - from) % step + step) % step;
    return {from + ahead, end, step};
}

// The walk through the range, from one time at which something may happen to the next.
class Sweep {
public:
    Sweep(const StimulusHead& head, std::string_view text, Time from, Time end)
        : head_(head), items_(split_items(text)), now_(from), end_(end) {
        for (const Time cancel : items_.cancels) {
            released_from_ = std::min(released_from_, cancel);
        }
        keep_values_in_range();
        for (const auto& [period, period_end] : ends_by_period(items_)) {
            add_repeat(Source::kFirst, period, std::min(end, period_end));
            add_repeat(Source::kSecond, period, std::min(end, period_end));
        }
    }

    void run(std::size_t limit, KIVO_TIMELINE& timeline) {
        while (now_ < end_) {
            const bool has_value =
                next_value_ < items_.values.size() && items_.values[next_value_].time == now_;
            const Source source = take_repeats();
            const bool is_transition = has_value || source != Source::kNone;
            const bool is_quiet = !is_transition && constant_source() == Source::kNone;
            if (!is_quiet && limit == 0) {
                break;
            }
            if (has_value) {
                const PlainValue& plain = items_.values[next_value_++];
                add_transition(timeline, plain.value, now_ + 1, plain.nameless_from <= now_);
                --limit;
            } else if (is_transition) {
                add_transition(timeline, value_of(source), now_ + 1, is_released());
                --limit;
            } else if (is_quiet) {
                add_quiet_time(timeline);
            } else {
                limit -= add_constant_time(timeline, limit);
            }
        }
        timeline.end = now_;
        timeline.is_complete = now_ >= end_;
        timeline.last_item_time = items_.last_time;
    }

private:
    // By time, and of several at one time the first in the command.
    void keep_values_in_range() {
        std::vector<PlainValue>& values = items_.values;
        std::erase_if(values, [this](const PlainValue& plain) {
            return plain.time < now_ || plain.time >= end_;
        });
        const auto is_earlier = [](const PlainValue& left, const PlainValue& right) {
            return left.time < right.time;
        };
        const auto is_same = [](const PlainValue& left, const PlainValue& right) {
            return left.time == right.time;
        };
        std::stable_sort(values.begin(), values.end(), is_earlier);
        values.erase(std::unique(values.begin(), values.end(), is_same), values.end());
    }

    std::string_view value_of(Source source) const {
        return items_.first_two[source == Source::kFirst ? 0 : 1].value;
    }

    bool is_released() const { return now_ >= released_from_; }

    void add_repeat(Source source, Time period, Time end) {
        const Time start = items_.first_two[source == Source::kFirst ? 0 : 1].time;
        if (value_of(source).empty()) {
            return;
        }
        if (period == 0) {
            // No period at all: the value comes up at every time that is nearer to 0 than "start".
            Time& constant_end = source == Source::kFirst ? first_end_ : second_end_;
            constant_end = std::max(constant_end, std::min(end, std::abs(start)));
            return;
        }
        Series series = times_with_remainder(std::max(now_, period), end, std::abs(period), start);
        series.source = source;
        if (!series.is_over()) {
            repeats_.push(series);
        }
    }

    // Advances the repeats that come up now, and tells the one that gives the value.
    Source take_repeats() {
        Source source = Source::kNone;
        while (!repeats_.empty() && repeats_.top().next == now_) {
            Series series = repeats_.top();
            repeats_.pop();
            source = std::min(source, series.source);
            series.next += series.step;
            if (!series.is_over()) {
                repeats_.push(series);
            }
        }
        // A constant value of the first item goes before the second item's.
        return source == Source::kSecond && constant_source() == Source::kFirst ? Source::kFirst
                                                                                : source;
    }

    Source constant_source() const {
        if (now_ < 0) {
            return Source::kNone;
        }
        return now_ < first_end_    ? Source::kFirst
               : now_ < second_end_ ? Source::kSecond
                                    : Source::kNone;
    }

    // The first time after now at which something else may be the case.
    Time next_event() const {
        Time next = end_;
        for (const Time boundary : {Time{0}, first_end_, second_end_, released_from_}) {
            if (boundary > now_) {
                next = std::min(next, boundary);
            }
        }
        if (next_value_ < items_.values.size()) {
            next = std::min(next, items_.values[next_value_].time);
        }
        return repeats_.empty() ? next : std::min(next, repeats_.top().next);
    }

    // What stands between the transitions.
    void add_quiet_time(KIVO_TIMELINE& timeline) {
        const Time next = next_event();
        if (is_released()) {
            add_run(timeline, next, {.released = true});
        } else {
            now_ = next;
        }
    }

    // A value that comes up at every time: as many transitions as times, of which it adds "limit"
    // at most. Returns how many it added.
    std::size_t add_constant_time(KIVO_TIMELINE& timeline, std::size_t limit) {
        const std::size_t count = std::min(static_cast<std::size_t>(next_event() - now_), limit);
        add_transition(timeline, value_of(constant_source()), now_ + static_cast<Time>(count),
                       is_released());
        return count;
    }

    void add_transition(KIVO_TIMELINE& timeline, std::string_view value, Time next,
                        bool is_nameless) {
        add_run(timeline, next, {.value = position_of(timeline, value), .nameless = is_nameless});
    }

    // Adds what holds from now up to before "next", and goes there.
    void add_run(KIVO_TIMELINE& timeline, Time next, KIVO_TIMELINE_RUN run) {
        run.first = static_cast<std::int32_t>(now_);
        run.last = static_cast<std::int32_t>(next - 1);
        now_ = next;
        if (!timeline.runs.empty()) {
            KIVO_TIMELINE_RUN& before = timeline.runs.back();
            if (Time{before.last} + 1 == run.first && before.value == run.value &&
                before.released == run.released && before.nameless == run.nameless) {
                before.last = run.last;
                return;
            }
        }
        timeline.runs.push_back(run);
    }

    std::size_t position_of(KIVO_TIMELINE& timeline, std::string_view written) {
        const auto known = as_written_.find(written);
        if (known != as_written_.end()) {
            return known->second;
        }
        std::string value(written);
        if (timeline.has_binary_values) {
            write_as_binary(head_, value);
        }
        const auto [found, is_new] = positions_.emplace(value, timeline.values.size());
        if (is_new) {
            timeline.values.push_back(std::move(value));
        }
        as_written_.emplace(written, found->second);
        return found->second;
    }

    const StimulusHead& head_;
    Items items_;
    Time now_;
    const Time end_;
    Time released_from_ = kNever;
    std::size_t next_value_ = 0;
    std::priority_queue<Series, std::vector<Series>, IsLater> repeats_;
    // Up to before these times, from 0 on, repeats without a period give the item's value.
    Time first_end_ = 0;
    Time second_end_ = 0;
    // Of the values as the command writes them, and as they are answered.
    std::unordered_map<std::string_view, std::size_t> as_written_;
    std::unordered_map<std::string, std::size_t> positions_;
};

}  // namespace

KIVO_TIMELINE kivo_get_timeline(const std::string& command, std::int32_t from, std::int32_t to,
                                std::size_t limit) {
    KIVO_TIMELINE timeline;
    timeline.end = std::max(Time{from}, Time{to} + 1);
    std::string_view rest = command;
    StimulusHead head;
    if (!take_head(rest, head)) {
        return timeline;
    }
    timeline.signal = head.signal;
    timeline.has_binary_values = head.radix != DRO_RADIX_SIGNED;
    Sweep(head, rest, from, timeline.end).run(limit, timeline);
    return timeline;
}
