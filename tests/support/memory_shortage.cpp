#include "tests/support/memory_shortage.h"

#include <cstdlib>
#include <new>

namespace {

// Of this thread: the pieces left until the refusal, and the refusal itself at 0.
thread_local std::size_t pieces_left = 0;
thread_local bool is_short = false;

bool refuses() {
    if (!is_short) {
        return false;
    }
    is_short = pieces_left != 0;
    pieces_left -= is_short ? 1 : 0;
    return !is_short;
}

}  // namespace

MemoryShortage::MemoryShortage(std::size_t pieces_before) {
    pieces_left = pieces_before;
    is_short = true;
}

MemoryShortage::~MemoryShortage() {
    is_short = false;
}

bool MemoryShortage::came() const {
    return !is_short;
}

// Both forms: what one of them gives is given back by the same operator delete.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return refuses() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void* operator new(std::size_t size) {
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
