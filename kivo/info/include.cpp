#include "kivo/info/internal/include.h"

#include <vector>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

// clang-format off
constexpr MessageText kUnknownAttribute = {
    MessageId::kIncludeAttribute,
    "Attribute {word} is not a recognized attribute for INCLUDE "};
constexpr MessageText kUnknownSubTag = {
    MessageId::kIncludeSubTag,
    "Sub element tag {word} is not a valid sub tag of the main tag INCLUDE"};
// clang-format on

// The attribute and the sub-element have the same name.
constexpr WordRow kWords[] = {{"FILE"}};

}  // namespace

void KIVO_INFO::process_include_info(KIVO_XML_ELEMENT& section,
                                     std::vector<KIVO_INCLUDE>& includes) {
    for (const auto& [name, value] : section.attributes()) {
        if (const WordRow* row = find_row(kWords, name)) {
            includes.push_back({std::string(value), section.mark(), "INCLUDE", row->word});
        } else {
            post(unknown_attribute(kUnknownAttribute, section, name, kWordsOf<kWords>));
        }
    }
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        const WordRow* const row = find_row(kWords, sub.tag_name());
        if (row == nullptr) {
            post(unknown_sub_tag(kUnknownSubTag, section, sub, kWordsOf<kWords>));
        } else if (const std::string_view text = sub.text(); !text.empty()) {
            includes.push_back(
                {std::string(trim_right_view(trim_left_view(text))), sub.mark(), row->word, {}});
        }
    }
}
