#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

void set_high_probability(KIVO_OBJ_INFO& object, std::string_view value,
                          MessageCollector& messages) {
    const std::int32_t percent = to_int32(value);
    if (percent >= 1 && percent <= 100) {
        object.high_probability = percent;
        return;
    }
    // Speaks of 0 although 0 is refused: hosts match on the text.
    messages.add(KIVO_MESSAGE_ID::kHighProbability, "Invalid value for high probability ", value,
                 ", it should be an integer between 0 and 100");
}

void set_connection(KIVO_OBJ_INFO& object, std::string_view value, MessageCollector& messages) {
    if (value == "USED_PORT") {
        object.cnx_type = 2;
        return;
    }
    messages.add(KIVO_MESSAGE_ID::kPortConnection, "Attribute value ", value,
                 " is not a recognized value for attribute CNX_TYPE (found for port ", object.name,
                 " )");
}

struct TextField {
    std::string_view attribute;
    std::string KIVO_OBJ_INFO::*field;
};

// clang-format off
constexpr TextField kTextFields[] = {
    { "CLOCK_PERIOD",      &KIVO_OBJ_INFO::clock_period      },
    { "DEFAULT_VALUE",     &KIVO_OBJ_INFO::default_value     },
    { "INITIAL_VEC_STATE", &KIVO_OBJ_INFO::initial_vec_state },
    { "WIDTH",             &KIVO_OBJ_INFO::port_width        },
    { "WIDTH2D",           &KIVO_OBJ_INFO::port_width2d      },
};
// clang-format on

bool set_text_field(KIVO_OBJ_INFO& object, const KIVO_XML_ATTRIBUTE& attribute) {
    for (const TextField& row : kTextFields) {
        if (attribute.name == row.attribute) {
            object.*row.field = attribute.value;
            return true;
        }
    }
    return false;
}

void apply_attribute(KIVO_OBJ_INFO& object, const KIVO_XML_ATTRIBUTE& attribute,
                     MessageCollector& messages) {
    const auto& [name, value] = attribute;
    if (name == "NAME" || name == "TYPE" || set_text_field(object, attribute)) {
        return;
    }
    if (name == "IS_CLOCK_PORT") {
        object.clock = value == "TRUE";
    } else if (name == "ASYNC") {
        object.async = value == "TRUE";
    } else if (name == "USAGE") {
        object.usage_state = translate_usage_state(std::string(value));
    } else if (name == "HIGH_PROBABILITY") {
        set_high_probability(object, value, messages);
    } else if (name == "CNX_TYPE") {
        set_connection(object, value, messages);
    } else {
        messages.add(KIVO_MESSAGE_ID::kPortAttribute, "Attribute ", name,
                     " is not a recognized attribute for ports (found for port ", object.name,
                     " )");
    }
}

KIVO_OBJ_TYPE port_type(std::string_view word) {
    return word == "INPUT"    ? KIVO_OBJ_INPUT_PORT
           : word == "OUTPUT" ? KIVO_OBJ_OUTPUT_PORT
           : word == "BIDIR"  ? KIVO_OBJ_BIDIR_PORT
           : word == "BURIED" ? KIVO_OBJ_BURIED_PORT
                              : KIVO_OBJ_UNKNOWN;
}

}  // namespace

KIVO_MESSAGE_LIST process_port_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element) {
    return read_fields(object, element, apply_attribute);
}

KIVO_INFO::Declared KIVO_INFO::read_port_head(KIVO_XML_ELEMENT& element) {
    Declared declared;
    for (const auto& [name, value] : element.attributes()) {
        if (name == "NAME") {
            declared.name = value;
        } else if (name == "TYPE") {
            declared.type = port_type(value);
            if (declared.type == KIVO_OBJ_UNKNOWN) {
                post({KIVO_MESSAGE_ID::kPortType, element.mark(),
                      compose("Port type ", value, " of port ", declared.name,
                              " is not a recognized port type ")});
            }
        }
    }
    if (declared.name.empty()) {
        post({KIVO_MESSAGE_ID::kPortName, element.mark(),
              "Name atrribute is missing from PORT tag "});
    }
    return declared;
}

void KIVO_INFO::process_ports(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PORT") {
            continue;
        }
        const Declared declared = read_port_head(element);
        if (!declared.name.empty()) {
            KIVO_OBJ_INFO* object = add_object_at(declared.name, declared.type, element.mark());
            copy_messages(process_port_fields(object, element));
        }
    }
}
