#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "kivo/objects/info.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"

namespace {

using Records = std::vector<KIVO_OBJ*>;

// Calls "use" with the record of each item, from the first to the last. The records of a large
// store have long left the processor's cache: without asking for them ahead, deleting them is
// mostly waiting.
template <class Items, class RecordOf, class Use>
void for_each_record(const Items& items, RecordOf record_of, Use use) {
    constexpr std::size_t kAhead = 16;
    constexpr std::size_t kCacheLine = 64;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i + kAhead < items.size()) {
            const auto* ahead = reinterpret_cast<const char*>(record_of(items[i + kAhead]));
            __builtin_prefetch(ahead);
            __builtin_prefetch(ahead + kCacheLine);
        }
        use(record_of(items[i]));
    }
}

// Whether "next" lies behind "record" in what is likely the same slab.
bool lies_behind(const KIVO_OBJ* record, const KIVO_OBJ* next) {
    constexpr std::uintptr_t kNear = 4096;
    return reinterpret_cast<std::uintptr_t>(next) - reinterpret_cast<std::uintptr_t>(record) <
           kNear;
}

// Puts the records in order of address. Those of a load stand in its lists as they lie in memory,
// but its slabs lie in any order: far fewer runs than records, which do not overlap.
Records sorted_by_address(const Records& records) {
    struct Run {
        Records::const_iterator begin;
        Records::const_iterator end;
    };
    std::vector<Run> runs;
    for (auto begin = records.begin(); begin != records.end(); begin = runs.back().end) {
        const auto last = std::adjacent_find(begin, records.end(), std::not_fn(lies_behind));
        runs.push_back({begin, last == records.end() ? last : last + 1});
    }
    std::sort(runs.begin(), runs.end(),
              [](const Run& left, const Run& right) { return *left.begin < *right.begin; });
    Records sorted;
    sorted.reserve(records.size());
    for (const Run& run : runs) {
        sorted.insert(sorted.end(), run.begin, run.end);
    }
    if (!std::is_sorted(sorted.begin(), sorted.end())) {
        std::sort(sorted.begin(), sorted.end());
    }
    return sorted;
}

// Leaves every record once, in order of address: copies of an object share its rule elements.
void sort_out(Records& records) {
    if (!std::is_sorted(records.begin(), records.end())) {
        records = sorted_by_address(records);
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

// Vectors and maps go before what was made for them, as in memory.
void collect_vector(KIVO_VECTOR_OBJ& vector, Records& records) {
    records.push_back(&vector);
    collect_list(vector.stimulus_list, records);
    std::string key;
    vector.display_format_map.reset();
    while (KIVO_OBJ* format = vector.display_format_map.get_next_entry(key)) {
        records.push_back(format);
    }
}

void collect_wizard_map(KIVO_WIZARD_MAP& map, Records& records) {
    records.push_back(&map);
    map.obj_map.reset();
    while (KIVO_OBJ_INFO* object = map.get_next_kivo_obj()) {
        collect_rules(*object, records);
        records.push_back(object);
    }
    records.push_back(map.condition);
}

}  // namespace

void KIVO_INFO::delete_detached_objects() {
    Records records;
    for_each_record(object_map.entries_, std::mem_fn(&KIVO_OBJ_MAP::Entry::object),
                    [&](KIVO_OBJ* record) {
                        if (auto* object = dynamic_cast<KIVO_OBJ_INFO*>(record)) {
                            collect_rules(*object, records);
                        }
                    });
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
    for_each_record(records, std::identity(), [&](KIVO_OBJ* record) {
        kept = std::find_if(kept, attached.end(),
                            [record](const KIVO_OBJ* other) { return !(other < record); });
        if (kept == attached.end() || *kept != record) {
            delete record;
        }
    });
}
