#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "kivo/kivo.h"

// What is drawn of a value where there are so many columns for it: all of it when it fits. A
// pattern of digits, and a text, loses what is too much at its low end or at its high one, where
// the mark stands for it. A decimal number gives nothing but the mark, since its other digits would
// read as another number; at the low end it may lose decimal places. "shown" is as escape_text
// writes it; the mark is one column wide. Nothing below three columns.
std::string fit_value(const std::string& shown, DRO_MEMORY_RADIXES radix, bool truncate_low,
                      std::size_t columns, std::string_view mark = "\u2026");
