#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Takes the parts of an input off its front; at the end everything is 0 or empty.
class ByteReader {
public:
    ByteReader(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }
    std::uint8_t byte();
    // From 0 to before "count". REQUIRES: 0 < count <= 256
    std::size_t below(std::size_t count) { return byte() % count; }
    std::int32_t number();
    // Up to the next LF, which goes too.
    std::string line();
    std::string rest();

private:
    std::string_view rest_;
};
