#include "kivo/toolkit/records/internal/record_pool.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <new>

// Stands at the start of its memory.
struct RecordSlab {
    // The records that are alive. While the slab is still being filled nobody counts up, and it
    // holds so many more that it cannot reach 0.
    std::atomic<std::size_t> alive;
};

namespace {

constexpr std::size_t kBeingFilled = std::numeric_limits<std::size_t>::max() / 2;

// Stands before each record.
struct alignas(std::max_align_t) Header {
    RecordSlab* slab;  // null: the record has memory of its own
};

// A small description takes little; a large one soon takes slabs that cost it little.
constexpr std::size_t kFirstSlab = 4096;
constexpr std::size_t kLargestSlab = 65536;

// Compilers tell it each in their own way.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KIVO_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define KIVO_ADDRESS_SANITIZER
#endif
#if defined(KIVO_ADDRESS_SANITIZER)
// Each record in a slab of its own, so that the sanitizer sees what is done to deleted ones.
constexpr bool kSharesSlabs = false;
#else
constexpr bool kSharesSlabs = true;
#endif

thread_local RecordPool* current_pool = nullptr;

constexpr std::size_t rounded_up(std::size_t size) {
    return (size + sizeof(Header) - 1) / sizeof(Header) * sizeof(Header);
}

void give_back(RecordSlab* slab, std::size_t records) {
    if (slab->alive.fetch_sub(records, std::memory_order_acq_rel) == records) {
        ::operator delete(slab);
    }
}

}  // namespace

RecordPool::RecordPool() : outer_(current_pool), next_size_(kFirstSlab) {
    current_pool = this;
}

RecordPool::~RecordPool() {
    end_slab();
    current_pool = outer_;
}

void* RecordPool::allocate(std::size_t size) {
    const std::size_t whole = sizeof(Header) + rounded_up(size);
    if (current_pool != nullptr) {
        return current_pool->take(whole);
    }
    auto* header = new (::operator new(whole)) Header{nullptr};
    return header + 1;
}

void RecordPool::deallocate(void* record) {
    if (record == nullptr) {
        return;
    }
    Header* const header = static_cast<Header*>(record) - 1;
    if (header->slab == nullptr) {
        ::operator delete(header);
    } else {
        give_back(header->slab, 1);
    }
}

void* RecordPool::take(std::size_t size) {
    if (size > left_) {
        begin_slab(size);
    }
    auto* header = new (free_) Header{slab_};
    free_ += size;
    left_ -= size;
    ++records_;
    return header + 1;
}

void RecordPool::begin_slab(std::size_t size) {
    end_slab();
    const std::size_t room = kSharesSlabs ? std::max(size, next_size_) : size;
    char* const memory = static_cast<char*>(::operator new(sizeof(Header) + room));
    slab_ = new (memory) RecordSlab{kBeingFilled};
    free_ = memory + sizeof(Header);
    left_ = room;
    records_ = 0;
    next_size_ = std::min(next_size_ * 2, kLargestSlab);
}

void RecordPool::end_slab() {
    if (slab_ != nullptr) {
        give_back(slab_, kBeingFilled - records_);
    }
    slab_ = nullptr;
    left_ = 0;
}
