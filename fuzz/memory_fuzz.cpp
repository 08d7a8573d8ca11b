// Loads a description while memory runs out at a point that the input chooses. The store must be
// fit for use afterwards: it can be walked, loaded again, and gives back all that it has.

#include <cstddef>
#include <cstdint>
#include <new>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "fuzz/support/memory_file.h"
#include "fuzz/support/store_walk.h"
#include "kivo/kivo.h"
#include "tests/support/memory_shortage.h"

namespace {

// From the bytes, so that each description meets its end at many points while it changes.
std::size_t pieces_before(std::string_view text) {
    constexpr std::size_t kMostPieces = 300;
    std::uint32_t hash = 0;
    for (const char letter : text) {
        hash = hash * 31 + static_cast<unsigned char>(letter);
    }
    return (hash >> 4) % kMostPieces;
}

// The parser takes its memory from the same heap, so that it is refused too.
const bool kParserIsShortToo = [] {
    pugi::set_memory_management_functions(
        [](std::size_t size) { return operator new(size, std::nothrow); },
        [](void* memory) { operator delete(memory); });
    return true;
}();

template <class Action>
bool runs_short(std::size_t pieces, Action action) {
    MemoryShortage shortage(pieces);
    try {
        action();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string path = input_file(text);
    const std::size_t pieces = pieces_before(text);
    KIVO_INFO info;
    if (runs_short(pieces, [&] { info.process_xml_file(path); })) {
        walk_store(info);
    }
    info.process_xml_file(path);
    walk_store(info);
    if (runs_short(pieces, [&] { info.delete_detached_objects(); })) {
        walk_store(info);
    }
    info.delete_detached_objects();
    return 0;
}
