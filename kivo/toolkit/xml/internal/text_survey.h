#pragma once

#include <string_view>

#include "kivo/toolkit/xml/internal/line_table.h"

// What one look at a document's text tells: where its lines begin, and which of the bytes that few
// documents hold are in it at all. Each of these bytes calls for a closer look.
struct TextSurvey {
    explicit TextSurvey(std::string_view text);

    LineTable lines;
    bool has_nul = false;
    bool has_ampersand = false;
    bool has_inner_markup_mark = false;  // "!" or "?", but for those of the XML declaration
};
