#include "tests/support/memory_shortage.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <pugixml.hpp>

namespace {

// Of this thread.
struct Supply {
    bool is_limited = false;
    bool has_refused = false;
    Refusal refusal = Refusal::kOnce;
    std::size_t pieces_left = 0;  // until the refusal
};

thread_local Supply supply;
std::atomic<std::ptrdiff_t> living = 0;

bool refuses() {
    if (!supply.is_limited) {
        return false;
    }
    if (supply.has_refused) {
        return supply.refusal == Refusal::kFromThenOn;
    }
    supply.has_refused = supply.pieces_left == 0;
    supply.pieces_left -= supply.has_refused ? 0 : 1;
    return supply.has_refused;
}

void* take(std::size_t size) {
    void* const memory = refuses() ? nullptr : std::malloc(size == 0 ? 1 : size);
    living += memory == nullptr ? 0 : 1;
    return memory;
}

void give_back(void* memory) {
    living -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

// Before the first document is parsed.
const bool kParserTakesPart = (pugi::set_memory_management_functions(take, give_back), true);

}  // namespace

MemoryShortage::MemoryShortage(std::size_t pieces_before, Refusal refusal) {
    supply = {true, false, refusal, pieces_before};
}

MemoryShortage::~MemoryShortage() {
    supply = {};
}

bool MemoryShortage::came() const {
    return supply.has_refused;
}

std::ptrdiff_t living_pieces() {
    return kParserTakesPart ? living.load() : 0;
}

// Both forms: what one of them gives is given back by the same operator delete.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return take(size);
}

void* operator new(std::size_t size) {
    void* const memory = take(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    give_back(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    give_back(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    give_back(memory);
}
