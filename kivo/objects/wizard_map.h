#pragma once

#include <string>
#include <vector>

#include "kivo/export.h"
#include "kivo/objects/obj_info.h"
#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/records/note.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_map.h"

// How the parameters and ports of one wizard are mapped onto a module. For one thread at a time.
//
// Those of a store outlive it. They go by KIVO_INFO::delete_detached_objects, with all that they
// hold and with the conditions that loads replaced in them; or a host keeps them and deletes each
// one, its objects, their rule elements (which objects of several maps may share) and its condition
// itself. A later WIZARD_CONDITION replaces the condition: the earlier one is not deleted then; one
// that a host put there is the host's again.
class KIVO_API KIVO_WIZARD_MAP : public KIVO_OBJ {
public:
    explicit KIVO_WIZARD_MAP(const std::string& map_name);
    KIVO_WIZARD_MAP(const KIVO_WIZARD_MAP&) = delete;
    KIVO_WIZARD_MAP& operator=(const KIVO_WIZARD_MAP&) = delete;
    // Leaves the objects of obj_map, the condition and what a load replaced alone.
    ~KIVO_WIZARD_MAP() override;

    // The object of that name, whatever its type; a new one of that type when there is none; null
    // when there is none and the type is KIVO_OBJ_UNKNOWN, or when a record of another class stands
    // there. A new one stays in obj_map and is deleted as this map is told above; the cursor stays.
    // When memory is short nothing is added.
    KIVO_OBJ_INFO* add_kivo_object(const std::string& object_name, KIVO_OBJ_TYPE type);
    // Stores a copy of "source" under its name, without looking first, and returns the copy, which
    // shares the rule elements. "source" stays the caller's, and an object that stood there is from
    // now on. Leaves the rule cursor of "source" at the end.
    // REQUIRES: source != nullptr
    KIVO_OBJ_INFO* add_kivo_object(KIVO_OBJ_INFO* source);
    // The object of that name, or null.
    KIVO_OBJ_INFO* get_kivo_obj(const std::string& object_name) const;
    // The object under the cursor of obj_map, which advances; null at the end, and for a record of
    // another class.
    KIVO_OBJ_INFO* get_next_kivo_obj();
    std::string get_module_name() const { return module_name; }

    std::string name;
    std::string wizard_name;
    std::string module_name;
    KIVO_OBJ_MAP obj_map;  // of KIVO_OBJ_INFO by name, not deleted by this map
    bool map_constants = false;
    bool map_used_ports = false;
    KIVO_RULE_ELEMENT* condition = nullptr;  // not deleted by this map; null: none
    KIVO_MARK mark;                          // the first XML element that declared it

private:
    friend class KIVO_OWNING;

    // Made by loads and replaced: gone from where they stood, and not yet deleted.
    std::vector<KIVO_OBJ*> replaced_;
    KIVO_RECORD_NOTE note_;
};
