// Loads any bytes as a description, in every encoding that they may be in.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/memory_file.h"
#include "fuzz/support/store_walk.h"
#include "kivo/kivo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KIVO_INFO info;
    const bool is_clean =
        info.process_xml_file(input_file({reinterpret_cast<const char*>(data), size}));
    expect(is_clean == info.error_list.empty(), "a load is clean when it has no messages");
    walk_store(info);
    info.delete_detached_objects();
    return 0;
}
