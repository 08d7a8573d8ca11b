#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "kivo/session/session.h"
#include "tools/lint/lint.h"

// A text that the session speaks of, in the file in which it stands.
struct TextInSource {
    const Document* document;
    const DocumentElement* element;
    const DocumentText* text;  // null when the session's text is not found in the element
    std::size_t begin = 0;     // where the session's text begins in it

    // Of a part of the session's text; of the element when the text is not found.
    Place place(std::size_t offset, std::size_t length) const;
};

// Finds texts of the session in the documents: it knows their element and what they say, and the
// library may have composed, cut or replaced them since they were written.
class ExpressionSource {
public:
    explicit ExpressionSource(const Lint& lint);

    // Nothing for a text of a file that is not among the documents.
    std::optional<TextInSource> find(const KIVO_FAULT& fault) const;

    // The parts of which the library composed a text, with their positions in it; empty for a text
    // that stands in the file as it is.
    struct Part {
        TextInSource where;
        std::size_t begin;
        std::size_t size;
    };
    std::vector<Part> parts_of(const KIVO_FAULT& fault) const;

private:
    const Spot* spot_at(const KIVO_MARK& mark) const;
    std::optional<TextInSource> find_declared(const KIVO_FAULT& fault, const Spot& marked) const;
    std::optional<TextInSource> find_in(const Spot& spot, const KIVO_FAULT& fault) const;

    const Lint& lint_;
    std::map<std::string_view, std::vector<Spot>> spots_;                   // by file, in its order
    std::unordered_map<std::string_view, std::vector<Spot>> declarations_;  // by name
    // The IF before a command of a vector, or before its THEN; null without one.
    std::unordered_map<const DocumentElement*, const DocumentElement*> conditions_;
};
