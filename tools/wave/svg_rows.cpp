#include "tools/wave/svg_rows.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/text/text_escape.h"
#include "tools/text/xml_escape.h"
#include "tools/wave/fit_value.h"
#include "tools/wave/svg_words.h"

namespace {

constexpr double kWaveHeight = 20;
constexpr double kSlant = 3;
// Changes that are closer than this are drawn as one block.
constexpr double kMinSpanWidth = 2.5;

double slant_of(double left, double right) {
    return std::min(kSlant, (right - left) / 2);
}

}  // namespace

void SvgRows::add(const WaveSignal& signal) {
    middle_ = frame_.top + static_cast<double>(count_) * kSvgRowHeight + kSvgRowHeight / 2;
    out_ += fmt::format(
        "<g><title>{}</title><text text-anchor=\"end\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>\n",
        escape_xml(signal.label()), frame_.left - kSvgNameGap, middle_ + 4,
        escape_xml(svg_name(signal)));
    add_spans(signal);
    end_level();
    note_states(signal);
    out_ += "</g>\n";
    ++count_;
}

void SvgRows::note_states(const WaveSignal& signal) {
    for (const WaveChange& change : signal.changes) {
        has_undriven_ = has_undriven_ || change.state == WaveState::kUndriven;
        has_released_ = has_released_ || signal.level(change) == 'z';
    }
}

// Goes over the spans of a row, with those that are too narrow gathered in blocks.
void SvgRows::add_spans(const WaveSignal& signal) {
    const std::int64_t range_end = frame_.model.end;
    double crowd_left = 0;
    double crowd_right = -1;
    char before = 0;
    const auto end_crowd = [&] {
        if (crowd_right >= crowd_left) {
            end_level();
            add_crowd(crowd_left, crowd_right);
            before = 0;
            crowd_right = -1;
        }
    };
    for (std::size_t i = 0; i < signal.changes.size(); ++i) {
        const WaveChange& change = signal.changes[i];
        if (change.time >= range_end) {
            break;
        }
        const bool is_last = i + 1 == signal.changes.size();
        const std::int64_t end =
            is_last ? range_end : std::min(signal.changes[i + 1].time, range_end);
        const double left = frame_.x_of(change.time);
        const double right = frame_.x_of(end);
        if (right - left < kMinSpanWidth) {
            crowd_left = crowd_right < crowd_left ? left : crowd_left;
            crowd_right = right;
            has_crowded_ = true;
            continue;
        }
        end_crowd();
        const char level = signal.level(change);
        add_span(signal, {&change, level, before, left, right});
        before = level;
    }
    end_crowd();
}

void SvgRows::add_crowd(double left, double right) {
    out_ += fmt::format(
        "<rect class=\"crowded\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\"/>",
        left, middle_ - kWaveHeight / 2, std::max(right - left, 1.0), kWaveHeight);
}

void SvgRows::add_span(const WaveSignal& signal, const Span& span) {
    if (span.level == '0' || span.level == '1') {
        add_level(span);
        return;
    }
    end_level();
    if (span.level == '=') {
        add_value(signal, span);
        return;
    }
    out_ +=
        fmt::format("<path class=\"{}\" d=\"M{:.1f} {:.1f}H{:.1f}\"/>",
                    span.level == 'z' ? "released" : "undriven", span.left, middle_, span.right);
}

// Levels that follow one another are one path.
void SvgRows::add_level(const Span& span) {
    const double y = span.level == '1' ? middle_ - kWaveHeight / 2 : middle_ + kWaveHeight / 2;
    if (!is_in_level_) {
        out_ += fmt::format("<path class=\"level\" d=\"M{:.1f} {:.1f}", span.left,
                            span.before == 'z' || span.before == 'u' ? middle_ : y);
        is_in_level_ = true;
    }
    if (span.before != 0 && span.before != span.level) {
        out_ += fmt::format("L{:.1f} {:.1f}", span.left + slant_of(span.left, span.right), y);
    }
    out_ += fmt::format("H{:.1f}", span.right);
}

void SvgRows::end_level() {
    if (is_in_level_) {
        out_ += "\"/>";
        is_in_level_ = false;
    }
}

void SvgRows::add_value(const WaveSignal& signal, const Span& span) {
    out_ += fmt::format("<g><title>{} from {}</title>",
                        escape_xml(svg_value(frame_, signal, *span.change)),
                        escape_xml(frame_.time_text(span.change->time)));
    add_value_shape(span);
    add_value_text(signal, span);
    out_ += "</g>";
}

// A hexagon, open to the side where the picture ends.
void SvgRows::add_value_shape(const Span& span) {
    const double slant = slant_of(span.left, span.right);
    const double high = middle_ - kWaveHeight / 2;
    const double low = middle_ + kWaveHeight / 2;
    const bool is_first = span.before == 0 && span.left <= frame_.left;
    const bool is_last = span.right >= frame_.right();
    const double in_left = is_first ? span.left : span.left + slant;
    const double in_right = is_last ? span.right : span.right - slant;
    const std::string top = fmt::format("M{:.1f} {:.1f}H{:.1f}", in_left, high, in_right);
    const std::string right =
        fmt::format("L{:.1f} {:.1f}L{:.1f} {:.1f}", span.right, middle_, in_right, low);
    const std::string bottom = fmt::format("H{:.1f}", in_left);
    const std::string left =
        fmt::format("L{:.1f} {:.1f}L{:.1f} {:.1f}", span.left, middle_, in_left, high);
    out_ += fmt::format("<path class=\"inside\" d=\"{}{}{}{}Z\"/>", top, right, bottom, left);
    out_ += fmt::format("<path class=\"bus\" d=\"{}{}{}{}\"/>", top,
                        is_last ? fmt::format("M{:.1f} {:.1f}", in_right, low) : right, bottom,
                        is_first ? "" : left);
}

void SvgRows::add_value_text(const WaveSignal& signal, const Span& span) {
    // In the narrower picture of a page a letter more counts.
    const double pad = frame_.is_embedded ? kSlant : 2 * kSlant;
    const auto room =
        static_cast<std::size_t>(std::max(span.right - span.left - pad, 0.0) / kSvgLetterWidth);
    const std::string shown = fit_value(escape_text(signal.values[span.change->value].shown),
                                        signal.radix, frame_.model.truncate_low, room);
    if (!shown.empty()) {
        out_ += fmt::format("<text class=\"value\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>",
                            (span.left + span.right) / 2, middle_ + 4, escape_xml(shown));
    }
}
