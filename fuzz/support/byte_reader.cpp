#include "fuzz/support/byte_reader.h"

#include <algorithm>
#include <cstring>

std::uint8_t ByteReader::byte() {
    if (rest_.empty()) {
        return 0;
    }
    const auto first = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return first;
}

std::int32_t ByteReader::number() {
    std::int32_t value = 0;
    const std::size_t size = std::min(rest_.size(), sizeof value);
    std::memcpy(&value, rest_.data(), size);
    rest_.remove_prefix(size);
    return value;
}

std::string ByteReader::line() {
    const std::size_t end = std::min(rest_.find('\n'), rest_.size());
    std::string text(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return text;
}

std::string ByteReader::rest() {
    const std::string text(rest_);
    rest_ = {};
    return text;
}
