#include "tools/wave/driver_merge.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace {

class DriverMerge {
public:
    DriverMerge(const std::vector<const Driver*>& drivers,
                const std::vector<ValuePositions>& positions)
        : drivers_(drivers), positions_(positions) {}

    std::vector<WaveChange> run(std::int64_t end) {
        if (drivers_.size() == 1) {
            add_all_of(0, end);
        } else {
            merge(end);
        }
        return std::move(changes_);
    }

private:
    const std::vector<KIVO_TIMELINE_RUN>& runs(std::size_t driver) const {
        return drivers_[driver]->timeline.runs;
    }

    WaveChange change_of(std::size_t driver, const KIVO_TIMELINE_RUN& run,
                         std::int64_t time) const {
        if (run.released) {
            return {time, WaveState::kReleased, 0};
        }
        return {time, WaveState::kValue, positions_[driver][run.value]};
    }

    void add(const WaveChange& change) {
        if (changes_.empty() || !changes_.back().is_same_as(change)) {
            changes_.push_back(change);
        }
    }

    void add_all_of(std::size_t driver, std::int64_t end) {
        for (const KIVO_TIMELINE_RUN& run : runs(driver)) {
            if (!run.nameless && run.first <= end) {
                add(change_of(driver, run, run.first));
            }
        }
    }

    struct Event {
        std::int64_t time = 0;
        bool is_begin = false;
        std::size_t driver = 0;
        const KIVO_TIMELINE_RUN* run = nullptr;
    };

    std::vector<Event> collect_events(std::int64_t end) const {
        std::vector<Event> events;
        for (std::size_t driver = 0; driver < drivers_.size(); ++driver) {
            for (const KIVO_TIMELINE_RUN& run : runs(driver)) {
                if (!run.nameless && run.first <= end) {
                    events.push_back({run.first, true, driver, &run});
                    events.push_back({std::int64_t{run.last} + 1, false, driver, &run});
                }
            }
        }
        std::sort(events.begin(), events.end(), [](const Event& left, const Event& right) {
            return std::tie(left.time, left.is_begin, left.driver) <
                   std::tie(right.time, right.is_begin, right.driver);
        });
        return events;
    }

    // A transition that lasts asserts itself again after any other one.
    void merge(std::int64_t end) {
        std::map<std::size_t, const KIVO_TIMELINE_RUN*> driven;
        const std::vector<Event> events = collect_events(end);
        for (std::size_t i = 0; i < events.size() && events[i].time <= end;) {
            const std::int64_t time = events[i].time;
            bool is_released = false;
            for (; i < events.size() && events[i].time == time; ++i) {
                const Event& event = events[i];
                if (!event.is_begin) {
                    driven.erase(event.driver);
                } else if (event.run->released) {
                    is_released = true;
                } else {
                    driven[event.driver] = event.run;
                }
            }
            if (!driven.empty()) {
                const auto& [driver, run] = *driven.rbegin();
                add(change_of(driver, *run, time));
            } else if (is_released) {
                add({time, WaveState::kReleased, 0});
            }
        }
    }

    const std::vector<const Driver*>& drivers_;
    const std::vector<ValuePositions>& positions_;
    std::vector<WaveChange> changes_;
};

}  // namespace

std::vector<WaveChange> merge_drivers(const std::vector<const Driver*>& drivers,
                                      const std::vector<ValuePositions>& positions,
                                      std::int64_t end) {
    return DriverMerge(drivers, positions).run(end);
}
