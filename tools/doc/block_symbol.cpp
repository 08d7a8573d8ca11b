#include "tools/doc/block_symbol.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"

namespace {

// All in pixels; the letters are those of a fixed-width font.
constexpr double kNameLetter = 7.9;   // at 13 pixels
constexpr double kWidthLetter = 6.7;  // at 11 pixels
constexpr double kTitleLetter = 9.2;  // at 15 pixels
constexpr double kRow = 28;
constexpr double kHead = 46;
constexpr double kFoot = 14;
constexpr double kMargin = 8;
constexpr double kPad = 10;
constexpr double kGap = 44;
constexpr double kShortestWire = 46;
constexpr double kArrow = 8;
constexpr double kClockMark = 11;
constexpr std::size_t kLongest = 32;

struct Pin {
    std::string name;
    std::string width;
    std::string description;
    KIVO_OBJ_TYPE type;
    bool is_bus;
    bool is_clock;
    bool is_optional;
};

// A text that leaves room for the rest of the picture.
std::string shortened(const std::string& text) {
    return shortened_to(escape_text(text), kLongest);
}

std::string width_label(const KIVO_OBJ_INFO& port) {
    if (port.port_width.empty() || port.port_width2d.empty()) {
        return shortened(port.port_width + port.port_width2d);
    }
    return shortened(port.port_width + " \u00D7 " + port.port_width2d);
}

std::string describe(const KIVO_OBJ_INFO& port) {
    std::string text = port.name + ": " + port.get_obj_type_as_string();
    if (port.is_clock()) {
        text += ", clock";
    }
    if (!port.port_width.empty()) {
        text += ", width " + port.port_width;
    }
    if (port.usage_state == KIVO_USAGE_UNUSED) {
        text += ", not used by default";
    }
    return text;
}

Pin make_pin(const KIVO_OBJ_INFO& port) {
    const std::string width = width_label(port);
    return {shortened(port.name),
            width == "1" ? "" : width,
            describe(port),
            port.obj_type,
            !width.empty() && width != "1",
            port.is_clock(),
            port.usage_state == KIVO_USAGE_UNUSED};
}

std::string pixels(double value) {
    return fmt::format("{:.1f}", value);
}

double longest(const std::vector<Pin>& pins, std::string Pin::*text, double letter) {
    double longest = 0;
    for (const Pin& pin : pins) {
        longest = std::max(longest, letter * static_cast<double>(text_width(pin.*text)));
    }
    return longest;
}

class Symbol {
public:
    Symbol(HtmlWriter& html, const std::string& name, const std::vector<KIVO_OBJ_INFO*>& ports);

    void write();

private:
    void write_box();
    void write_pin(const Pin& pin, double y, bool at_left);
    void write_wire(const Pin& pin, double y, bool at_left);
    void write_width(const Pin& pin, double y, bool at_left);
    void write_clock_mark(double y);
    // An arrow head with its tip at x; "direction" is 1 for one that points right, -1 for left.
    void write_arrow(double x, double y, double direction);
    void write_line(std::string_view style, double x1, double y1, double x2, double y2);
    void write_text(std::string_view style, double x, double y, std::string_view text);

    HtmlWriter& html_;
    std::string name_;
    std::string full_name_;
    std::vector<Pin> left_;
    std::vector<Pin> right_;
    double box_left_ = 0;
    double box_right_ = 0;
    double width_ = 0;
    double height_ = 0;
};

Symbol::Symbol(HtmlWriter& html, const std::string& name, const std::vector<KIVO_OBJ_INFO*>& ports)
    : html_(html), name_(shortened(name)), full_name_(name) {
    std::vector<Pin> both;
    for (const KIVO_OBJ_INFO* port : ports) {
        switch (port->obj_type) {
            case KIVO_OBJ_INPUT_PORT:
                left_.push_back(make_pin(*port));
                break;
            case KIVO_OBJ_OUTPUT_PORT:
                right_.push_back(make_pin(*port));
                break;
            case KIVO_OBJ_BIDIR_PORT:
                both.push_back(make_pin(*port));
                break;
            default:
                break;
        }
    }
    right_.insert(right_.end(), both.begin(), both.end());
    const auto wire = [](const std::vector<Pin>& pins) {
        return std::max(kShortestWire, longest(pins, &Pin::width, kWidthLetter) + 2 * kArrow + 6);
    };
    const double names = longest(left_, &Pin::name, kNameLetter) + kClockMark + kGap +
                         longest(right_, &Pin::name, kNameLetter);
    const double title = kTitleLetter * static_cast<double>(text_width(name_));
    box_left_ = kMargin + wire(left_);
    box_right_ = box_left_ + std::max(names, title) + 2 * kPad;
    width_ = box_right_ + wire(right_) + kMargin;
    height_ = kMargin + kHead + kFoot + kMargin +
              kRow * static_cast<double>(std::max(left_.size(), right_.size()));
}

void Symbol::write_line(std::string_view style, double x1, double y1, double x2, double y2) {
    html_.void_element("line", {{"class", style},
                                {"x1", pixels(x1)},
                                {"y1", pixels(y1)},
                                {"x2", pixels(x2)},
                                {"y2", pixels(y2)}});
}

void Symbol::write_text(std::string_view style, double x, double y, std::string_view text) {
    html_.element("text", {{"class", style}, {"x", pixels(x)}, {"y", pixels(y)}}, text);
}

void Symbol::write_arrow(double x, double y, double direction) {
    const double back = x - direction * kArrow;
    html_.void_element(
        "polygon", {{"class", "arrow"},
                    {"points", fmt::format("{:.1f},{:.1f} {:.1f},{:.1f} {:.1f},{:.1f}", x, y, back,
                                           y - 4, back, y + 4)}});
}

void Symbol::write_clock_mark(double y) {
    html_.void_element(
        "polyline", {{"class", "clock"},
                     {"points", fmt::format("{:.1f},{:.1f} {:.1f},{:.1f} {:.1f},{:.1f}", box_left_,
                                            y - 6, box_left_ + kClockMark, y, box_left_, y + 6)}});
}

void Symbol::write_wire(const Pin& pin, double y, bool at_left) {
    const double outer = at_left ? kMargin : width_ - kMargin;
    const double inner = at_left ? box_left_ : box_right_;
    const double outward = at_left ? -1 : 1;
    const bool leaves = pin.type != KIVO_OBJ_INPUT_PORT;
    const bool enters = pin.type != KIVO_OBJ_OUTPUT_PORT;
    // A thick wire must not stick out of the tip of its arrow.
    const double cut = kArrow - 2;
    write_line(pin.is_bus ? "wire bus" : "wire", outer - (leaves ? outward * cut : 0), y,
               inner + (enters ? outward * cut : 0), y);
    if (enters) {
        write_arrow(inner, y, -outward);
    }
    if (leaves) {
        write_arrow(outer, y, outward);
    }
}

void Symbol::write_width(const Pin& pin, double y, bool at_left) {
    const double outer = at_left ? kMargin : width_ - kMargin;
    const double middle = (outer + (at_left ? box_left_ : box_right_)) / 2;
    write_line("slash", middle - 3, y + 5, middle + 3, y - 5);
    write_text("width", middle, y - 7, pin.width);
}

void Symbol::write_pin(const Pin& pin, double y, bool at_left) {
    const HtmlScope group(html_, "g", {{"class", pin.is_optional ? "pin optional" : "pin"}});
    html_.element("title", pin.description);
    write_wire(pin, y, at_left);
    if (pin.is_bus) {
        write_width(pin, y, at_left);
    }
    if (pin.is_clock) {
        write_clock_mark(y);
    }
    const double shift = pin.is_clock ? kClockMark + 4 : kPad - 2;
    write_text(at_left ? "name" : "name end", at_left ? box_left_ + shift : box_right_ - shift,
               y + 4.5, pin.name);
}

void Symbol::write_box() {
    html_.void_element("rect", {{"class", "box"},
                                {"x", pixels(box_left_)},
                                {"y", pixels(kMargin)},
                                {"width", pixels(box_right_ - box_left_)},
                                {"height", pixels(height_ - 2 * kMargin)},
                                {"rx", "4"}});
    write_text("function", (box_left_ + box_right_) / 2, kMargin + 24, name_);
}

void Symbol::write() {
    const HtmlScope svg(html_, "svg",
                        {{"xmlns", "http://www.w3.org/2000/svg"},
                         {"class", "symbol"},
                         {"role", "img"},
                         {"aria-label", "Block symbol of " + full_name_},
                         {"width", pixels(width_)},
                         {"height", pixels(height_)},
                         {"viewBox", "0 0 " + pixels(width_) + " " + pixels(height_)}});
    write_box();
    double y = kMargin + kHead + kRow / 2;
    for (std::size_t row = 0; row < std::max(left_.size(), right_.size()); ++row, y += kRow) {
        if (row < left_.size()) {
            write_pin(left_[row], y, true);
        }
        if (row < right_.size()) {
            write_pin(right_[row], y, false);
        }
    }
}

}  // namespace

bool has_symbol(const std::vector<KIVO_OBJ_INFO*>& ports) {
    return std::any_of(ports.begin(), ports.end(), [](const KIVO_OBJ_INFO* port) {
        return port->obj_type != KIVO_OBJ_BURIED_PORT;
    });
}

void write_block_symbol(HtmlWriter& html, const std::string& name,
                        const std::vector<KIVO_OBJ_INFO*>& ports) {
    Symbol(html, name, ports).write();
}
