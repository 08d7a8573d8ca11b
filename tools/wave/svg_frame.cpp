#include "tools/wave/svg_frame.h"

#include <algorithm>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"
#include "tools/text/words.h"

namespace {

constexpr double kStepWidth = 24;  // or as much as the widest value needs
constexpr double kMinPlotWidth = 640;
constexpr double kMaxPlotWidth = 1400;
constexpr double kMaxEmbeddedWidth = 960;  // on paper still more than half as large
constexpr double kMinEmbeddedPlotWidth = 320;
constexpr std::size_t kMaxNameLetters = 32;

// Of the widest name or unit beside the rows.
std::size_t letters_of_names(const WaveModel& model) {
    std::size_t letters = text_width(svg_unit(model));
    for (const WaveSignal& signal : model.signals) {
        letters = std::max(letters, text_width(svg_name(signal)));
    }
    return letters;
}

double height_of_heading(const WaveModel& model) {
    return 20 + (model.caption.empty() ? 0 : 20) + (model.condition.empty() ? 0 : 18) + 6;
}

}  // namespace

double SvgFrame::x_of(std::int64_t time) const {
    return left + plot_width * static_cast<double>(time - model.start) /
                      static_cast<double>(model.end - model.start);
}

std::string SvgFrame::time_text(std::int64_t time) const {
    return with_unit(time, model.time_scale);
}

SvgFrame make_svg_frame(const WaveModel& model, bool is_embedded) {
    SvgFrame frame{model, is_embedded};
    frame.left = (is_embedded ? 2 : kSvgMargin) +
                 static_cast<double>(letters_of_names(model)) * kSvgLetterWidth + kSvgNameGap;
    const std::int64_t steps = (model.end - model.start) / model.common_step();
    const double value = static_cast<double>(model.widest_value() + 1) * kSvgLetterWidth;
    const double wanted = static_cast<double>(steps) * std::max(kStepWidth, value);
    if (is_embedded) {
        frame.top = kSvgMargin / 2;
        frame.plot_width =
            std::clamp(wanted, kMinEmbeddedPlotWidth, kMaxEmbeddedWidth - frame.left - kSvgMargin);
    } else {
        frame.top = kSvgMargin + height_of_heading(model);
        frame.plot_width = std::clamp(wanted, kMinPlotWidth, kMaxPlotWidth);
    }
    return frame;
}

std::string svg_name(const WaveSignal& signal) {
    return shortened_to(escape_text(signal.label()), kMaxNameLetters);
}

std::string svg_unit(const WaveModel& model) {
    return shortened_to(escape_text(model.time_scale), kMaxNameLetters);
}
