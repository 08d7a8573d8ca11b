#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/description/default_value.h"
#include "tools/show/parts.h"
#include "tools/text/json_text.h"
#include "tools/text/words.h"

namespace {

using Json = nlohmann::ordered_json;

// Grows when a key is added, renamed or taken away.
constexpr int kVersion = 2;

const char* type_word(KIVO_OBJ_TYPE type) {
    switch (type) {
        case KIVO_OBJ_HIDDEN_PARAMETER:
            return "hidden_parameter";
        case KIVO_OBJ_INPUT_PORT:
            return "input_port";
        case KIVO_OBJ_OUTPUT_PORT:
            return "output_port";
        case KIVO_OBJ_BIDIR_PORT:
            return "bidir_port";
        case KIVO_OBJ_BURIED_PORT:
            return "buried_port";
        case KIVO_OBJ_INTEGER_PARAMETER:
            return "integer_parameter";
        case KIVO_OBJ_STRING_PARAMETER:
            return "string_parameter";
        case KIVO_OBJ_MACRO:
            return "macro";
        case KIVO_OBJ_UNKNOWN:
            break;
    }
    return "unknown";
}

const char* kind_word(std::int32_t kind) {
    switch (static_cast<KIVO_RULE_KIND>(kind)) {
        case KIVO_RULE_WHEN_CMD:
            return "when_cmd";
        case KIVO_RULE_FORCED_RANGE:
            return "forced_range";
        case KIVO_RULE_FORCED_VALUE:
            return "forced_value";
        case KIVO_RULE_CONSTANT_RANGE:
            return "constant_range";
        case KIVO_RULE_REQUIRED:
            return "required";
        case KIVO_RULE_NOT_REQUIRED:
            return "not_required";
        case KIVO_RULE_PORT_VALUE:
            return "port_value";
        case KIVO_RULE_PORT_RANGE:
            return "port_range";
        case KIVO_RULE_CRITICAL_WARNING:
            return "critical_warning";
        case KIVO_RULE_WARNING:
            return "warning";
        case KIVO_RULE_ERROR:
            return "error";
        case KIVO_RULE_INFO:
            return "info";
        case KIVO_RULE_NO_MESSAGE_TYPE:
            break;
    }
    return "no_message_type";
}

Json text_or_null(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

Json place_json(const KIVO_PLACE& place) {
    Json json;
    json["file"] = place.file;
    json["line"] = place.line;
    json["column"] = place.column;
    return json;
}

// Writes the outermost object key by key, and its lists entry by entry: the tree of a whole store
// would take many times the memory of its text.
class DocumentWriter {
public:
    void add(const char* key, const Json& value) {
        add_key(key);
        add_value(value, 1);
    }

    void open_list(const char* key) {
        add_key(key);
        out_ += '[';
        is_first_entry_ = true;
    }

    void add_entry(const Json& value) {
        out_ += is_first_entry_ ? "\n    " : ",\n    ";
        is_first_entry_ = false;
        add_value(value, 2);
    }

    void close_list() { out_ += is_first_entry_ ? "]" : "\n  ]"; }

    std::string finish() { return std::move(out_) + "\n}\n"; }

private:
    static constexpr int kIndent = 2;

    void add_key(const char* key) {
        out_ += out_.empty() ? "{\n  \"" : ",\n  \"";
        out_ += key;
        out_ += "\": ";
    }

    void add_value(const Json& value, std::size_t depth) {
        for (const char letter : json_text(value)) {
            out_ += letter;
            if (letter == '\n') {
                out_.append(kIndent * depth, ' ');
            }
        }
    }

    std::string out_;
    bool is_first_entry_ = true;
};

class StoreWriter {
public:
    explicit StoreWriter(KIVO_INFO& info) : info_(info) {}

    std::string write(const std::string& path) {
        out_.add("version", kVersion);
        out_.add("file", path);
        out_.add("function_name", info_.function_name);
        out_.add("vhdl_library", info_.vhdl_library);
        out_.add("simulation_library", info_.get_simulation_library());
        out_.add("time_scale", info_.time_scale);
        out_.add("time_delta", info_.time_delta);
        out_.add("start_time", info_.start_time);
        write_objects();
        write_rules("fn_rule_list", info_.fn_rule_list);
        write_rules("message_list", info_.message_list);
        write_vectors();
        write_wizard_maps();
        out_.add("html_text", help_text());
        write_errors();
        return out_.finish();
    }

private:
    Json rule(const KIVO_RULE_ELEMENT& element) const {
        Json json;
        json["rule_kind"] = kind_word(element.rule_kind);
        json["text1"] = element.text1;
        json["text2"] = element.text2;
        json["text3"] = element.text3;
        json["place"] = place_json(info_.get_place(element.mark));
        return json;
    }

    Json rule_or_null(const KIVO_RULE_ELEMENT* element) const {
        return element == nullptr ? Json() : rule(*element);
    }

    Json rules(KIVO_OBJ_LIST& list) const {
        Json json = Json::array();
        list.reset();
        while (const KIVO_OBJ* entry = list.get_next_value()) {
            if (const auto* element = dynamic_cast<const KIVO_RULE_ELEMENT*>(entry)) {
                json.push_back(rule(*element));
            }
        }
        return json;
    }

    Json object(KIVO_OBJ_INFO& object) const {
        Json json;
        json["name"] = object.name;
        json["obj_type"] = type_word(object.obj_type);
        json["default_value"] = object.default_value;
        json["value_array"] = object.value_array;
        json["default_index"] = object.default_index;
        json["default"] = text_or_null(default_of(object));
        json["is_lpm_hint"] = object.is_lpm_hint();
        json["is_async"] = object.is_async();
        json["is_clock"] = object.is_clock();
        json["initial_vec_state"] = object.initial_vec_state;
        json["clock_period"] = object.clock_period;
        json["port_width"] = object.port_width;
        json["port_width2d"] = object.port_width2d;
        json["high_probability"] = object.high_probability;
        json["usage_state"] = kivo_get_usage_state_as_string(object.usage_state);
        json["dependency_position"] = object.dependency_position;
        json["current_value"] = object.current_value;
        json["arguments"] = object.arguments;
        json["cnx_type"] = object.cnx_type;
        json["rule_list"] = rules(object.rule_list);
        json["place"] = place_json(info_.get_place(object.mark));
        return json;
    }

    Json objects(KIVO_OBJ_MAP& map) const {
        Json json = Json::array();
        std::string name;
        map.reset();
        while (KIVO_OBJ* entry = map.get_next_entry(name)) {
            if (auto* info = dynamic_cast<KIVO_OBJ_INFO*>(entry)) {
                json.push_back(object(*info));
            }
        }
        return json;
    }

    // The pieces of a conditional text as a flat list: texts nest deeper than readers of JSON go.
    static Json pieces(KIVO_CONDITIONAL_TEXT* text) {
        if (text == nullptr) {
            return {};
        }
        struct Open {
            KIVO_CONDITIONAL_TEXT* sequence;
            std::int64_t parent;
            const char* branch;
        };
        Json json = Json::array();
        std::vector<Open> open;
        const auto enter = [&open](KIVO_CONDITIONAL_TEXT* sequence, std::int64_t parent,
                                   const char* branch) {
            if (sequence != nullptr) {
                sequence->text_elements.reset();
                open.push_back({sequence, parent, branch});
            }
        };
        enter(text, -1, "none");
        while (!open.empty()) {
            const Open in = open.back();
            const KIVO_CONDITIONAL_TEXT* const next = in.sequence->get_next_text_element();
            if (next == nullptr) {
                open.pop_back();
                continue;
            }
            const auto index = static_cast<std::int64_t>(json.size());
            json.push_back(piece(*next, in.parent, in.branch));
            // The one entered last comes first.
            enter(next->else_sub, index, "else");
            enter(next->then_sub, index, "then");
        }
        return json;
    }

    static Json piece(const KIVO_CONDITIONAL_TEXT& text, std::int64_t parent, const char* branch) {
        Json json;
        json["parent"] = parent;
        json["branch"] = branch;
        json["condition"] = text.condition;
        json["then_text"] = text.then_text;
        json["else_text"] = text.else_text;
        json["then_sub"] = text.then_sub != nullptr;
        json["else_sub"] = text.else_sub != nullptr;
        return json;
    }

    static Json display_formats(KIVO_OBJ_MAP& map) {
        Json formats = Json::array();
        std::string port;
        map.reset();
        while (const KIVO_OBJ* entry = map.get_next_entry(port)) {
            if (const auto* format = dynamic_cast<const KIVO_VECTOR_DISPLAY_OBJ*>(entry)) {
                Json json;
                json["port_name"] = format->port_name;
                json["radix"] = radix_id(format->radix);
                json["description"] = format->description;
                formats.push_back(std::move(json));
            }
        }
        return formats;
    }

    Json vector(KIVO_VECTOR_OBJ& vector) const {
        Json json;
        json["name"] = vector.name;
        json["max_time"] = vector.max_time;
        json["time_step"] = vector.time_step;
        json["index"] = vector.index;
        json["truncate_low"] = vector.truncate_low;
        json["caption"] = vector.caption;
        json["wave_condition"] = rule_or_null(vector.wave_condition);
        json["description"] = pieces(vector.description);
        json["stimulus_list"] = rules(vector.stimulus_list);
        json["display_format_map"] = display_formats(vector.display_format_map);
        json["place"] = place_json(info_.get_place(vector.mark));
        return json;
    }

    Json wizard_map(KIVO_WIZARD_MAP& map) const {
        Json json;
        json["name"] = map.name;
        json["wizard_name"] = map.wizard_name;
        json["module_name"] = map.module_name;
        json["map_constants"] = map.map_constants;
        json["map_used_ports"] = map.map_used_ports;
        json["condition"] = rule_or_null(map.condition);
        json["obj_map"] = objects(map.obj_map);
        json["place"] = place_json(info_.get_place(map.mark));
        return json;
    }

    Json help_text() const {
        const KIVO_TEXT_OBJ* const help = info_.html_text;
        if (help == nullptr) {
            return {};
        }
        Json json;
        json["title"] = help->title;
        json["header"] = help->header;
        json["intro"] = pieces(help->intro);
        json["end"] = pieces(help->end);
        return json;
    }

    void write_objects() {
        out_.open_list("object_map");
        info_.reset_kivo_obj_map();
        while (KIVO_OBJ_INFO* entry = info_.get_next_kivo_obj()) {
            out_.add_entry(object(*entry));
        }
        out_.close_list();
    }

    void write_rules(const char* key, KIVO_OBJ_LIST& list) {
        out_.open_list(key);
        list.reset();
        while (const KIVO_OBJ* entry = list.get_next_value()) {
            if (const auto* element = dynamic_cast<const KIVO_RULE_ELEMENT*>(entry)) {
                out_.add_entry(rule(*element));
            }
        }
        out_.close_list();
    }

    void write_vectors() {
        out_.open_list("vector_map");
        info_.reset_vector_map();
        while (KIVO_VECTOR_OBJ* entry = info_.get_next_vector_obj()) {
            out_.add_entry(vector(*entry));
        }
        out_.close_list();
    }

    void write_wizard_maps() {
        out_.open_list("wizard_map_map");
        info_.reset_wizard_map_map();
        while (KIVO_WIZARD_MAP* map = info_.get_next_wizard_map()) {
            out_.add_entry(wizard_map(*map));
        }
        out_.close_list();
    }

    void write_errors() {
        out_.open_list("error_list");
        for (std::size_t index = 0; index < info_.error_list.size(); ++index) {
            Json json;
            json["id"] = info_.get_error_id(index);
            json["text"] = info_.error_list[index];
            json["place"] = place_json(info_.get_error_place(index));
            out_.add_entry(json);
        }
        out_.close_list();
    }

    KIVO_INFO& info_;
    DocumentWriter out_;
};

}  // namespace

std::string show_json(KIVO_INFO& info, const std::string& path) {
    return StoreWriter(info).write(path);
}
