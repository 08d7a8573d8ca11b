// Translates texts, the first byte choosing the language, as a plain reference does it; and what is
// translated is not translated again.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/support/byte_reader.h"
#include "fuzz/support/expect.h"
#include "kivo/kivo.h"
#include "tests/hdl/hdl_reference.h"

namespace {

std::ptrdiff_t count_blanks(const std::string& text) {
    return std::count(text.begin(), text.end(), ' ');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteReader bytes(data, size);
    // One of them is no language.
    const auto language = static_cast<KIVO_HDL_LANGUAGE>(bytes.below(4));
    const std::string text = bytes.rest();
    const std::string translated = kivo_translate_text_to_hdl(text, language);
    expect_same(hdl_reference::translate(text, language), translated,
                "words are translated one by one");

    const std::size_t front = std::min(text.find_first_not_of(' '), text.size());
    const bool has_end = front < text.size() && text.back() == ' ';
    const std::string inner = text.substr(front, text.size() - front - (has_end ? 1 : 0));
    expect(count_blanks(translated) == count_blanks(inner), "as many words go out as come in",
           text);
    const bool ends_in_blank = !translated.empty() && translated.back() == ' ';
    if (!ends_in_blank) {
        expect_same(translated, kivo_translate_text_to_hdl(translated, language),
                    "what is translated is not translated again");
    }
    return 0;
}
