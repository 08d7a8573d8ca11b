#include "tools/text/cut_text.h"

#include <algorithm>

#include "tools/text/utf8.h"
#include "tools/text/words.h"

namespace {

// How far before the cut it may move to the end of a word.
constexpr std::size_t kNear = 100;

bool continues_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The cut at the start of a character, if the bytes there are characters.
std::size_t at_character(std::string_view text, std::size_t cut) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t back = 0; back < std::min(cut, kLongest); ++back) {
        if (!continues_character(text[cut - back])) {
            return cut - back;
        }
    }
    return cut;
}

std::size_t count_characters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); text.remove_prefix(utf8_step(text))) {
        ++count;
    }
    return count;
}

}  // namespace

CutText cut_text(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return {text, 0};
    }
    const std::size_t from = most > kNear ? most - kNear : 0;
    const std::size_t end_of_word = text.substr(from, most - from).find_last_of(" ,;\t\n");
    const std::size_t cut =
        end_of_word != std::string_view::npos ? from + end_of_word + 1 : at_character(text, most);
    return {text.substr(0, cut), count_characters(text.substr(cut))};
}

std::string and_more(std::size_t count, const std::string& noun) {
    return "... and " + counted(count, "more " + noun);
}
