#include <memory>
#include <utility>

#include "kivo/info/internal/reader.h"
#include "kivo/objects/conditional_text.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/text_obj.h"

void KIVO_INFO::process_html_text(KIVO_XML_ELEMENT& section) {
    auto text = std::make_unique<KIVO_TEXT_OBJ>();
    // Nobody has seen yet what an earlier element of the section gave.
    const auto replace = [this](KIVO_CONDITIONAL_TEXT*& sequence, KIVO_XML_ELEMENT& element) {
        const std::unique_ptr<KIVO_CONDITIONAL_TEXT> earlier(
            std::exchange(sequence, process_conditional_text(element).release()));
    };
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        if (tag == "TITLE") {
            text->title = sub.text();
        } else if (tag == "HEADER") {
            text->header = sub.text();
        } else if (tag == "INTRO") {
            replace(text->intro, sub);
        } else if (tag == "END") {
            replace(text->end, sub);
        }
    }
    KIVO_OWNING::replace(html_text, std::move(text), loaded_->store, loaded_->replaced_help_texts);
}
