#include "kivo/toolkit/xml_element.h"

#include <algorithm>
#include <pugixml.hpp>

#include "kivo/toolkit/less_c_string.h"
#include "kivo/toolkit/strings.h"

namespace {

bool is_blank(std::string_view text) {
    return trim_left_view(text).empty();
}

// "node" or the first element behind it.
pugi::xml_node next_element(pugi::xml_node node) {
    while (node.type() != pugi::node_element && node) {
        node = node.next_sibling();
    }
    return node;
}

bool comes_before(const KIVO_XML_ATTRIBUTE& left, const KIVO_XML_ATTRIBUTE& right) {
    return LESS_C_STRING::compare(left.name, right.name) < 0;
}

// Puts the attribute behind all that do not come after it; one of the same name takes its value.
void insert_in_order(std::vector<KIVO_XML_ATTRIBUTE>& sorted, const KIVO_XML_ATTRIBUTE& added) {
    std::size_t place = sorted.size();
    while (place != 0) {
        const int order = LESS_C_STRING::compare(sorted[place - 1].name, added.name);
        if (order == 0) {
            sorted[place - 1].value = added.value;
            return;
        }
        if (order < 0) {
            break;
        }
        --place;
    }
    sorted.push_back(added);
    std::move_backward(sorted.begin() + static_cast<std::ptrdiff_t>(place), sorted.end() - 1,
                       sorted.end());
    sorted[place] = added;
}

void sort_and_merge(std::vector<KIVO_XML_ATTRIBUTE>& attributes) {
    std::stable_sort(attributes.begin(), attributes.end(), comes_before);
    auto last = attributes.begin();
    for (auto next = last + 1; next != attributes.end(); ++next) {
        if (LESS_C_STRING::compare(last->name, next->name) == 0) {
            last->value = next->value;
        } else {
            *++last = *next;
        }
    }
    attributes.erase(last + 1, attributes.end());
}

}  // namespace

std::string_view KIVO_XML_ELEMENT::text() {
    const pugi::xml_node node(node_);
    // The parser keeps a first run of text in the element itself.
    std::string_view first = node.value();
    if (!node.first_child()) {
        return first;
    }
    const bool blanks_count = !has_sub_elements();
    const auto counts = [blanks_count](std::string_view run) {
        return !run.empty() && (blanks_count || !is_blank(run));
    };
    bool is_joined = false;
    first = counts(first) ? first : std::string_view();
    for (const pugi::xml_node child : node.children()) {
        const std::string_view run =
            child.type() == pugi::node_element ? std::string_view() : child.value();
        if (!counts(run)) {
            continue;
        }
        if (is_joined) {
            joined_text_ += run;
        } else if (first.empty()) {
            first = run;
        } else {
            joined_text_.assign(first).append(run);
            is_joined = true;
        }
    }
    return is_joined ? std::string_view(joined_text_) : first;
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
    pugi::xml_attribute attribute = pugi::xml_node(node_).first_attribute();
    // No attribute has an empty name but the one behind the last.
    for (const char* name = attribute.name(); *name != '\0'; name = attribute.name()) {
        if (attributes_.size() < kMostForInsertion) {
            insert_in_order(attributes_, {name, attribute.value()});
        } else {
            attributes_.push_back({name, attribute.value()});
        }
        attribute = attribute.next_attribute();
    }
    if (attributes_.size() > kMostForInsertion) {
        sort_and_merge(attributes_);
    }
    return attributes_;
}

void KIVO_XML_ELEMENT::be_at(pugi::xml_node_struct* node) {
    node_ = node;
    child_ = nullptr;
    tag_name_ = pugi::xml_node(node).name();
    attributes_are_read_ = false;
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::stand_on(pugi::xml_node_struct* child) {
    child_ = child;
    if (child == nullptr) {
        return nullptr;
    }
    if (below_ == nullptr) {
        below_ = document_->add_element();
    }
    below_->be_at(child);
    return below_;
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::get_first_sub_element() {
    return stand_on(next_element(pugi::xml_node(node_).first_child()).internal_object());
}

KIVO_XML_ELEMENT* KIVO_XML_ELEMENT::get_next_sub_element() {
    pugi::xml_node_struct* const passed = child_;
    const pugi::xml_node next = next_element(pugi::xml_node(passed).next_sibling());
    document_->release(passed);
    return stand_on(next.internal_object());
}

bool KIVO_XML_ELEMENT::has_sub_elements() const {
    return next_element(pugi::xml_node(node_).first_child());
}

KIVO_MARK KIVO_XML_ELEMENT::mark() const {
    // The name stands in the text, right behind the "<".
    const std::ptrdiff_t offset = tag_name_.data() - document_->text_ - 1;
    return {document_->file_, kivo_mark_offset(static_cast<std::size_t>(offset))};
}

KIVO_XML_ELEMENT* KIVO_XML_DOCUMENT::stand_on_root(pugi::xml_node_struct* root, const char* text,
                                                   std::uint32_t file) {
    text_ = text;
    file_ = file;
    KIVO_XML_ELEMENT* element = add_element();
    element->be_at(root);
    return element;
}

void KIVO_XML_DOCUMENT::release(pugi::xml_node_struct* passed) {
    if (!releases_) {
        return;
    }
    const pugi::xml_node node(passed);
    // The parser would descend into sub-elements that nobody walked, however deep they are.
    if (!node.first_child()) {
        node.parent().remove_child(node);
    }
}

KIVO_XML_ELEMENT* KIVO_XML_DOCUMENT::add_element() {
    KIVO_XML_ELEMENT& added = elements_.emplace_back();
    added.document_ = this;
    return &added;
}
