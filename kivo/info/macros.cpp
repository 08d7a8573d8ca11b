#include "kivo/info/internal/reader.h"

namespace {

// clang-format off
constexpr MessageText kUnknownElement = {
    MessageId::kMacrosSubTag,
    "Sub element tag {word} is not a valid sub tag of the main tag MACROS"};
// No blank stands after "tag": hosts match on the text.
constexpr MessageText kUnknownSubTag = {
    MessageId::kMacroSubTag,
    "Sub tag{word} is not a recognized sub-tag for macros "};
// clang-format on

constexpr WordRow kElements[] = {{"MACRO"}};
constexpr WordRow kSubTags[] = {{"DEFINITION"}};

}  // namespace

void KIVO_INFO::process_macros(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (find_row(kElements, element.tag_name()) == nullptr) {
            post(unknown_sub_tag(kUnknownElement, section, element, kWordsOf<kElements>));
            continue;
        }
        KIVO_OBJ_INFO* macro = nullptr;
        std::string definition;
        std::string arguments;
        for (const auto& [name, value] : element.attributes()) {
            if (name == "NAME") {
                macro = add_declared_object(std::string(value), KIVO_OBJ_MACRO,
                                            declaring(element, value));
            } else if (name == "DEFINITION") {
                definition = value;
            } else if (name == "ARGUMENTS") {
                arguments = value;
            }
        }
        if (KIVO_XML_ELEMENT* first = element.get_first_sub_element()) {
            if (find_row(kSubTags, first->tag_name()) != nullptr) {
                definition = first->text();
            } else {
                post(unknown_sub_tag(kUnknownSubTag, element, *first, kWordsOf<kSubTags>));
            }
        }
        if (macro == nullptr || definition.empty()) {
            continue;
        }
        macro->add_value(definition, -1);
        if (!arguments.empty()) {
            macro->arguments = arguments;
        }
    }
}
