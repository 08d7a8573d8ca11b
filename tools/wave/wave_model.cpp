#include "tools/wave/wave_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

#include "tools/text/text_escape.h"
#include "tools/wave/wave_values.h"

namespace {

// Wider ports are drawn as wide as their values: no file should need 100 MB for a typing error.
constexpr std::size_t kMaxWidth = 65536;
// Of all values of a vector together, when its ports are wider than the values.
constexpr std::size_t kMaxBits = 64'000'000;

struct Driver {
    std::string command;
    KIVO_TIMELINE timeline;
};

bool contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::vector<Driver> find_drivers(KIVO_VECTOR_OBJ& vector,
                                 const std::vector<std::string>& otherwise) {
    std::vector<Driver> drivers;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        const bool is_else = !entry->text3.empty() && contains(otherwise, join_lines(entry->text3));
        const std::string& command = is_else ? entry->text2 : entry->text1;
        if (!is_else || !command.empty()) {
            drivers.push_back({command, {}});
        }
    }
    return drivers;
}

std::int64_t last_stimulus_time(const std::vector<Driver>& drivers, std::int32_t start) {
    std::int64_t last = start;
    for (const Driver& driver : drivers) {
        last = std::max(last, kivo_get_timeline(driver.command, start, start, 0).last_item_time);
    }
    return last;
}

// A vector without MAX_TIME ends a step after the last time that its commands name.
std::int32_t end_of_range(const std::vector<Driver>& drivers, const KIVO_VECTOR_OBJ& vector,
                          std::int32_t start) {
    if (vector.max_time >= 0) {
        return vector.max_time;
    }
    const std::int64_t end =
        last_stimulus_time(drivers, start) + std::max<std::int64_t>(1, vector.time_step);
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(end, std::numeric_limits<std::int32_t>::max()));
}

// Evaluates all commands, with so many transitions together or so many each. The last time up to
// which all of them are told.
std::int64_t evaluate(std::vector<Driver>& drivers, std::int32_t start, std::int32_t end,
                      std::size_t limit, bool is_limit_of_each) {
    std::int64_t reached = std::int64_t{end} + 1;
    std::size_t used = 0;
    for (Driver& driver : drivers) {
        driver.timeline =
            kivo_get_timeline(driver.command, start, end, is_limit_of_each ? limit : limit - used);
        used = std::min(limit, used + driver.timeline.runs.size());
        reached = std::min(reached, driver.timeline.end);
    }
    return reached - 1;
}

// Evaluates all commands and gives the range that the picture has.
void evaluate_range(WaveModel& model, std::vector<Driver>& drivers, std::int32_t start,
                    std::int32_t end, std::size_t limit) {
    model.start = start;
    model.end = evaluate(drivers, start, end, limit, false);
    if (model.end < end) {
        // Too many for all, so that each gets a fair share.
        model.end = evaluate(drivers, start, end, limit / drivers.size(), true);
    }
    if (model.end < end) {
        model.notes.push_back(fmt::format(
            "vector '{}' makes too many transitions: only those up to {} of {} are taken (at most "
            "{} in all)",
            model.name, model.end, end, limit));
    }
    for (const Driver& driver : drivers) {
        model.transitions += driver.timeline.runs.size();
    }
    model.end = std::max(model.end, model.start + 1);
}

// The states of one signal that several commands may drive. At one time a later command goes
// before an earlier one, and a transition before a release, which is no answer of its own.
class DriverMerge {
public:
    DriverMerge(const std::vector<const Driver*>& drivers, WaveSignal& signal,
                const std::vector<std::vector<std::size_t>>& positions)
        : drivers_(drivers), signal_(signal), positions_(positions) {}

    void run(std::int64_t end) {
        if (drivers_.size() == 1) {
            add_all_of(0, end);
            return;
        }
        merge(end);
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
        if (signal_.changes.empty() || !signal_.changes.back().is_same_as(change)) {
            signal_.changes.push_back(change);
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
    WaveSignal& signal_;
    const std::vector<std::vector<std::size_t>>& positions_;
};

std::optional<std::size_t> read_width(std::string_view text) {
    std::size_t width = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, width);
    const bool is_number = read.ec == std::errc() && read.ptr == end;
    return is_number && width >= 1 && width <= kMaxWidth ? std::optional(width) : std::nullopt;
}

std::string default_of(const KIVO_OBJ_INFO& parameter) {
    if (parameter.default_index < 0) {
        return parameter.default_value;
    }
    std::string_view rest = parameter.value_array;
    for (std::int32_t i = 0; i < parameter.default_index && !rest.empty(); ++i) {
        const std::size_t end = rest.find(';');
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }
    return std::string(rest.substr(0, rest.find(';')));
}

// The width that the port declares, when it is a number or the default of a parameter.
std::optional<std::size_t> declared_width(const KIVO_INFO& info, const std::string& port) {
    const KIVO_OBJ_INFO* const object = info.get_kivo_obj(port);
    if (object == nullptr || !kivo_is_port(object->obj_type)) {
        return std::nullopt;
    }
    const std::string width = join_lines(object->port_width);
    if (const auto number = read_width(width)) {
        return number;
    }
    const KIVO_OBJ_INFO* const parameter = info.get_kivo_obj(width);
    return parameter != nullptr && kivo_is_parameter(parameter->obj_type)
               ? read_width(join_lines(default_of(*parameter)))
               : std::nullopt;
}

bool is_negative(const std::string& value) {
    return !value.empty() && value.front() == '-';
}

class ModelBuilder {
public:
    ModelBuilder(const KIVO_INFO& info, KIVO_VECTOR_OBJ& vector, WaveModel& model)
        : info_(info), vector_(vector), model_(model) {}

    void add_signals(const std::vector<Driver>& drivers) {
        std::map<std::string, std::size_t> positions;
        std::vector<std::vector<const Driver*>> by_signal;
        for (const Driver& driver : drivers) {
            const std::string& name = driver.timeline.signal;
            if (name.empty()) {
                model_.notes.push_back("'" + driver.command + "' names no signal and is left out");
                continue;
            }
            const auto [found, is_new] = positions.emplace(name, by_signal.size());
            if (is_new) {
                by_signal.emplace_back();
            }
            by_signal[found->second].push_back(&driver);
        }
        for (const auto& its_drivers : by_signal) {
            add_signal(its_drivers);
        }
    }

private:
    void add_signal(const std::vector<const Driver*>& drivers) {
        WaveSignal signal;
        signal.name = drivers.front()->timeline.signal;
        signal.radix = vector_.get_vector_display_format(signal.name);
        signal.fixed_point = vector_.get_vector_display_format_description(signal.name);
        // The values of each command, by their position in its timeline.
        std::vector<std::vector<std::size_t>> positions;
        for (const Driver* driver : drivers) {
            positions.push_back(add_values(*driver, signal));
            note_nameless(*driver);
        }
        set_width(signal);
        DriverMerge(drivers, signal, positions).run(model_.end);
        if (signal.changes.empty() || signal.changes.front().time > model_.start) {
            signal.changes.insert(signal.changes.begin(), {model_.start, WaveState::kUndriven, 0});
        }
        model_.signals.push_back(std::move(signal));
        negatives_.clear();
        by_text_.clear();
    }

    std::vector<std::size_t> add_values(const Driver& driver, WaveSignal& signal) {
        const bool is_binary = driver.timeline.has_binary_values;
        std::vector<std::size_t> positions;
        for (const std::string& value : driver.timeline.values) {
            const auto [found, is_new] =
                by_text_.emplace((is_binary ? "b" : "d") + value, signal.values.size());
            if (is_new) {
                signal.values.push_back({shown_value(vector_, signal.name, value, is_binary),
                                         converter_.bits_of(value, is_binary)});
                negatives_.push_back(!is_binary && is_negative(value));
            }
            positions.push_back(found->second);
        }
        return positions;
    }

    void set_width(WaveSignal& signal) {
        std::size_t widest = 1;
        for (const WaveValue& value : signal.values) {
            widest = std::max(widest, value.bits.size());
        }
        signal.width = declared_width(info_, signal.name).value_or(widest);
        if (signal.width > widest && bits_ + signal.width * signal.values.size() > kMaxBits) {
            model_.notes.push_back(fmt::format(
                "signal '{}' is taken as {} bits wide, which its values need, not as {}",
                signal.name, widest, signal.width));
            signal.width = widest;
        }
        bits_ += signal.width * signal.values.size();
        std::string misfit;
        for (std::size_t i = 0; i < signal.values.size(); ++i) {
            WaveValue& value = signal.values[i];
            const bool fits =
                fit_bits(value.bits, signal.width, negatives_[i], model_.truncate_low);
            if (!fits && misfit.empty()) {
                misfit = value.shown;
            }
        }
        if (!misfit.empty()) {
            model_.notes.push_back(fmt::format("value '{}' of signal '{}' is no number of {} bits",
                                               misfit, signal.name, signal.width));
        }
    }

    void note_nameless(const Driver& driver) {
        const auto& runs = driver.timeline.runs;
        if (std::any_of(runs.begin(), runs.end(),
                        [](const KIVO_TIMELINE_RUN& run) { return run.nameless; })) {
            model_.notes.push_back("transitions of '" + driver.command +
                                   "' behind its cancel belong to no signal and are left out");
        }
    }

    const KIVO_INFO& info_;
    KIVO_VECTOR_OBJ& vector_;
    WaveModel& model_;
    BitConverter converter_;
    // Of the signal in hand: which of its values are negative numbers, and where each stands.
    std::vector<bool> negatives_;
    std::map<std::string, std::size_t> by_text_;
    std::size_t bits_ = 0;  // of all signals so far
};

}  // namespace

std::string WaveSignal::label() const {
    return width == 1 ? name : fmt::format("{}[{}:0]", name, width - 1);
}

char WaveSignal::level(const WaveChange& change) const {
    if (change.state == WaveState::kUndriven) {
        return 'u';
    }
    if (change.state == WaveState::kReleased) {
        return 'z';
    }
    const std::string& bits = values[change.value].bits;
    if (bits.find_first_not_of('z') == std::string::npos) {
        return 'z';
    }
    return width == 1 && bits != "x" ? bits.front() : '=';
}

std::int64_t WaveModel::common_step() const {
    std::int64_t step = end - start;
    for (const WaveSignal& signal : signals) {
        for (const WaveChange& change : signal.changes) {
            step = std::gcd(step, change.time - start);
        }
    }
    return step;
}

std::vector<std::string> wave_conditions(KIVO_VECTOR_OBJ& vector) {
    std::vector<std::string> conditions;
    std::set<std::string> known;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        const std::string condition = join_lines(entry->text3);
        if (!condition.empty() && known.insert(condition).second) {
            conditions.push_back(condition);
        }
    }
    return conditions;
}

WaveModel make_wave_model(const KIVO_INFO& info, KIVO_VECTOR_OBJ& vector,
                          const std::vector<std::string>& otherwise, std::size_t max_transitions) {
    WaveModel model;
    model.name = vector.name;
    model.caption = join_lines(vector.caption);
    if (vector.wave_condition != nullptr) {
        model.condition = join_lines(vector.wave_condition->text3);
    }
    model.time_scale = join_lines(info.time_scale);
    model.truncate_low = vector.truncate_low;
    std::vector<Driver> drivers = find_drivers(vector, otherwise);
    const std::int32_t end = end_of_range(drivers, vector, info.start_time);
    if (end < info.start_time) {
        model.notes.push_back(fmt::format("vector '{}' ends at {}, before the start time {}",
                                          model.name, end, info.start_time));
    }
    evaluate_range(model, drivers, info.start_time, std::max(info.start_time, end),
                   max_transitions);
    ModelBuilder(info, vector, model).add_signals(drivers);
    return model;
}
