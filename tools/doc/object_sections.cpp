#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/description/default_value.h"
#include "tools/doc/block_symbol.h"
#include "tools/doc/cell.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/doc/value_rules.h"
#include "tools/text/cut_text.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"

namespace {

// Of a list of values: nobody looks at more.
constexpr std::size_t kMostItems = 500;
// Of the tables of wizard maps together: a short description can ask for any number of objects.
constexpr std::size_t kMostMapBytes = 16'000'000;

std::string default_cell(const PageNames& names, const KIVO_OBJ_INFO& object) {
    const std::optional<std::string> value = default_of(object);
    const bool is_text = object.obj_type == KIVO_OBJ_STRING_PARAMETER;
    return !value    ? text_cell(missing_default(object))
           : is_text ? code_cell(*value)
                     : expression_cell(names, *value);
}

// The values to choose from; none when there is no choice.
std::string value_list(const KIVO_OBJ_INFO& parameter) {
    const std::vector<std::string> values = list_items(parameter.value_array);
    if (values.size() < 2) {
        return {};
    }
    std::string markup;
    for (std::size_t i = 0; i < std::min(values.size(), kMostItems); ++i) {
        markup += (markup.empty() ? "" : ", ") + code_cell(values[i]);
    }
    return values.size() > kMostItems ? markup + more_markup(values.size() - kMostItems, "value")
                                      : markup;
}

std::string direction_of(const KIVO_OBJ_INFO& port) {
    switch (port.obj_type) {
        case KIVO_OBJ_INPUT_PORT:
            return "input";
        case KIVO_OBJ_OUTPUT_PORT:
            return "output";
        case KIVO_OBJ_BIDIR_PORT:
            return "bidirectional";
        default:
            return "buried";
    }
}

std::string width_of(const PageNames& names, const KIVO_OBJ_INFO& port) {
    const std::string width = port.port_width.empty() ? "1" : port.port_width;
    const std::string second =
        port.port_width2d.empty() ? "" : " \u00D7 " + expression_cell(names, port.port_width2d);
    return expression_cell(names, width) + second;
}

std::string usage_of(const KIVO_OBJ_INFO& port) {
    switch (port.usage_state) {
        case KIVO_USAGE_UNUSED:
            return "unused";
        case KIVO_USAGE_VARIABLE:
            return "variable";
        case KIVO_USAGE_CONSTANT:
            return "constant";
        default:
            return "used";
    }
}

std::string timing_of(const DocSource& source, const KIVO_OBJ_INFO& port) {
    if (port.is_clock()) {
        const std::string unit = text_cell(unit_of_times(join_lines(source.info.time_scale)));
        return port.clock_period.empty()
                   ? "clock"
                   : "clock, period <span class=\"time\">" +
                         expression_cell(source.names, port.clock_period) + unit + "</span>";
    }
    if (port.obj_type != KIVO_OBJ_INPUT_PORT) {
        return "";
    }
    return port.is_async() ? "asynchronous" : "synchronous";
}

// How often vectors drive an input high; other ports are not driven.
std::string probability_of(const KIVO_OBJ_INFO& port) {
    const bool is_driven = !port.is_clock() && (port.obj_type == KIVO_OBJ_INPUT_PORT ||
                                                port.obj_type == KIVO_OBJ_BIDIR_PORT);
    return is_driven ? fmt::format("{} %", port.high_probability) : "";
}

bool is_connected(const KIVO_PORT& port) {
    return port.state == KIVO_USAGE_USED || port.state == KIVO_USAGE_VARIABLE;
}

void write_map_facts(HtmlWriter& html, const PageNames& names, const KIVO_WIZARD_MAP& map) {
    FactList facts;
    facts.add("Map", code_cell(map.name));
    facts.add("Module", code_cell(map.module_name));
    facts.add("Applies", map.condition == nullptr
                             ? "always"
                             : "when " + expression_cell(names, join_lines(map.condition->text3)));
    facts.add("Constants", map.map_constants ? "mapped" : "not mapped");
    facts.add("Used ports", map.map_used_ports ? "mapped" : "not mapped");
    facts.write(html);
}

void write_map_objects(HtmlWriter& html, const PageNames& names, KIVO_WIZARD_MAP& map) {
    HtmlTable table("objects", "Objects of the wizard map " + map.name,
                    {"Name", "Kind", "Default", "Values", "Width", "Use", "Value rules"});
    map.obj_map.reset();
    while (KIVO_OBJ_INFO* object = map.get_next_kivo_obj()) {
        const bool is_port = kivo_is_port(object->obj_type);
        const bool is_integer = object->obj_type == KIVO_OBJ_INTEGER_PARAMETER;
        table.add_row({expression_cell(names, object->name),
                       is_port      ? direction_of(*object) + " port"
                       : is_integer ? "integer parameter"
                                    : "string parameter",
                       default_cell(names, *object), value_list(*object),
                       object->port_width.empty() ? "" : width_of(names, *object),
                       is_port ? usage_of(*object) : "", value_rule_list(names, *object)});
    }
    table.write(html);
}

// What takes effect in a configuration; empty without one.
std::string effective_value(const DocSource& source, const KIVO_OBJ_INFO& object) {
    const KIVO_SETTING* const setting =
        source.session == nullptr ? nullptr : source.session->find(object.name);
    return setting == nullptr ? "" : code_cell(setting->value.value_or("?"));
}

std::string effective_state(const DocSource& source, const KIVO_OBJ_INFO& object) {
    const KIVO_PORT* const port =
        source.session == nullptr ? nullptr : source.session->find_port(object.name);
    return port == nullptr       ? ""
           : port->tied          ? "tied to " + code_cell(*port->tied)
           : !port->state        ? "not known"
           : is_connected(*port) ? "connected"
                                 : "not connected";
}

std::string effective_width(const DocSource& source, const KIVO_OBJ_INFO& object) {
    const KIVO_PORT* const port =
        source.session == nullptr ? nullptr : source.session->find_port(object.name);
    return port == nullptr || !port->width ? "" : std::to_string(*port->width);
}

// The ports that the symbol shows, as they are in a configuration: those that are connected.
std::vector<std::unique_ptr<KIVO_OBJ_INFO>> connected_ports(const DocSource& source) {
    std::vector<std::unique_ptr<KIVO_OBJ_INFO>> ports;
    for (KIVO_OBJ_INFO* object : source.ports) {
        const KIVO_PORT* const port = source.session->find_port(object->name);
        if (port != nullptr && is_connected(*port)) {
            ports.push_back(std::make_unique<KIVO_OBJ_INFO>(object));
            ports.back()->usage_state = *port->state;
            ports.back()->port_width = effective_width(source, *object);
        }
    }
    return ports;
}

}  // namespace

void write_symbol(HtmlWriter& html, DocSource& source) {
    std::vector<std::unique_ptr<KIVO_OBJ_INFO>> configured;
    std::vector<KIVO_OBJ_INFO*> ports = source.ports;
    if (source.session != nullptr) {
        configured = connected_ports(source);
        ports.clear();
        for (const auto& port : configured) {
            ports.push_back(port.get());
        }
    }
    if (!has_symbol(ports)) {
        return;
    }
    const HtmlScope figure(html, "figure");
    {
        const HtmlScope frame(html, "div",
                              {{"class", "scroll picture"},
                               {"role", "region"},
                               {"aria-label", "Block symbol"},
                               {"tabindex", "0"}});
        write_block_symbol(html, source.function, ports);
    }
    html.element("figcaption",
                 std::string("Arrows show directions, thick lines buses with their widths, "
                             "triangles clocks; ") +
                     (source.session == nullptr ? "dashed ports are not used by default."
                                                : "ports that are not connected are left out."));
}

void write_parameters(HtmlWriter& html, DocSource& source) {
    HtmlTable table(
        "objects", "Parameters",
        {"Name", "Type", "Now", "Default", "Values", "Connection", "LPM hint", "Value rules"});
    for (KIVO_OBJ_INFO* parameter : source.parameters) {
        const bool is_integer = parameter->obj_type == KIVO_OBJ_INTEGER_PARAMETER;
        table.add_row(
            {expression_cell(source.names, parameter->name), is_integer ? "integer" : "string",
             effective_value(source, *parameter), default_cell(source.names, *parameter),
             value_list(*parameter), connection_name(parameter->cnx_type),
             parameter->is_lpm_hint() ? "yes" : "", value_rule_list(source.names, *parameter)},
            source.ids[parameter]);
    }
    table.write(html);
}

void write_ports(HtmlWriter& html, DocSource& source) {
    HtmlTable table("objects", "Ports",
                    {"Name", "Direction", "Now", "Bits", "Width", "Use", "Timing", "Default",
                     "Initial", "High", "Connection", "Value rules"});
    for (KIVO_OBJ_INFO* port : source.ports) {
        table.add_row({expression_cell(source.names, port->name), direction_of(*port),
                       effective_state(source, *port), effective_width(source, *port),
                       width_of(source.names, *port), usage_of(*port), timing_of(source, *port),
                       expression_cell(source.names, port->default_value),
                       code_cell(port->initial_vec_state), probability_of(*port),
                       connection_name(port->cnx_type), value_rule_list(source.names, *port)},
                      source.ids[port]);
    }
    table.write(html);
}

void write_hidden_parameters(HtmlWriter& html, DocSource& source) {
    HtmlTable table("objects", "Hidden parameters", {"Name", "Now", "Value", "Value rules"});
    for (KIVO_OBJ_INFO* parameter : source.hidden_parameters) {
        table.add_row(
            {expression_cell(source.names, parameter->name), effective_value(source, *parameter),
             expression_cell(source.names, parameter->default_value),
             value_rule_list(source.names, *parameter)},
            source.ids[parameter]);
    }
    table.write(html);
}

void write_macros(HtmlWriter& html, DocSource& source) {
    HtmlTable table("objects", "Macros", {"Name", "Arguments", "Definition"});
    for (const KIVO_OBJ_INFO* macro : source.macros) {
        table.add_row({expression_cell(source.names, macro->name), code_cell(macro->arguments),
                       expression_cell(source.names, join_lines(macro->value_array))},
                      source.ids[macro]);
    }
    table.write(html);
}

void write_wizard_maps(HtmlWriter& html, DocSource& source) {
    std::size_t left_out = 0;
    source.info.reset_wizard_map_map();
    while (KIVO_WIZARD_MAP* map = source.info.get_next_wizard_map()) {
        if (html.size() > kMostMapBytes) {
            ++left_out;
            continue;
        }
        const HtmlScope article(html, "article");
        html.element("h3", map->wizard_name.empty() ? map->name : map->wizard_name);
        write_map_facts(html, source.names, *map);
        write_map_objects(html, source.names, *map);
    }
    if (left_out > 0) {
        html.element("p", {{"class", "note"}}, and_more(left_out, "wizard map"));
    }
}
