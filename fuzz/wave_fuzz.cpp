// Draws and writes the waves of a description in every form, each held against a reader of it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "fuzz/support/expect.h"
#include "fuzz/support/loaded.h"
#include "fuzz/support/vcd_oracle.h"
#include "fuzz/support/xml_oracle.h"
#include "tools/wave/drivers.h"
#include "tools/wave/renderers.h"

namespace {

// More of them tell nothing new and cost the search its time.
constexpr std::size_t kMostTransitions = 2000;
constexpr std::size_t kMostLetters = 500'000;

// Whether the forms of the wave are of a size that is read back in no time.
bool is_small(const WaveModel& model) {
    std::size_t letters = static_cast<std::size_t>((model.end - model.start) / model.common_step());
    letters = std::min(letters, kMostLetters) * (model.signals.size() + 1);
    for (const WaveSignal& signal : model.signals) {
        letters += signal.changes.size() * signal.width;
    }
    return letters < kMostLetters;
}

void check_svg(const std::string& picture) {
    const std::string refusal = xml_refusal(picture);
    expect(refusal.empty(), "a picture is well-formed XML", refusal);
}

void check_wavejson(const WaveModel& model) {
    const auto text = write_wavejson(model);
    expect(text.has_value(), "a small wave fits into WaveJSON");
    const auto json = nlohmann::json::parse(*text, nullptr, false);
    expect(!json.is_discarded(), "WaveJSON can be read", *text);
    const auto steps = static_cast<std::size_t>((model.end - model.start) / model.common_step());
    expect(json["signal"].size() == model.signals.size(), "every signal has a lane");
    for (const auto& lane : json["signal"]) {
        const std::string wave = lane["wave"];
        const auto values = static_cast<std::size_t>(std::count(wave.begin(), wave.end(), '='));
        expect(wave.size() == steps, "a lane is as long as the wave", wave);
        expect(values == (lane.contains("data") ? lane["data"].size() : 0),
               "every value of a lane has its text", wave);
    }
}

void check_model(const WaveModel& model) {
    expect(model.end > model.start, "a wave has a length");
    expect(model.common_step() > 0, "a wave has a step");
    for (const WaveSignal& signal : model.signals) {
        expect(!signal.changes.empty() && signal.changes.front().time == model.start,
               "a signal has a state from the start on", signal.name);
        for (std::size_t i = 1; i < signal.changes.size(); ++i) {
            const WaveChange& before = signal.changes[i - 1];
            const WaveChange& change = signal.changes[i];
            expect(change.time > before.time && change.time <= model.end, "changes stand in order");
            expect(!change.is_same_as(before), "a change changes something", signal.name);
        }
        for (const WaveValue& value : signal.values) {
            expect(value.bits.size() == signal.width, "a value is as wide as its signal");
        }
    }
}

void check_wave(const WaveModel& model) {
    check_model(model);
    if (!is_small(model)) {
        return;
    }
    const Stream out(stdout);
    for (const bool is_ascii : {false, true}) {
        render_terminal(model, {.columns = 80, .is_ascii = is_ascii}, out);
    }
    check_svg(render_svg(model));
    if (!model.signals.empty()) {
        check_svg("<svg xmlns=\"http://www.w3.org/2000/svg\">" +
                  render_embedded_svg(model, "w", 20000).markup + "</svg>");
    }
    const auto dump = write_vcd(model);
    expect(dump.has_value(), "a small wave fits into a dump");
    expect_dump(*dump);
    write_gtkw(model, "wave.vcd", "wave.gtkw");
    check_wavejson(model);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LoadedInput description(data, size);
    KIVO_INFO& info = description.info();
    info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        const std::vector<std::string> conditions = wave_conditions(*vector);
        check_wave(make_wave_model(info, *vector, {}, kMostTransitions));
        if (!conditions.empty()) {
            check_wave(make_wave_model(info, *vector, {.otherwise = conditions}, kMostTransitions));
        }
    }
    return 0;
}
