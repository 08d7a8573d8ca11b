#pragma once

#include <string>

#include "kivo/toolkit/place.h"

// A file that an INCLUDE section names, and the element that names it.
struct KIVO_INCLUDE {
    std::string file_name;
    KIVO_MARK mark;
};
