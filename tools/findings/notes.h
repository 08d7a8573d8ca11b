#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/description/description.h"
#include "tools/description/object_names.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"
#include "tools/findings/include_notes.h"

// The notes on a word that is not known: the one that was probably meant, or all that are known.
Note did_you_mean(std::string_view word, const Place& place);
Note known_here(const std::vector<std::string_view>& words, const Place& place);

// Finds what helps to understand the findings of one description: the declaration with which one
// clashes or that comes too late, the word that was probably meant or those that are known, what
// mends a text that misleads, and where a file was looked for.
class Notes {
public:
    Notes(const Description& description, Sources& sources)
        : description_(description), sources_(sources), includes_(description.directories()) {}

    // Adds the notes to a finding at that place, of which the library tells those facts.
    void add_to(Finding& finding, const KIVO_PLACE& told, const KIVO_MESSAGE_FACTS& facts);

    // The same for a fault of the XML that the library reads over.
    void add_to(Finding& finding, const KIVO_PLACE& told);

private:
    std::optional<Note> related(const std::string& text, const KIVO_MARK& mark);
    std::optional<Note> xml_note(const Finding& finding, const KIVO_PLACE& told);
    void add_file_notes(Finding& finding, const KIVO_PLACE& told, const std::string& name);
    std::optional<Note> likely_word(const Finding& finding, const KIVO_PLACE& told,
                                    const KIVO_MESSAGE_FACTS& facts);
    std::string likely_name(const KIVO_MESSAGE_FACTS& facts);
    const ObjectNames& names(ObjectNames::Kind kind);

    const Description& description_;
    Sources& sources_;
    IncludeNotes includes_;
    // Made when the first is asked for: most descriptions are right about all names.
    std::optional<ObjectNames> parameters_;
    std::optional<ObjectNames> ports_;
};
