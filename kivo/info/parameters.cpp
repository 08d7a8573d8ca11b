#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

void set_connection(KIVO_OBJ_INFO& object, std::string_view value, MessageCollector& messages) {
    if (value == "CONSTANT") {
        object.cnx_type = 1;
    } else if (value == "PRIVATE") {
        object.cnx_type = 0;
    } else {
        messages.add(KIVO_MESSAGE_ID::kParameterConnection, "Attribute value ", value,
                     " is not a recognized value for attribute CNX_TYPE (found in parameter ",
                     object.name, " )");
    }
}

void apply_attribute(KIVO_OBJ_INFO& object, const KIVO_XML_ATTRIBUTE& attribute,
                     MessageCollector& messages) {
    const auto& [name, value] = attribute;
    if (name == "VALUE") {
        object.add_value(std::string(value), -1);
    } else if (name == "LPM_HINT") {
        object.lpm_hint = value == "ON";
    } else if (name == "DEFAULT_VALUE") {
        object.default_value = value;
    } else if (name == "DEFAULT_VALUE_INDEX") {
        object.default_index = to_int32(value);
    } else if (name == "CNX_TYPE") {
        set_connection(object, value, messages);
    } else if (name != "NAME" && name != "TYPE") {
        messages.add(KIVO_MESSAGE_ID::kParameterAttribute, "Attribute ", name,
                     " is not a recognized attribute for parameters (found in parameter ",
                     object.name, " )");
    }
}

KIVO_OBJ_TYPE parameter_type(std::string_view word) {
    return word == "STRING"    ? KIVO_OBJ_STRING_PARAMETER
           : word == "INTEGER" ? KIVO_OBJ_INTEGER_PARAMETER
                               : KIVO_OBJ_UNKNOWN;
}

}  // namespace

KIVO_MESSAGE_LIST process_parameter_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element) {
    return read_fields(object, element, apply_attribute);
}

KIVO_INFO::Declared KIVO_INFO::read_parameter_head(KIVO_XML_ELEMENT& element) {
    Declared declared;
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            declared.name = value;
        } else if (name == "TYPE") {
            declared.type = parameter_type(value);
            if (declared.type == KIVO_OBJ_UNKNOWN) {
                post({KIVO_MESSAGE_ID::kParameterType, element.mark(),
                      compose("Parameter type ", value, " of parameter ", declared.name,
                              " is not a recognized parameter type ")});
            }
        }
    }
    if (declared.name.empty()) {
        post({KIVO_MESSAGE_ID::kParameterName, element.mark(),
              "Name atrribute is missing from PARAMETER tag "});
    }
    return declared;
}

void KIVO_INFO::process_parameters(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PARAMETER") {
            continue;
        }
        const Declared declared = read_parameter_head(element);
        if (!declared.name.empty()) {
            KIVO_OBJ_INFO* object = add_object_at(declared.name, declared.type, element.mark());
            copy_messages(process_parameter_fields(object, element));
        }
    }
}
