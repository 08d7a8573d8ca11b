#include "kivo/objects/obj_info.h"

#include <cassert>
#include <iterator>

#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr const char* kTypeTexts[] = {
    "Hidden parameter",   // KIVO_OBJ_HIDDEN_PARAMETER
    "Input port",         // KIVO_OBJ_INPUT_PORT
    "Output port",        // KIVO_OBJ_OUTPUT_PORT
    "Bidir port",         // KIVO_OBJ_BIDIR_PORT
    "",                   // KIVO_OBJ_BURIED_PORT: hosts show it without a text
    "Integer parameter",  // KIVO_OBJ_INTEGER_PARAMETER
    "String parameter",   // KIVO_OBJ_STRING_PARAMETER
};
// clang-format on

}  // namespace

bool kivo_is_port(KIVO_OBJ_TYPE type) {
    return type >= KIVO_OBJ_INPUT_PORT && type <= KIVO_OBJ_BURIED_PORT;
}

bool kivo_is_parameter(KIVO_OBJ_TYPE type) {
    return type == KIVO_OBJ_INTEGER_PARAMETER || type == KIVO_OBJ_STRING_PARAMETER;
}

KIVO_OBJ_INFO::KIVO_OBJ_INFO(const std::string& object_name, KIVO_OBJ_TYPE type)
    : name(object_name), obj_type(type) {}

KIVO_OBJ_INFO::KIVO_OBJ_INFO(KIVO_OBJ_INFO* source)
    : name((assert(source != nullptr), source->name)),
      obj_type(source->obj_type),
      default_value(source->default_value),
      value_array(source->value_array),
      default_index(source->default_index),
      lpm_hint(source->is_lpm_hint()),
      async(source->is_async()),
      clock(source->is_clock()),
      initial_vec_state(source->initial_vec_state),
      clock_period(source->clock_period),
      port_width(source->port_width),
      port_width2d(source->port_width2d),
      high_probability(source->high_probability),
      usage_state(source->usage_state),
      dependency_position(source->dependency_position),
      current_value(source->current_value),
      arguments(source->arguments),
      cnx_type(source->cnx_type),
      mark(source->mark) {
    source->reset_rule_list();
    while (KIVO_RULE_ELEMENT* element = source->get_next_rule_element()) {
        KIVO_ITEMS::append(rule_list, element);
    }
}

KIVO_OBJ_INFO::~KIVO_OBJ_INFO() = default;

void KIVO_OBJ_INFO::add_value(const std::string& text, std::int32_t index) {
    value_array = text;
    if (index == -1) {
        default_value = text;
        return;
    }
    default_value.clear();
    default_index = index;
}

void KIVO_OBJ_INFO::add_rule(KIVO_RULE_ELEMENT* element) {
    rule_list.add_at_tail(element);
}

void KIVO_OBJ_INFO::reset_rule_list() {
    rule_list.reset();
}

KIVO_RULE_ELEMENT* KIVO_OBJ_INFO::get_next_rule_element() {
    return dynamic_cast<KIVO_RULE_ELEMENT*>(rule_list.get_next_value());
}

std::string KIVO_OBJ_INFO::get_obj_type_as_string() const {
    const auto type = static_cast<std::uint32_t>(obj_type);
    return type < std::size(kTypeTexts) ? kTypeTexts[type] : "";
}

bool KIVO_OBJ_INFO::is_lpm_hint() const {
    return lpm_hint && kivo_is_parameter(obj_type);
}

bool KIVO_OBJ_INFO::is_async() const {
    return async && obj_type == KIVO_OBJ_INPUT_PORT;
}

bool KIVO_OBJ_INFO::is_clock() const {
    return clock && obj_type == KIVO_OBJ_INPUT_PORT;
}
