#include "kivo/toolkit/line_table.h"

#include <algorithm>
#include <cstring>
#include <limits>

LineTable::LineTable(std::string_view text) {
    constexpr std::size_t kReach = std::numeric_limits<std::uint32_t>::max();
    text = text.substr(0, kReach);
    const bool has_returns = text.find('\r') != std::string_view::npos;
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    // Some forty bytes a line is usual; a guess that is too low costs a copy or two.
    starts_.reserve(text.size() / 32);
    for (const char* at = begin; at != end;) {
        if (has_returns) {
            at =
                std::find_if(at, end, [](char letter) { return letter == '\n' || letter == '\r'; });
        } else {
            const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
            at = found == nullptr ? end : static_cast<const char*>(found);
        }
        if (at == end) {
            break;
        }
        const bool is_pair = *at == '\r' && at + 1 != end && at[1] == '\n';
        at += is_pair ? 2 : 1;
        starts_.push_back(static_cast<std::uint32_t>(at - begin));
    }
    starts_.shrink_to_fit();
}

LineTable::Position LineTable::locate(std::size_t offset) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const std::size_t start = next == starts_.begin() ? 0 : *(next - 1);
    return {static_cast<std::int32_t>(next - starts_.begin()) + 1,
            static_cast<std::int32_t>(offset - start) + 1};
}
