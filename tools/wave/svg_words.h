#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/wave/svg_frame.h"

// What a picture shows, in words, for those who do not see it. Not escaped as XML.

// "NAME: not driven at 0, 5 at 10, ..." of the signal's first changes.
std::string svg_words(const SvgFrame& frame, const WaveSignal& signal);

// The value that a change sets. On a page, where many pictures share the room, long ones are cut.
std::string svg_value(const SvgFrame& frame, const WaveSignal& signal, const WaveChange& change);

// What the picture leaves out, in escaped lines of at most so many columns. None in a page, which
// tells it below the picture.
std::vector<std::string> svg_notes(const SvgFrame& frame, std::size_t columns);
