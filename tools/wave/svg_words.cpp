#include "tools/wave/svg_words.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"
#include "tools/text/words.h"
#include "tools/wave/fit_value.h"

namespace {

constexpr std::size_t kMaxToldLetters = 64;
constexpr std::size_t kMaxToldChanges = 24;

std::string state_text(const SvgFrame& frame, const WaveSignal& signal, const WaveChange& change) {
    switch (change.state) {
        case WaveState::kUndriven:
            return "not driven";
        case WaveState::kReleased:
            return "released";
        case WaveState::kValue:
            break;
    }
    return svg_value(frame, signal, change);
}

}  // namespace

std::string svg_words(const SvgFrame& frame, const WaveSignal& signal) {
    std::string text = signal.label() + ":";
    const std::size_t told = std::min(signal.changes.size(), kMaxToldChanges);
    for (std::size_t i = 0; i < told; ++i) {
        text += fmt::format("{} {} at {}", i == 0 ? "" : ",",
                            state_text(frame, signal, signal.changes[i]), signal.changes[i].time);
    }
    const std::size_t rest = signal.changes.size() - told;
    return text + (rest == 0 ? "." : ", and " + counted(rest, "more change") + ".");
}

std::string svg_value(const SvgFrame& frame, const WaveSignal& signal, const WaveChange& change) {
    const std::string& shown = signal.values[change.value].shown;
    return frame.is_embedded ? fit_value(escape_text(shown), signal.radix, frame.model.truncate_low,
                                         kMaxToldLetters)
                             : shown;
}

std::vector<std::string> svg_notes(const SvgFrame& frame, std::size_t columns) {
    std::vector<std::string> lines;
    if (frame.is_embedded) {
        return lines;
    }
    for (const std::string& note : frame.model.notes) {
        for (const std::string& line : wrap_text(escape_text(as_note(note)), columns)) {
            lines.push_back(shortened_to(line, columns));
        }
    }
    return lines;
}
