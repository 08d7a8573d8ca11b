#pragma once

#include <expat.h>

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "tools/description/source_text.h"

// What a strict parser says of a text.
struct XmlReading {
    XML_Error error = XML_ERROR_NONE;
    std::size_t at = 0;  // the byte at which the parser stopped
    bool has_element = false;
    bool is_utf8 = true;
    std::set<std::string, std::less<>> entities = {"amp", "apos", "gt", "lt", "quot"};
};

// Reads a text up to its first fault. Fetches no other file, and expands entities within bounds
// only.
XmlReading read_strictly(std::string_view text, SourceEncoding encoding);
