#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"
#include "tools/wave/fit_value.h"
#include "tools/wave/renderers.h"
#include "tools/wave/time_axis.h"

namespace {

constexpr std::size_t kMaxNameColumns = 28;
constexpr std::size_t kMinPlotColumns = 20;
// A longer stretch of one step looks empty, unless a value needs it.
constexpr std::size_t kMaxColumnsPerStep = 6;

struct Glyphs {
    const char* low;
    const char* high;
    const char* rise;
    const char* fall;
    const char* border;
    const char* value;
    const char* released;
    const char* undriven;
    const char* crowded;
    const char* cut;
    const char* axis;
    const char* mark;
};

// clang-format off
constexpr Glyphs kUnicode = { "▁", "▔", "╱", "╲", "╳", "═", "╌", "·", "▒", "…", "─", "┬" };
constexpr Glyphs kAscii   = { "_", "~", "/", "\\", "|", "=", "z", ".", "#", "~", "-", "+" };
// clang-format on

std::string joined(const std::vector<std::string>& characters) {
    std::string text;
    for (const std::string& character : characters) {
        text += character;
    }
    return text;
}

// Where times stand. The drawing takes the columns there are, so steps may differ by one column;
// it is narrower where that makes no step longer than needed.
class TimeScaleOfColumns {
public:
    TimeScaleOfColumns(const WaveModel& model, std::size_t available, std::size_t per_step)
        : start_(model.start), range_(model.end - model.start) {
        const std::int64_t steps = range_ / model.common_step();
        const auto most = static_cast<std::int64_t>(available);
        count_ = std::min(most, std::min(steps, most) * static_cast<std::int64_t>(per_step));
        has_room_for_edges_ = count_ >= 2 * steps;
    }

    std::size_t column_of(std::int64_t time) const {
        return static_cast<std::size_t>((time - start_) * count_ / range_);
    }
    std::size_t count() const { return static_cast<std::size_t>(count_); }
    bool has_room_for_edges() const { return has_room_for_edges_; }
    // The shortest time that has so many columns.
    std::int64_t time_of(std::int64_t columns) const {
        return std::max<std::int64_t>(1, (columns * range_ + count_ - 1) / count_);
    }

private:
    std::int64_t start_;
    std::int64_t range_;
    std::int64_t count_ = 1;
    bool has_room_for_edges_ = false;
};

class Drawing {
public:
    Drawing(const WaveModel& model, const TerminalLook& look, const Stream& stream)
        : model_(model),
          glyphs_(look.is_ascii ? kAscii : kUnicode),
          is_ascii_(look.is_ascii),
          stream_(stream),
          name_columns_(widest_name()),
          scale_(model, plot_columns(look.columns), columns_per_step()) {}

    std::string draw() {
        add_heading();
        for (const WaveSignal& signal : model_.signals) {
            add_row(signal);
        }
        if (model_.signals.empty()) {
            out_ += "(no signal is driven)\n";
        } else {
            add_axis();
            add_legend();
        }
        return std::move(out_);
    }

private:
    std::string name_of(const WaveSignal& signal) const {
        return shortened_to(visible(signal.label()), kMaxNameColumns, glyphs_.cut);
    }

    std::string shown_unit() const {
        return shortened_to(visible(model_.time_scale), kMaxNameColumns, glyphs_.cut);
    }

    std::size_t widest_name() const {
        std::size_t widest = text_width(shown_unit());
        for (const WaveSignal& signal : model_.signals) {
            widest = std::max(widest, text_width(name_of(signal)));
        }
        return widest;
    }

    // The border of the widest value, the value and what sets it off from the next one.
    std::size_t columns_per_step() const {
        return std::max(kMaxColumnsPerStep, model_.widest_value() + 2);
    }

    // The last number of the axis begins where the waves end.
    std::size_t plot_columns(std::size_t columns) const {
        const std::size_t taken = name_columns_ + 2 + std::to_string(model_.end).size();
        return std::max(kMinPlotColumns, columns > taken ? columns - taken : 0);
    }

    // Escaped, and in the drawing's character set.
    std::string visible(const std::string& text) const {
        std::string escaped = escape_text(text);
        if (!is_ascii_) {
            return escaped;
        }
        std::string ascii;
        for (const TextCell& cell : text_cells(escaped)) {
            ascii += cell.text.size() == 1 ? cell.text : "?";
        }
        return ascii;
    }

    void add_heading() {
        out_ += stream_.paint(Style::kBold, visible(model_.name));
        if (!model_.caption.empty()) {
            out_ += (is_ascii_ ? " - " : " – ") + visible(model_.caption);
        }
        out_ += '\n';
        if (!model_.condition.empty()) {
            out_ += stream_.paint(Style::kDim, "applies if " + visible(model_.condition)) + '\n';
        }
    }

    void add_label(const std::string& name) {
        const std::size_t width = text_width(name);
        out_.append(name_columns_ - std::min(width, name_columns_), ' ');
        out_ += name;
        out_ += "  ";
    }

    void add_row(const WaveSignal& signal) {
        cells_.assign(scale_.count(), " ");
        changes_in_.assign(scale_.count(), 0);
        for (std::size_t i = 0; i < signal.changes.size(); ++i) {
            const std::size_t first = scale_.column_of(signal.changes[i].time);
            if (first >= cells_.size()) {
                break;
            }
            const std::size_t end = i + 1 < signal.changes.size()
                                        ? scale_.column_of(signal.changes[i + 1].time)
                                        : cells_.size();
            ++changes_in_[first];
            draw_span(signal, i, first, std::min(end, cells_.size()));
        }
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            if (changes_in_[i] > 1) {
                cells_[i] = glyphs_.crowded;
                has_crowded_ = true;
            }
        }
        add_label(name_of(signal));
        out_ += joined(cells_) + '\n';
    }

    void fill(std::size_t first, std::size_t end, const char* glyph) {
        std::fill(cells_.begin() + static_cast<std::ptrdiff_t>(first),
                  cells_.begin() + static_cast<std::ptrdiff_t>(end), glyph);
    }

    void draw_span(const WaveSignal& signal, std::size_t index, std::size_t first,
                   std::size_t end) {
        if (end <= first) {
            return;
        }
        const char level = signal.level(signal.changes[index]);
        const char before = index == 0 ? level : signal.level(signal.changes[index - 1]);
        switch (level) {
            case '0':
            case '1':
                draw_level(level, before, first, end);
                break;
            case 'z':
                fill(first, end, glyphs_.released);
                has_released_ = true;
                break;
            case 'u':
                fill(first, end, glyphs_.undriven);
                has_undriven_ = true;
                break;
            default:
                draw_value(signal.values[signal.changes[index].value].shown, signal.radix, first,
                           end);
        }
    }

    void draw_level(char level, char before, std::size_t first, std::size_t end) {
        fill(first, end, level == '1' ? glyphs_.high : glyphs_.low);
        const bool is_edge = (before == '0' || before == '1') && before != level;
        if (is_edge && scale_.has_room_for_edges()) {
            cells_[first] = level == '1' ? glyphs_.rise : glyphs_.fall;
        }
    }

    void draw_value(const std::string& value, DRO_MEMORY_RADIXES radix, std::size_t first,
                    std::size_t end) {
        fill(first, end, glyphs_.value);
        cells_[first] = glyphs_.border;
        const std::size_t room = end - first - 1;
        const std::string shown =
            fit_value(visible(value), radix, model_.truncate_low, room, glyphs_.cut);
        std::size_t at = first + 1 + (room - text_width(shown)) / 2;
        for (const TextCell& cell : text_cells(shown)) {
            if (cell.width == 0) {
                // A combining character that begins the value has no column of its own.
                continue;
            }
            cells_[at] = cell.text;
            // A wide character stands in the next column too.
            fill(at + 1, at + cell.width, "");
            at += cell.width;
        }
    }

    void add_axis() {
        const std::size_t widest =
            std::max(std::to_string(model_.start).size(), std::to_string(model_.end).size());
        const auto closest = static_cast<std::int64_t>(std::max<std::size_t>(widest + 3, 10));
        std::vector<std::string> line(scale_.count(), glyphs_.axis);
        std::string labels;
        for (const std::int64_t mark :
             axis_marks(model_.start, model_.end, scale_.time_of(closest))) {
            const std::size_t column = scale_.column_of(mark);
            if (column > line.size()) {
                break;
            }
            // The mark of the very end stands after the last column.
            line.resize(std::max(line.size(), column + 1));
            line[column] = glyphs_.mark;
            labels.resize(std::max(labels.size(), column), ' ');
            labels += std::to_string(mark);
        }
        add_label("");
        out_ += stream_.paint(Style::kDim, joined(line)) + '\n';
        add_label(shown_unit());
        out_ += labels + '\n';
    }

    void add_legend() {
        std::vector<std::string> entries;
        if (has_released_) {
            entries.push_back(fmt::format("{} released", glyphs_.released));
        }
        if (has_undriven_) {
            entries.push_back(fmt::format("{} not driven yet", glyphs_.undriven));
        }
        if (has_crowded_) {
            entries.push_back(fmt::format("{} more than one change", glyphs_.crowded));
        }
        if (!entries.empty()) {
            add_label("");
            out_ += stream_.paint(Style::kDim, fmt::format("{}", fmt::join(entries, "   ")));
            out_ += '\n';
        }
    }

    const WaveModel& model_;
    const Glyphs& glyphs_;
    const bool is_ascii_;
    const Stream& stream_;
    const std::size_t name_columns_;
    const TimeScaleOfColumns scale_;
    std::string out_;
    bool has_released_ = false;
    bool has_undriven_ = false;
    bool has_crowded_ = false;
    // Of the row in hand.
    std::vector<std::string> cells_;
    std::vector<std::size_t> changes_in_;
};

}  // namespace

std::string render_terminal(const WaveModel& model, const TerminalLook& look,
                            const Stream& stream) {
    return Drawing(model, look, stream).draw();
}
