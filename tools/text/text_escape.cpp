#include "tools/text/text_escape.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "tools/text/text_steps.h"
#include "tools/text/utf8.h"

namespace {

struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;
};

// Control characters, those that reorder or hide the text around them, and those that no XML may
// hold.
// clang-format off
constexpr CodeRange kHarmful[] = {
    { 0x0000, 0x001F },
    { 0x007F, 0x009F },
    { 0x061C, 0x061C },
    { 0x200B, 0x200F },
    { 0x2028, 0x202E },
    { 0x2060, 0x2069 },
    { 0xFEFF, 0xFEFF },
    { 0xFFF9, 0xFFFB },
    { 0xFFFE, 0xFFFF },
    { 0xE0000, 0xE007F },
};
// clang-format on

bool is_harmful(std::uint32_t code) {
    return std::any_of(std::begin(kHarmful), std::end(kHarmful), [code](const CodeRange& range) {
        return range.first <= code && code <= range.last;
    });
}

void append_escape(std::string& out, std::uint32_t code) {
    switch (code) {
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            out += code < 0x80 ? fmt::format("\\x{:02X}", code) : fmt::format("\\u{:04X}", code);
    }
}

}  // namespace

std::string escape_text(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = utf8_length(text);
        if (length == 0) {
            out += fmt::format("\\x{:02X}", static_cast<unsigned char>(text[0]));
            text.remove_prefix(1);
            continue;
        }
        const std::string_view sequence = text.substr(0, length);
        const std::uint32_t code = utf8_code(sequence);
        if (is_harmful(code)) {
            append_escape(out, code);
        } else {
            out += sequence;
        }
        text.remove_prefix(length);
    }
    return out;
}

std::string join_lines(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::string_view run = taken_blanks(text);
        const bool is_at_end = out.empty() || text.empty();
        if (!run.empty() && !is_at_end) {
            out += run.find('\n') == std::string_view::npos ? run : std::string_view(" ");
        }
        out += taken_until(text, kBlanks);
    }
    return out;
}
