// Loads any bytes as a description and walks whatever was read.

#include <unistd.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "kivo/kivo.h"

namespace {

// A file of its own for each process.
const std::string& input_path() {
    static const std::string path = [] {
        char name[] = "/tmp/kivo_load_fuzz_XXXXXX";
        const int descriptor = mkstemp(name);
        if (descriptor < 0) {
            std::abort();
        }
        close(descriptor);
        std::atexit([] { unlink(input_path().c_str()); });
        return std::string(name);
    }();
    return path;
}

void write_input(const std::uint8_t* data, std::size_t size) {
    FILE* file = std::fopen(input_path().c_str(), "wb");
    if (file == nullptr || std::fwrite(data, 1, size, file) != size || std::fclose(file) != 0) {
        std::abort();
    }
}

void walk_vectors(KIVO_INFO& info) {
    std::string signal;
    std::string value;
    info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        vector->stimulus_list.reset();
        while (kivo_get_vector_transition(&vector->stimulus_list, 10, signal, value)) {
            vector->format_display_string(signal, value, DRO_RADIX_BINARY);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    write_input(data, size);
    KIVO_INFO info;
    const bool is_clean = info.process_xml_file(input_path());
    if (is_clean != info.error_list.empty()) {
        std::abort();
    }
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        if (info.get_error_place(i).file.empty()) {
            std::abort();
        }
    }
    info.get_sorted_obj_map();
    walk_vectors(info);
    info.delete_detached_objects();
    return 0;
}
