#pragma once

// What NAME and TYPE of a PARAMETER or PORT element say.

#include <string>
#include <string_view>

#include "kivo/info/internal/reader.h"

struct Declaration {
    std::string name;  // empty: the element is to be ignored, which has been said
    KIVO_OBJ_TYPE type = KIVO_OBJ_UNKNOWN;
    KIVO_DECLARING_ELEMENT element;
};

Declaration read_parameter_declaration(KIVO_XML_ELEMENT& element, const MessagePoster& poster);
Declaration read_port_declaration(KIVO_XML_ELEMENT& element, const MessagePoster& poster);

struct TypeRow {
    std::string_view word;
    KIVO_OBJ_TYPE type;
};

// Posts what is wrong; NAME comes before TYPE.
template <const auto& kTypes>
Declaration read_declaration(KIVO_XML_ELEMENT& element, const MessagePoster& poster,
                             const MessageText& unknown_type, MessageId no_name) {
    Declaration declared{{}, KIVO_OBJ_UNKNOWN, declaring(element, {})};
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            declared.name = value;
            declared.element.word = value;
        } else if (name == "TYPE") {
            declared.element.attribute = "TYPE";
            declared.element.word = value;
            if (const TypeRow* const row = find_row(kTypes, value)) {
                declared.type = row->type;
                continue;
            }
            poster.post({.says = unknown_type,
                         .mark = element.mark(),
                         .element = element.tag_name(),
                         .attribute = "TYPE",
                         .word = value,
                         .object = declared.name,
                         .known = kWordsOf<kTypes>});
        }
    }
    if (declared.name.empty()) {
        poster.post(missing_name(no_name, element));
    }
    return declared;
}
