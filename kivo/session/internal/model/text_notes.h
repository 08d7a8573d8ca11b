#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kivo/session/internal/model/model.h"

namespace kivo_session {

// What an author may not have meant, in one text of a description.
struct TextNote {
    std::uint32_t text = kNone;  // in Description::texts
    const char* id = "";
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    std::string says;
};

// Of all texts, in their order: the notes for authors, values that are read as texts although they
// look like expressions, and what is wrong with macros that nothing uses, which is no fault of the
// description.
std::vector<TextNote> notes_of_texts(const Model& model);

}  // namespace kivo_session
