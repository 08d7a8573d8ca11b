#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "kivo/toolkit/records/obj_list.h"
#include "kivo/toolkit/records/obj_map.h"

// What the library may do with the containers of records, and hosts may not.
class KIVO_ITEMS {
public:
    // How a record that stands nowhere else enters a list. The list takes it over or, when memory
    // is short, it goes with the exception.
    template <class Record>
    static Record* add(KIVO_OBJ_LIST& list, std::unique_ptr<Record> made) {
        list.append(made.get());
        return made.release();
    }

    // The same for a record that stands elsewhere too, in lists of the same kind.
    static void append(KIVO_OBJ_LIST& list, KIVO_OBJ* record) { list.append(record); }

    // The record of the name. When there is none, "make" is asked for one, in a unique_ptr, which
    // the map takes over; null, with nothing added, when it makes none.
    template <class Make>
    static KIVO_OBJ* find_or_add(KIVO_OBJ_MAP& map, const std::string& name, Make make) {
        const KIVO_OBJ_MAP::Spot spot = map.find_spot(name);
        const bool is_known = spot.position != map.entries_.size();
        if (is_known && map.entries_[spot.position].object != nullptr) {
            return map.entries_[spot.position].object;
        }
        auto made = make();
        return made == nullptr ? nullptr : put_at(map, spot, name, std::move(made));
    }

    // Stores a record that stands nowhere else under the name, without looking at what stands
    // there, which is left alone.
    template <class Record>
    static Record* put(KIVO_OBJ_MAP& map, const std::string& name, std::unique_ptr<Record> made) {
        return put_at(map, map.find_spot(name), name, std::move(made));
    }

    // The record under the cursor, which advances, for who does not ask for its key.
    static KIVO_OBJ* next(KIVO_OBJ_MAP& map) {
        return map.cursor_ < map.entries_.size() ? map.entries_[map.cursor_++].object : nullptr;
    }

    // Calls "use" with the place of every record, whatever the cursor, which stays.
    template <class Use>
    static void for_each(KIVO_OBJ_LIST& list, Use use) {
        for (std::size_t i = 0; i < list.few_size_; ++i) {
            use(list.few_[i]);
        }
        for (KIVO_OBJ*& object : list.rest_) {
            use(object);
        }
    }

    // The entries of a map in order, each with an "object".
    static auto& entries(KIVO_OBJ_MAP& map) { return map.entries_; }

    template <class Use>
    static void for_each(KIVO_OBJ_MAP& map, Use use) {
        for (KIVO_OBJ_MAP::Entry& entry : map.entries_) {
            use(entry.object);
        }
    }

    // Calls "use" with every key in order, whatever the cursor, which stays.
    template <class Use>
    static void for_each_key(const KIVO_OBJ_MAP& map, Use use) {
        for (const KIVO_OBJ_MAP::Entry& entry : map.entries_) {
            use(entry.key);
        }
    }

    static std::size_t size(const KIVO_OBJ_MAP& map) { return map.entries_.size(); }

    // Whether records of the container may stand elsewhere too.
    template <class Container>
    static bool shares(const Container& container) {
        return container.note_.shares_;
    }

    static bool is_empty(const KIVO_OBJ_LIST& list) { return list.few_size_ == 0; }

    // Empties a list, with its cursor at the start, but keeps its memory: what was taken out can be
    // appended again.
    static void take_out(KIVO_OBJ_LIST& list) {
        list.few_size_ = 0;
        list.rest_.clear();
        list.cursor_ = 0;
    }

    // As it was when it was new. Takes no memory.
    static void clear(KIVO_OBJ_LIST& list) {
        list.few_size_ = 0;
        std::vector<KIVO_OBJ*>().swap(list.rest_);
        list.cursor_ = 0;
        list.note_.shares_ = false;
    }
    static void clear(KIVO_OBJ_MAP& map) {
        std::vector<KIVO_OBJ_MAP::Entry>().swap(map.entries_);
        map.tags_.clear();
        map.positions_.clear();
        map.cursor_ = 0;
        map.note_.shares_ = false;
    }

private:
    template <class Record>
    static Record* put_at(KIVO_OBJ_MAP& map, const KIVO_OBJ_MAP::Spot& spot,
                          const std::string& name, std::unique_ptr<Record> made) {
        if (spot.position == map.entries_.size()) {
            map.add_at(spot, name, made.get());
        } else {
            map.entries_[spot.position].object = made.get();
        }
        return made.release();
    }
};
