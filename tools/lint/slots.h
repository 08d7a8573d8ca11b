#pragma once

#include <string_view>
#include <vector>

#include "tools/lint/lint.h"

// What fills one field of a record, as an attribute or as a sub-element.
struct Giver {
    const DocumentAttribute* attribute;  // null for a sub-element
    const DocumentElement* element;      // null for an attribute

    std::string_view word() const { return attribute ? attribute->name : element->tag; }
    std::string_view text() const { return attribute ? attribute->value.text : element->text.text; }
    std::size_t offset() const { return attribute ? attribute->name_offset : element->offset; }
    Place place(const Document& document) const {
        return attribute ? document.place(*attribute) : document.place(*element);
    }
};

// The words that fill one field: of several that are given, the last one counts.
using Slot = std::vector<std::string_view>;

// The fields that the sub-elements and attributes of such an element fill; none for most.
const std::vector<Slot>& slots_of(Context context);

// The slot with that word.
const Slot& slot_of(Context context, std::string_view word);

// What fills the slot, in the order in which it takes effect: attributes by their names, then
// sub-elements.
std::vector<Giver> givers_of(const Spot& spot, const Slot& slot);

// What is in the field in the end; empty when nothing fills it.
std::string_view text_in(const Spot& spot, std::string_view word);
