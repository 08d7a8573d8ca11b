#include "kivo/toolkit/xml/internal/xml_element.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "kivo/toolkit/internal/text_view.h"
#include "kivo/toolkit/less_c_string.h"
#include "kivo/toolkit/xml/internal/encoding.h"

namespace {

// The parser's own test is a call, and the walk asks for every element.
template <class Handle>
bool is_null(const Handle& handle) {
    return std::bit_cast<const void*>(handle) == nullptr;
}

// What stands from "begin", a place in the buffer of the document, up to the next NUL.
std::string_view view_to_nul(const char* begin) {
#if defined(__SSE2__)
    // Most names and values are so short that a call of strlen costs more than what it does.
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin));
    const int nuls = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_setzero_si128()));
    if (nuls != 0) {
        return {begin, static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(nuls)))};
    }
    return {begin, TextBuffer::kStride + std::strlen(begin + TextBuffer::kStride)};
#else
    return begin;
#endif
}

// A node's name or value stands in the buffer of the document when it has one, else anywhere.
std::string_view view_of(const char* parsed) {
    return *parsed == '\0' ? std::string_view(parsed, parsed) : view_to_nul(parsed);
}

bool is_blank(std::string_view text) {
    return trim_left_view(text).empty();
}

bool comes_before(const KIVO_XML_ATTRIBUTE& left, const KIVO_XML_ATTRIBUTE& right) {
    return LESS_C_STRING::compare(left.name, right.name) < 0;
}

// Puts the attribute after all that do not come after it; one of the same name takes its value.
// False when there was one.
bool insert_in_order(std::vector<KIVO_XML_ATTRIBUTE>& sorted, const KIVO_XML_ATTRIBUTE& added) {
    auto place = sorted.end();
    for (; place != sorted.begin(); --place) {
        KIVO_XML_ATTRIBUTE& before = *(place - 1);
        const int order = LESS_C_STRING::compare(before.name, added.name);
        if (order == 0) {
            before.value = added.value;
            return false;
        }
        if (order < 0) {
            break;
        }
    }
    sorted.insert(place, added);
    return true;
}

// False when several attributes became one.
bool sort_and_merge(std::vector<KIVO_XML_ATTRIBUTE>& attributes) {
    std::stable_sort(attributes.begin(), attributes.end(), comes_before);
    auto last = attributes.begin();
    for (auto next = last + 1; next != attributes.end(); ++next) {
        if (LESS_C_STRING::compare(last->name, next->name) == 0) {
            last->value = next->value;
        } else {
            *++last = *next;
        }
    }
    const bool all_differ = last + 1 == attributes.end();
    attributes.erase(last + 1, attributes.end());
    return all_differ;
}

}  // namespace

std::string_view KIVO_XML_ELEMENT::text() {
    // The parser keeps a first run of text in the element itself.
    std::string_view first = view_of(node_.value());
    const pugi::xml_node first_child = node_.first_child();
    if (is_null(first_child)) {
        is_walked_ = true;
        return first;
    }
    const bool blanks_count = !has_sub_elements();
    const auto counts = [blanks_count](std::string_view run) {
        return !run.empty() && (blanks_count || !is_blank(run));
    };
    std::string* joined = nullptr;
    first = counts(first) ? first : std::string_view();
    for (pugi::xml_node child = first_child; !is_null(child); child = child.next_sibling()) {
        const std::string_view run =
            child.type() == pugi::node_element ? std::string_view() : view_of(child.value());
        if (!counts(run)) {
            continue;
        }
        if (first.empty()) {
            first = run;
            continue;
        }
        if (joined == nullptr) {
            joined = &document_->joined_texts_.emplace_back(first);
        }
        *joined += run;
    }
    return joined == nullptr ? first : std::string_view(*joined);
}

const std::vector<KIVO_XML_ATTRIBUTE>& KIVO_XML_ELEMENT::attributes() {
    if (attributes_are_read_) {
        return attributes_;
    }
    // Insertion wins for the few attributes that an element has; beyond that it would cost the
    // square of their number.
    constexpr std::size_t kMostForInsertion = 16;
    attributes_are_read_ = true;
    attributes_.clear();
    bool all_differ = true;
    for (pugi::xml_attribute attribute = node_.first_attribute(); !is_null(attribute);
         attribute = attribute.next_attribute()) {
        // Both stand in the buffer: a value that is empty ends where it begins.
        const KIVO_XML_ATTRIBUTE read{view_to_nul(attribute.name()),
                                      view_to_nul(attribute.value())};
        if (attributes_.size() < kMostForInsertion) {
            all_differ &= insert_in_order(attributes_, read);
        } else {
            attributes_.push_back(read);
        }
    }
    if (attributes_.size() > kMostForInsertion) {
        all_differ &= sort_and_merge(attributes_);
    }
    if (!all_differ) {
        find_repeated_attributes(node_, document_->text_, document_->repeated_attributes_);
    }
    return attributes_;
}

void KIVO_XML_ELEMENT::be_at(pugi::xml_node node, std::string_view tag_name) {
    node_ = node;
    tag_name_ = tag_name;
    attributes_are_read_ = false;
    is_in_walk_ = false;
    is_walked_ = false;
}

bool KIVO_XML_ELEMENT::has_several_attributes() const {
    const pugi::xml_attribute first = node_.first_attribute();
    return !is_null(first) && !is_null(first.next_attribute());
}

// Has what nobody asked for looked at.
void KIVO_XML_ELEMENT::leave() {
    if (!attributes_are_read_ && has_several_attributes()) {
        find_repeated_attributes(node_, document_->text_, document_->repeated_attributes_);
    }
    if (!is_walked_ && !is_null(node_.first_child())) {
        const std::size_t levels = find_repeated_attributes_below(node_, document_->text_,
                                                                  document_->repeated_attributes_);
        document_->releases_ = document_->releases_ && levels <= KIVO_XML_DOCUMENT::kMostLevels;
    }
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::stand_on(pugi::xml_node child) {
    for (; !is_null(child); child = child.next_sibling()) {
        // Only an element has a name.
        if (const std::string_view name = view_of(child.name()); !name.empty()) {
            if (below_ == nullptr) {
                below_ = document_->add_element();
            }
            below_->be_at(child, name);
            is_in_walk_ = true;
            return below_;
        }
    }
    is_in_walk_ = false;
    is_walked_ = true;
    return nullptr;
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::get_first_sub_element() {
    return stand_on(node_.first_child());
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::get_next_sub_element() {
    if (!is_in_walk_) {
        return nullptr;
    }
    const pugi::xml_node passed = below_->node_;
    const pugi::xml_node next = passed.next_sibling();
    below_->leave();
    if (is_section_ && document_->may_release()) {
        node_.remove_child(passed);
    }
    return stand_on(next);
}

bool KIVO_XML_ELEMENT::has_sub_elements() const {
    pugi::xml_node child = node_.first_child();
    while (!is_null(child) && child.type() != pugi::node_element) {
        child = child.next_sibling();
    }
    return !is_null(child);
}

KIVO_XML_ELEMENT* KIVO_XML_DOCUMENT::stand_on_root(pugi::xml_node root, const char* text,
                                                   std::uint32_t file) {
    text_ = text;
    file_ = file;
    KIVO_XML_ELEMENT* element = add_element();
    element->be_at(root, view_of(root.name()));
    return element;
}

std::vector<XmlFinding> KIVO_XML_DOCUMENT::take_repeated_attributes() {
    if (!elements_.empty()) {
        elements_.front().leave();
    }
    // What was walked in part was looked through as a whole again.
    std::vector<XmlFinding> findings = std::move(repeated_attributes_);
    std::sort(
        findings.begin(), findings.end(),
        [](const XmlFinding& left, const XmlFinding& right) { return left.offset < right.offset; });
    const auto is_same = [](const XmlFinding& left, const XmlFinding& right) {
        return left.offset == right.offset;
    };
    findings.erase(std::unique(findings.begin(), findings.end(), is_same), findings.end());
    return findings;
}

KIVO_XML_ELEMENT* KIVO_XML_DOCUMENT::add_element() {
    KIVO_XML_ELEMENT& added = elements_.emplace_back();
    added.document_ = this;
    added.is_section_ = elements_.size() == 2;
    return &added;
}
