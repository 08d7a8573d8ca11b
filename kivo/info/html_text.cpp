#include "kivo/info/internal/reader.h"
#include "kivo/objects/conditional_text.h"
#include "kivo/objects/text_obj.h"

void KIVO_INFO::process_html_text(KIVO_XML_ELEMENT& section) {
    retire(html_text);
    html_text = new KIVO_TEXT_OBJ;
    const auto replace = [this](KIVO_CONDITIONAL_TEXT*& sequence, KIVO_XML_ELEMENT& element) {
        delete sequence;
        sequence = process_conditional_text(element);
    };
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        if (tag == "TITLE") {
            html_text->title = sub.text();
        } else if (tag == "HEADER") {
            html_text->header = sub.text();
        } else if (tag == "INTRO") {
            replace(html_text->intro, sub);
        } else if (tag == "END") {
            replace(html_text->end, sub);
        }
    }
}
