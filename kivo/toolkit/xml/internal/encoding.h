#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

// A text in memory of its own with a NUL byte after it, which is not counted.
struct TextBuffer {
    // At least this many bytes can be read from any place in it, the NUL included.
    static constexpr std::size_t kStride = 16;

    std::unique_ptr<char[]> data;
    std::size_t size = 0;

    std::string_view view() const { return {data.get(), size}; }
};

// An uninitialised buffer with room for "size" bytes.
TextBuffer make_text_buffer(std::size_t size);

// The number of bytes of a UTF-8 byte-order mark at the start of the text: 3 or 0.
std::size_t utf8_mark_length(std::string_view text);

// Turns a UTF-16 or UTF-32 document, known by its byte-order mark or its first bytes, into UTF-8
// without the mark; a unit that stands for no character becomes U+FFFD. Leaves every other text
// alone. When memory is short the text is kept.
void convert_to_utf8(TextBuffer& text);
