#include <utility>

#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/message.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/text_obj.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr MessageText kTypeClash = {
    MessageId::kTypeClash,
    "Kivofunction Object {object} of different type {detail} already exists "};
constexpr MessageText kUnknownType = {
    MessageId::kUnknownType,
    "Kivofunction Object {object} is of unknown type "};
// clang-format on

KIVO_MESSAGE about(std::string_view object, const KIVO_DECLARING_ELEMENT& element,
                   const MessageText& says) {
    return {.says = says,
            .mark = element.mark,
            .element = element.tag,
            .attribute = element.attribute,
            .word = element.word,
            .object = object};
}

template <class Record>
Record* find_or_add(KIVO_OBJ_MAP& map, const std::string& name) {
    return dynamic_cast<Record*>(
        KIVO_ITEMS::find_or_add(map, name, [&name] { return std::make_unique<Record>(name); }));
}

template <class Container>
void delete_all(Container& container) {
    KIVO_ITEMS::for_each(container, [](const KIVO_OBJ* record) { delete record; });
}

// Of a record that several names or places lead to, leaves the first.
template <class Container>
void leave_each_once(Container& container) {
    KIVO_ITEMS::for_each(container, [](KIVO_OBJ*& record) {
        if (record != nullptr && !KIVO_OWNING::is_first_to_go(record)) {
            record = nullptr;
        }
    });
}

}  // namespace

KIVO_INFO::KIVO_INFO() : loaded_(std::make_unique<KIVO_LOADED>()) {
    loaded_->store = KIVO_OWNING::next_store();
}

// Takes no memory: there may be none.
KIVO_INFO::~KIVO_INFO() {
    // A host may have put back a help text that a load had replaced.
    KIVO_OWNING::Records help_texts = std::move(loaded_->replaced_help_texts);
    if (html_text != nullptr) {
        KIVO_OWNING::is_first_to_go(html_text);
    }
    for (KIVO_OBJ*& text : help_texts) {
        text = KIVO_OWNING::is_first_to_go(text) ? text : nullptr;
    }
    // What only the library put in stands there once.
    if (KIVO_ITEMS::shares(object_map) || KIVO_ITEMS::shares(fn_rule_list) ||
        KIVO_ITEMS::shares(message_list)) {
        leave_each_once(object_map);
        leave_each_once(fn_rule_list);
        leave_each_once(message_list);
    }
    delete html_text;
    delete_all(object_map);
    delete_all(fn_rule_list);
    delete_all(message_list);
    for (const KIVO_OBJ* text : help_texts) {
        delete text;
    }
}

KIVO_OBJ_INFO* KIVO_INFO::add_kivo_object(const std::string& name, KIVO_OBJ_TYPE type) {
    return add_declared_object(name, type, {});
}

KIVO_OBJ_INFO* KIVO_INFO::add_declared_object(const std::string& name, KIVO_OBJ_TYPE type,
                                              const KIVO_DECLARING_ELEMENT& element) {
    const auto make = [&]() -> std::unique_ptr<KIVO_OBJ_INFO> {
        if (type == KIVO_OBJ_UNKNOWN) {
            return nullptr;
        }
        auto object = std::make_unique<KIVO_OBJ_INFO>(name, type);
        object->mark = element.mark;
        return object;
    };
    auto* object = dynamic_cast<KIVO_OBJ_INFO*>(KIVO_ITEMS::find_or_add(object_map, name, make));
    if (object == nullptr && type != KIVO_OBJ_UNKNOWN) {
        // A host's record of another class stands there, and stays the host's.
        object = KIVO_ITEMS::put(object_map, name, make());
    }
    if (object == nullptr) {
        post(about(name, element, kUnknownType));
        return nullptr;
    }
    if (type == KIVO_OBJ_UNKNOWN || type == object->obj_type) {
        return object;
    }
    const std::string found_type = object->get_obj_type_as_string();
    KIVO_MESSAGE message = about(name, element, kTypeClash);
    message.detail = found_type;
    message.related = object->mark;
    post(message);
    return nullptr;
}

KIVO_OBJ_INFO* KIVO_INFO::get_kivo_obj(const std::string& name) const {
    return dynamic_cast<KIVO_OBJ_INFO*>(object_map.look_up(name));
}

void KIVO_INFO::reset_kivo_obj_map() {
    object_map.reset();
}

KIVO_OBJ_INFO* KIVO_INFO::get_next_kivo_obj() {
    return dynamic_cast<KIVO_OBJ_INFO*>(KIVO_ITEMS::next(object_map));
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
    return dynamic_cast<KIVO_VECTOR_OBJ*>(KIVO_ITEMS::next(vector_map));
}

KIVO_WIZARD_MAP* KIVO_INFO::add_wizard_map(const std::string& name) {
    return find_or_add<KIVO_WIZARD_MAP>(wizard_map_map, name);
}

void KIVO_INFO::reset_wizard_map_map() {
    wizard_map_map.reset();
}

KIVO_WIZARD_MAP* KIVO_INFO::get_next_wizard_map() {
    return dynamic_cast<KIVO_WIZARD_MAP*>(KIVO_ITEMS::next(wizard_map_map));
}
