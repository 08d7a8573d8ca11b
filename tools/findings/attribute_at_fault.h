#pragma once

#include <string_view>

// The attribute (NAME="value") of that name in the start tag with which "source_from_place" begins;
// empty when it has none, or when the name is empty.
std::string_view attribute_at_fault(std::string_view name, std::string_view source_from_place);
