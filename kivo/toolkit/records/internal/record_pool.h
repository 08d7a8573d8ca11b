#pragma once

#include <cstddef>

struct RecordSlab;

// Memory for the records of one load, in slabs of many: taking each from the heap by itself, and
// giving it back there, would be a tenth of what a load costs. A slab is given back when its last
// record is deleted, whoever does that, in whichever thread, and however long after the load.
class RecordPool {
public:
    // While it exists, the records that its thread makes come from it. Pools may nest.
    RecordPool();
    RecordPool(const RecordPool&) = delete;
    RecordPool& operator=(const RecordPool&) = delete;
    ~RecordPool();

    // Takes memory from the thread's pool, or from the heap when it has none.
    static void* allocate(std::size_t size);
    static void deallocate(void* record);

private:
    void* take(std::size_t size);
    void begin_slab(std::size_t size);
    void end_slab();

    RecordPool* outer_;
    RecordSlab* slab_ = nullptr;
    char* free_ = nullptr;  // what is left of the slab
    std::size_t left_ = 0;
    std::size_t records_ = 0;  // taken from the slab
    std::size_t next_size_;    // of the next slab
};
