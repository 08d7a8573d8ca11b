#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kivo/info/internal/attribute_table.h"
#include "kivo/info/internal/declaration.h"
#include "kivo/info/internal/reader.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
// Speaks of vectors for wizard maps too; hosts match on the text.
constexpr MessageText kUnknownAttribute = {
    MessageId::kWizardMapAttribute,
    "Attribute {word} is not a recognized attribute for vector stimulus (found in vector {object} )"};
constexpr MessageText kUnknownSubTag = {
    MessageId::kWizardMapSubTag,
    "Unrecognized Sub tag {word} for {element} tag"};
constexpr MessageText kTooManyObjects = {
    MessageId::kWizardMapObjects,
    "Wizard map {object} receives too many objects"};

constexpr AttributeRow<KIVO_WIZARD_MAP> kAttributes[] = {
    { "MAP_CONSTANTS",  set_by_on<&KIVO_WIZARD_MAP::map_constants>  },
    { "MAP_USED_PORTS", set_by_on<&KIVO_WIZARD_MAP::map_used_ports> },
    { "MODULE_NAME",    set_text<&KIVO_WIZARD_MAP::module_name>     },
    { "NAME",           nullptr                                     },
    { "WIZARD_NAME",    set_text<&KIVO_WIZARD_MAP::wizard_name>     },
};

enum class SubTag { kParameter, kPort, kWizardCondition };

struct SubTagRow {
    std::string_view word;
    SubTag tag;
};

constexpr SubTagRow kSubTags[] = {
    { "PARAMETER",        SubTag::kParameter       },
    { "PORT",             SubTag::kPort            },
    { "WIZARD_CONDITION", SubTag::kWizardCondition },
};
// clang-format on

// The copies of generic objects that all maps receive in one load: every map receives every object,
// so that a short text can ask for more than any memory holds.
constexpr std::size_t kMostCopies = 1000000;

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

void mark_first(KIVO_OBJ_INFO* object, KIVO_MARK mark) {
    if (object != nullptr && object->mark.file == 0) {
        object->mark = mark;
    }
}

// Of a map that is known to nobody else, with its objects and the rule elements that these
// still have.
struct DeleteGeneric {
    void operator()(KIVO_WIZARD_MAP* map) const {
        KIVO_ITEMS::for_each(map->obj_map, [](KIVO_OBJ* record) {
            const std::unique_ptr<KIVO_OBJ_INFO> object(static_cast<KIVO_OBJ_INFO*>(record));
            KIVO_ITEMS::for_each(object->rule_list, [](const KIVO_OBJ* rule) { delete rule; });
        });
        delete map;
    }
};

// How many of the generic objects a map has an object for already.
std::size_t count_known(const KIVO_WIZARD_MAP& generic, const KIVO_WIZARD_MAP& map) {
    const bool has_fewer = KIVO_ITEMS::size(map.obj_map) < KIVO_ITEMS::size(generic.obj_map);
    const KIVO_WIZARD_MAP& fewer = has_fewer ? map : generic;
    const KIVO_WIZARD_MAP& others = has_fewer ? generic : map;
    std::size_t count = 0;
    KIVO_ITEMS::for_each_key(fewer.obj_map, [&](const std::string& name) {
        const bool is_in_both =
            fewer.get_kivo_obj(name) != nullptr && others.get_kivo_obj(name) != nullptr;
        count += is_in_both ? 1 : 0;
    });
    return count;
}

// Hands the rule elements of a generic object over to its copies, which share them.
class RuleHandover {
public:
    explicit RuleHandover(KIVO_OBJ_INFO& object) : object_(object) {}
    RuleHandover(const RuleHandover&) = delete;
    RuleHandover& operator=(const RuleHandover&) = delete;
    ~RuleHandover() {
        if (has_copies_) {
            KIVO_ITEMS::clear(object_.rule_list);
        }
    }

    void copy_to(KIVO_WIZARD_MAP& map) {
        map.add_kivo_object(&object_);
        has_copies_ = true;
    }

private:
    KIVO_OBJ_INFO& object_;
    bool has_copies_ = false;
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
        add_generic_wizard_map_to_all_maps(*generic, section);
    }
}

void KIVO_INFO::process_one_wizard_map(KIVO_XML_ELEMENT& element) {
    const std::string name(name_attribute(element));
    if (name.empty()) {
        post(missing_name(MessageId::kWizardMapName, element));
        return;
    }
    KIVO_WIZARD_MAP* map = add_wizard_map(name);
    if (map == nullptr) {
        return;
    }
    if (map->mark.file == 0) {
        map->mark = element.mark();
    }
    const MessagePoster poster = MessagePoster(this).about(map->name);
    read_attributes<kAttributes>(AttributeReading<KIVO_WIZARD_MAP>{*map, element, poster},
                                 kUnknownAttribute);
    if (map->module_name.empty()) {
        map->module_name = function_name;
    }
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        const SubTagRow* const row = find_row(kSubTags, sub.tag_name());
        if (row == nullptr) {
            poster.post(unknown_sub_tag(kUnknownSubTag, element, sub, kWordsOf<kSubTags>));
            continue;
        }
        switch (row->tag) {
            case SubTag::kParameter:
                process_wizard_parameter(sub, *map);
                break;
            case SubTag::kPort:
                process_wizard_port(sub, *map);
                break;
            case SubTag::kWizardCondition:
                if (const std::string condition = condition_of(sub); !condition.empty()) {
                    auto rule = std::make_unique<KIVO_RULE_ELEMENT>(
                        "", "", condition, KIVO_RULE_FORCED_VALUE, sub.mark());
                    KIVO_OWNING::replace(*map, &KIVO_WIZARD_MAP::condition, std::move(rule),
                                         loaded_->store);
                }
                break;
        }
    }
}

void KIVO_INFO::process_wizard_parameter(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map) {
    const MessagePoster poster(this);
    const Declaration declared = read_parameter_declaration(element, poster);
    if (!declared.name.empty()) {
        KIVO_OBJ_INFO* object = map.add_kivo_object(declared.name, declared.type);
        mark_first(object, element.mark());
        process_parameter_fields(object, element, poster);
    }
}

void KIVO_INFO::process_wizard_port(KIVO_XML_ELEMENT& element, KIVO_WIZARD_MAP& map) {
    const MessagePoster poster(this);
    const Declaration declared = read_port_declaration(element, poster);
    if (!declared.name.empty()) {
        KIVO_OBJ_INFO* object = map.add_kivo_object(declared.name, declared.type);
        mark_first(object, element.mark());
        process_port_fields(object, element, poster);
    }
}

void KIVO_INFO::add_generic_wizard_map_to_all_maps(KIVO_WIZARD_MAP& generic,
                                                   const KIVO_XML_ELEMENT& section) {
    if (KIVO_ITEMS::size(generic.obj_map) == 0) {
        return;
    }
    std::vector<KIVO_WIZARD_MAP*> receivers;
    reset_wizard_map_map();
    while (KIVO_WIZARD_MAP* map = get_next_wizard_map()) {
        if (has_room_for(generic, *map, section)) {
            receivers.push_back(map);
        }
    }
    generic.obj_map.reset();
    while (KIVO_OBJ_INFO* object = generic.get_next_kivo_obj()) {
        RuleHandover rules(*object);
        for (KIVO_WIZARD_MAP* const map : receivers) {
            if (map->get_kivo_obj(object->name) == nullptr) {
                rules.copy_to(*map);
            }
        }
    }
}

bool KIVO_INFO::has_room_for(const KIVO_WIZARD_MAP& generic, const KIVO_WIZARD_MAP& map,
                             const KIVO_XML_ELEMENT& section) {
    const std::size_t count = KIVO_ITEMS::size(generic.obj_map) - count_known(generic, map);
    if (count <= kMostCopies - loaded_->generic_copies) {
        loaded_->generic_copies += count;
        return true;
    }
    if (loaded_->full_maps.insert(map.name).second) {
        post({.says = kTooManyObjects,
              .mark = section.mark(),
              .element = section.tag_name(),
              .object = map.name,
              .related = map.mark});
    }
    return false;
}
