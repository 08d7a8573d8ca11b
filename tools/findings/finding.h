#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/description/place.h"
#include "tools/findings/catalogue.h"

struct Note {
    std::string text;
    Place place;
};

// The attribute that is wrong, so many bytes after the place of its element.
struct WrongAttribute {
    std::size_t distance;
    std::string text;
};

// One thing that is wrong with a description.
struct Finding {
    Severity severity = Severity::kError;
    std::string id;
    std::string text;
    Place place;
    std::optional<WrongAttribute> attribute;
    std::vector<Note> notes;
    // The name of what it is about: a parameter, port, vector or map; empty when that is not known.
    std::string object;
};

// What became of one of the files that were to be checked.
struct CheckedFile {
    std::string name;
    std::optional<std::string> failure;  // why it could not be read
    std::vector<Finding> findings;
    std::size_t undecided = 0;  // questions of sense that were not decided
};
