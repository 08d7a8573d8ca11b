#include "kivo/toolkit/line_table.h"

#include <algorithm>
#include <cstring>
#include <limits>

LineTable::LineTable(std::string_view text) {
    add_lines(text, 0, text.size());
}

void LineTable::add_lines(std::string_view text, std::size_t begin, std::size_t end) {
    constexpr std::size_t kReach = std::numeric_limits<std::uint32_t>::max();
    text = text.substr(0, kReach);
    if (starts_.capacity() == 0) {
        // Some forty bytes a line is usual; a guess that is too low costs a copy or two.
        starts_.reserve(text.size() / 32);
    }
    // The CR of a pair may end the part before.
    const std::size_t known = starts_.empty() ? 0 : starts_.back();
    const char* at = text.data() + std::min(std::max(begin, known), text.size());
    const char* const last = text.data() + std::min(end, text.size());
    const bool has_returns = std::memchr(at, '\r', static_cast<std::size_t>(last - at)) != nullptr;
    while (at < last) {
        if (has_returns) {
            at = std::find_if(at, last,
                              [](char letter) { return letter == '\n' || letter == '\r'; });
        } else {
            const void* found = std::memchr(at, '\n', static_cast<std::size_t>(last - at));
            at = found == nullptr ? last : static_cast<const char*>(found);
        }
        if (at == last) {
            break;
        }
        const bool is_pair = *at == '\r' && at + 1 != text.data() + text.size() && at[1] == '\n';
        at += is_pair ? 2 : 1;
        starts_.push_back(static_cast<std::uint32_t>(at - text.data()));
    }
}

LineTable::Position LineTable::locate(std::size_t offset) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const std::size_t start = next == starts_.begin() ? 0 : *(next - 1);
    return {static_cast<std::int32_t>(next - starts_.begin()) + 1,
            static_cast<std::int32_t>(offset - start) + 1};
}
