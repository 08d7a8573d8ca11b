#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kivo/export.h"
#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/radix/radix.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_list.h"
#include "kivo/toolkit/records/obj_map.h"

class KIVO_CONDITIONAL_TEXT;

// How the values of one port are shown. A plain record: hosts read and write its fields.
//
// Those of a vector's display_format_map outlive the vector; KIVO_INFO::delete_detached_objects
// deletes them with it. A host may put one of its own there: from then on it goes with the others,
// unless a later format of the port replaces it, which gives it back to the host.
class KIVO_API KIVO_VECTOR_DISPLAY_OBJ : public KIVO_OBJ {
public:
    KIVO_VECTOR_DISPLAY_OBJ();
    ~KIVO_VECTOR_DISPLAY_OBJ() override;

    std::string port_name;
    DRO_MEMORY_RADIXES radix = DRO_RADIX_HEX;
    std::string description;  // of a fixed-point format, empty for the other radixes

private:
    friend class KIVO_OWNING;

    KIVO_RECORD_NOTE note_;
};

// A waveform or custom vector: its timing, texts, display formats and stimulus commands. For one
// thread at a time.
//
// Those of a store outlive it. They go by KIVO_INFO::delete_detached_objects, with all that they
// hold and with what loads replaced in them; or a host keeps them and deletes each one, its
// stimulus entries and its display formats itself. Reading a vector again replaces description and
// wave_condition: the earlier piece is not deleted then, so that a host may go on reading it; one
// that a host put there is the host's again.
class KIVO_API KIVO_VECTOR_OBJ : public KIVO_OBJ {
public:
    explicit KIVO_VECTOR_OBJ(const std::string& vector_name);
    KIVO_VECTOR_OBJ(const KIVO_VECTOR_OBJ&) = delete;
    KIVO_VECTOR_OBJ& operator=(const KIVO_VECTOR_OBJ&) = delete;
    // Deletes wave_condition and description; leaves stimulus entries, display formats and what a
    // load replaced alone.
    ~KIVO_VECTOR_OBJ() override;

    // Appends an entry at the tail of the stimulus list. It is the caller's until
    // delete_detached_objects of a store that holds the vector deletes it; this vector never does.
    // The cursor stays.
    void add_vector_stimulus(KIVO_RULE_ELEMENT* entry);
    // The entry under the cursor of stimulus_list, which advances; null at the end, and for a
    // record of another class.
    KIVO_RULE_ELEMENT* get_next_vector_stimulus();

    // Stores a new format for the port, which is deleted as told above, in place of an earlier one.
    // Of that, one that an earlier call made is deleted; one that a load made can be read until
    // delete_detached_objects; one that a host put into display_format_map is the host's again. The
    // arguments may be its own strings. When memory is short the earlier format stays in force.
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
    KIVO_RULE_ELEMENT* wave_condition = nullptr;   // this vector's; null: none
    KIVO_CONDITIONAL_TEXT* description = nullptr;  // a sequence, this vector's; null: none
    KIVO_OBJ_LIST stimulus_list;                   // of KIVO_RULE_ELEMENT, not deleted by it
    KIVO_OBJ_MAP display_format_map;  // of KIVO_VECTOR_DISPLAY_OBJ by port, not deleted by it
    KIVO_MARK mark;  // the first XML element that declared it; see KIVO_INFO::get_place

private:
    friend class KIVO_OWNING;

    // Made by loads and replaced: gone from where they stood, and not yet deleted.
    std::vector<KIVO_OBJ*> replaced_;
    KIVO_RECORD_NOTE note_;
};
