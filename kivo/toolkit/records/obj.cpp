#include "kivo/toolkit/records/obj.h"

#include "kivo/toolkit/records/internal/record_pool.h"

KIVO_OBJ::~KIVO_OBJ() = default;

void* KIVO_OBJ::operator new(std::size_t size) {
    return RecordPool::allocate(size);
}

void* KIVO_OBJ::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return RecordPool::allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void KIVO_OBJ::operator delete(void* record) {
    RecordPool::deallocate(record);
}
