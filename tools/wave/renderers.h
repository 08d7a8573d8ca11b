#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tools/terminal/terminal.h"
#include "tools/wave/wave_model.h"

// The forms that a waveform is drawn or written in. Names and texts of the description are escaped
// in each of them.

struct TerminalLook {
    std::size_t columns = 100;
    bool is_ascii = false;
};

// A row for each signal, below a heading and above a time axis.
std::string render_terminal(const WaveModel& model, const TerminalLook& look, const Stream& stream);

// A self-contained picture, readable on light and dark pages.
std::string render_svg(const WaveModel& model);

// A picture as an element of an HTML page, which brings the rules for the class "wave".
struct EmbeddedSvg {
    std::string markup;
    std::size_t rows = 0;  // the signals drawn: the first ones
};

// Draws as many rows as fit into "max_bytes", at least one. "id" begins the ids in the markup.
// REQUIRES: the model has signals
EmbeddedSvg render_embedded_svg(const WaveModel& model, const std::string& id,
                                std::size_t max_bytes);

// A Value Change Dump; released signals are z in it and signals not driven yet x. Nothing when it
// would be larger than a user can have meant.
std::optional<std::string> write_vcd(const WaveModel& model);

// A save file of GTKWave that shows the signals of the dump in their display formats.
std::string write_gtkw(const WaveModel& model, const std::string& dump_path,
                       const std::string& own_path);

// Strict WaveJSON, one character of a wave for each common step; nothing when there would be too
// many.
std::optional<std::string> write_wavejson(const WaveModel& model);
