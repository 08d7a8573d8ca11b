// Evaluates any bytes as a stimulus command; the first four give the time.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "kivo/kivo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::int32_t time = 0;
    if (size < sizeof time) {
        return 0;
    }
    std::memcpy(&time, data, sizeof time);
    const std::string command(reinterpret_cast<const char*>(data) + sizeof time,
                              size - sizeof time);
    std::string signal;
    std::string value;
    const bool is_transition = kivo_get_transition_at_time(command, time, signal, value);
    if (!value.empty() && !is_transition) {
        std::abort();
    }
    return 0;
}
