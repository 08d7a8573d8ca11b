#pragma once

#include <cstdint>
#include <string>

#include "tools/wave/wave_model.h"

// Lengths in units of the picture, which are pixels at its natural size.
constexpr double kSvgMargin = 20;
constexpr double kSvgRowHeight = 34;
constexpr double kSvgLetterWidth = 7.25;  // of the 12-pixel monospaced text
constexpr double kSvgNameGap = 14;        // between the names and the rows

// Where the rows of a picture lie, and what it is that they show.
struct SvgFrame {
    const WaveModel& model;
    bool is_embedded = false;  // in a page, which says above the picture what its heading would
    double left = 0;
    double top = 0;
    double plot_width = 0;

    double right() const { return left + plot_width; }
    double x_of(std::int64_t time) const;
    std::string time_text(std::int64_t time) const;
};

SvgFrame make_svg_frame(const WaveModel& model, bool is_embedded);

// As shown beside the rows: escaped, and cut when they are long.
std::string svg_name(const WaveSignal& signal);
std::string svg_unit(const WaveModel& model);
