#pragma once

#include <string>
#include <string_view>

#include "kivo/toolkit/place.h"

// A file that an INCLUDE section names, and the element that names it.
struct KIVO_INCLUDE {
    std::string file_name;
    KIVO_MARK mark{};
    std::string_view element{};    // the tag of that element
    std::string_view attribute{};  // empty: the element's text names the file
};
