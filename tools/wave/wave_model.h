#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/wave/drivers.h"

// A vector as pictures and files of waveforms need it: evaluated, with everything looked up.

// One value that a signal takes.
struct WaveValue {
    std::string shown;  // in the port's display format
    std::string bits;  // of 0, 1, x and z, as many as the signal is wide; all x without such a form
};

enum class WaveState { kUndriven, kValue, kReleased };

// From this time on the signal is in that state.
struct WaveChange {
    std::int64_t time = 0;
    WaveState state = WaveState::kUndriven;
    std::size_t value = 0;  // position in WaveSignal::values

    bool is_same_as(const WaveChange& other) const {
        return state == other.state && (state != WaveState::kValue || value == other.value);
    }
};

struct WaveSignal {
    std::string name;
    std::size_t width = 1;
    DRO_MEMORY_RADIXES radix = DRO_RADIX_HEX;
    std::string fixed_point;  // the description of a fixed-point radix
    std::vector<WaveValue> values;
    // By time, each another state than the one before. The first stands at the start of the range.
    std::vector<WaveChange> changes;

    // "name", or "name[7:0]".
    std::string label() const;
    // What a change looks like as a level: '0', '1', 'z', or '=' for a value to be written out, and
    // 'u' for not driven.
    char level(const WaveChange& change) const;
};

struct WaveModel {
    std::string name;
    std::string caption;
    std::string condition;
    std::string time_scale;
    std::int64_t start = 0;
    std::int64_t end = 0;  // above start
    bool truncate_low = false;
    std::size_t transitions = 0;  // evaluated, of all commands
    std::vector<WaveSignal> signals;
    std::vector<std::string> notes;  // what the picture leaves out, for people

    // The columns of the widest value.
    std::size_t widest_value() const;

    // The longest step that, repeated from the start on, meets every change and the end.
    std::int64_t common_step() const;
};

// Of all commands of a vector together: 24 bytes each.
constexpr std::size_t kMaxTransitions = 4'000'000;

// Evaluates a vector for a case, up to "max_transitions".
WaveModel make_wave_model(const KIVO_INFO& info, KIVO_VECTOR_OBJ& vector, const WaveCase& drawn,
                          std::size_t max_transitions = kMaxTransitions);
