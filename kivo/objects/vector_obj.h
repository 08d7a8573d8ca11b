#pragma once

#include <cstdint>
#include <string>

#include "kivo/export.h"
#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/radix/radix.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_list.h"
#include "kivo/toolkit/records/obj_map.h"

class KIVO_CONDITIONAL_TEXT;

// How the values of one port are shown.
class KIVO_API KIVO_VECTOR_DISPLAY_OBJ : public KIVO_OBJ {
public:
    KIVO_VECTOR_DISPLAY_OBJ();
    ~KIVO_VECTOR_DISPLAY_OBJ() override;

    std::string port_name;
    DRO_MEMORY_RADIXES radix = DRO_RADIX_HEX;
    std::string description;  // of a fixed-point format, empty for the other radixes
};

// A waveform or custom vector: its timing, texts, display formats and stimulus commands.
class KIVO_API KIVO_VECTOR_OBJ : public KIVO_OBJ {
public:
    explicit KIVO_VECTOR_OBJ(const std::string& vector_name);
    KIVO_VECTOR_OBJ(const KIVO_VECTOR_OBJ&) = delete;
    KIVO_VECTOR_OBJ& operator=(const KIVO_VECTOR_OBJ&) = delete;
    // Deletes wave_condition and description; leaves stimulus entries and display formats alone.
    ~KIVO_VECTOR_OBJ() override;

    // Appends an entry, which stays the caller's, at the tail of the stimulus list.
    void add_vector_stimulus(KIVO_RULE_ELEMENT* entry);
    // The entry under the cursor of stimulus_list, which advances; null at the end.
    KIVO_RULE_ELEMENT* get_next_vector_stimulus();

    // Stores a new format for the port and deletes an earlier one of the port.
    void add_vector_display_format(const std::string& port, DRO_MEMORY_RADIXES radix,
                                   const std::string& format_description);
    // The radix of the port's format, DRO_RADIX_HEX without one.
    DRO_MEMORY_RADIXES get_vector_display_format(const std::string& port) const;
    // The fixed-point description of the port's format, empty without one.
    std::string get_vector_display_format_description(const std::string& port) const;
    // Does nothing for a port without a format.
    void set_vector_display_format_description(const std::string& port,
                                               const std::string& format_description);
    // "value", written in "value_radix", in the radix of the port's format; unchanged when it
    // cannot be converted or need not be.
    std::string format_display_string(const std::string& port, const std::string& value,
                                      DRO_MEMORY_RADIXES value_radix) const;

    std::string name;
    std::int32_t max_time = -1;  // in the description's time unit; -1: not given
    std::int32_t time_step = 1;  // in the description's time unit
    std::int32_t index = -1;     // -1: not given
    bool truncate_low = false;
    std::string caption;
    KIVO_RULE_ELEMENT* wave_condition = nullptr;   // null: none
    KIVO_CONDITIONAL_TEXT* description = nullptr;  // null: none
    KIVO_OBJ_LIST stimulus_list;                   // of KIVO_RULE_ELEMENT
    KIVO_OBJ_MAP display_format_map;               // of KIVO_VECTOR_DISPLAY_OBJ
    KIVO_MARK mark;  // the first XML element that declared it; see KIVO_INFO::get_place
};
