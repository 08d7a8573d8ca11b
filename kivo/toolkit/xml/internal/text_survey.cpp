#include "kivo/toolkit/xml/internal/text_survey.h"

namespace {

// A large text comes from memory block by block, and each block is in the cache for all questions.
constexpr std::size_t kBlock = 16384;

bool has(std::string_view block, char letter) {
    return block.find(letter) != std::string_view::npos;
}

std::size_t length_of_xml_declaration(std::string_view text) {
    if (text.substr(0, 5) != "<?xml") {
        return 0;
    }
    const std::size_t end = text.substr(0, kBlock).find("?>");
    return end == std::string_view::npos ? 0 : end + 2;
}

}  // namespace

TextSurvey::TextSurvey(std::string_view text) {
    const std::size_t declaration = length_of_xml_declaration(text);
    for (std::size_t begin = 0; begin < text.size(); begin += kBlock) {
        const std::string_view block = text.substr(begin, kBlock);
        const std::string_view after = begin == 0 ? block.substr(declaration) : block;
        lines.add_lines(text, begin, begin + block.size());
        has_nul = has_nul || has(block, '\0');
        has_ampersand = has_ampersand || has(block, '&');
        has_inner_markup_mark = has_inner_markup_mark || has(after, '!') || has(after, '?');
    }
}
