#include "kivo/info/internal/attribute_table.h"
#include "kivo/info/internal/reader.h"

namespace {

constexpr MessageText kUnknownAttribute = {
    MessageId::kHiddenParameterAttribute,
    "Attribute {word} is not a recognized attribute for hidden parameters "};

// clang-format off
constexpr AttributeRow<KIVO_OBJ_INFO> kAttributes[] = {
    { "NAME",  nullptr   },
    { "VALUE", set_value },
};
// clang-format on

}  // namespace

void KIVO_INFO::process_hidden_parameters(KIVO_XML_ELEMENT& section) {
    const MessagePoster poster(this);
    // Users never see hidden parameters, and so nothing is said of their sub-elements.
    const MessagePoster nobody(nullptr);
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PARAMETER") {
            continue;
        }
        const std::string name(name_attribute(element));
        if (name.empty()) {
            post(missing_name(MessageId::kParameterName, element));
            continue;
        }
        KIVO_OBJ_INFO* object =
            add_declared_object(name, KIVO_OBJ_HIDDEN_PARAMETER, declaring(element, name));
        if (object != nullptr) {
            read_attributes<kAttributes>(
                AttributeReading<KIVO_OBJ_INFO>{*object, element, poster.about(name)},
                kUnknownAttribute);
            process_kivo_obj_subtags(*object, element, nobody);
        }
    }
}
