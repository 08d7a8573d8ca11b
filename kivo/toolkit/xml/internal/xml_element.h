#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/toolkit/place.h"
#include "kivo/toolkit/xml/internal/xml_checks.h"

class KIVO_XML_DOCUMENT;

struct KIVO_XML_ATTRIBUTE {
    std::string_view name;
    std::string_view value;
};

// One element of a parsed document, at its place in a walk: a sub-element stands until the walk
// over its siblings moves on, so one walk over the children of an element can be in progress at a
// time. Views into it stay valid as long as the document does.
class KIVO_XML_ELEMENT {
public:
    std::string_view tag_name() const { return tag_name_; }

    // The element's own character data and CDATA, joined in document order. White space alone
    // counts only in an element without sub-elements.
    std::string_view text();

    // In ascending LESS_C_STRING order of their names. Names that differ only in case are one
    // attribute: the first spelling with the last value.
    const std::vector<KIVO_XML_ATTRIBUTE>& attributes();

    // The first or next sub-element in document order, null when there is none.
    KIVO_XML_ELEMENT* get_first_sub_element();
    KIVO_XML_ELEMENT* get_next_sub_element();

    // For loops over all sub-elements: for (KIVO_XML_ELEMENT& sub : element.sub_elements()).
    class SubElements;
    SubElements sub_elements();

    bool has_sub_elements() const;

    // The place of the element's "<".
    KIVO_MARK mark() const;

private:
    friend class KIVO_XML_DOCUMENT;

    void be_at(pugi::xml_node node, std::string_view tag_name);
    KIVO_XML_ELEMENT* stand_on(pugi::xml_node child);
    bool has_several_attributes() const;
    void leave();

    KIVO_XML_DOCUMENT* document_ = nullptr;
    KIVO_XML_ELEMENT* below_ = nullptr;  // the sub-element of the walk, null before the first walk
    pugi::xml_node node_;
    std::string_view tag_name_;
    bool is_section_ = false;
    bool attributes_are_read_ = false;
    bool is_in_walk_ = false;  // whether the walk over the sub-elements stands on one
    bool is_walked_ = false;   // whether it has come to its end
    std::vector<KIVO_XML_ATTRIBUTE> attributes_;
};

class KIVO_XML_ELEMENT::SubElements {
public:
    class Iterator {
    public:
        Iterator(KIVO_XML_ELEMENT* parent, KIVO_XML_ELEMENT* current)
            : parent_(parent), current_(current) {}
        KIVO_XML_ELEMENT& operator*() const { return *current_; }
        Iterator& operator++() {
            current_ = parent_->get_next_sub_element();
            return *this;
        }
        bool operator!=(const Iterator& other) const { return current_ != other.current_; }

    private:
        KIVO_XML_ELEMENT* parent_;
        KIVO_XML_ELEMENT* current_;
    };

    explicit SubElements(KIVO_XML_ELEMENT* parent) : parent_(parent) {}
    Iterator begin() const { return {parent_, parent_->get_first_sub_element()}; }
    Iterator end() const { return {parent_, nullptr}; }

private:
    KIVO_XML_ELEMENT* parent_;
};

inline KIVO_XML_ELEMENT::SubElements KIVO_XML_ELEMENT::sub_elements() {
    return SubElements(this);
}

// The elements of a walk, one for each depth that it has reached: a walk of any length over a
// document of any size makes no more of them than the document is deep.
class KIVO_XML_DOCUMENT {
public:
    // "text" is where the offsets of marks count from, "file" the number that they bear.
    KIVO_XML_ELEMENT* stand_on_root(pugi::xml_node root, const char* text, std::uint32_t file);

    // From now on each sub-element of a section goes, with all below it, as soon as the walk over
    // the section has moved on, so that no walk can be repeated.
    void release_behind_walk() { releases_ = true; }

    // The attributes that elements give more than once, each once and in document order, when the
    // walk is over. Elements that it skipped are looked through too.
    std::vector<XmlFinding> take_repeated_attributes();

private:
    friend class KIVO_XML_ELEMENT;

    KIVO_XML_ELEMENT* add_element();

    // The parser destroys a tree by descending into it, so that deep ones stay till the end.
    static constexpr std::size_t kMostLevels = 64;
    bool may_release() const { return releases_ && elements_.size() <= kMostLevels; }

    const char* text_ = nullptr;
    std::uint32_t file_ = 0;
    bool releases_ = false;
    std::vector<XmlFinding> repeated_attributes_;
    std::deque<KIVO_XML_ELEMENT> elements_;
    std::deque<std::string> joined_texts_;
};

inline KIVO_MARK KIVO_XML_ELEMENT::mark() const {
    // The name stands in the text, right after the "<".
    const std::ptrdiff_t offset = tag_name_.data() - document_->text_ - 1;
    return {document_->file_, kivo_mark_offset(static_cast<std::size_t>(offset))};
}
