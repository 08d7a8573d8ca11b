#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Where something stands in the loaded files, in 8 bytes: the number of the file in the order of
// loading (from 1; 0 for nowhere) and the byte offset in it.
struct KIVO_MARK {
    std::uint32_t file = 0;
    std::uint32_t offset = 0;
};

// An offset as marks keep it: beyond their reach they name the last byte that they can.
constexpr std::uint32_t kivo_mark_offset(std::size_t offset) {
    return offset < 0xFFFFFFFE ? static_cast<std::uint32_t>(offset) : 0xFFFFFFFE;
}

// The same for people. Lines and columns count from 1, columns in bytes; one that 32 bits do not
// hold, as in a file of 4 GB on one line, is told as 2147483647. Line 0 means that no place inside
// a file is known, and an empty file name that none is known at all.
struct KIVO_PLACE {
    std::string file;
    std::int32_t line = 0;
    std::int32_t column = 0;
};
