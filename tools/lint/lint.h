#pragma once

// Warnings about what the library silently reads although it was surely not meant so. Each class
// of them has its room: a source of this folder with a function that looks at a description
// and posts what it finds, and a table of the texts that it posts.

#include <fmt/format.h>

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kivo/session/session.h"
#include "tools/description/description.h"
#include "tools/description/document.h"
#include "tools/description/source_text.h"
#include "tools/findings/finding.h"
#include "tools/lint/grammar.h"

// One kind of warning. The same id may have several texts; each id has its row in the catalogue.
struct LintRow {
    std::string_view id;
    std::string_view text;  // a pattern of fmt
};

// An element and what it is.
struct Spot {
    const Document& document;
    const DocumentElement& element;
    Context context;
};

// Collects what the rooms find in one description.
class Lint {
public:
    Lint(const Description& description, const std::deque<Document>& documents);

    const Description& description() const { return description_; }
    const KIVO_INFO& info() const { return description_.info(); }
    // What the description says to hosts that configure it, everything at its default.
    const KIVO_SESSION& session() const { return session_; }
    // The files that the library has read, in its order.
    const std::deque<Document>& documents() const { return documents_; }

    // Visits every element that the library reads, in its order.
    template <class Visit>
    void for_each(Visit visit) const {
        auto contexts = contexts_.begin();
        for (const Document& document : documents_) {
            auto context = (contexts++)->begin();
            for (const DocumentElement& element : document.elements()) {
                if (const Context is = *context++; is != Context::kUnread) {
                    visit(Spot{document, element, is});
                }
            }
        }
    }

    // Posts a warning about a part of the element, at that place, and returns it for its notes.
    template <class... Argument>
    Finding& post(const LintRow& row, const DocumentElement& element, const Place& place,
                  const Argument&... arguments) {
        return add(row.id, element, place, fmt::format(fmt::runtime(row.text), arguments...));
    }

    // What was posted so far, in the order of the files and of the places in them.
    std::vector<Finding> take_findings();

private:
    Finding& add(std::string_view id, const DocumentElement& element, Place place,
                 std::string text);

    const Description& description_;
    const std::deque<Document>& documents_;
    KIVO_SESSION session_;
    std::vector<std::vector<Context>> contexts_;  // of the elements of each document
    std::deque<Finding> findings_;
};

// A text of a description within that of a warning, in quotes and not at any length.
std::string quoted(std::string_view text);

// Adds a note with the word that was probably meant, if any of these is near, or with all of them
// if they are few.
void add_likely_word(Finding& finding, std::string_view word,
                     const std::vector<std::string_view>& known);

// The warnings about stimulus and display formats alone, each with the name of its vector.
std::vector<Finding> stimulus_findings(const Description& description, Sources& sources);

// Appends the warnings of all rooms.
void append_lint_findings(std::vector<Finding>& findings, const Description& description,
                          Sources& sources);
