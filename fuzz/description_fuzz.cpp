// Loads descriptions, twice into one store and once into another: what was read does not depend on
// what was read before, and loads only add.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/support/store_walk.h"
#include "kivo/kivo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string& path = input_file({reinterpret_cast<const char*>(data), size});
    KIVO_INFO info;
    info.process_xml_file(path);
    walk_store(info);
    KIVO_INFO other;
    other.process_xml_file(path);
    expect(info.error_list == other.error_list, "the same file gives the same messages");
    const StoreCounts once = count_store(info);
    expect(once == count_store(other), "the same file gives the same store");

    const std::size_t errors = info.error_list.size();
    info.process_xml_file(path);
    walk_store(info);
    const StoreCounts twice = count_store(info);
    expect(info.error_list.size() >= errors, "a load takes no error away");
    expect(twice.vectors == once.vectors, "a file read again declares no new vector");
    expect(twice.rules == 2 * once.rules && twice.messages == 2 * once.messages,
           "a file read again adds its rules and messages again");

    info.delete_detached_objects();
    walk_store(info);
    info.delete_detached_objects();
    other.delete_detached_objects();
    return 0;
}
