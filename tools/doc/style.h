#pragma once

#include <string_view>

// The style sheet of the page. It holds neither "<" nor "&", so that it may stand in XML as it is.
extern const std::string_view kStyleSheet;
