#include "tools/wave/svg_frame.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/text/text_escape.h"
#include "tools/text/utf8.h"
#include "tools/text/words.h"

namespace {

constexpr double kStepWidth = 24;
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

std::string joined(const std::string_view* first, const std::string_view* last) {
    std::string text;
    for (; first != last; ++first) {
        text += *first;
    }
    return text;
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
    const double wanted = static_cast<double>(steps) * kStepWidth;
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
    return cut_text(escape_text(signal.label()), kMaxNameLetters, true);
}

std::string svg_unit(const WaveModel& model) {
    return cut_text(escape_text(model.time_scale), kMaxNameLetters, true);
}

std::string cut_text(const std::string& text, std::size_t letters, bool at_low_end) {
    const std::vector<std::string_view> all = utf8_characters(text);
    if (all.size() <= letters) {
        return text;
    }
    const std::string_view* const first = all.data();
    const std::string_view* const last = first + all.size();
    return at_low_end ? joined(first, first + letters - 1) + "…"
                      : "…" + joined(last - letters + 1, last);
}
