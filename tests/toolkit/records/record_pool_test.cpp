#include "kivo/toolkit/records/internal/record_pool.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <thread>
#include <vector>

#include "kivo/kivo.h"

namespace {

using Rules = std::vector<std::unique_ptr<KIVO_RULE_ELEMENT>>;

Rules make_rules(int count) {
    Rules rules;
    for (int i = 0; i < count; ++i) {
        rules.push_back(std::make_unique<KIVO_RULE_ELEMENT>(std::to_string(i), "", "", i));
    }
    return rules;
}

bool are_whole(const Rules& rules) {
    for (std::size_t i = 0; i < rules.size(); ++i) {
        if (rules[i]->text1 != std::to_string(i) ||
            rules[i]->rule_kind != static_cast<std::int32_t>(i)) {
            return false;
        }
    }
    return true;
}

}  // namespace

TEST(RecordPool, records_that_share_memory_do_not_disturb_each_other) {
    const RecordPool pool;
    const Rules rules = make_rules(10000);
    EXPECT_TRUE(are_whole(rules));
}

TEST(RecordPool, records_are_aligned_for_every_member) {
    const RecordPool pool;
    for (const auto& rule : make_rules(100)) {
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(rule.get()) % alignof(std::max_align_t), 0u);
    }
}

TEST(RecordPool, records_outlive_their_pool) {
    Rules rules;
    {
        const RecordPool pool;
        rules = make_rules(1000);
    }
    EXPECT_TRUE(are_whole(rules));
}

TEST(RecordPool, records_can_be_deleted_in_any_order_while_others_are_made) {
    const RecordPool pool;
    Rules kept = make_rules(500);
    Rules dropped = make_rules(500);
    for (std::size_t i = 0; i < dropped.size(); i += 2) {
        dropped[i].reset();
    }
    const Rules later = make_rules(500);
    dropped.clear();
    EXPECT_TRUE(are_whole(kept));
    EXPECT_TRUE(are_whole(later));
}

TEST(RecordPool, records_can_be_deleted_by_other_threads) {
    Rules first;
    Rules second;
    {
        const RecordPool pool;
        for (int i = 0; i < 2000; ++i) {
            (i % 2 == 0 ? first : second)
                .push_back(
                    std::make_unique<KIVO_RULE_ELEMENT>("a text that is no short one", "", "", i));
        }
    }
    std::thread one([&first] { first.clear(); });
    std::thread other([&second] { second.clear(); });
    one.join();
    other.join();
    EXPECT_TRUE(first.empty());
    EXPECT_TRUE(second.empty());
}

TEST(RecordPool, pool_serves_its_own_thread_alone) {
    const RecordPool pool;
    Rules rules;
    std::thread([&rules] { rules = make_rules(100); }).join();
    EXPECT_TRUE(are_whole(rules));
}

TEST(RecordPool, pools_nest) {
    const RecordPool outer;
    const Rules before = make_rules(50);
    Rules within;
    {
        const RecordPool inner;
        within = make_rules(50);
    }
    const Rules after = make_rules(50);
    EXPECT_TRUE(are_whole(before));
    EXPECT_TRUE(are_whole(within));
    EXPECT_TRUE(are_whole(after));
}

TEST(RecordPool, record_larger_than_a_slab_has_room) {
    struct LargeRecord : KIVO_OBJ {
        char bytes[200000] = {};
    };
    const RecordPool pool;
    const auto small = std::make_unique<KIVO_OBJ>();
    const auto large = std::make_unique<LargeRecord>();
    large->bytes[199999] = 'x';
    EXPECT_EQ(large->bytes[199999], 'x');
}

TEST(RecordPool, host_makes_and_deletes_records_without_a_pool) {
    const Rules rules = make_rules(100);
    EXPECT_TRUE(are_whole(rules));
    KIVO_OBJ* nothing = nullptr;
    delete nothing;
}

TEST(RecordPool, host_makes_records_in_every_way_that_the_language_has) {
    std::unique_ptr<KIVO_OBJ> record(new (std::nothrow) KIVO_RULE_ELEMENT("a", "b", "c", 1));
    ASSERT_NE(record, nullptr);
    alignas(KIVO_RULE_ELEMENT) unsigned char place[sizeof(KIVO_RULE_ELEMENT)];
    auto* const placed = new (place) KIVO_RULE_ELEMENT("a", "b", "c", 1);
    EXPECT_EQ(static_cast<void*>(placed), place);
    placed->~KIVO_RULE_ELEMENT();
    const std::unique_ptr<KIVO_RULE_ELEMENT[]> several(new KIVO_RULE_ELEMENT[3]);
    EXPECT_EQ(several[2].rule_kind, 0);
}
