#include "kivo/info/internal/reader.h"

void KIVO_INFO::process_hidden_parameters(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PARAMETER") {
            continue;
        }
        const std::string name(name_attribute(element));
        if (name.empty()) {
            post({KIVO_MESSAGE_ID::kParameterName, element.mark(),
                  "Name atrribute is missing from PARAMETER tag "});
            continue;
        }
        KIVO_OBJ_INFO* object = add_object_at(name, KIVO_OBJ_HIDDEN_PARAMETER, element.mark());
        if (object == nullptr) {
            continue;
        }
        for (const auto& [attribute, value] : element.attributes()) {
            if (attribute == "VALUE") {
                object->add_value(std::string(value), -1);
            } else if (attribute != "NAME") {
                post({KIVO_MESSAGE_ID::kHiddenParameterAttribute, element.mark(),
                      compose("Attribute ", attribute,
                              " is not a recognized attribute for hidden parameters ")});
            }
        }
        // Users never see hidden parameters, and so nothing is said of their sub-elements.
        KIVO_MESSAGE_LIST unreported;
        process_kivo_obj_subtags(*object, element, unreported);
    }
}
