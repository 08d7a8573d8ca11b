#pragma once

#include <cstdint>
#include <string>

#include "tools/wave/svg_frame.h"

// Draws the signals of a picture, a row each.
class SvgRows {
public:
    // REQUIRES: the frame outlives this object
    explicit SvgRows(const SvgFrame& frame) : frame_(frame) {}

    // Draws a signal below those drawn before.
    void add(const WaveSignal& signal);

    const std::string& markup() const { return out_; }
    std::size_t count() const { return count_; }
    // Which states the rows show that not everybody knows.
    bool has_released() const { return has_released_; }
    bool has_undriven() const { return has_undriven_; }
    bool has_crowded() const { return has_crowded_; }

private:
    // A stretch of the range in which a signal keeps its state.
    struct Span {
        const WaveChange* change;
        char level;
        char before;  // the level of the span on its left, 0 where the picture begins
        double left;
        double right;
    };

    void add_spans(const WaveSignal& signal);
    void add_span(const WaveSignal& signal, const Span& span);
    void add_level(const Span& span);
    void end_level();
    void add_value(const WaveSignal& signal, const Span& span);
    void add_value_shape(const Span& span);
    void add_value_text(const WaveSignal& signal, const Span& span);
    void add_crowd(double left, double right);
    void note_states(const WaveSignal& signal);

    const SvgFrame& frame_;
    std::string out_;
    std::size_t count_ = 0;
    double middle_ = 0;  // of the row in hand
    bool is_in_level_ = false;
    bool has_released_ = false;
    bool has_undriven_ = false;
    bool has_crowded_ = false;
};
