#include "kivo/info/internal/reader.h"

void KIVO_INFO::process_macros(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "MACRO") {
            post({KIVO_MESSAGE_ID::kMacrosSubTag, element.mark(),
                  compose("Sub element tag ", element.tag_name(),
                          " is not a valid sub tag of the main tag MACROS")});
            continue;
        }
        KIVO_OBJ_INFO* macro = nullptr;
        std::string definition;
        std::string arguments;
        for (const auto& [name, value] : element.attributes()) {
            if (name == "NAME") {
                macro = add_object_at(std::string(value), KIVO_OBJ_MACRO, element.mark());
            } else if (name == "DEFINITION") {
                definition = value;
            } else if (name == "ARGUMENTS") {
                arguments = value;
            }
        }
        if (KIVO_XML_ELEMENT* first = element.get_first_sub_element()) {
            if (first->tag_name() == "DEFINITION") {
                definition = first->text();
            } else {
                // No blank stands behind "tag": hosts match on the text.
                post({KIVO_MESSAGE_ID::kMacroSubTag, first->mark(),
                      compose("Sub tag", first->tag_name(),
                              " is not a recognized sub-tag for macros ")});
            }
        }
        if (macro == nullptr || definition.empty()) {
            continue;
        }
        macro->add_value(definition, -1);
        if (!arguments.empty()) {
            macro->arguments = arguments;
        }
    }
}
