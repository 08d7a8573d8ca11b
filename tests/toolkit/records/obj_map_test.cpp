#include "kivo/toolkit/records/obj_map.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/support/memory_shortage.h"

namespace {

class Counted : public KIVO_OBJ {
public:
    explicit Counted(int* deaths) : deaths_(deaths) {}
    ~Counted() override { ++*deaths_; }

private:
    int* deaths_;
};

std::vector<std::string> keys_of(KIVO_OBJ_MAP& map) {
    std::vector<std::string> keys;
    std::string key;
    map.reset();
    while (map.get_next_entry(key) != nullptr) {
        keys.push_back(key);
    }
    return keys;
}

using Keys = std::vector<std::string>;

}  // namespace

TEST(ObjMap, empty_map_knows_no_key) {
    KIVO_OBJ_MAP map;
    std::string key = "before";
    EXPECT_EQ(map.look_up("a"), nullptr);
    EXPECT_EQ(map.look_up(""), nullptr);
    EXPECT_EQ(map.get_next_entry(key), nullptr);
}

TEST(ObjMap, finds_what_was_stored) {
    KIVO_OBJ a;
    KIVO_OBJ b;
    KIVO_OBJ_MAP map;
    map.set_at("a", &a);
    map.set_at("b", &b);
    EXPECT_EQ(map.look_up("a"), &a);
    EXPECT_EQ(map.look_up("b"), &b);
    EXPECT_EQ(map.look_up("c"), nullptr);
}

TEST(ObjMap, keys_are_exact_bytes) {
    KIVO_OBJ lower;
    KIVO_OBJ upper;
    KIVO_OBJ empty;
    KIVO_OBJ with_nul;
    KIVO_OBJ_MAP map;
    map.set_at("a", &lower);
    map.set_at("A", &upper);
    map.set_at("", &empty);
    map.set_at(std::string("a\0", 2), &with_nul);
    EXPECT_EQ(map.look_up("a"), &lower);
    EXPECT_EQ(map.look_up("A"), &upper);
    EXPECT_EQ(map.look_up(""), &empty);
    EXPECT_EQ(map.look_up(std::string("a\0", 2)), &with_nul);
    EXPECT_EQ(map.look_up("a "), nullptr);
}

TEST(ObjMap, walk_is_in_order_of_first_insertion) {
    KIVO_OBJ object;
    KIVO_OBJ_MAP map;
    for (const char* key : {"z", "a", "M", "b"}) {
        map.set_at(key, &object);
    }
    EXPECT_EQ(keys_of(map), (Keys{"z", "a", "M", "b"}));
}

TEST(ObjMap, stored_again_takes_the_place_of_the_earlier_one) {
    KIVO_OBJ first;
    KIVO_OBJ second;
    KIVO_OBJ_MAP map;
    map.set_at("a", &first);
    map.set_at("b", &first);
    map.set_at("a", &second);
    EXPECT_EQ(map.look_up("a"), &second);
    EXPECT_EQ(keys_of(map), (Keys{"a", "b"}));
}

TEST(ObjMap, second_walk_needs_a_reset) {
    KIVO_OBJ object;
    KIVO_OBJ_MAP map;
    map.set_at("a", &object);
    std::string key;
    EXPECT_EQ(map.get_next_entry(key), &object);
    EXPECT_EQ(key, "a");
    EXPECT_EQ(map.get_next_entry(key), nullptr);
    EXPECT_EQ(map.get_next_entry(key), nullptr);
    map.reset();
    EXPECT_EQ(map.get_next_entry(key), &object);
}

TEST(ObjMap, cursor_at_the_end_reaches_an_entry_added_later) {
    KIVO_OBJ object;
    KIVO_OBJ later;
    KIVO_OBJ_MAP map;
    std::string key;
    map.set_at("a", &object);
    map.get_next_entry(key);
    ASSERT_EQ(map.get_next_entry(key), nullptr);
    map.set_at("b", &later);
    EXPECT_EQ(map.get_next_entry(key), &later);
    EXPECT_EQ(key, "b");
}

TEST(ObjMap, does_not_own_what_it_holds) {
    int deaths = 0;
    Counted object(&deaths);
    {
        KIVO_OBJ_MAP map;
        map.set_at("a", &object);
    }
    EXPECT_EQ(deaths, 0);
}

TEST(ObjMap, keeps_names_apart_that_differ_in_their_last_character_or_share_it) {
    std::vector<KIVO_OBJ> objects(4000);
    KIVO_OBJ_MAP map;
    const auto name = [](std::size_t i) {
        return i < 2000 ? "N" + std::to_string(i) : std::to_string(i) + "_N";
    };
    for (std::size_t i = 0; i < objects.size(); ++i) {
        map.set_at(name(i), &objects[i]);
    }
    for (std::size_t i = 0; i < objects.size(); ++i) {
        ASSERT_EQ(map.look_up(name(i)), &objects[i]) << name(i);
    }
    EXPECT_EQ(map.look_up("N2000"), nullptr);
    EXPECT_EQ(map.look_up("1999_N"), nullptr);
    EXPECT_EQ(keys_of(map).size(), objects.size());
}

TEST(ObjMap, keeps_every_one_of_many_entries) {
    constexpr int kCount = 100000;
    std::vector<KIVO_OBJ> objects(kCount);
    KIVO_OBJ_MAP map;
    for (int i = 0; i < kCount; ++i) {
        map.set_at("key" + std::to_string(i), &objects[static_cast<std::size_t>(i)]);
    }
    std::string key;
    for (int i = 0; i < kCount; ++i) {
        const std::string expected = "key" + std::to_string(i);
        ASSERT_EQ(map.look_up(expected), &objects[static_cast<std::size_t>(i)]) << expected;
        ASSERT_EQ(map.get_next_entry(key), &objects[static_cast<std::size_t>(i)]) << expected;
        ASSERT_EQ(key, expected);
    }
    EXPECT_EQ(map.look_up("key100000"), nullptr);
}

namespace {

std::string key_number(int i) {
    return "a key that is too long to need no memory, " + std::to_string(i);
}

// Adds the key while memory runs out after so many pieces. False when it did run out.
bool add_in_shortage(KIVO_OBJ_MAP& map, const std::string& key, KIVO_OBJ* object,
                     std::size_t pieces) {
    const MemoryShortage shortage(pieces);
    try {
        map.set_at(key, object);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

}  // namespace

TEST(ObjMap, key_that_memory_did_not_suffice_for_is_unknown_and_can_be_added) {
    constexpr int kCount = 100;
    KIVO_OBJ object;
    KIVO_OBJ_MAP map;
    int refusals = 0;
    for (int i = 0; i < kCount; ++i) {
        for (std::size_t pieces = 0; !add_in_shortage(map, key_number(i), &object, pieces);
             ++pieces) {
            ++refusals;
            ASSERT_EQ(map.look_up(key_number(i)), nullptr) << i << " after " << pieces;
        }
        for (int earlier = 0; earlier <= i; ++earlier) {
            ASSERT_EQ(map.look_up(key_number(earlier)), &object) << earlier << " of " << i;
        }
    }
    EXPECT_GT(refusals, kCount);
    EXPECT_EQ(keys_of(map).size(), static_cast<std::size_t>(kCount));
}
