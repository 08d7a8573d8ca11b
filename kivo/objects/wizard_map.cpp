#include "kivo/objects/wizard_map.h"

KIVO_WIZARD_MAP::KIVO_WIZARD_MAP(const std::string& map_name) : name(map_name) {}

KIVO_WIZARD_MAP::~KIVO_WIZARD_MAP() = default;

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::add_kivo_object(const std::string& object_name,
                                                KIVO_OBJ_TYPE type) {
    if (KIVO_OBJ* found = obj_map.look_up(object_name)) {
        return dynamic_cast<KIVO_OBJ_INFO*>(found);
    }
    if (type == KIVO_OBJ_UNKNOWN) {
        return nullptr;
    }
    auto* object = new KIVO_OBJ_INFO(object_name, type);
    obj_map.set_at(object_name, object);
    return object;
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::add_kivo_object(KIVO_OBJ_INFO* source) {
    auto* copy = new KIVO_OBJ_INFO(source);
    obj_map.set_at(copy->name, copy);
    return copy;
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::get_kivo_obj(const std::string& object_name) const {
    return dynamic_cast<KIVO_OBJ_INFO*>(obj_map.look_up(object_name));
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::get_next_kivo_obj() {
    std::string key;
    return dynamic_cast<KIVO_OBJ_INFO*>(obj_map.get_next_entry(key));
}
