#pragma once

#include <cstdint>
#include <string>

#include "kivo/export.h"
#include "kivo/objects/rule_element.h"
#include "kivo/objects/usage_state.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_list.h"

enum KIVO_OBJ_TYPE : std::int32_t {
    KIVO_OBJ_HIDDEN_PARAMETER = 0,
    KIVO_OBJ_INPUT_PORT = 1,
    KIVO_OBJ_OUTPUT_PORT = 2,
    KIVO_OBJ_BIDIR_PORT = 3,
    KIVO_OBJ_BURIED_PORT = 4,
    KIVO_OBJ_INTEGER_PARAMETER = 5,
    KIVO_OBJ_STRING_PARAMETER = 6,
    KIVO_OBJ_MACRO = 7,
    KIVO_OBJ_UNKNOWN = 8,  // also any type, when an object is looked up for adding
};

// One parameter, port, hidden parameter or macro. The section readers fill the fields; hosts read
// them directly or through the accessors, which return strings by value. For one thread at a time.
//
// An object of a store's object_map goes with the store. One of a wizard map outlives map and
// store; KIVO_INFO::delete_detached_objects deletes it. The rule elements of either are nobody's
// while they hang on objects alone: what that call deletes.
class KIVO_API KIVO_OBJ_INFO : public KIVO_OBJ {
public:
    KIVO_OBJ_INFO(const std::string& object_name, KIVO_OBJ_TYPE type);
    // Copies every field of "source", but takes the flags as its accessors report them, shares its
    // rule elements and leaves its rule cursor at the end.
    // REQUIRES: source != nullptr
    explicit KIVO_OBJ_INFO(KIVO_OBJ_INFO* source);
    KIVO_OBJ_INFO(const KIVO_OBJ_INFO&) = delete;
    KIVO_OBJ_INFO& operator=(const KIVO_OBJ_INFO&) = delete;
    // Leaves the rule elements alone: copies share them.
    ~KIVO_OBJ_INFO() override;

    // Makes "text" the value array, and with index -1 the default value too (the default index then
    // stays); with another index that index becomes the default and the default value empty.
    void add_value(const std::string& text, std::int32_t index);

    // Appends an element at the tail of the rule list. It is the caller's until
    // delete_detached_objects of a store that holds the object deletes it, unless it stands in the
    // store's own lists too; this object never deletes it. The cursor stays.
    void add_rule(KIVO_RULE_ELEMENT* element);
    // Puts the rule cursor on the first element.
    void reset_rule_list();
    // The element under the rule cursor, which advances; null at the end, and for a record of
    // another class.
    KIVO_RULE_ELEMENT* get_next_rule_element();

    std::string get_name() const { return name; }
    KIVO_OBJ_TYPE get_obj_type() const { return obj_type; }
    // "Input port", "Integer parameter", ...; empty for buried ports, macros and unknown types.
    std::string get_obj_type_as_string() const;
    std::string get_default_value() const { return default_value; }
    std::string get_value_array() const { return value_array; }
    std::int32_t get_default_index() const { return default_index; }
    // Only parameters are LPM hints; only input ports are asynchronous or clocks.
    bool is_lpm_hint() const;
    bool is_async() const;
    bool is_clock() const;
    std::string get_initial_vec_state() const { return initial_vec_state; }
    std::string get_clock_period() const { return clock_period; }
    std::string get_port_width() const { return port_width; }
    std::string get_port_width2d() const { return port_width2d; }
    std::int32_t get_high_probability() const { return high_probability; }
    KIVO_OBJ_USAGE_STATE get_usage_state() const { return usage_state; }
    std::int32_t get_dependency_position() const { return dependency_position; }
    std::string get_current_value() const { return current_value; }
    std::string get_arguments() const { return arguments; }
    std::int32_t get_cnx_type() const { return cnx_type; }

    KIVO_OBJ_LIST rule_list;  // of KIVO_RULE_ELEMENT, not deleted by this object
    std::string name;
    KIVO_OBJ_TYPE obj_type;
    std::string default_value;
    std::string value_array;
    std::int32_t default_index = -1;  // -1: the default is given as text
    bool lpm_hint = false;
    bool async = true;
    bool clock = false;
    std::string initial_vec_state = "0";
    std::string clock_period;
    std::string port_width;
    std::string port_width2d;
    std::int32_t high_probability = 50;  // percent
    KIVO_OBJ_USAGE_STATE usage_state = KIVO_USAGE_USED;
    std::int32_t dependency_position = -1;  // -1: none
    std::string current_value;
    std::string arguments;
    std::int32_t cnx_type = 3;  // 0 private, 1 constant, 2 used port, 3 not given
    KIVO_MARK mark;             // the XML element that declared it; see KIVO_INFO::get_place

private:
    friend class KIVO_OWNING;

    KIVO_RECORD_NOTE note_;
};

// Whether a type is one of the four port types, or one of the two parameter types.
KIVO_API bool kivo_is_port(KIVO_OBJ_TYPE type);
KIVO_API bool kivo_is_parameter(KIVO_OBJ_TYPE type);
