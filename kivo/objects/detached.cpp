#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "kivo/objects/conditional_text.h"
#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/text_obj.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/objects/wizard_map.h"
#include "kivo/toolkit/records/internal/items.h"

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

// Whether "next" comes after "record" in what is likely the same slab.
bool lies_after(const KIVO_OBJ* record, const KIVO_OBJ* next) {
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
        const auto last = std::adjacent_find(begin, records.end(), std::not_fn(lies_after));
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

// The records to be deleted and those to be left, each as often as something leads to it. What it
// took from lists goes back there unless the search is told to keep it.
class Search {
public:
    Search() = default;
    Search(const Search&) = delete;
    Search& operator=(const Search&) = delete;
    ~Search() {
        for (const Taken& taken : taken_) {
            for (std::size_t i = taken.first; i < taken.end; ++i) {
                KIVO_ITEMS::append(*taken.list, found_[i]);  // which has kept its memory
            }
        }
    }

    void keep() { taken_.clear(); }

    void add(KIVO_OBJ* record) { found_.push_back(record); }

    template <class Container>
    void add_all(Container& container) {
        KIVO_ITEMS::for_each(container, [this](KIVO_OBJ* record) { add(record); });
        shares_ = shares_ || KIVO_ITEMS::shares(container);
    }

    // Emptied at once: coming back to each of the many objects would cost as much as all the rest.
    void take_rules_of(KIVO_OBJ* record) {
        auto* const object = dynamic_cast<KIVO_OBJ_INFO*>(record);
        if (object == nullptr || KIVO_ITEMS::is_empty(object->rule_list)) {
            return;
        }
        const std::size_t first = found_.size();
        add_all(object->rule_list);
        taken_.push_back({&object->rule_list, first, found_.size()});
        KIVO_ITEMS::take_out(object->rule_list);
    }

    // Vectors and maps go before what was made for them, as in memory. A record of another class in
    // their place, or in that of an object, is a host's.
    void add_vector(KIVO_OBJ* record) {
        if (auto* vector = dynamic_cast<KIVO_VECTOR_OBJ*>(record)) {
            add(vector);
            add_all(vector->stimulus_list);
            add_all(vector->display_format_map);
            add(vector->wave_condition);
            add(vector->description);
            add_replaced(*vector);
        }
    }

    void add_wizard_map(KIVO_OBJ* record) {
        if (auto* map = dynamic_cast<KIVO_WIZARD_MAP*>(record)) {
            add(map);
            KIVO_ITEMS::for_each(map->obj_map, [this](KIVO_OBJ* held) {
                if (auto* object = dynamic_cast<KIVO_OBJ_INFO*>(held)) {
                    add(object);
                    add_all(object->rule_list);
                }
            });
            shares_ = shares_ || KIVO_ITEMS::shares(map->obj_map);
            add(map->condition);
            add_replaced(*map);
        }
    }

    void leave(KIVO_OBJ* record) { left_.push_back(record); }

    template <class Container>
    void leave_all(Container& container) {
        KIVO_ITEMS::for_each(container, [this](KIVO_OBJ* record) { leave(record); });
    }

    void leave_help_text(KIVO_OBJ* record) {
        leave(record);
        if (auto* text = dynamic_cast<KIVO_TEXT_OBJ*>(record)) {
            leave(text->intro);
            leave(text->end);
        }
    }

    // When memory is short it leaves found_ as it is.
    void sort() {
        sort_out(left_);
        sort_out(found_);
    }

    // Whether some record may stand in more than one place because a host put it there.
    bool shares() const { return shares_; }

    // After sort().
    void delete_found() const {
        auto left = left_.begin();
        for_each_record(found_, std::identity(), [&](KIVO_OBJ* record) {
            left = std::find_if(left, left_.end(),
                                [record](const KIVO_OBJ* other) { return !(other < record); });
            if (left == left_.end() || *left != record) {
                delete record;
            }
        });
    }

private:
    struct Taken {
        KIVO_OBJ_LIST* list;
        std::size_t first;  // in found_, as long as that is not sorted
        std::size_t end;
    };

    template <class Holder>
    void add_replaced(Holder& holder) {
        for (KIVO_OBJ* record : KIVO_OWNING::replaced(holder)) {
            add(record);
        }
    }

    Records found_;
    Records left_;
    std::vector<Taken> taken_;
    bool shares_ = false;
};

// What holds records that are going to be deleted forgets them: it may itself be left, and what is
// deleted would take some of them along.
void forget_rules(KIVO_OBJ* record) {
    if (auto* object = dynamic_cast<KIVO_OBJ_INFO*>(record)) {
        KIVO_ITEMS::clear(object->rule_list);
    }
}

void forget_vector(KIVO_OBJ* record) {
    if (auto* vector = dynamic_cast<KIVO_VECTOR_OBJ*>(record)) {
        KIVO_ITEMS::clear(vector->stimulus_list);
        KIVO_ITEMS::clear(vector->display_format_map);
        vector->wave_condition = nullptr;
        vector->description = nullptr;
        KIVO_OWNING::replaced(*vector).clear();
    }
}

void forget_wizard_map(KIVO_OBJ* record) {
    if (auto* map = dynamic_cast<KIVO_WIZARD_MAP*>(record)) {
        KIVO_ITEMS::for_each(map->obj_map, forget_rules);
        KIVO_ITEMS::clear(map->obj_map);
        map->condition = nullptr;
        KIVO_OWNING::replaced(*map).clear();
    }
}

}  // namespace

void KIVO_INFO::delete_detached_objects() {
    // What a host hung on an object and on the store's own lists is not detached.
    Search search;
    const auto record_of = [](const auto& entry) { return entry.object; };
    for_each_record(KIVO_ITEMS::entries(object_map), record_of,
                    [&](KIVO_OBJ* record) { search.take_rules_of(record); });
    KIVO_ITEMS::for_each(vector_map, [&](KIVO_OBJ* record) { search.add_vector(record); });
    KIVO_ITEMS::for_each(wizard_map_map, [&](KIVO_OBJ* record) { search.add_wizard_map(record); });
    search.leave_all(fn_rule_list);
    search.leave_all(message_list);
    search.leave_help_text(html_text);
    for (KIVO_OBJ* text : loaded_->replaced_help_texts) {
        search.leave_help_text(text);
    }
    if (search.shares() || KIVO_ITEMS::shares(object_map)) {
        search.leave_all(object_map);
    }
    search.sort();

    // From here on nothing takes memory.
    search.keep();
    KIVO_ITEMS::for_each(vector_map, forget_vector);
    KIVO_ITEMS::for_each(wizard_map_map, forget_wizard_map);
    KIVO_ITEMS::clear(vector_map);
    KIVO_ITEMS::clear(wizard_map_map);
    reset_kivo_obj_map();
    search.delete_found();
}
