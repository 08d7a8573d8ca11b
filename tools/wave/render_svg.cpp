#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <vector>

#include "tools/text_escape.h"
#include "tools/wave/renderers.h"
#include "tools/wave/time_axis.h"

namespace {

// Lengths in units of the picture, which are pixels at its natural size.
constexpr double kMargin = 20;
constexpr double kRowHeight = 34;
constexpr double kWaveHeight = 20;
constexpr double kLetterWidth = 7.25;  // of the 12-pixel monospaced text
constexpr double kNameGap = 14;
constexpr double kSlant = 3;
constexpr double kStepWidth = 24;
constexpr double kMinPlotWidth = 640;
constexpr double kMaxPlotWidth = 1400;
// Changes that are closer than this are drawn as one block.
constexpr double kMinSpanWidth = 2.5;
constexpr double kMarkDistance = 72;
constexpr std::size_t kMaxNameLetters = 32;
constexpr std::size_t kMaxToldChanges = 24;

constexpr std::string_view kStyle = R"(<style>
text { font: 12px ui-monospace, "DejaVu Sans Mono", Menlo, Consolas, monospace; fill: #1c2733; }
.title { font: 600 15px system-ui, "DejaVu Sans", sans-serif; }
.caption { font: 13px system-ui, "DejaVu Sans", sans-serif; fill: #55626f; }
.tick { font-size: 11px; fill: #55626f; }
.value { text-anchor: middle; }
.page { fill: #ffffff; }
.grid { stroke: #e3e8ee; fill: none; }
.axis { stroke: #8a96a3; fill: none; }
.level { stroke: #1d5fa8; stroke-width: 1.5; stroke-linejoin: round; fill: none; }
.bus { stroke: #1d5fa8; stroke-width: 1.5; stroke-linejoin: round; fill: none; }
.inside { fill: #edf4fc; }
.released { stroke: #b3610a; stroke-width: 1.5; stroke-dasharray: 5 3; fill: none; }
.undriven { stroke: #8a96a3; stroke-width: 1.5; stroke-dasharray: 1.5 4; fill: none; }
.crowded { fill: #1d5fa8; fill-opacity: 0.55; }
@media (prefers-color-scheme: dark) {
text { fill: #e4eaf1; }
.caption, .tick { fill: #a2afbc; }
.page { fill: #14191f; }
.grid { stroke: #28313b; }
.axis { stroke: #72808e; }
.level { stroke: #79b8ff; }
.bus { stroke: #79b8ff; }
.inside { fill: #1b2938; }
.released { stroke: #f2ae5a; }
.undriven { stroke: #72808e; }
.crowded { fill: #79b8ff; }
}
</style>
)";

// Text between tags or in an attribute. What XML cannot hold comes as escape_text writes it.
std::string escape_xml(std::string_view text) {
    std::string escaped;
    for (const char letter : escape_text(text)) {
        switch (letter) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += letter;
        }
    }
    return escaped;
}

// The start of every code point of an escaped text, and its end.
std::vector<std::size_t> letter_starts(std::string_view text) {
    std::vector<std::size_t> starts;
    for (std::size_t at = 0; at < text.size();
         at += std::max<std::size_t>(1, utf8_length(text.substr(at)))) {
        starts.push_back(at);
    }
    starts.push_back(text.size());
    return starts;
}

// At most so many letters of a text, cut at its low (right) end or at its high one.
std::string cut_text(const std::string& text, std::size_t letters, bool at_low_end) {
    const std::vector<std::size_t> starts = letter_starts(text);
    const std::size_t count = starts.size() - 1;
    if (count <= letters) {
        return text;
    }
    return at_low_end ? text.substr(0, starts[letters - 1]) + "…"
                      : "…" + text.substr(starts[count - letters + 1]);
}

std::string count_of(std::size_t count, const std::string& what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

class Picture {
public:
    explicit Picture(const WaveModel& model) : model_(model) {
        std::size_t letters = text_width(escape_text(model.time_scale));
        for (const WaveSignal& signal : model.signals) {
            letters = std::max(letters, text_width(name_of(signal)));
        }
        left_ = kMargin + static_cast<double>(letters) * kLetterWidth + kNameGap;
        const auto steps = static_cast<double>((model.end - model.start) / model.common_step());
        plot_width_ = std::clamp(steps * kStepWidth, kMinPlotWidth, kMaxPlotWidth);
        top_ = kMargin + 20 + (model.caption.empty() ? 0 : 20) +
               (model.condition.empty() ? 0 : 18) + 6;
        bottom_ = top_ + static_cast<double>(model.signals.size()) * kRowHeight + 4;
    }

    std::string draw() {
        add_heading();
        add_grid();
        for (std::size_t i = 0; i < model_.signals.size(); ++i) {
            add_row(model_.signals[i], top_ + static_cast<double>(i) * kRowHeight);
        }
        add_legend();
        // Only now it is known whether there is a legend to make room for.
        const std::string body = std::move(out_);
        out_.clear();
        add_start();
        return out_ + body + "</svg>\n";
    }

private:
    // A stretch of the range in which a signal keeps its state.
    struct Span {
        const WaveChange* change;
        char level;
        char before;  // the level of the span on its left, 0 where the picture begins
        double left;
        double right;
    };

    template <typename... Arguments>
    void add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        fmt::format_to(std::back_inserter(out_), format, std::forward<Arguments>(arguments)...);
    }

    static std::string name_of(const WaveSignal& signal) {
        return cut_text(escape_text(signal.label()), kMaxNameLetters, true);
    }

    double x_of(std::int64_t time) const {
        return left_ + plot_width_ * static_cast<double>(time - model_.start) /
                           static_cast<double>(model_.end - model_.start);
    }

    std::string time_text(std::int64_t time) const {
        return model_.time_scale.empty() ? fmt::format("{}", time)
                                         : fmt::format("{} {}", time, model_.time_scale);
    }

    bool has(WaveState state) const {
        return std::any_of(
            model_.signals.begin(), model_.signals.end(), [state](const WaveSignal& signal) {
                return std::any_of(
                    signal.changes.begin(), signal.changes.end(), [&](const WaveChange& change) {
                        return change.state == state ||
                               (state == WaveState::kReleased && signal.level(change) == 'z');
                    });
            });
    }

    void add_start() {
        const double width = left_ + plot_width_ + kMargin;
        const double height = bottom_ + (has_legend_ ? 46 : 22) + kMargin;
        add("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
            "viewBox=\"0 0 {0:.0f} {1:.0f}\" role=\"img\" "
            "aria-labelledby=\"wave-title wave-description\">\n",
            width, height);
        add("<title id=\"wave-title\">{}</title>\n",
            escape_xml(model_.caption.empty() ? "Waveform " + model_.name
                                              : model_.name + ": " + model_.caption));
        add("<desc id=\"wave-description\">{}</desc>\n", escape_xml(description()));
        out_ += kStyle;
        add("<rect class=\"page\" width=\"100%\" height=\"100%\"/>\n");
    }

    // What the picture shows, in words.
    std::string description() const {
        std::string text =
            fmt::format("{} from {} to {}.", count_of(model_.signals.size(), "signal"),
                        time_text(model_.start), time_text(model_.end));
        for (const WaveSignal& signal : model_.signals) {
            text += " " + signal.label() + ":";
            const std::size_t told = std::min(signal.changes.size(), kMaxToldChanges);
            for (std::size_t i = 0; i < told; ++i) {
                text += fmt::format("{} {} at {}", i == 0 ? "" : ",",
                                    state_text(signal, signal.changes[i]), signal.changes[i].time);
            }
            const std::size_t rest = signal.changes.size() - told;
            text += rest == 0 ? "." : ", and " + count_of(rest, "more change") + ".";
        }
        return text;
    }

    static std::string state_text(const WaveSignal& signal, const WaveChange& change) {
        switch (change.state) {
            case WaveState::kUndriven:
                return "not driven";
            case WaveState::kReleased:
                return "released";
            case WaveState::kValue:
                break;
        }
        return signal.values[change.value].shown;
    }

    void add_heading() {
        double y = kMargin + 12;
        add("<text class=\"title\" x=\"{}\" y=\"{}\">{}</text>\n", kMargin, y,
            escape_xml(model_.name));
        if (!model_.caption.empty()) {
            y += 20;
            add("<text class=\"caption\" x=\"{}\" y=\"{}\">{}</text>\n", kMargin, y,
                escape_xml(model_.caption));
        }
        if (!model_.condition.empty()) {
            y += 18;
            add("<text class=\"caption\" x=\"{}\" y=\"{}\">Applies if {}</text>\n", kMargin, y,
                escape_xml(model_.condition));
        }
    }

    void add_grid() {
        const double range = static_cast<double>(model_.end - model_.start);
        const auto widest = static_cast<double>(
            std::max(std::to_string(model_.start).size(), std::to_string(model_.end).size()));
        const double distance = std::max(kMarkDistance, (widest + 2) * kLetterWidth);
        const auto closest = static_cast<std::int64_t>(std::ceil(range * distance / plot_width_));
        for (const std::int64_t mark :
             axis_marks(model_.start, model_.end, std::max<std::int64_t>(1, closest))) {
            const double x = x_of(mark);
            add("<path class=\"grid\" d=\"M{0:.1f} {1}V{2}\"/>"
                "<path class=\"axis\" d=\"M{0:.1f} {2}v5\"/>"
                "<text class=\"tick\" text-anchor=\"middle\" x=\"{0:.1f}\" y=\"{3}\">{4}</text>\n",
                x, top_, bottom_, bottom_ + 18, mark);
        }
        add("<path class=\"axis\" d=\"M{:.1f} {}H{:.1f}\"/>\n", left_, bottom_,
            left_ + plot_width_);
        add("<text class=\"tick\" text-anchor=\"end\" x=\"{:.1f}\" y=\"{}\">{}</text>\n",
            left_ - kNameGap, bottom_ + 18, escape_xml(model_.time_scale));
    }

    void add_row(const WaveSignal& signal, double top) {
        const double middle = top + kRowHeight / 2;
        out_ += "<g>";
        add("<title>{}</title>", escape_xml(signal.label()));
        add("<text text-anchor=\"end\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>\n", left_ - kNameGap,
            middle + 4, escape_xml(name_of(signal)));
        add_spans(signal, middle);
        end_level();
        out_ += "</g>\n";
    }

    // Goes over the spans of a row, with those that are too narrow gathered in blocks.
    void add_spans(const WaveSignal& signal, double middle) {
        double crowd_left = 0;
        double crowd_right = -1;
        char before = 0;
        const auto end_crowd = [&] {
            if (crowd_right >= crowd_left) {
                end_level();
                add_crowd(crowd_left, crowd_right, middle);
                before = 0;
                crowd_right = -1;
            }
        };
        for (std::size_t i = 0; i < signal.changes.size(); ++i) {
            const WaveChange& change = signal.changes[i];
            if (change.time >= model_.end) {
                break;
            }
            const bool is_last = i + 1 == signal.changes.size();
            const std::int64_t end =
                is_last ? model_.end : std::min(signal.changes[i + 1].time, model_.end);
            const Span span = {&change, signal.level(change), before, x_of(change.time), x_of(end)};
            if (span.right - span.left < kMinSpanWidth) {
                crowd_left = crowd_right < crowd_left ? span.left : crowd_left;
                crowd_right = span.right;
                has_crowded_ = true;
                continue;
            }
            end_crowd();
            add_span(signal, {span.change, span.level, before, span.left, span.right}, middle);
            before = span.level;
        }
        end_crowd();
    }

    void add_crowd(double left, double right, double middle) {
        add("<rect class=\"crowded\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" "
            "height=\"{:.1f}\"/>",
            left, middle - kWaveHeight / 2, std::max(right - left, 1.0), kWaveHeight);
    }

    void add_span(const WaveSignal& signal, const Span& span, double middle) {
        if (span.level == '0' || span.level == '1') {
            add_level(span, middle);
            return;
        }
        end_level();
        if (span.level == '=') {
            add_value(signal, span, middle);
            return;
        }
        add("<path class=\"{}\" d=\"M{:.1f} {:.1f}H{:.1f}\"/>",
            span.level == 'z' ? "released" : "undriven", span.left, middle, span.right);
    }

    // Levels that follow one another are one path.
    void add_level(const Span& span, double middle) {
        const double y = span.level == '1' ? middle - kWaveHeight / 2 : middle + kWaveHeight / 2;
        const double slant = std::min(kSlant, (span.right - span.left) / 2);
        if (!is_in_level_) {
            add("<path class=\"level\" d=\"M{:.1f} {:.1f}", span.left,
                span.before == 'z' || span.before == 'u' ? middle : y);
            is_in_level_ = true;
        }
        if (span.before != 0 && span.before != span.level) {
            add("L{:.1f} {:.1f}", span.left + slant, y);
        }
        add("H{:.1f}", span.right);
    }

    void end_level() {
        if (is_in_level_) {
            out_ += "\"/>";
            is_in_level_ = false;
        }
    }

    void add_value(const WaveSignal& signal, const Span& span, double middle) {
        const double slant = std::min(kSlant, (span.right - span.left) / 2);
        const double high = middle - kWaveHeight / 2;
        const double low = middle + kWaveHeight / 2;
        // Open to the side where the picture ends.
        const bool is_first = span.before == 0 && span.left <= left_;
        const bool is_last = span.right >= left_ + plot_width_;
        const double in_left = is_first ? span.left : span.left + slant;
        const double in_right = is_last ? span.right : span.right - slant;
        const std::string shown = escape_text(signal.values[span.change->value].shown);
        add("<g><title>{} from {}</title>", escape_xml(shown),
            escape_xml(time_text(span.change->time)));
        const std::string top = fmt::format("M{:.1f} {:.1f}H{:.1f}", in_left, high, in_right);
        const std::string right =
            fmt::format("L{:.1f} {:.1f}L{:.1f} {:.1f}", span.right, middle, in_right, low);
        const std::string bottom = fmt::format("H{:.1f}", in_left);
        const std::string left =
            fmt::format("L{:.1f} {:.1f}L{:.1f} {:.1f}", span.left, middle, in_left, high);
        add("<path class=\"inside\" d=\"{}{}{}{}Z\"/>", top, right, bottom, left);
        add("<path class=\"bus\" d=\"{}{}{}{}\"/>", top,
            is_last ? fmt::format("M{:.1f} {:.1f}", in_right, low) : right, bottom,
            is_first ? "" : left);
        const auto room =
            static_cast<std::size_t>((span.right - span.left - 2 * kSlant) > 0
                                         ? (span.right - span.left - 2 * kSlant) / kLetterWidth
                                         : 0);
        if (room >= text_width(shown) || room >= 3) {
            add("<text class=\"value\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>",
                (span.left + span.right) / 2, middle + 4,
                escape_xml(cut_text(shown, room, model_.truncate_low)));
        }
        out_ += "</g>";
    }

    void add_legend() {
        double x = left_;
        const double y = bottom_ + 42;
        const auto add_entry = [&](const std::string& sample, const std::string& text) {
            has_legend_ = true;
            out_ += sample;
            add("<text class=\"tick\" x=\"{:.1f}\" y=\"{}\">{}</text>\n", x + 30, y, text);
            x += 30 + static_cast<double>(text.size()) * kLetterWidth + 18;
        };
        const auto line = [&](const char* style) {
            return fmt::format("<path class=\"{}\" d=\"M{:.1f} {}h24\"/>", style, x, y - 4);
        };
        if (has(WaveState::kReleased)) {
            add_entry(line("released"), "released");
        }
        if (has(WaveState::kUndriven)) {
            add_entry(line("undriven"), "not driven yet");
        }
        if (has_crowded_) {
            add_entry(fmt::format("<rect class=\"crowded\" x=\"{:.1f}\" y=\"{}\" width=\"24\" "
                                  "height=\"10\"/>",
                                  x, y - 9),
                      "changes too close to draw");
        }
    }

    const WaveModel& model_;
    double left_ = 0;
    double top_ = 0;
    double bottom_ = 0;
    double plot_width_ = 0;
    std::string out_;
    bool is_in_level_ = false;
    bool has_crowded_ = false;
    bool has_legend_ = false;
};

}  // namespace

std::string render_svg(const WaveModel& model) {
    return Picture(model).draw();
}
