#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// What is shown of texts and lists to which a description sets no end, and the words that say how
// much is missing.

struct CutText {
    std::string_view shown;
    std::size_t left_out = 0;  // characters
};

// The beginning of a text of more than "most" bytes, up to a blank or comma if one is near; else
// all of it.
CutText cut_text(std::string_view text, std::size_t most);

// "... and 2 more values".
std::string and_more(std::size_t count, const std::string& noun);
