#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

// The one attribute that a sub-element of FUNCTION_INFORMATION has; empty for an unknown tag.
std::string_view attribute_of(std::string_view tag) {
    if (tag == "VHDL_LIBRARY") {
        return "NAME";
    }
    const bool has_value = tag == "START_TIME" || tag == "TIME_SCALE" || tag == "TIME_DELTA";
    return has_value ? "VALUE" : std::string_view();
}

void store_setting(KIVO_INFO& info, std::string_view tag, std::string_view value) {
    if (tag == "VHDL_LIBRARY") {
        info.vhdl_library = value;
    } else if (tag == "START_TIME") {
        info.start_time = to_int32(value);
    } else if (tag == "TIME_SCALE") {
        info.time_scale = value;
    } else {
        info.time_delta = value;
    }
}

// The name of the library in one entry of the list.
std::string_view library_name(std::string_view entry) {
    return trim_left_view(entry.substr(0, entry.find('.')));
}

}  // namespace

void KIVO_INFO::process_function_info(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        const std::string_view tag = sub.tag_name();
        const std::string_view known = attribute_of(tag);
        if (known.empty()) {
            post({KIVO_MESSAGE_ID::kFunctionInfoSubTag, sub.mark(),
                  compose("Sub element tag ", tag,
                          " is not a valid sub tag of the main tag FUNCTION_INFORMATION")});
            continue;
        }
        // The same words for attributes and children, without a blank behind "tag": hosts match
        // on them.
        const auto report = [&](KIVO_MESSAGE_ID id, KIVO_MARK mark, std::string_view name) {
            post({id, mark,
                  compose("Sub tag", name, " is not a recognized sub-tag for ", tag, " ")});
        };
        std::string_view value;
        for (const auto& [name, text] : sub.attributes()) {
            if (name == known) {
                value = text;
            } else {
                report(KIVO_MESSAGE_ID::kFunctionInfoAttribute, sub.mark(), name);
            }
        }
        if (KIVO_XML_ELEMENT* child = sub.get_first_sub_element()) {
            report(KIVO_MESSAGE_ID::kFunctionInfoNested, child->mark(), child->tag_name());
        }
        if (!value.empty()) {
            store_setting(*this, tag, value);
        }
    }
}

std::string KIVO_INFO::get_simulation_library() const {
    std::string libraries;
    for (std::string_view rest = vhdl_library; !rest.empty();) {
        const std::string_view entry = next_token(rest, ';');
        if (!entry.empty()) {
            libraries.append(library_name(entry)).append(";");
        }
    }
    return libraries;
}
