#include "kivo/info/internal/reader.h"

std::string compose(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    std::string text(size, '\0');
    char* to = text.data();
    for (const std::string_view piece : pieces) {
        to += piece.copy(to, piece.size());
    }
    return text;
}

std::string_view name_attribute(KIVO_XML_ELEMENT& element) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            return value;
        }
    }
    return {};
}

KIVO_MESSAGE_LIST read_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                              AttributeReader apply_attribute) {
    KIVO_MESSAGE_LIST messages;
    if (object == nullptr) {
        return messages;
    }
    MessageCollector collector(messages, element.mark());
    for (const KIVO_XML_ATTRIBUTE& attribute : element.attributes()) {
        apply_attribute(*object, attribute, collector);
    }
    process_kivo_obj_subtags(*object, element, messages);
    return messages;
}
