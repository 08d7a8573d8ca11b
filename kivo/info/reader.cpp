#include "kivo/info/reader.h"

std::string_view name_attribute(KIVO_XML_ELEMENT& element) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            return value;
        }
    }
    return {};
}
