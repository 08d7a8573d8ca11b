#pragma once

#include <string>
#include <string_view>
#include <vector>

// The tag, attribute or keyword that an author probably meant where a message of that id says that
// there is an unknown one: a known word of that place that differs from the one in the description
// by one edit, or in case only. Empty when there is none. "text" is the message's text,
// "source_from_place" the description from the message's place on, where a tag begins.
std::string suggested_word(std::string_view id, std::string_view text,
                           std::string_view source_from_place);

// The words that may stand where such a message says that there is an unknown one; none when the
// message and the source do not tell which they are, or when they are many.
std::vector<std::string_view> words_known(std::string_view id, std::string_view text,
                                          std::string_view source_from_place);
