#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kivo/kivo.h"

// The tag, attribute or keyword that an author probably meant by the word that a message of that id
// is about: a word known there that differs from it by one edit, or in case only. Where an
// attribute is missing, that attribute when another one of the element differs from it so. Empty
// when there is none. "source_from_place" is the description from the message's place on, where a
// tag begins.
std::string suggested_word(std::string_view id, const KIVO_MESSAGE_FACTS& facts,
                           std::string_view source_from_place);

// The words that may stand in that word's place; none when there is no such word, when it is known
// itself, and when they are many.
std::vector<std::string> words_to_list(std::string_view id, const KIVO_MESSAGE_FACTS& facts,
                                       std::string_view source_from_place);
