#include "tools/wave/wave_model.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

#include "tools/description/port_width.h"
#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"
#include "tools/text/words.h"
#include "tools/wave/driver_merge.h"
#include "tools/wave/drivers.h"
#include "tools/wave/wave_values.h"

namespace {

// Of all values of a vector together, when its ports are wider than the values.
constexpr std::size_t kMaxBits = 64'000'000;

// A note names so many values, and of each text so much.
constexpr std::size_t kMostNamedValues = 3;
constexpr std::size_t kWidestInNote = 64;

bool is_negative(const std::string& value) {
    return !value.empty() && value.front() == '-';
}

bool is_released(const WaveValue& value) {
    return !value.bits.empty() && value.bits.find_first_not_of('z') == std::string::npos;
}

// Evaluates all commands and gives the range that the picture has.
void evaluate_range(WaveModel& model, std::vector<Driver>& drivers, std::int32_t start,
                    std::int32_t end, std::size_t limit) {
    model.start = start;
    model.end = evaluate_drivers(drivers, start, end, limit);
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

void note_undecided(WaveModel& model, KIVO_VECTOR_OBJ& vector, const KIVO_SESSION& session) {
    for (const std::string& condition : wave_conditions(vector)) {
        if (session.holds(condition) == KIVO_TRUTH::kUnknown) {
            model.notes.push_back("whether '" + shortened_to(condition, kWidestInNote) +
                                  "' holds is not decided: its THEN part is drawn");
        }
    }
}

// The session that knows the widths of a vector's ports.
const KIVO_SESSION* deciding_session(const KIVO_VECTOR_OBJ& vector, const WaveCase& drawn) {
    if (drawn.session != nullptr || drawn.defaults == nullptr) {
        return drawn.session;
    }
    const bool applies = vector.wave_condition == nullptr ||
                         drawn.defaults->holds(vector.wave_condition->text3) == KIVO_TRUTH::kYes;
    return applies ? drawn.defaults : nullptr;
}

class ModelBuilder {
public:
    // "session" decides the widths that are no numbers; null for none.
    ModelBuilder(const KIVO_INFO& info, KIVO_VECTOR_OBJ& vector, const KIVO_SESSION* session,
                 WaveModel& model)
        : info_(info), vector_(vector), session_(session), model_(model) {}

    void add_signals(const std::vector<Driver>& drivers) {
        std::map<std::string, std::size_t> positions;
        std::vector<std::vector<const Driver*>> by_signal;
        for (const Driver& driver : drivers) {
            const std::string& name = driver.timeline.signal;
            if (name.empty()) {
                continue;  // which is warned of
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
        std::vector<ValuePositions> positions;
        positions.reserve(drivers.size());
        for (const Driver* driver : drivers) {
            positions.push_back(add_values(*driver, signal));
        }
        note_values_as_written(signal);
        set_width(signal);
        signal.changes = merge_drivers(drivers, positions, model_.end);
        if (signal.changes.empty() || signal.changes.front().time > model_.start) {
            signal.changes.insert(signal.changes.begin(), {model_.start, WaveState::kUndriven, 0});
        }
        model_.signals.push_back(std::move(signal));
        negatives_.clear();
        by_text_.clear();
        as_written_.clear();
    }

    ValuePositions add_values(const Driver& driver, WaveSignal& signal) {
        const bool is_binary = driver.timeline.has_binary_values;
        ValuePositions positions;
        for (const std::string& value : driver.timeline.values) {
            const auto [found, is_new] =
                by_text_.emplace((is_binary ? "b" : "d") + value, signal.values.size());
            if (is_new) {
                signal.values.push_back({shown_value(vector_, signal.name, value, is_binary),
                                         converter_.bits_of(value, is_binary)});
                negatives_.push_back(!is_binary && is_negative(value));
                if (is_beyond_fixed_point(vector_, signal.name, value, is_binary) &&
                    !is_released(signal.values.back())) {
                    as_written_.push_back(signal.values.back().shown);
                }
            }
            positions.push_back(found->second);
        }
        return positions;
    }

    void note_values_as_written(const WaveSignal& signal) {
        if (as_written_.empty()) {
            return;
        }
        const std::size_t named = std::min(as_written_.size(), kMostNamedValues);
        std::string values;
        for (std::size_t i = 0; i < named; ++i) {
            values += (i == 0 ? "'" : ", '") + shortened_to(as_written_[i], kWidestInNote) + "'";
        }
        if (named < as_written_.size()) {
            values += fmt::format(" and {} more", as_written_.size() - named);
        }
        model_.notes.push_back(
            fmt::format("values of signal '{}' that the fixed-point format {} cannot show are "
                        "shown as written: {}",
                        shortened_to(signal.name, kWidestInNote),
                        shortened_to(signal.fixed_point, kWidestInNote), values));
    }

    void set_width(WaveSignal& signal) {
        std::size_t widest = 1;
        for (const WaveValue& value : signal.values) {
            widest = std::max(widest, value.bits.size());
        }
        const auto width = session_ == nullptr ? numeric_width(info_, signal.name)
                                               : configured_width(*session_, signal.name);
        signal.width = width.value_or(widest);
        if (signal.width > widest && bits_ + signal.width * signal.values.size() > kMaxBits) {
            model_.notes.push_back(fmt::format(
                "signal '{}' is taken as {} bits wide, which its values need, not as {}",
                signal.name, widest, signal.width));
            signal.width = widest;
        }
        bits_ += signal.width * signal.values.size();
        // Of a value that is no number, or too large for a width that is one, is warned.
        const bool is_told = numeric_width(info_, signal.name).has_value();
        std::string misfit;
        for (std::size_t i = 0; i < signal.values.size(); ++i) {
            WaveValue& value = signal.values[i];
            const bool is_number = !value.bits.empty();
            const bool fits =
                fit_bits(value.bits, signal.width, negatives_[i], model_.truncate_low);
            if (!fits && is_number && !is_told && misfit.empty()) {
                misfit = value.shown;
            }
        }
        if (!misfit.empty()) {
            model_.notes.push_back(fmt::format("value '{}' of signal '{}' is not a number of {}",
                                               misfit, signal.name, counted(signal.width, "bit")));
        }
    }

    const KIVO_INFO& info_;
    KIVO_VECTOR_OBJ& vector_;
    const KIVO_SESSION* session_;
    WaveModel& model_;
    BitConverter converter_;
    // Of the signal in hand: which of its values are negative numbers, where each stands, and those
    // that its format cannot show.
    std::vector<bool> negatives_;
    std::map<std::string, std::size_t> by_text_;
    std::vector<std::string> as_written_;
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

std::size_t WaveModel::widest_value() const {
    std::size_t widest = 0;
    for (const WaveSignal& signal : signals) {
        for (const WaveValue& value : signal.values) {
            widest = std::max(widest, text_width(value.shown));
        }
    }
    return widest;
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

WaveModel make_wave_model(const KIVO_INFO& info, KIVO_VECTOR_OBJ& vector, const WaveCase& drawn,
                          std::size_t max_transitions) {
    WaveModel model;
    model.name = vector.name;
    model.caption = join_lines(vector.caption);
    if (vector.wave_condition != nullptr) {
        model.condition = join_lines(vector.wave_condition->text3);
    }
    model.time_scale = join_lines(info.time_scale);
    model.truncate_low = vector.truncate_low;
    if (drawn.session != nullptr) {
        note_undecided(model, vector, *drawn.session);
    }
    std::vector<Driver> drivers = find_drivers(vector, drawn);
    const std::int32_t end = end_of_vector(drivers, vector, info.start_time);
    if (end < info.start_time) {
        model.notes.push_back(fmt::format("vector '{}' ends at {}, before the start time {}",
                                          model.name, end, info.start_time));
    }
    evaluate_range(model, drivers, info.start_time, std::max(info.start_time, end),
                   max_transitions);
    ModelBuilder(info, vector, deciding_session(vector, drawn), model).add_signals(drivers);
    return model;
}
