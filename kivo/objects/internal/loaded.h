#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "kivo/objects/internal/message_origins.h"
#include "kivo/toolkit/place.h"
#include "kivo/toolkit/records/obj.h"
#include "kivo/toolkit/xml/internal/line_table.h"

// What the store keeps of its loads beside their contents.
struct KIVO_LOADED {
    struct File {
        std::string path;
        LineTable lines;
    };

    // The offset of a mark that names a file and no place in it, beyond every kivo_mark_offset.
    static constexpr std::uint32_t kWholeFile = 0xFFFFFFFF;

    // Where files are looked for that do not exist as they are named, each with a "/" at its end.
    std::vector<std::string> include_directories;
    std::vector<File> files;  // mark number n is files[n - 1]; the last is the one being read
    MessageOrigins origins;   // of the messages of error_list
    std::uint32_t store = 0;  // what it notes on the pieces that it made
    // Of the load in hand: how many copies of generic objects wizard maps have received, and the
    // names of the maps that would have received too many.
    std::size_t generic_copies = 0;
    std::set<std::string> full_maps;
    // Those that loads made and a later one replaced, to be deleted with the store: a host may
    // still look at them. What else is replaced, its vector or wizard map keeps.
    std::vector<KIVO_OBJ*> replaced_help_texts;
};
