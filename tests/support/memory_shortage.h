#pragma once

#include <cstddef>

enum class Refusal { kOnce, kFromThenOn };

// While it exists, the heap gives its thread so many pieces of memory and refuses the next one with
// std::bad_alloc: that one alone, as a host sees it that catches and carries on, or all from then
// on. The parser's memory counts like any other; its own way to be refused is a null pointer.
class MemoryShortage {
public:
    explicit MemoryShortage(std::size_t pieces_before, Refusal refusal = Refusal::kOnce);
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    ~MemoryShortage();

    // Whether the refusal came.
    bool came() const;
};

// How many pieces of memory, of all threads, were given and not given back.
std::ptrdiff_t living_pieces();
