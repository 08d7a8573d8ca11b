#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/text/text_escape.h"
#include "tools/text/words.h"
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
constexpr double kMaxEmbeddedWidth = 960;  // on paper still more than half as large
constexpr double kMinEmbeddedPlotWidth = 320;
constexpr std::size_t kMaxNameLetters = 32;
constexpr std::size_t kMaxToldLetters = 64;
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
    // "id" is empty for a picture that stands alone.
    Picture(const WaveModel& model, std::string id) : model_(model), id_(std::move(id)) {
        std::size_t letters = text_width(shown_unit());
        for (const WaveSignal& signal : model.signals) {
            letters = std::max(letters, text_width(name_of(signal)));
        }
        left_ =
            (is_embedded() ? 2 : kMargin) + static_cast<double>(letters) * kLetterWidth + kNameGap;
        const std::int64_t steps = (model.end - model.start) / model.common_step();
        const double wanted = static_cast<double>(steps) * kStepWidth;
        if (is_embedded()) {
            // The page says above the picture what its heading would.
            top_ = kMargin / 2;
            plot_width_ =
                std::clamp(wanted, kMinEmbeddedPlotWidth, kMaxEmbeddedWidth - left_ - kMargin);
            return;
        }
        top_ = kMargin + 20 + (model.caption.empty() ? 0 : 20) +
               (model.condition.empty() ? 0 : 18) + 6;
        plot_width_ = std::clamp(wanted, kMinPlotWidth, kMaxPlotWidth);
    }

    // Rows as long as they fit into so many bytes, at least one.
    std::string draw(std::size_t max_bytes = std::numeric_limits<std::size_t>::max()) {
        for (const WaveSignal& signal : model_.signals) {
            if (rows_ > 0 && out_.size() + told_.size() > max_bytes) {
                break;
            }
            add_row(signal, top_ + static_cast<double>(rows_) * kRowHeight);
            tell(signal);
            ++rows_;
        }
        bottom_ = top_ + static_cast<double>(rows_) * kRowHeight + 4;
        add_legend();
        // Only now the height of what stands behind and around them is known.
        const std::string rows = std::exchange(out_, {});
        add_start();
        if (!is_embedded()) {
            add_heading();
        }
        add_grid();
        return out_ + rows + "</svg>\n";
    }

    std::size_t rows() const { return rows_; }

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

    bool is_embedded() const { return !id_.empty(); }

    static std::string name_of(const WaveSignal& signal) {
        return cut_text(escape_text(signal.label()), kMaxNameLetters, true);
    }

    double x_of(std::int64_t time) const {
        return left_ + plot_width_ * static_cast<double>(time - model_.start) /
                           static_cast<double>(model_.end - model_.start);
    }

    std::string time_text(std::int64_t time) const { return with_unit(time, model_.time_scale); }

    std::string shown_unit() const {
        return cut_text(escape_text(model_.time_scale), kMaxNameLetters, true);
    }

    // Which states the rows show that not everybody knows.
    void note_states(const WaveSignal& signal) {
        for (const WaveChange& change : signal.changes) {
            has_undriven_ = has_undriven_ || change.state == WaveState::kUndriven;
            has_released_ = has_released_ || signal.level(change) == 'z';
        }
    }

    void add_start() {
        const double width = left_ + plot_width_ + kMargin;
        const double height = bottom_ + (has_legend_ ? 46 : 22) + (is_embedded() ? 4 : kMargin);
        const std::string prefix = is_embedded() ? id_ : "wave";
        if (is_embedded()) {
            out_ += "<svg class=\"wave\" ";
        } else {
            out_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg ";
        }
        add("xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
            "viewBox=\"0 0 {0:.0f} {1:.0f}\" role=\"img\" "
            "aria-labelledby=\"{2}-title {2}-description\">\n",
            width, height, prefix);
        add("<title id=\"{}-title\">{}</title>\n", prefix,
            escape_xml(model_.caption.empty() ? "Waveform " + model_.name
                                              : model_.name + ": " + model_.caption));
        add("<desc id=\"{}-description\">{} from {} to {}.{}</desc>\n", prefix,
            count_of(rows_, "signal"), escape_xml(time_text(model_.start)),
            escape_xml(time_text(model_.end)), told_);
        if (!is_embedded()) {
            out_ += kStyle;
            add("<rect class=\"page\" width=\"100%\" height=\"100%\"/>\n");
        }
    }

    // Adds to what the picture shows in words.
    void tell(const WaveSignal& signal) {
        std::string text = " " + signal.label() + ":";
        const std::size_t told = std::min(signal.changes.size(), kMaxToldChanges);
        for (std::size_t i = 0; i < told; ++i) {
            text += fmt::format("{} {} at {}", i == 0 ? "" : ",",
                                state_text(signal, signal.changes[i]), signal.changes[i].time);
        }
        const std::size_t rest = signal.changes.size() - told;
        told_ += escape_xml(text);
        told_ += rest == 0 ? "." : ", and " + count_of(rest, "more change") + ".";
    }

    std::string state_text(const WaveSignal& signal, const WaveChange& change) const {
        switch (change.state) {
            case WaveState::kUndriven:
                return "not driven";
            case WaveState::kReleased:
                return "released";
            case WaveState::kValue:
                break;
        }
        return told_value(signal, change);
    }

    // A value in words. On a page, where many pictures share the room, long ones are cut.
    std::string told_value(const WaveSignal& signal, const WaveChange& change) const {
        const std::string& shown = signal.values[change.value].shown;
        return is_embedded() ? cut_text(escape_text(shown), kMaxToldLetters, model_.truncate_low)
                             : shown;
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
            left_ - kNameGap, bottom_ + 18, escape_xml(shown_unit()));
    }

    void add_row(const WaveSignal& signal, double top) {
        const double middle = top + kRowHeight / 2;
        out_ += "<g>";
        add("<title>{}</title>", escape_xml(signal.label()));
        add("<text text-anchor=\"end\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>\n", left_ - kNameGap,
            middle + 4, escape_xml(name_of(signal)));
        add_spans(signal, middle);
        end_level();
        note_states(signal);
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
        add("<g><title>{} from {}</title>", escape_xml(told_value(signal, *span.change)),
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
        // In the narrower picture of a page a letter more counts.
        const double pad = is_embedded() ? kSlant : 2 * kSlant;
        const auto room =
            static_cast<std::size_t>(std::max(span.right - span.left - pad, 0.0) / kLetterWidth);
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
        if (has_released_) {
            add_entry(line("released"), "released");
        }
        if (has_undriven_) {
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
    const std::string id_;
    double left_ = 0;
    double top_ = 0;
    double bottom_ = 0;
    double plot_width_ = 0;
    std::string out_;
    std::string told_;
    std::size_t rows_ = 0;
    bool is_in_level_ = false;
    bool has_released_ = false;
    bool has_undriven_ = false;
    bool has_crowded_ = false;
    bool has_legend_ = false;
};

}  // namespace

std::string render_svg(const WaveModel& model) {
    return Picture(model, {}).draw();
}

EmbeddedSvg render_embedded_svg(const WaveModel& model, const std::string& id,
                                std::size_t max_bytes) {
    Picture picture(model, id);
    std::string markup = picture.draw(max_bytes);
    return {std::move(markup), picture.rows()};
}
