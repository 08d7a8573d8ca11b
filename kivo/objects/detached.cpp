#include <algorithm>
#include <vector>

#include "kivo/objects/info.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/vectors/vector_obj.h"

namespace {

using Records = std::vector<KIVO_OBJ*>;

// Leaves every record once, in order of address: copies of an object share its rule elements.
void sort_out(Records& records) {
    // The records of a load mostly lie in memory as they stand in its lists.
    if (!std::is_sorted(records.begin(), records.end())) {
        std::sort(records.begin(), records.end());
    }
    records.erase(std::unique(records.begin(), records.end()), records.end());
}

void collect_list(KIVO_OBJ_LIST& list, Records& records) {
    list.reset();
    while (KIVO_OBJ* record = list.get_next_value()) {
        records.push_back(record);
    }
}

void collect_rules(KIVO_OBJ_INFO& object, Records& records) {
    collect_list(object.rule_list, records);
    object.rule_list = KIVO_OBJ_LIST();
}

void collect_vector(KIVO_VECTOR_OBJ& vector, Records& records) {
    collect_list(vector.stimulus_list, records);
    std::string key;
    vector.display_format_map.reset();
    while (KIVO_OBJ* format = vector.display_format_map.get_next_entry(key)) {
        records.push_back(format);
    }
    records.push_back(&vector);
}

void collect_wizard_map(KIVO_WIZARD_MAP& map, Records& records) {
    map.obj_map.reset();
    while (KIVO_OBJ_INFO* object = map.get_next_kivo_obj()) {
        collect_rules(*object, records);
        records.push_back(object);
    }
    records.push_back(map.condition);
    records.push_back(&map);
}

}  // namespace

void KIVO_INFO::delete_detached_objects() {
    Records records;
    reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = get_next_kivo_obj()) {
        collect_rules(*object, records);
    }
    reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = get_next_vector_obj()) {
        collect_vector(*vector, records);
    }
    reset_wizard_map_map();
    while (KIVO_WIZARD_MAP* map = get_next_wizard_map()) {
        collect_wizard_map(*map, records);
    }
    // What a host hung on an object and on the store's own lists is not detached.
    Records attached;
    for (KIVO_OBJ_LIST list : {fn_rule_list, message_list}) {  // copies: cursors stay
        collect_list(list, attached);
    }
    sort_out(attached);
    sort_out(records);
    vector_map = KIVO_OBJ_MAP();
    wizard_map_map = KIVO_OBJ_MAP();
    reset_kivo_obj_map();
    auto kept = attached.begin();
    for (KIVO_OBJ* record : records) {
        kept = std::find_if(kept, attached.end(),
                            [record](const KIVO_OBJ* other) { return !(other < record); });
        if (kept == attached.end() || *kept != record) {
            delete record;
        }
    }
}
