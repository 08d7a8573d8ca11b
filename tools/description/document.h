#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "tools/description/description.h"
#include "tools/description/source_text.h"

// A piece of text as the parser delivers it: references replaced and line ends made one.
struct TextRun {
    enum class Kind { kText, kCdata, kValue };

    std::string_view text;
    std::size_t offset = 0;  // where it begins in the source
    Kind kind = Kind::kText;
};

// The text of an element or the value of an attribute as the library reads it, with the runs that
// it is joined of.
struct DocumentText {
    std::string_view text;
    const TextRun* runs = nullptr;
    std::size_t run_count = 0;
};

struct DocumentAttribute {
    std::string_view name;
    std::size_t name_offset = 0;
    DocumentText value;
};

// An element of a document; all pointers live as long as the document.
struct DocumentElement {
    // For loops over all: for (const DocumentElement& sub : element.sub_elements()).
    class SubElements;
    SubElements sub_elements() const;

    // The attribute as the library knows it: of several whose names differ in case only, the first
    // spelling with the last value. Null when there is none of that name.
    const DocumentAttribute* attribute(std::string_view name) const;
    // Its value; empty when there is none.
    std::string_view value_of(std::string_view name) const;

    std::string_view tag;
    std::size_t offset = 0;  // of its "<"
    const DocumentElement* parent = nullptr;
    const DocumentElement* first_sub = nullptr;
    const DocumentElement* next = nullptr;          // with the same parent
    const DocumentAttribute* attributes = nullptr;  // in the order of the file
    std::size_t attribute_count = 0;
    // Its NAME, or that of the nearest element around it that has one; null without any.
    const DocumentAttribute* owner_name = nullptr;
    // White space alone counts only in an element without sub-elements.
    DocumentText text;
};

class DocumentElement::SubElements {
public:
    class Iterator {
    public:
        explicit Iterator(const DocumentElement* element) : element_(element) {}
        const DocumentElement& operator*() const { return *element_; }
        Iterator& operator++() {
            element_ = element_->next;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return element_ != other.element_; }

    private:
        const DocumentElement* element_;
    };

    explicit SubElements(const DocumentElement* first) : first_(first) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(nullptr); }

private:
    const DocumentElement* first_;
};

inline DocumentElement::SubElements DocumentElement::sub_elements() const {
    return SubElements(first_sub);
}

// One file of a description as the library sees it, with the place of every part in the source.
// Its elements lie in the order of the file, each before all that it holds, so that a loop over
// them needs no stack.
class Document {
public:
    // "name" is what the file is called wherever it is shown. The source must live on. A text that
    // the parser refuses has no elements.
    Document(const SourceText& source, std::string name);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    const std::string& name() const { return name_; }
    const std::vector<DocumentElement>& elements() const { return elements_; }
    // Null when there is none.
    const DocumentElement* root() const { return elements_.empty() ? nullptr : &elements_.front(); }

    // Where a byte of a text stands in the source; for its size, where the text ends, 0 for a text
    // without a run. Places of a text that are asked for in ascending order cost one walk through
    // it.
    std::size_t source_offset(const DocumentText& text, std::size_t at) const;

    Place place(const DocumentElement& element) const;
    Place place(const DocumentAttribute& attribute) const;
    // Of a part of a text, up to the end of its first line or of the run in which it begins, since
    // markup stands between runs. REQUIRES: the text has a run, as every value has and every text
    // that is not empty.
    Place place(const DocumentText& text, std::size_t begin, std::size_t end) const;
    // Of a text without the white space around it, of all of it when there is nothing else.
    Place place(const DocumentText& text) const;

private:
    class Builder;
    struct Walk {
        const TextRun* run = nullptr;
        std::size_t decoded = 0;
        std::size_t source = 0;
    };

    std::size_t source_offset_in(const TextRun& run, std::size_t at) const;

    const SourceText& source_;
    std::string name_;
    std::vector<char> buffer_;  // which names, values and runs are views of
    std::vector<DocumentElement> elements_;
    std::vector<DocumentAttribute> attributes_;
    std::vector<TextRun> runs_;
    std::deque<std::string> joined_texts_;
    mutable Walk last_walk_;
};

// The files of a description that the library has read, in its order, each once.
std::deque<Document> documents_of(const Description& description, Sources& sources);
