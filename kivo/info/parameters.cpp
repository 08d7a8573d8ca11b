#include "kivo/info/internal/attribute_table.h"
#include "kivo/info/internal/declaration.h"
#include "kivo/info/internal/reader.h"

namespace {

// clang-format off
constexpr MessageText kUnknownType = {
    MessageId::kParameterType,
    "Parameter type {word} of parameter {object} is not a recognized parameter type "};
constexpr MessageText kUnknownConnection = {
    MessageId::kParameterConnection,
    "Attribute value {word} is not a recognized value for attribute CNX_TYPE (found in parameter {object} )"};
constexpr MessageText kUnknownAttribute = {
    MessageId::kParameterAttribute,
    "Attribute {word} is not a recognized attribute for parameters (found in parameter {object} )"};

constexpr TypeRow kTypes[] = {
    { "INTEGER", KIVO_OBJ_INTEGER_PARAMETER },
    { "STRING",  KIVO_OBJ_STRING_PARAMETER  },
};

struct ConnectionRow {
    std::string_view word;
    std::int32_t cnx_type;
};

constexpr ConnectionRow kConnections[] = {
    { "CONSTANT", 1 },
    { "PRIVATE",  0 },
};
// clang-format on

using Reading = AttributeReading<KIVO_OBJ_INFO>;

void set_connection(const Reading& reading, std::string_view value) {
    if (const ConnectionRow* row = find_row(kConnections, value)) {
        reading.object.cnx_type = row->cnx_type;
    } else {
        reading.refuse(kUnknownConnection, "CNX_TYPE", value, kWordsOf<kConnections>);
    }
}

// clang-format off
constexpr AttributeRow<KIVO_OBJ_INFO> kAttributes[] = {
    { "CNX_TYPE",            set_connection                            },
    { "DEFAULT_VALUE",       set_text<&KIVO_OBJ_INFO::default_value>   },
    { "DEFAULT_VALUE_INDEX", set_number<&KIVO_OBJ_INFO::default_index> },
    { "LPM_HINT",            set_by_on<&KIVO_OBJ_INFO::lpm_hint>       },
    { "NAME",                nullptr                                   },
    { "TYPE",                nullptr                                   },
    { "VALUE",               set_value                                 },
};
// clang-format on

}  // namespace

void process_parameter_fields(KIVO_OBJ_INFO* object, KIVO_XML_ELEMENT& element,
                              const MessagePoster& poster) {
    if (object != nullptr) {
        const MessagePoster about = poster.about(object->name);
        read_attributes<kAttributes>(Reading{*object, element, about}, kUnknownAttribute);
        process_kivo_obj_subtags(*object, element, about);
    }
}

Declaration read_parameter_declaration(KIVO_XML_ELEMENT& element, const MessagePoster& poster) {
    return read_declaration<kTypes>(element, poster, kUnknownType, MessageId::kParameterName);
}

void KIVO_INFO::process_parameters(KIVO_XML_ELEMENT& section) {
    const MessagePoster poster(this);
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "PARAMETER") {
            continue;
        }
        const Declaration declared = read_parameter_declaration(element, poster);
        if (!declared.name.empty()) {
            KIVO_OBJ_INFO* object =
                add_declared_object(declared.name, declared.type, declared.element);
            process_parameter_fields(object, element, poster);
        }
    }
}
