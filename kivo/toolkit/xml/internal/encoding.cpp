#include "kivo/toolkit/xml/internal/encoding.h"

#include <cstdint>
#include <utility>

namespace {

struct WideForm {
    std::size_t unit_size;  // 2 or 4 bytes; 0 for a text that is neither
    bool big_endian;
    std::size_t mark_length;
};

struct WideMark {
    std::string_view bytes;
    WideForm form;
};

using namespace std::string_view_literals;

// Longer ones first: the mark of UTF-16 is how that of UTF-32 begins. A document without a mark
// begins with "<" and something that is not NUL.
// clang-format off
constexpr WideMark kWideMarks[] = {
    { "\x00\x00\xFE\xFF"sv, { 4, true,  4 } },
    { "\xFF\xFE\x00\x00"sv, { 4, false, 4 } },
    { "\x00\x00\x00<"sv,    { 4, true,  0 } },
    { "<\x00\x00\x00"sv,    { 4, false, 0 } },
    { "\xFE\xFF"sv,         { 2, true,  2 } },
    { "\xFF\xFE"sv,         { 2, false, 2 } },
    { "\x00<"sv,            { 2, true,  0 } },
    { "<\x00"sv,            { 2, false, 0 } },
};
// clang-format on

WideForm find_wide_form(std::string_view text) {
    for (const WideMark& mark : kWideMarks) {
        if (text.substr(0, mark.bytes.size()) == mark.bytes) {
            return mark.form;
        }
    }
    return {0, false, 0};
}

constexpr std::uint32_t kReplacement = 0xFFFD;

class WideReader {
public:
    WideReader(std::string_view text, WideForm form)
        : rest_(text.substr(form.mark_length)), form_(form) {}

    bool at_end() const { return rest_.empty(); }

    std::uint32_t next() {
        const std::uint32_t unit = next_unit();
        if (form_.unit_size == 4 || unit < 0xD800 || unit > 0xDFFF) {
            const bool is_character = unit < 0xD800 || (unit > 0xDFFF && unit <= 0x10FFFF);
            return is_character ? unit : kReplacement;
        }
        const std::string_view after = rest_;
        const std::uint32_t low = unit < 0xDC00 && !rest_.empty() ? next_unit() : 0;
        if (low < 0xDC00 || low > 0xDFFF) {
            rest_ = unit < 0xDC00 ? after : rest_;
            return kReplacement;
        }
        return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
    }

private:
    std::uint32_t next_unit() {
        if (rest_.size() < form_.unit_size) {
            rest_ = {};
            return kReplacement;
        }
        std::uint32_t unit = 0;
        for (std::size_t i = 0; i < form_.unit_size; ++i) {
            const std::size_t at = form_.big_endian ? i : form_.unit_size - 1 - i;
            unit = (unit << 8) | static_cast<unsigned char>(rest_[at]);
        }
        rest_.remove_prefix(form_.unit_size);
        return unit;
    }

    std::string_view rest_;
    WideForm form_;
};

char* write_utf8(char* to, std::uint32_t code) {
    const auto put = [&to](std::uint32_t byte) { *to++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
    return to;
}

}  // namespace

TextBuffer make_text_buffer(std::size_t size) {
    TextBuffer buffer;
    buffer.data.reset(new char[size + TextBuffer::kStride]);
    buffer.size = size;
    buffer.data[size] = '\0';
    return buffer;
}

std::size_t utf8_mark_length(std::string_view text) {
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

void convert_to_utf8(TextBuffer& text) {
    const WideForm form = find_wide_form(text.view());
    if (form.unit_size == 0) {
        return;
    }
    // A unit of two bytes takes at most three bytes in UTF-8, one of four at most four; a cut-off
    // unit at the end becomes a replacement character of three.
    TextBuffer converted = make_text_buffer(text.size / 2 * 3 + 3);
    char* to = converted.data.get();
    for (WideReader reader(text.view(), form); !reader.at_end();) {
        to = write_utf8(to, reader.next());
    }
    *to = '\0';
    converted.size = static_cast<std::size_t>(to - converted.data.get());
    text = std::move(converted);
}
