#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "tools/description/source_text.h"

// The first thing for which a text is not well-formed XML: its place in bytes, and what to do.
struct XmlFault {
    std::string id;
    std::string text;
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Nothing for well-formed XML, and for a text without any element, of which there is nothing to
// say. Fetches no other file, and expands entities within bounds only.
std::optional<XmlFault> find_xml_fault(std::string_view text, SourceEncoding encoding);
