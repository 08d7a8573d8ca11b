#include "kivo/info/internal/include.h"

#include <vector>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

void KIVO_INFO::process_include_info(KIVO_XML_ELEMENT& section,
                                     std::vector<KIVO_INCLUDE>& includes) {
    for (const auto& [name, value] : section.attributes()) {
        if (name == "FILE") {
            includes.push_back({std::string(value), section.mark()});
        } else {
            post({KIVO_MESSAGE_ID::kIncludeAttribute, section.mark(),
                  compose("Attribute ", name, " is not a recognized attribute for INCLUDE ")});
        }
    }
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        if (sub.tag_name() != "FILE") {
            post({KIVO_MESSAGE_ID::kIncludeSubTag, sub.mark(),
                  compose("Sub element tag ", sub.tag_name(),
                          " is not a valid sub tag of the main tag INCLUDE")});
        } else if (const std::string_view text = sub.text(); !text.empty()) {
            includes.push_back({std::string(trim_right_view(trim_left_view(text))), sub.mark()});
        }
    }
}
