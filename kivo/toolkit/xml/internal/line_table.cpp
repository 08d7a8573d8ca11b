#include "kivo/toolkit/xml/internal/line_table.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace {

#if defined(__SSE2__)
constexpr std::ptrdiff_t kStride = 64;

// Bit number i tells whether at[i] is a line feed.
std::uint64_t line_feeds_in_stride(const char* at) {
    const __m128i line_feed = _mm_set1_epi8('\n');
    std::uint64_t found = 0;
    for (int i = 0; i < kStride; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + i));
        const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, line_feed));
        found |= static_cast<std::uint64_t>(equal) << i;
    }
    return found;
}
#endif

// Beyond the reach of a place its lines and columns stay the largest that it can tell.
std::int32_t saturated(std::size_t count) {
    constexpr std::size_t kLargest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(count, kLargest));
}

}  // namespace

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
    const char* const at = text.data() + std::min(std::max(begin, known), text.size());
    const char* const last = text.data() + std::min(end, text.size());
    if (at >= last) {
        return;
    }
    if (std::memchr(at, '\r', static_cast<std::size_t>(last - at)) == nullptr) {
        add_line_feeds(text.data(), at, last);
    } else {
        add_line_ends(text, at, last);
    }
}

void LineTable::add_line_feeds(const char* text, const char* at, const char* last) {
#if defined(__SSE2__)
    // Lines are short: searching for each end by itself took twice as long.
    for (; last - at >= kStride; at += kStride) {
        for (std::uint64_t found = line_feeds_in_stride(at); found != 0; found &= found - 1) {
            const char* const start = at + std::countr_zero(found) + 1;
            starts_.push_back(static_cast<std::uint32_t>(start - text));
        }
    }
#endif
    while (const void* found = std::memchr(at, '\n', static_cast<std::size_t>(last - at))) {
        at = static_cast<const char*>(found) + 1;
        starts_.push_back(static_cast<std::uint32_t>(at - text));
    }
}

void LineTable::add_line_ends(std::string_view text, const char* at, const char* last) {
    const auto ends_line = [](char letter) { return letter == '\n' || letter == '\r'; };
    const char* const end = text.data() + text.size();
    while ((at = std::find_if(at, last, ends_line)) < last) {
        const bool is_pair = *at == '\r' && at + 1 != end && at[1] == '\n';
        at += is_pair ? 2 : 1;
        starts_.push_back(static_cast<std::uint32_t>(at - text.data()));
        at = std::min(at, last);
    }
}

LineTable::Position LineTable::locate(std::size_t offset) const {
    const auto next = std::upper_bound(starts_.begin(), starts_.end(), offset);
    const std::size_t start = next == starts_.begin() ? 0 : *(next - 1);
    const auto lines_before = static_cast<std::size_t>(next - starts_.begin());
    return {saturated(lines_before + 1), saturated(offset - start + 1)};
}
