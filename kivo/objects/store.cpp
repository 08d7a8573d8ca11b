#include <utility>

#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/message.h"
#include "kivo/objects/text_obj.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"

namespace {

// clang-format off
constexpr KIVO_MESSAGE_TEXT kTypeClash = {
    KIVO_MESSAGE_ID::kTypeClash,
    "Kivofunction Object {object} of different type {detail} already exists "};
constexpr KIVO_MESSAGE_TEXT kUnknownType = {
    KIVO_MESSAGE_ID::kUnknownType,
    "Kivofunction Object {object} is of unknown type "};
// clang-format on

template <class Record>
Record* find_or_add(KIVO_OBJ_MAP& map, const std::string& name) {
    if (KIVO_OBJ* found = map.look_up(name)) {
        return dynamic_cast<Record*>(found);
    }
    auto* added = new Record(name);
    map.set_at(name, added);
    return added;
}

void delete_all(KIVO_OBJ_LIST& list) {
    list.reset();
    while (KIVO_OBJ* object = list.get_next_value()) {
        delete object;
    }
}

}  // namespace

KIVO_INFO::KIVO_INFO() : loaded_(std::make_unique<KIVO_LOADED>()) {}

KIVO_INFO::~KIVO_INFO() {
    delete html_text;
    for (const KIVO_OBJ_MAP::Entry& entry : object_map.entries_) {
        delete entry.object;
    }
    delete_all(fn_rule_list);
    delete_all(message_list);
}

KIVO_OBJ_INFO* KIVO_INFO::add_kivo_object(const std::string& name, KIVO_OBJ_TYPE type) {
    return add_declared_object(name, type, {.object = name});
}

KIVO_OBJ_INFO* KIVO_INFO::add_declared_object(const std::string& name, KIVO_OBJ_TYPE type,
                                              KIVO_MESSAGE declared) {
    // An unknown type makes no object, so it must not make an entry either.
    KIVO_OBJ* known = type == KIVO_OBJ_UNKNOWN ? get_kivo_obj(name) : nullptr;
    KIVO_OBJ*& place = type == KIVO_OBJ_UNKNOWN ? known : object_map.place_of(name);
    if (auto* found = dynamic_cast<KIVO_OBJ_INFO*>(place)) {
        if (type == KIVO_OBJ_UNKNOWN || type == found->obj_type) {
            return found;
        }
        const std::string found_type = found->get_obj_type_as_string();
        declared.says = kTypeClash;
        declared.detail = found_type;
        declared.related = found->mark;
        post(declared);
        return nullptr;
    }
    if (type == KIVO_OBJ_UNKNOWN) {
        declared.says = kUnknownType;
        post(declared);
        return nullptr;
    }
    auto* object = new KIVO_OBJ_INFO(name, type);
    object->mark = declared.mark;
    place = object;
    return object;
}

KIVO_OBJ_INFO* KIVO_INFO::get_kivo_obj(const std::string& name) const {
    return dynamic_cast<KIVO_OBJ_INFO*>(object_map.look_up(name));
}

void KIVO_INFO::reset_kivo_obj_map() {
    object_map.reset();
}

KIVO_OBJ_INFO* KIVO_INFO::get_next_kivo_obj() {
    return dynamic_cast<KIVO_OBJ_INFO*>(object_map.get_next_object());
}

std::map<std::string, KIVO_OBJ_INFO*, LESS_C_STRING> KIVO_INFO::get_sorted_obj_map() {
    std::map<std::string, KIVO_OBJ_INFO*, LESS_C_STRING> sorted;
    reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = get_next_kivo_obj()) {
        sorted[object->name] = object;
    }
    return sorted;
}

void KIVO_INFO::reset_fn_rule_list() {
    fn_rule_list.reset();
}

KIVO_RULE_ELEMENT* KIVO_INFO::get_next_fn_rule_element() {
    return dynamic_cast<KIVO_RULE_ELEMENT*>(fn_rule_list.get_next_value());
}

void KIVO_INFO::reset_message_list() {
    message_list.reset();
}

KIVO_RULE_ELEMENT* KIVO_INFO::get_next_msg() {
    return dynamic_cast<KIVO_RULE_ELEMENT*>(message_list.get_next_value());
}

KIVO_VECTOR_OBJ* KIVO_INFO::add_vector_object(const std::string& name) {
    return find_or_add<KIVO_VECTOR_OBJ>(vector_map, name);
}

KIVO_VECTOR_OBJ* KIVO_INFO::get_vector_obj(const std::string& name) const {
    return dynamic_cast<KIVO_VECTOR_OBJ*>(vector_map.look_up(name));
}

void KIVO_INFO::reset_vector_map() {
    vector_map.reset();
}

KIVO_VECTOR_OBJ* KIVO_INFO::get_next_vector_obj() {
    return dynamic_cast<KIVO_VECTOR_OBJ*>(vector_map.get_next_object());
}

KIVO_WIZARD_MAP* KIVO_INFO::add_wizard_map(const std::string& name) {
    return find_or_add<KIVO_WIZARD_MAP>(wizard_map_map, name);
}

void KIVO_INFO::reset_wizard_map_map() {
    wizard_map_map.reset();
}

KIVO_WIZARD_MAP* KIVO_INFO::get_next_wizard_map() {
    return dynamic_cast<KIVO_WIZARD_MAP*>(wizard_map_map.get_next_object());
}

void KIVO_INFO::retire(KIVO_OBJ* replaced) {
    if (replaced != nullptr) {
        loaded_->retired.emplace_back(replaced);
    }
}
