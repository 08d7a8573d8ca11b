#pragma once

#include <optional>
#include <string>

#include "tools/description/description.h"
#include "tools/description/object_names.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"

// Finds what helps to understand the findings of one description: the declaration with which one
// clashes or that comes too late, and the word that was probably meant or those that are known.
class Notes {
public:
    Notes(const Description& description, Sources& sources)
        : description_(description), sources_(sources) {}

    // Adds the notes to a finding at that place.
    void add_to(Finding& finding, const KIVO_PLACE& told);

private:
    std::optional<Note> earlier_one(const Finding& finding, const KIVO_PLACE& told);
    std::optional<Note> declared_later(const Finding& finding);
    std::optional<Note> likely_word(const Finding& finding, const KIVO_PLACE& told);
    std::optional<Note> declaration(const std::string& name, const std::string& text);
    const ObjectNames& names(ObjectNames::Kind kind);

    const Description& description_;
    Sources& sources_;
    // Made when the first is asked for: most descriptions are right about all names.
    std::optional<ObjectNames> parameters_;
    std::optional<ObjectNames> ports_;
};
