#include "kivo/info/internal/attribute_table.h"
#include "kivo/info/internal/declaration.h"
#include "kivo/info/internal/reader.h"

namespace {

// clang-format off
constexpr MessageText kUnknownType = {
    MessageId::kPortType,
    "Port type {word} of port {object} is not a recognized port type "};
constexpr MessageText kUnknownConnection = {
    MessageId::kPortConnection,
    "Attribute value {word} is not a recognized value for attribute CNX_TYPE (found for port {object} )"};
constexpr MessageText kUnknownAttribute = {
    MessageId::kPortAttribute,
    "Attribute {word} is not a recognized attribute for ports (found for port {object} )"};
// Speaks of 0 although 0 is refused: hosts match on the text.
constexpr MessageText kNoProbability = {
    MessageId::kHighProbability,
    "Invalid value for high probability {word}, it should be an integer between 0 and 100"};

constexpr TypeRow kTypes[] = {
    { "BIDIR",  KIVO_OBJ_BIDIR_PORT  },
    { "BURIED", KIVO_OBJ_BURIED_PORT },
    { "INPUT",  KIVO_OBJ_INPUT_PORT  },
    { "OUTPUT", KIVO_OBJ_OUTPUT_PORT },
};
// clang-format on

constexpr WordRow kConnections[] = {{"USED_PORT"}};

using Reading = AttributeReading<KIVO_OBJ_INFO>;

void set_connection(const Reading& reading, std::string_view value) {
    if (find_row(kConnections, value) != nullptr) {
        reading.object.cnx_type = 2;
    } else {
        reading.refuse(kUnknownConnection, "CNX_TYPE", value, kWordsOf<kConnections>);
    }
}

constexpr std::int32_t kLeastPercent = 1;
constexpr std::int32_t kMostPercent = 100;

void gather_percents(std::uint32_t, std::vector<std::string>& words) {
    words.push_back("whole numbers from " + std::to_string(kLeastPercent) + " to " +
                    std::to_string(kMostPercent));
}

void set_high_probability(const Reading& reading, std::string_view value) {
    const std::int32_t percent = to_int32(value);
    if (percent >= kLeastPercent && percent <= kMostPercent) {
        reading.object.high_probability = percent;
    } else {
        reading.refuse(kNoProbability, "HIGH_PROBABILITY", value, {gather_percents, 0});
    }
}

void set_usage(const Reading& reading, std::string_view value) {
    reading.object.usage_state = translate_usage_state(std::string(value));
}

// clang-format off
constexpr AttributeRow<KIVO_OBJ_INFO> kAttributes[] = {
    { "ASYNC",             set_by_true<&KIVO_OBJ_INFO::async>          },
    { "CLOCK_PERIOD",      set_text<&KIVO_OBJ_INFO::clock_period>      },
    { "CNX_TYPE",          set_connection                              },
    { "DEFAULT_VALUE",     set_text<&KIVO_OBJ_INFO::default_value>     },
    { "HIGH_PROBABILITY",  set_high_probability                        },
    { "INITIAL_VEC_STATE", set_text<&KIVO_OBJ_INFO::initial_vec_state> },
    { "IS_CLOCK_PORT",     set_by_true<&KIVO_OBJ_INFO::clock>          },
    { "NAME",              nullptr                                     },
    { "TYPE",              nullptr                                     },
    { "USAGE",             set_usage                                   },
    { "WIDTH",             set_text<&KIVO_OBJ_INFO::port_width>        },
    { "WIDTH2D",           set_text<&KIVO_OBJ_INFO::port_width2d>      },
};
// clang-format on

}  // namespace

void process_port_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                         const MessagePoster& poster) {
    if (object != nullptr) {
        const MessagePoster about = poster.about(object->name);
        read_attributes<kAttributes>(Reading{*object, element, about}, kUnknownAttribute);
        process_kivo_obj_subtags(*object, element, about);
    }
}

Declaration read_port_declaration(KIVO_XML_ELEMENT& element, const MessagePoster& poster) {
    return read_declaration<kTypes>(element, poster, kUnknownType, MessageId::kPortName);
}

void KIVO_INFO::process_ports(KIVO_XML_ELEMENT& section) {
    const MessagePoster poster(this);
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PORT") {
            continue;
        }
        const Declaration declared = read_port_declaration(element, poster);
        if (!declared.name.empty()) {
            KIVO_OBJ_INFO* object =
                add_declared_object(declared.name, declared.type, declared.element);
            process_port_fields(object, element, poster);
        }
    }
}
