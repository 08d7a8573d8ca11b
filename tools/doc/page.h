#pragma once

#include <string>

#include "kivo/kivo.h"

// The whole page of a loaded description: HTML that is well-formed XML too, with its style sheet
// and pictures in it. "path" is where the description was loaded from.
std::string make_page(KIVO_INFO& info, const std::string& path);
