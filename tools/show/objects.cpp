#include <fmt/format.h>

#include <functional>
#include <string>
#include <vector>

#include "tools/description/default_value.h"
#include "tools/show/parts.h"
#include "tools/text/cut_text.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"

namespace {

// Of all wizard maps together: a short description can ask for any number of objects in them.
constexpr std::size_t kMostMapBytes = 16'000'000;

using Filter = bool (*)(KIVO_OBJ_TYPE);
using Cells = std::vector<std::string> (*)(const KIVO_OBJ_INFO&);

bool is_hidden_parameter(KIVO_OBJ_TYPE type) {
    return type == KIVO_OBJ_HIDDEN_PARAMETER;
}

bool is_macro(KIVO_OBJ_TYPE type) {
    return type == KIVO_OBJ_MACRO;
}

std::string kind_of(KIVO_OBJ_TYPE type) {
    switch (type) {
        case KIVO_OBJ_HIDDEN_PARAMETER:
            return "hidden";
        case KIVO_OBJ_INPUT_PORT:
            return "input";
        case KIVO_OBJ_OUTPUT_PORT:
            return "output";
        case KIVO_OBJ_BIDIR_PORT:
            return "bidir";
        case KIVO_OBJ_BURIED_PORT:
            return "buried";
        case KIVO_OBJ_INTEGER_PARAMETER:
            return "integer";
        case KIVO_OBJ_STRING_PARAMETER:
            return "string";
        case KIVO_OBJ_MACRO:
            return "macro";
        case KIVO_OBJ_UNKNOWN:
            break;
    }
    return "unknown";
}

std::string shown_default(const KIVO_OBJ_INFO& object) {
    return default_of(object).value_or(missing_default(object));
}

// A single value is the default too and need not stand twice.
std::string values_of(const KIVO_OBJ_INFO& object) {
    return object.default_index < 0 && object.value_array == object.default_value
               ? std::string()
               : object.value_array;
}

std::string width_of(const KIVO_OBJ_INFO& port) {
    return port.port_width2d.empty() ? port.port_width
                                     : port.port_width + " x " + port.port_width2d;
}

std::string timing_of(const KIVO_OBJ_INFO& port) {
    if (port.is_clock()) {
        return "clock";
    }
    if (port.obj_type != KIVO_OBJ_INPUT_PORT) {
        return "";
    }
    return port.is_async() ? "async" : "sync";
}

// Of ports that stimulus does not drive, only what somebody gave.
std::string probability_of(const KIVO_OBJ_INFO& port) {
    constexpr std::int32_t kNotGiven = 50;
    const bool is_driven =
        port.obj_type == KIVO_OBJ_INPUT_PORT || port.obj_type == KIVO_OBJ_BIDIR_PORT;
    return is_driven || port.high_probability != kNotGiven
               ? fmt::format("{}", port.high_probability)
               : std::string();
}

std::string range_text(const KIVO_RULE_ELEMENT& rule) {
    return rule.text2.empty() ? "up to " + rule.text1 : rule.text2 + " to " + rule.text1;
}

std::string value_text(const KIVO_RULE_ELEMENT& rule, const char* label) {
    std::string text = label + (' ' + rule.text1);
    text += rule.text3.empty() ? "" : " if " + rule.text3;
    text += rule.text2.empty() ? "" : ", else " + rule.text2;
    return text;
}

std::string ranged_text(const KIVO_RULE_ELEMENT& rule, const char* label) {
    return label + (' ' + range_text(rule)) + (rule.text3.empty() ? "" : " if " + rule.text3);
}

std::string command_text(const KIVO_RULE_ELEMENT& rule) {
    // The reader keeps no record of which kind of rule it was; the second text tells only that it
    // had an alternative or a minimum.
    return "on command " + rule.text3 + ": " + rule.text1 +
           (rule.text2.empty() ? "" : " (else or minimum: " + rule.text2 + ')');
}

std::string rule_text(const KIVO_RULE_ELEMENT& rule, KIVO_OBJ_TYPE type) {
    switch (rule.rule_kind) {
        case KIVO_RULE_WHEN_CMD:
            return command_text(rule);
        case KIVO_RULE_FORCED_RANGE:
        case KIVO_RULE_PORT_RANGE:
            return ranged_text(rule, "range");
        case KIVO_RULE_CONSTANT_RANGE:
            return ranged_text(rule, "constant range");
        case KIVO_RULE_FORCED_VALUE:
            return value_text(rule, kivo_is_port(type) ? "state" : "value");
        case KIVO_RULE_PORT_VALUE:
            return value_text(rule, "value");
        default:
            return "rule " + rule.text3;
    }
}

void add_object(Table& table, KIVO_OBJ_INFO& object, Cells cells) {
    table.add_row(cells(object));
    object.reset_rule_list();
    while (const KIVO_RULE_ELEMENT* rule = object.get_next_rule_element()) {
        table.add_note(join_lines(rule_text(*rule, object.obj_type)));
    }
}

void show_objects(Page& page, KIVO_INFO& info, const char* title, Filter filter, Cells cells,
                  Table table) {
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        if (filter(object->obj_type)) {
            add_object(table, *object, cells);
        }
    }
    if (!table.empty()) {
        page.heading(title);
        page.table(table, 2);
    }
}

std::vector<std::string> parameter_cells(const KIVO_OBJ_INFO& object) {
    return {object.name,
            kind_of(object.obj_type),
            object.current_value,
            shown_default(object),
            values_of(object),
            connection_name(object.cnx_type),
            object.is_lpm_hint() ? "yes" : ""};
}

std::vector<std::string> port_cells(const KIVO_OBJ_INFO& object) {
    return {object.name,
            kind_of(object.obj_type),
            object.current_value,
            width_of(object),
            kivo_get_usage_state_as_string(object.usage_state),
            timing_of(object),
            object.clock_period,
            object.default_value,
            object.initial_vec_state,
            probability_of(object),
            connection_name(object.cnx_type)};
}

std::vector<std::string> hidden_parameter_cells(const KIVO_OBJ_INFO& object) {
    return {object.name, object.current_value, object.value_array};
}

std::vector<std::string> macro_cells(const KIVO_OBJ_INFO& object) {
    return {object.name, object.arguments, join_lines(object.value_array)};
}

// A wizard map mixes parameters and ports.
std::vector<std::string> mapped_cells(const KIVO_OBJ_INFO& object) {
    const bool is_port = kivo_is_port(object.obj_type);
    return {object.name,
            kind_of(object.obj_type),
            object.port_width.empty() ? std::string() : width_of(object),
            is_port ? kivo_get_usage_state_as_string(object.usage_state) : std::string(),
            timing_of(object),
            shown_default(object),
            values_of(object),
            connection_name(object.cnx_type)};
}

void show_wizard_map(Page& page, KIVO_WIZARD_MAP& map) {
    page.sub_heading(map.name);
    Facts facts;
    facts.add("Wizard", map.wizard_name);
    facts.add("Module", map.module_name);
    facts.add("Maps constants", map.map_constants ? "yes" : "no");
    facts.add("Maps used ports", map.map_used_ports ? "yes" : "no");
    facts.add("Applies if", map.condition == nullptr ? std::string() : map.condition->text3);
    page.table(facts.table(), 4);

    Table objects({"Name", "Kind", "Width", "Usage", "Timing", "Default", "Values", "Connection"});
    map.obj_map.reset();
    while (KIVO_OBJ_INFO* object = map.get_next_kivo_obj()) {
        add_object(objects, *object, mapped_cells);
    }
    if (!objects.empty()) {
        page.table(objects, 6);
    }
}

}  // namespace

void show_parameters(Page& page, KIVO_INFO& info) {
    show_objects(page, info, "Parameters", kivo_is_parameter, parameter_cells,
                 Table({"Name", "Type", "Now", "Default", "Values", "Connection", "LPM hint"}));
}

void show_ports(Page& page, KIVO_INFO& info) {
    show_objects(page, info, "Ports", kivo_is_port, port_cells,
                 Table({"Name", "Type", "Now", "Width", "Usage", "Timing", "Period", "Default",
                        "Init", "High %", "Connection"}));
}

void show_hidden_parameters(Page& page, KIVO_INFO& info) {
    show_objects(page, info, "Hidden parameters", is_hidden_parameter, hidden_parameter_cells,
                 Table({"Name", "Now", "Value"}));
}

void show_macros(Page& page, KIVO_INFO& info) {
    show_objects(page, info, "Macros", is_macro, macro_cells,
                 Table({"Name", "Arguments", "Definition"}));
}

void show_wizard_maps(Page& page, KIVO_INFO& info) {
    info.reset_wizard_map_map();
    bool is_first = true;
    std::size_t left_out = 0;
    const std::size_t before = page.text().size();
    while (KIVO_WIZARD_MAP* map = info.get_next_wizard_map()) {
        if (page.text().size() - before > kMostMapBytes) {
            ++left_out;
            continue;
        }
        if (is_first) {
            page.heading("Wizard maps");
        }
        is_first = false;
        show_wizard_map(page, *map);
    }
    if (left_out > 0) {
        page.sub_heading(and_more(left_out, "wizard map"));
    }
}
