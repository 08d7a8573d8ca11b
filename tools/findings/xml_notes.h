#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What mends a file that is not read, beside what the parser says of it: a text, and where in the
// file it points.
struct XmlNote {
    std::string text;
    std::size_t at;
};

// Of a fault that the parser found at a place of a file: the start tag of the element that is open
// there, or what to write for a "<" that is to compare. Nothing when it is neither of these.
std::optional<XmlNote> note_of_xml_fault(std::string_view text, std::size_t fault);
