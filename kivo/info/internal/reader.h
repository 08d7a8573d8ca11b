#pragma once

// What the section readers share.

#include <initializer_list>
#include <string>
#include <string_view>

#include "kivo/info/internal/word_table.h"
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

// Posts the messages of readers that are no members of the store.
class MessagePoster {
public:
    // Null: nobody is told.
    explicit MessagePoster(KIVO_INFO* info) : info_(info) {}

    // For messages about what belongs to the object of that name.
    MessagePoster about(std::string_view object) const {
        MessagePoster poster(info_);
        poster.object_ = object;
        return poster;
    }

    // The message gets the object when it names none.
    void post(KIVO_MESSAGE message) const {
        if (info_ != nullptr) {
            message.object = message.object.empty() ? object_ : message.object;
            info_->post(message);
        }
    }

private:
    KIVO_INFO* info_;
    std::string_view object_;
};

// A message about a sub-element that "parent" does not have.
KIVO_MESSAGE unknown_sub_tag(const MessageText& says, const KIVO_XML_ELEMENT& parent,
                             const KIVO_XML_ELEMENT& sub, const KnownWords& known);

// A message about an attribute that the element does not have.
KIVO_MESSAGE unknown_attribute(const MessageText& says, const KIVO_XML_ELEMENT& element,
                               std::string_view attribute, const KnownWords& known);

// A message that an element has no name.
KIVO_MESSAGE missing_name(MessageId id, const KIVO_XML_ELEMENT& element);

// An element that declares the object of that name.
inline KIVO_DECLARING_ELEMENT declaring(const KIVO_XML_ELEMENT& element, std::string_view name) {
    return {element.mark(), element.tag_name(), "NAME", name};
}

// The value of the attribute NAME, empty when there is none.
std::string_view name_attribute(KIVO_XML_ELEMENT& element);

// Field readers of one PARAMETER or PORT element: they apply its attributes but NAME and TYPE, then
// its sub-elements. A null object yields no message and changes nothing.
void process_parameter_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                              const MessagePoster& poster);
void process_port_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                         const MessagePoster& poster);

// Reads the value rules among the element's sub-elements onto the object's rule list.
void process_kivo_obj_subtags(KIVO_OBJ_INFO& object, KIVO_XML_ELEMENT& element,
                              const MessagePoster& poster);
