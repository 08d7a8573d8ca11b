#pragma once

#include <cstddef>
#include <new>

#include "kivo/export.h"

// Base class of every stored record. Containers hold KIVO_OBJ pointers, which own nothing; users
// recover the class with dynamic_cast, which yields null on mismatch. Who owns a record deletes it,
// in any thread and whether it was made by a load or by a host; the class says who that is.
class KIVO_API KIVO_OBJ {
public:
    KIVO_OBJ() = default;
    KIVO_OBJ(const KIVO_OBJ&) = default;
    KIVO_OBJ& operator=(const KIVO_OBJ&) = default;
    virtual ~KIVO_OBJ();

    // The records of a load share memory: each is still made and deleted by itself. Giving memory
    // back takes none. A class derived from it may have operators of its own.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void* operator new(std::size_t size, std::align_val_t alignment) {
        return ::operator new(size, alignment);
    }
    static void operator delete(void* record);
    static void operator delete(void*, void*) noexcept {}
    static void operator delete(void* record, const std::nothrow_t&) noexcept {
        operator delete(record);
    }
    static void operator delete(void* record, std::align_val_t alignment) {
        ::operator delete(record, alignment);
    }
};
