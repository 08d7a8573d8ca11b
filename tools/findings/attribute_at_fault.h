#pragma once

#include <string_view>

// The attribute (NAME="value") that a message of that id is about, in the start tag with which
// "source_from_place" begins; empty when it is about another part of the element.
std::string_view attribute_at_fault(std::string_view id, std::string_view text,
                                    std::string_view source_from_place);
