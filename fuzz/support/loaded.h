#pragma once

#include <cstddef>
#include <cstdint>

#include "fuzz/support/memory_file.h"
#include "tools/description/description.h"

// The input as a description that the program has loaded.
class LoadedInput : public Description {
public:
    LoadedInput(const std::uint8_t* data, std::size_t size)
        : Description("input_info.xml", input_file({reinterpret_cast<const char*>(data), size})) {}
};
