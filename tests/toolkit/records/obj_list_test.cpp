#include "kivo/toolkit/records/obj_list.h"

#include <gtest/gtest.h>

namespace {

class Counted : public KIVO_OBJ {
public:
    explicit Counted(int* deaths) : deaths_(deaths) {}
    ~Counted() override { ++*deaths_; }

private:
    int* deaths_;
};

}  // namespace

TEST(ObjList, empty_list_gives_null_again_and_again) {
    KIVO_OBJ_LIST list;
    EXPECT_EQ(list.get_next_value(), nullptr);
    EXPECT_EQ(list.get_next_value(), nullptr);
    list.reset();
    EXPECT_EQ(list.get_next_value(), nullptr);
}

TEST(ObjList, cursor_of_a_new_list_stands_at_the_start) {
    KIVO_OBJ first;
    KIVO_OBJ second;
    KIVO_OBJ_LIST list;
    list.add_at_tail(&first);
    list.add_at_tail(&second);
    EXPECT_EQ(list.get_next_value(), &first);
    EXPECT_EQ(list.get_next_value(), &second);
    EXPECT_EQ(list.get_next_value(), nullptr);
}

TEST(ObjList, second_walk_needs_a_reset) {
    KIVO_OBJ item;
    KIVO_OBJ_LIST list;
    list.add_at_tail(&item);
    list.get_next_value();
    EXPECT_EQ(list.get_next_value(), nullptr);
    list.reset();
    EXPECT_EQ(list.get_next_value(), &item);
}

TEST(ObjList, cursor_at_the_end_reaches_an_item_added_later) {
    KIVO_OBJ first;
    KIVO_OBJ later;
    KIVO_OBJ_LIST list;
    list.add_at_tail(&first);
    list.get_next_value();
    ASSERT_EQ(list.get_next_value(), nullptr);
    list.add_at_tail(&later);
    EXPECT_EQ(list.get_next_value(), &later);
    EXPECT_EQ(list.get_next_value(), nullptr);
}

TEST(ObjList, same_item_may_stand_twice) {
    KIVO_OBJ item;
    KIVO_OBJ_LIST list;
    list.add_at_tail(&item);
    list.add_at_tail(&item);
    EXPECT_EQ(list.get_next_value(), &item);
    EXPECT_EQ(list.get_next_value(), &item);
    EXPECT_EQ(list.get_next_value(), nullptr);
}

TEST(ObjList, does_not_own_what_it_holds) {
    int deaths = 0;
    Counted item(&deaths);
    {
        KIVO_OBJ_LIST list;
        list.add_at_tail(&item);
    }
    EXPECT_EQ(deaths, 0);
}

TEST(ObjList, operations_are_virtual) {
    class EmptyList : public KIVO_OBJ_LIST {
    public:
        void add_at_tail(KIVO_OBJ*) override {}
        void reset() override { ++resets; }
        KIVO_OBJ* get_next_value() override { return nullptr; }
        int resets = 0;
    };
    KIVO_OBJ item;
    EmptyList empty;
    KIVO_OBJ_LIST& list = empty;
    list.add_at_tail(&item);
    list.reset();
    EXPECT_EQ(empty.resets, 1);
    EXPECT_EQ(list.get_next_value(), nullptr);
}
