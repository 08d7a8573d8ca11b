#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

// clang-format off
constexpr MessageText kUnknownSetting = {
    MessageId::kFunctionInfoSubTag,
    "Sub element tag {word} is not a valid sub tag of the main tag FUNCTION_INFORMATION"};
// The same words for attributes and children, without a blank after "tag": hosts match on them.
constexpr std::string_view kNotKnownHere = "Sub tag{word} is not a recognized sub-tag for {element} ";
constexpr MessageText kUnknownAttribute = {
    MessageId::kFunctionInfoAttribute, kNotKnownHere};
constexpr MessageText kNestedTag = {
    MessageId::kFunctionInfoNested, kNotKnownHere};
// clang-format on

void set_start_time(KIVO_INFO& info, std::string_view value) {
    info.start_time = to_int32(value);
}

template <std::string KIVO_INFO::*kField>
void set_text(KIVO_INFO& info, std::string_view value) {
    info.*kField = value;
}

struct SettingRow {
    std::string_view word;
    std::string_view attribute;  // the one that it has
    void (*set)(KIVO_INFO& info, std::string_view value);
};

// clang-format off
constexpr SettingRow kSettings[] = {
    { "START_TIME",   "VALUE", set_start_time                     },
    { "TIME_DELTA",   "VALUE", set_text<&KIVO_INFO::time_delta>   },
    { "TIME_SCALE",   "VALUE", set_text<&KIVO_INFO::time_scale>   },
    { "VHDL_LIBRARY", "NAME",  set_text<&KIVO_INFO::vhdl_library> },
};
// clang-format on

// The attribute of row number "row".
void gather_attribute(std::uint32_t row, std::vector<std::string>& words) {
    words.emplace_back(kSettings[row].attribute);
}

// The name of the library in one entry of the list.
std::string_view library_name(std::string_view entry) {
    return trim_left_view(entry.substr(0, entry.find('.')));
}

}  // namespace

void KIVO_INFO::process_function_info(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& sub : section.sub_elements()) {
        const SettingRow* const row = find_row(kSettings, sub.tag_name());
        if (row == nullptr) {
            post(unknown_sub_tag(kUnknownSetting, section, sub, kWordsOf<kSettings>));
            continue;
        }
        std::string_view value;
        for (const auto& [name, text] : sub.attributes()) {
            if (name == row->attribute) {
                value = text;
            } else {
                const auto number = static_cast<std::uint32_t>(row - kSettings);
                post(unknown_attribute(kUnknownAttribute, sub, name, {gather_attribute, number}));
            }
        }
        if (const KIVO_XML_ELEMENT* child = sub.get_first_sub_element()) {
            post(unknown_sub_tag(kNestedTag, sub, *child, {}));
        }
        if (!value.empty()) {
            row->set(*this, value);
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
