#pragma once

// The style sheet of a picture that stands alone, as a "style" element.
extern const char* const kSvgStyle;
