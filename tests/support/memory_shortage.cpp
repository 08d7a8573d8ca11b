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

void* operator new(std::size_t size) {
    void* const memory = refuses() ? nullptr : std::malloc(size == 0 ? 1 : size);
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
