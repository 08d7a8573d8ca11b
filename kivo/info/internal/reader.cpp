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

KIVO_MESSAGE unknown_sub_tag(const MessageText& says, const KIVO_XML_ELEMENT& parent,
                             const KIVO_XML_ELEMENT& sub, const KnownWords& known) {
    return {.says = says,
            .mark = sub.mark(),
            .element = parent.tag_name(),
            .word = sub.tag_name(),
            .known = known};
}

KIVO_MESSAGE unknown_attribute(const MessageText& says, const KIVO_XML_ELEMENT& element,
                               std::string_view attribute, const KnownWords& known) {
    return {.says = says,
            .mark = element.mark(),
            .element = element.tag_name(),
            .attribute = attribute,
            .word = attribute,
            .known = known};
}

KIVO_MESSAGE missing_name(MessageId id, const KIVO_XML_ELEMENT& element) {
    return {.says = {id, "Name atrribute is missing from {element} tag "},
            .mark = element.mark(),
            .element = element.tag_name(),
            .attribute = "NAME"};
}

std::string_view name_attribute(KIVO_XML_ELEMENT& element) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            return value;
        }
    }
    return {};
}
