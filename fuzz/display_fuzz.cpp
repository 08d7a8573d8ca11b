// Takes the first line of any bytes as a display format and shows the rest as values in it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "kivo/kivo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t line_end = std::min(bytes.find('\n'), bytes.size());
    KIVO_INFO info;
    KIVO_VECTOR_OBJ* vector = info.add_vector_object("v");
    info.process_display_format_string(vector, bytes.substr(0, line_end));
    const std::string value = bytes.substr(std::min(line_end + 1, bytes.size()));
    for (const DRO_MEMORY_RADIXES radix :
         {DRO_RADIX_BINARY, DRO_RADIX_SIGNED, DRO_RADIX_UNSIGNED, DRO_RADIX_HEX, DRO_RADIX_OCTAL}) {
        vector->format_display_string("p", value, radix);
    }
    info.delete_detached_objects();
    return 0;
}
