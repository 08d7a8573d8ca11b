#include "kivo/objects/vector_obj.h"

#include <memory>
#include <utility>

#include "kivo/objects/conditional_text.h"
#include "kivo/objects/internal/owning.h"

namespace {

KIVO_VECTOR_DISPLAY_OBJ* find_format(const KIVO_OBJ_MAP& formats, const std::string& port) {
    return dynamic_cast<KIVO_VECTOR_DISPLAY_OBJ*>(formats.look_up(port));
}

}  // namespace

KIVO_VECTOR_DISPLAY_OBJ::KIVO_VECTOR_DISPLAY_OBJ() = default;

KIVO_VECTOR_DISPLAY_OBJ::~KIVO_VECTOR_DISPLAY_OBJ() = default;

KIVO_VECTOR_OBJ::KIVO_VECTOR_OBJ(const std::string& vector_name) : name(vector_name) {}

KIVO_VECTOR_OBJ::~KIVO_VECTOR_OBJ() {
    delete wave_condition;
    delete description;
}

void KIVO_VECTOR_OBJ::add_vector_stimulus(KIVO_RULE_ELEMENT* entry) {
    stimulus_list.add_at_tail(entry);
}

KIVO_RULE_ELEMENT* KIVO_VECTOR_OBJ::get_next_vector_stimulus() {
    return dynamic_cast<KIVO_RULE_ELEMENT*>(stimulus_list.get_next_value());
}

void KIVO_VECTOR_OBJ::add_vector_display_format(const std::string& port, DRO_MEMORY_RADIXES radix,
                                                const std::string& format_description) {
    auto format = std::make_unique<KIVO_VECTOR_DISPLAY_OBJ>();
    format->port_name = port;
    format->radix = radix;
    format->description = format_description;
    KIVO_OWNING::replace_format(*this, std::move(format), KIVO_OWNING::kVector);
}

DRO_MEMORY_RADIXES KIVO_VECTOR_OBJ::get_vector_display_format(const std::string& port) const {
    const KIVO_VECTOR_DISPLAY_OBJ* format = find_format(display_format_map, port);
    return format == nullptr ? DRO_RADIX_HEX : format->radix;
}

std::string KIVO_VECTOR_OBJ::get_vector_display_format_description(const std::string& port) const {
    const KIVO_VECTOR_DISPLAY_OBJ* format = find_format(display_format_map, port);
    return format == nullptr ? std::string() : format->description;
}

void KIVO_VECTOR_OBJ::set_vector_display_format_description(const std::string& port,
                                                            const std::string& format_description) {
    if (KIVO_VECTOR_DISPLAY_OBJ* format = find_format(display_format_map, port)) {
        format->description = format_description;
    }
}

std::string KIVO_VECTOR_OBJ::format_display_string(const std::string& port,
                                                   const std::string& value,
                                                   DRO_MEMORY_RADIXES value_radix) const {
    std::string result = value;
    const KIVO_VECTOR_DISPLAY_OBJ* format = find_format(display_format_map, port);
    const DRO_MEMORY_RADIXES radix = format == nullptr ? DRO_RADIX_HEX : format->radix;
    if (radix == DRO_RADIX_NONE || radix == value_radix) {
        return result;
    }
    // A value that does not convert is shown as it is.
    if (radix != DRO_RADIX_FIXED_POINT) {
        dro_radix_conversion(value, &result, value_radix, radix, 0);
    } else if (!format->description.empty()) {
        dro_radix_conversion_fixed_point(value, &result, value_radix, radix, format->description);
    }
    return result;
}
