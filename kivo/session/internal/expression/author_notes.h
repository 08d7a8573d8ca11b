#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/session/internal/expression/names.h"

namespace kivo_session {

// What is right as it stands, and may still be read otherwise than its author meant.
enum class NoteId : std::uint8_t {
    kMixedAndOr,
    kSignBeforePower,
    kNotBeforeComparison,
    kSignOfRemainder,
    kBareWord,
    kMixedComparison,
    kTextNotInList,
    kCeilOfInteger,
    kMacroPrecedence,
    kTranslatorBlind,
};

// "mixed-and-or", ...
const char* note_name(NoteId id);

struct Note {
    NoteId id = NoteId::kMixedAndOr;
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    std::string text;
};

// What the text alone tells: needs no names.
std::vector<Note> notes_of_syntax(std::string_view text, const std::vector<Node>& nodes);

// The rest, by what the names stand for; near names as far as "searches" go. REQUIRES: "resolution"
// is that of the nodes
std::vector<Note> notes_of_names(std::string_view text, const std::vector<Node>& nodes,
                                 const Resolution& resolution, const Names& names,
                                 NearSearches& searches);

}  // namespace kivo_session
