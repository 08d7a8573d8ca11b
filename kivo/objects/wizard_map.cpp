#include "kivo/objects/wizard_map.h"

#include <memory>
#include <utility>

#include "kivo/toolkit/records/internal/items.h"

KIVO_WIZARD_MAP::KIVO_WIZARD_MAP(const std::string& map_name) : name(map_name) {}

KIVO_WIZARD_MAP::~KIVO_WIZARD_MAP() = default;

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::add_kivo_object(const std::string& object_name,
                                                KIVO_OBJ_TYPE type) {
    const auto make = [&] {
        return type == KIVO_OBJ_UNKNOWN ? nullptr
                                        : std::make_unique<KIVO_OBJ_INFO>(object_name, type);
    };
    return dynamic_cast<KIVO_OBJ_INFO*>(KIVO_ITEMS::find_or_add(obj_map, object_name, make));
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::add_kivo_object(KIVO_OBJ_INFO* source) {
    auto copy = std::make_unique<KIVO_OBJ_INFO>(source);
    const std::string& key = copy->name;
    return KIVO_ITEMS::put(obj_map, key, std::move(copy));
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::get_kivo_obj(const std::string& object_name) const {
    return dynamic_cast<KIVO_OBJ_INFO*>(obj_map.look_up(object_name));
}

KIVO_OBJ_INFO* KIVO_WIZARD_MAP::get_next_kivo_obj() {
    std::string key;
    return dynamic_cast<KIVO_OBJ_INFO*>(obj_map.get_next_entry(key));
}
