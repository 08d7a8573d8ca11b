#pragma once

// What the section readers share.

#include <initializer_list>
#include <string>
#include <string_view>

#include "kivo/objects/info.h"
#include "kivo/objects/internal/message.h"
#include "kivo/objects/obj_info.h"
#include "kivo/toolkit/xml/internal/xml_element.h"

// Joins the pieces of a text with one allocation.
std::string compose(std::initializer_list<std::string_view> pieces);

template <class... Piece>
std::string compose(const Piece&... piece) {
    return compose({std::string_view(piece)...});
}

// Collects the messages of the element that it was made for.
class MessageCollector {
public:
    MessageCollector(KIVO_MESSAGE_LIST& messages, KIVO_MARK mark)
        : messages_(messages), mark_(mark) {}

    template <class... Piece>
    void add(KIVO_MESSAGE_ID id, const Piece&... piece) {
        messages_.push_back({id, mark_, compose(piece...)});
    }

private:
    KIVO_MESSAGE_LIST& messages_;
    KIVO_MARK mark_;
};

// The value of the attribute NAME, empty when there is none.
std::string_view name_attribute(KIVO_XML_ELEMENT& element);

// Field readers of one PARAMETER or PORT element: they apply its attributes but NAME and TYPE, then
// its sub-elements, and return the messages that arose, in order. A null object yields no message
// and changes nothing.
KIVO_MESSAGE_LIST process_parameter_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element);
KIVO_MESSAGE_LIST process_port_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element);

// Reads the value rules among the element's sub-elements onto the object's rule list and appends
// the messages that arose.
void process_kivo_obj_subtags(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& element,
                              KIVO_MESSAGE_LIST& messages);

// Applies one attribute to an object; what is wrong with it goes to the collector.
using AttributeReader = void (*)(KIVO_OBJ_INFO&, const KIVO_XML_ATTRIBUTE&, MessageCollector&);

// What the field readers have in common: all attributes first, then the value rules.
KIVO_MESSAGE_LIST read_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                              AttributeReader apply_attribute);
