#pragma once

// Elements of which each attribute fills a field of the object that they declare, by tables of
// rows from the attribute to what fills the field.

#include <string>
#include <string_view>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

// One element whose attributes go into the object.
template <class Object>
struct AttributeReading {
    Object& object;
    KIVO_XML_ELEMENT& element;
    MessagePoster poster;  // about the object

    // Says that the value is none that the attribute may have.
    void refuse(const MessageText& says, std::string_view attribute, std::string_view value,
                const KnownWords& known) const {
        poster.post({.says = says,
                     .mark = element.mark(),
                     .element = element.tag_name(),
                     .attribute = attribute,
                     .word = value,
                     .known = known});
    }
};

template <class Object>
struct AttributeRow {
    std::string_view word;
    // Null for an attribute that is read elsewhere.
    void (*set)(const AttributeReading<Object>& reading, std::string_view value);
};

template <auto kField, class Object>
void set_text(const AttributeReading<Object>& reading, std::string_view value) {
    reading.object.*kField = value;
}

template <auto kField, class Object>
void set_number(const AttributeReading<Object>& reading, std::string_view value) {
    reading.object.*kField = to_int32(value);
}

// VALUE of a parameter, which is its default too.
inline void set_value(const AttributeReading<KIVO_OBJ_INFO>& reading, std::string_view value) {
    reading.object.add_value(std::string(value), -1);
}

// True for ON alone, or for TRUE alone.
template <auto kField, class Object>
void set_by_on(const AttributeReading<Object>& reading, std::string_view value) {
    reading.object.*kField = value == "ON";
}

template <auto kField, class Object>
void set_by_true(const AttributeReading<Object>& reading, std::string_view value) {
    reading.object.*kField = value == "TRUE";
}

// Applies all attributes; "unknown" is what is said about one that the table does not have.
template <const auto& kRows, class Object>
void read_attributes(const AttributeReading<Object>& reading, const MessageText& unknown) {
    for (const auto& [name, value] : reading.element.attributes()) {
        const AttributeRow<Object>* const row = find_row(kRows, name);
        if (row == nullptr) {
            reading.poster.post(unknown_attribute(unknown, reading.element, name, kWordsOf<kRows>));
        } else if (row->set != nullptr) {
            row->set(reading, value);
        }
    }
}
