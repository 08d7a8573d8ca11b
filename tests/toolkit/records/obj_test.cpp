#include "kivo/toolkit/records/obj.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>

#include "kivo/toolkit/records/internal/record_pool.h"
#include "tests/support/memory_shortage.h"

namespace {

struct alignas(256) WideRecord : KIVO_OBJ {
    char bytes[256] = {};
};

}  // namespace

TEST(Obj, host_that_wants_no_exception_gets_null_when_memory_is_short) {
    const MemoryShortage shortage(0);
    const KIVO_OBJ* const refused = new (std::nothrow) KIVO_OBJ;
    EXPECT_TRUE(shortage.came());
    EXPECT_EQ(refused, nullptr);
}

TEST(Obj, record_of_wide_alignment_has_it_with_a_pool_and_without) {
    const std::unique_ptr<KIVO_OBJ> before = std::make_unique<WideRecord>();
    const RecordPool pool;
    const std::unique_ptr<KIVO_OBJ> within = std::make_unique<WideRecord>();
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(before.get()) % alignof(WideRecord), 0u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(within.get()) % alignof(WideRecord), 0u);
}
