#include <fmt/format.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

#include "tools/text/words.h"
#include "tools/text/xml_escape.h"
#include "tools/wave/renderers.h"
#include "tools/wave/svg_frame.h"
#include "tools/wave/svg_rows.h"
#include "tools/wave/svg_style.h"
#include "tools/wave/svg_words.h"
#include "tools/wave/time_axis.h"

namespace {

constexpr double kMarkDistance = 72;
constexpr double kNoteHeight = 18;

// A line at the left margin.
std::string text_line(const char* style, double y, const std::string& text) {
    return fmt::format("<text class=\"{}\" x=\"{}\" y=\"{}\">{}</text>\n", style, kSvgMargin, y,
                       escape_xml(text));
}

class Picture {
public:
    // "id" is empty for a picture that stands alone.
    Picture(const WaveModel& model, const std::string& id)
        : model_(model),
          frame_(make_svg_frame(model, !id.empty())),
          id_(id.empty() ? "wave" : id),
          rows_(frame_) {}

    // Draws as many rows as fit into "max_bytes", at least one.
    std::string draw(std::size_t max_bytes = std::numeric_limits<std::size_t>::max()) {
        for (const WaveSignal& signal : model_.signals) {
            if (rows_.count() > 0 && rows_.markup().size() + told_.size() > max_bytes) {
                break;
            }
            rows_.add(signal);
            told_ += escape_xml(' ' + svg_words(frame_, signal));
        }
        bottom_ = frame_.top + static_cast<double>(rows_.count()) * kSvgRowHeight + 4;
        const std::string legend = make_legend();
        const std::string notes = make_notes(bottom_ + (legend.empty() ? 22 : 46));
        add_start();
        if (!frame_.is_embedded) {
            add_heading();
        }
        add_grid();
        return out_ + rows_.markup() + legend + notes + "</svg>\n";
    }

    std::size_t rows() const { return rows_.count(); }

private:
    void add_start() {
        out_ += frame_.is_embedded ? "<svg class=\"wave\" "
                                   : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg ";
        out_ += fmt::format(
            "xmlns=\"http://www.w3.org/2000/svg\" width=\"{0:.0f}\" height=\"{1:.0f}\" "
            "viewBox=\"0 0 {0:.0f} {1:.0f}\" role=\"img\" "
            "aria-labelledby=\"{2}-title {2}-description\">\n",
            frame_.right() + kSvgMargin, height_, id_);
        out_ +=
            fmt::format("<title id=\"{}-title\">{}</title>\n", id_,
                        escape_xml(model_.caption.empty() ? "Waveform " + model_.name
                                                          : model_.name + ": " + model_.caption));
        out_ += fmt::format("<desc id=\"{}-description\">{} from {} to {}.{}</desc>\n", id_,
                            counted(rows_.count(), "signal"),
                            escape_xml(frame_.time_text(model_.start)),
                            escape_xml(frame_.time_text(model_.end)), told_);
        if (!frame_.is_embedded) {
            out_ += kSvgStyle;
            out_ += "<rect class=\"page\" width=\"100%\" height=\"100%\"/>\n";
        }
    }

    void add_heading() {
        double y = kSvgMargin + 12;
        out_ += text_line("title", y, model_.name);
        if (!model_.caption.empty()) {
            y += 20;
            out_ += text_line("caption", y, model_.caption);
        }
        if (!model_.condition.empty()) {
            y += 18;
            out_ += text_line("caption", y, "Applies if " + model_.condition);
        }
    }

    // The shortest time between two marks of the axis whose numbers do not touch.
    std::int64_t closest_marks() const {
        const double range = static_cast<double>(model_.end - model_.start);
        const auto widest = static_cast<double>(
            std::max(std::to_string(model_.start).size(), std::to_string(model_.end).size()));
        const double distance = std::max(kMarkDistance, (widest + 2) * kSvgLetterWidth);
        const auto closest =
            static_cast<std::int64_t>(std::ceil(range * distance / frame_.plot_width));
        return std::max<std::int64_t>(1, closest);
    }

    void add_grid() {
        for (const std::int64_t mark : axis_marks(model_.start, model_.end, closest_marks())) {
            out_ += fmt::format(
                "<path class=\"grid\" d=\"M{0:.1f} {1}V{2}\"/>"
                "<path class=\"axis\" d=\"M{0:.1f} {2}v5\"/>"
                "<text class=\"tick\" text-anchor=\"middle\" x=\"{0:.1f}\" y=\"{3}\">{4}</text>\n",
                frame_.x_of(mark), frame_.top, bottom_, bottom_ + 18, mark);
        }
        out_ += fmt::format("<path class=\"axis\" d=\"M{:.1f} {}H{:.1f}\"/>\n", frame_.left,
                            bottom_, frame_.right());
        out_ += fmt::format(
            "<text class=\"tick\" text-anchor=\"end\" x=\"{:.1f}\" y=\"{}\">{}</text>\n",
            frame_.left - kSvgNameGap, bottom_ + 18, escape_xml(svg_unit(model_)));
    }

    // Empty when the rows show only what everybody knows.
    std::string make_legend() const {
        std::string legend;
        double x = frame_.left;
        const double y = bottom_ + 42;
        const auto add_entry = [&](const std::string& sample, const std::string& text) {
            legend += sample;
            legend += fmt::format("<text class=\"tick\" x=\"{:.1f}\" y=\"{}\">{}</text>\n", x + 30,
                                  y, text);
            x += 30 + static_cast<double>(text.size()) * kSvgLetterWidth + 18;
        };
        const auto line = [&](const char* style) {
            return fmt::format("<path class=\"{}\" d=\"M{:.1f} {}h24\"/>", style, x, y - 4);
        };
        if (rows_.has_released()) {
            add_entry(line("released"), "released");
        }
        if (rows_.has_undriven()) {
            add_entry(line("undriven"), "not driven yet");
        }
        if (rows_.has_crowded()) {
            add_entry(fmt::format("<rect class=\"crowded\" x=\"{:.1f}\" y=\"{}\" width=\"24\" "
                                  "height=\"10\"/>",
                                  x, y - 9),
                      "changes too close to draw");
        }
        return legend;
    }

    // The lines below everything else, from "top" on, which give the picture its height.
    std::string make_notes(double top) {
        const auto columns =
            static_cast<std::size_t>((frame_.right() - kSvgMargin) / kSvgLetterWidth);
        std::string notes;
        double y = top;
        for (const std::string& line : svg_notes(frame_, columns)) {
            y += kNoteHeight;
            notes += text_line("tick", y, line);
            told_ += escape_xml(' ' + line);
        }
        height_ = y + (frame_.is_embedded ? 4 : kSvgMargin);
        return notes;
    }

    const WaveModel& model_;
    const SvgFrame frame_;
    const std::string id_;  // begins the ids in the markup
    SvgRows rows_;
    double bottom_ = 0;  // of the rows
    double height_ = 0;  // of all
    std::string out_;
    std::string told_;  // of all rows, in words
};

}  // namespace

std::string render_svg(const WaveModel& model) {
    return Picture(model, {}).draw();
}

EmbeddedSvg render_embedded_svg(const WaveModel& model, const std::string& id,
                                std::size_t max_bytes) {
    assert(!model.signals.empty());
    Picture picture(model, id);
    std::string markup = picture.draw(max_bytes);
    return {std::move(markup), picture.rows()};
}
