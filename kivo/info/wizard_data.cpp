#include <memory>

#include "kivo/info/internal/reader.h"
#include "kivo/objects/wizard_map.h"

namespace {

// The condition of a WIZARD_CONDITION: its text, or else its CONDITION attribute.
std::string condition_of(KIVO_XML_ELEMENT& element) {
    std::string condition(element.text());
    if (!condition.empty()) {
        return condition;
    }
    for (const auto& [name, value] : element.attributes()) {
        if (name == "CONDITION") {
            condition = value;
        }
    }
    return condition;
}

void delete_rule_elements(KIVO_OBJ_INFO& object) {
    object.reset_rule_list();
    while (KIVO_RULE_ELEMENT* element = object.get_next_rule_element()) {
        delete element;
    }
}

void mark_first(KIVO_OBJ_INFO* object, KIVO_MARK mark) {
    if (object != nullptr && object->mark.file == 0) {
        object->mark = mark;
    }
}

// Of a map that is known to nobody else; the copies of its objects share their rule elements.
struct DeleteGeneric {
    void operator()(KIVO_WIZARD_MAP* map) const {
        map->obj_map.reset();
        while (KIVO_OBJ_INFO* object = map->get_next_kivo_obj()) {
            delete object;
        }
        delete map;
    }
};

}  // namespace

void KIVO_INFO::process_wizard_map(KIVO_XML_ELEMENT& section) {
    std::unique_ptr<KIVO_WIZARD_MAP, DeleteGeneric> generic;
    const auto generic_map = [&generic]() -> KIVO_WIZARD_MAP& {
        if (generic == nullptr) {
            generic.reset(new KIVO_WIZARD_MAP("generic"));
        }
        return *generic;
    };
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        if (sub.tag_name() == "WIZARD_MAP") {
            process_one_wizard_map(sub);
        } else if (sub.tag_name() == "PARAMETER") {
            process_wizard_parameter(sub, generic_map());
        } else if (sub.tag_name() == "PORT") {
            process_wizard_port(sub, generic_map());
        }
    }
    if (generic != nullptr) {
        add_generic_wizard_map_to_all_maps(*generic);
    }
}

void KIVO_INFO::process_one_wizard_map(KIVO_XML_ELEMENT& element) {
    const std::string name(name_attribute(element));
    if (name.empty()) {
        post({KIVO_MESSAGE_ID::kWizardMapName, element.mark(),
              compose("Name atrribute is missing from ", element.tag_name(), " tag ")});
        return;
    }
    KIVO_WIZARD_MAP* map = add_wizard_map(name);
    if (map == nullptr) {
        return;
    }
    if (map->mark.file == 0) {
        map->mark = element.mark();
    }
    process_wizard_attributes(element, *map);
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        if (tag == "PARAMETER") {
            process_wizard_parameter(sub, *map);
        } else if (tag == "PORT") {
            process_wizard_port(sub, *map);
        } else if (tag == "WIZARD_CONDITION") {
            if (std::string condition = condition_of(sub); !condition.empty()) {
                retire(map->condition);
                map->condition = new KIVO_RULE_ELEMENT("", "", std::move(condition),
                                                       KIVO_RULE_FORCED_VALUE, sub.mark());
            }
        } else {
            post({KIVO_MESSAGE_ID::kWizardMapSubTag, sub.mark(),
                  compose("Unrecognized Sub tag ", tag, " for ", element.tag_name(), " tag")});
        }
    }
}

void KIVO_INFO::process_wizard_attributes(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "WIZARD_NAME") {
            map.wizard_name = value;
        } else if (name == "MODULE_NAME") {
            map.module_name = value;
        } else if (name == "MAP_CONSTANTS") {
            map.map_constants = value == "ON";
        } else if (name == "MAP_USED_PORTS") {
            map.map_used_ports = value == "ON";
        } else if (name != "NAME") {
            // Speaks of vectors for wizard maps too; hosts match on the text.
            post({KIVO_MESSAGE_ID::kWizardMapAttribute, element.mark(),
                  compose("Attribute ", name,
                          " is not a recognized attribute for vector stimulus (found in vector ",
                          map.name, " )")});
        }
    }
    if (map.module_name.empty()) {
        map.module_name = function_name;
    }
}

void KIVO_INFO::process_wizard_parameter(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map) {
    const Declared declared = read_parameter_head(element);
    if (!declared.name.empty()) {
        KIVO_OBJ_INFO* object = map.add_kivo_object(declared.name, declared.type);
        mark_first(object, element.mark());
        copy_messages(process_parameter_fields(object, element));
    }
}

void KIVO_INFO::process_wizard_port(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map) {
    const Declared declared = read_port_head(element);
    if (!declared.name.empty()) {
        KIVO_OBJ_INFO* object = map.add_kivo_object(declared.name, declared.type);
        mark_first(object, element.mark());
        copy_messages(process_port_fields(object, element));
    }
}

void KIVO_INFO::add_generic_wizard_map_to_all_maps(KIVO_WIZARD_MAP& generic) {
    generic.obj_map.reset();
    while (KIVO_OBJ_INFO* object = generic.get_next_kivo_obj()) {
        bool is_copied = false;
        reset_wizard_map_map();
        while (KIVO_WIZARD_MAP* map = get_next_wizard_map()) {
            if (map->get_kivo_obj(object->name) == nullptr) {
                map->add_kivo_object(object);
                is_copied = true;
            }
        }
        if (!is_copied) {
            delete_rule_elements(*object);
        }
    }
}
