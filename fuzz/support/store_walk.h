#pragma once

#include <cstddef>

#include "kivo/kivo.h"

// Looks at everything that a loaded store holds, as a host does, and at what its calls promise of
// it: of marks and places, of names, of cursors.
void walk_store(KIVO_INFO& info);

struct StoreCounts {
    std::size_t objects = 0;
    std::size_t rules = 0;
    std::size_t messages = 0;
    std::size_t vectors = 0;
    std::size_t wizard_maps = 0;

    bool operator==(const StoreCounts&) const = default;
};

StoreCounts count_store(KIVO_INFO& info);
