#pragma once

#include <cstddef>

// While it exists, the heap gives its thread so many pieces of memory, refuses the next one with
// std::bad_alloc and then goes on: what a host sees that catches that and carries on.
class MemoryShortage {
public:
    explicit MemoryShortage(std::size_t pieces_before);
    MemoryShortage(const MemoryShortage&) = delete;
    MemoryShortage& operator=(const MemoryShortage&) = delete;
    ~MemoryShortage();

    // Whether the refusal came.
    bool came() const;
};
