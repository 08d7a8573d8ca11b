#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

// Inserted, removed and replaced bytes and swaps of two neighbours that turn one word into the
// other; each byte takes part in one of them at most.
std::size_t edit_distance(std::string_view first, std::string_view second);

bool equals_but_for_case(std::string_view first, std::string_view second);

// The known word that was probably meant: one that differs in case only, or else the one with the
// fewest edits, at most "most_edits" of them; of several the first. Empty when there is none, when
// the word is known itself, and when nothing of the word would be left.
std::string_view nearest_word(std::string_view word, const std::vector<std::string_view>& known,
                              std::size_t most_edits);
