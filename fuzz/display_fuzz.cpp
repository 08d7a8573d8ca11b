// Takes the first line as a display format and shows the rest as values in it, which is what the
// conversion of numbers makes of them.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/support/byte_reader.h"
#include "fuzz/support/expect.h"
#include "kivo/kivo.h"

namespace {

std::string expected(const std::string& value, DRO_MEMORY_RADIXES value_radix,
                     DRO_MEMORY_RADIXES radix, const std::string& description) {
    std::string shown = value;
    if (radix == DRO_RADIX_FIXED_POINT) {
        dro_radix_conversion_fixed_point(value, &shown, value_radix, radix, description);
    } else if (radix != value_radix) {
        dro_radix_conversion(value, &shown, value_radix, radix, 0);
    }
    return shown;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteReader bytes(data, size);
    const std::string format = bytes.line();
    const std::string value = bytes.rest();
    KIVO_INFO info;
    KIVO_VECTOR_OBJ* vector = info.add_vector_object("v");
    info.process_display_format_string(vector, format);
    std::string port;
    vector->display_format_map.reset();
    const bool is_taken = vector->display_format_map.get_next_entry(port) != nullptr;
    expect(is_taken == info.error_list.empty(), "a format is taken or refused with a message",
           format);

    const DRO_MEMORY_RADIXES radix = vector->get_vector_display_format(port);
    const std::string description = vector->get_vector_display_format_description(port);
    expect((radix == DRO_RADIX_FIXED_POINT) == !description.empty(),
           "a fixed-point format has a description, no other one has", format);
    for (const DRO_MEMORY_RADIXES value_radix :
         {DRO_RADIX_BINARY, DRO_RADIX_SIGNED, DRO_RADIX_UNSIGNED, DRO_RADIX_HEX, DRO_RADIX_OCTAL}) {
        expect_same(vector->format_display_string(port, value, value_radix),
                    expected(value, value_radix, radix, description),
                    "a value is shown as its format converts it");
    }
    info.delete_detached_objects();
    return 0;
}
