#pragma once

#include <string>
#include <string_view>

// What a strict parser says of a text: empty when it is well-formed XML. Entities that a document
// declares itself are expanded, other files are not fetched.
std::string xml_refusal(std::string_view text);
