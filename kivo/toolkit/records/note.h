#pragma once

#include <cstdint>

// What the library notes on records and containers beside what hosts read and write; private to it.

// On a record: who made it, so that a store knows its own from a host's when it replaces it. A copy
// is a record of whoever copied, and what is assigned to says nothing of the maker.
class KIVO_RECORD_NOTE {
public:
    KIVO_RECORD_NOTE() = default;
    KIVO_RECORD_NOTE(const KIVO_RECORD_NOTE&) noexcept {}
    KIVO_RECORD_NOTE& operator=(const KIVO_RECORD_NOTE&) noexcept { return *this; }

private:
    friend class KIVO_OWNING;

    std::uint32_t maker_ = 0;
};

// On a container: whether a record that it holds may stand elsewhere too. So it may when a host put
// it in, and in a copy.
class KIVO_CONTAINER_NOTE {
public:
    KIVO_CONTAINER_NOTE() = default;
    KIVO_CONTAINER_NOTE(const KIVO_CONTAINER_NOTE&) noexcept : shares_(true) {}
    KIVO_CONTAINER_NOTE& operator=(const KIVO_CONTAINER_NOTE&) noexcept {
        shares_ = true;
        return *this;
    }

private:
    friend class KIVO_ITEMS;
    friend class KIVO_OBJ_LIST;
    friend class KIVO_OBJ_MAP;

    bool shares_ = false;
};
