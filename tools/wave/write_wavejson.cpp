#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "tools/text/json_text.h"
#include "tools/wave/renderers.h"

namespace {

// Of all waves together; a wave needs a character for each step, also where nothing happens.
constexpr std::int64_t kMaxCharacters = 20'000'000;
// Of the values beside them.
constexpr std::size_t kMaxData = 200'000'000;

char state_of(const WaveSignal& signal, const WaveChange& change) {
    const char level = signal.level(change);
    return level == 'u' ? 'x' : level;
}

nlohmann::ordered_json lane_of(const WaveSignal& signal, std::int64_t start, std::int64_t step,
                               std::size_t steps) {
    std::string wave(steps, '.');
    nlohmann::ordered_json data = nlohmann::ordered_json::array();
    for (const WaveChange& change : signal.changes) {
        const auto at = static_cast<std::size_t>((change.time - start) / step);
        if (at >= steps) {
            break;
        }
        wave[at] = state_of(signal, change);
        if (wave[at] == '=') {
            data.push_back(signal.values[change.value].shown);
        }
    }
    nlohmann::ordered_json lane = {{"name", signal.label()}, {"wave", wave}};
    if (!data.empty()) {
        lane["data"] = std::move(data);
    }
    return lane;
}

bool is_data_too_long(const WaveModel& model) {
    std::size_t room = kMaxData;
    for (const WaveSignal& signal : model.signals) {
        for (const WaveChange& change : signal.changes) {
            const std::size_t size =
                change.state == WaveState::kValue ? signal.values[change.value].shown.size() : 0;
            if (size > room) {
                return true;
            }
            room -= size;
        }
    }
    return false;
}

}  // namespace

std::optional<std::string> write_wavejson(const WaveModel& model) {
    const std::int64_t step = model.common_step();
    const std::int64_t steps = (model.end - model.start) / step;
    const auto lanes = static_cast<std::int64_t>(model.signals.size());
    if ((lanes > 0 && steps > kMaxCharacters / lanes) || is_data_too_long(model)) {
        return std::nullopt;
    }
    nlohmann::ordered_json document;
    document["signal"] = nlohmann::ordered_json::array();
    for (const WaveSignal& signal : model.signals) {
        document["signal"].push_back(
            lane_of(signal, model.start, step, static_cast<std::size_t>(steps)));
    }
    document["head"] = {
        {"text", model.caption.empty() ? model.name : model.name + ": " + model.caption}};
    const std::string unit = model.time_scale.empty() ? "" : " " + model.time_scale;
    document["foot"] = {
        {"text", fmt::format("from {}{unit} to {}{unit} in steps of {}{unit}", model.start,
                             model.end, step, fmt::arg("unit", unit))}};
    return json_text(document) + "\n";
}
