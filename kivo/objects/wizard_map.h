#pragma once

#include <string>

#include "kivo/export.h"
#include "kivo/objects/obj_info.h"
#include "kivo/objects/rule_element.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/records/obj_map.h"

// How the parameters and ports of one wizard are mapped onto a module.
class KIVO_API KIVO_WIZARD_MAP : public KIVO_OBJ {
public:
    explicit KIVO_WIZARD_MAP(const std::string& map_name);
    KIVO_WIZARD_MAP(const KIVO_WIZARD_MAP&) = delete;
    KIVO_WIZARD_MAP& operator=(const KIVO_WIZARD_MAP&) = delete;
    // Leaves the objects of obj_map and the condition alone.
    ~KIVO_WIZARD_MAP() override;

    // The object of that name, whatever its type; a new one of that type when there is none; null
    // when there is none and the type is KIVO_OBJ_UNKNOWN.
    KIVO_OBJ_INFO* add_kivo_object(const std::string& object_name, KIVO_OBJ_TYPE type);
    // Stores a copy of "source" under its name, without looking first, and returns the copy.
    // REQUIRES: source != nullptr
    KIVO_OBJ_INFO* add_kivo_object(KIVO_OBJ_INFO* source);
    // The object of that name, or null.
    KIVO_OBJ_INFO* get_kivo_obj(const std::string& object_name) const;
    // The object under the cursor of obj_map, which advances; null at the end.
    KIVO_OBJ_INFO* get_next_kivo_obj();
    std::string get_module_name() const { return module_name; }

    std::string name;
    std::string wizard_name;
    std::string module_name;
    KIVO_OBJ_MAP obj_map;  // of KIVO_OBJ_INFO
    bool map_constants = false;
    bool map_used_ports = false;
    KIVO_RULE_ELEMENT* condition = nullptr;  // null: none
    KIVO_MARK mark;                          // the first XML element that declared it
};
