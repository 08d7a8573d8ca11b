#include <string>

#include "tools/doc/help_text.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/text_escape.h"

namespace {

std::string with_unit(std::int32_t time, const std::string& unit) {
    return text_cell(std::to_string(time) + (unit.empty() ? "" : " " + unit));
}

std::string radix_text(const KIVO_VECTOR_DISPLAY_OBJ& format) {
    switch (format.radix) {
        case DRO_RADIX_BINARY:
            return "binary";
        case DRO_RADIX_SIGNED:
            return "signed";
        case DRO_RADIX_UNSIGNED:
            return "unsigned";
        case DRO_RADIX_HEX:
            return "hexadecimal";
        case DRO_RADIX_FIXED_POINT:
            return "fixed point " + code_cell(format.description);
        default:
            return "as written";
    }
}

std::string display_formats(KIVO_VECTOR_OBJ& vector) {
    std::string markup;
    std::string port;
    vector.display_format_map.reset();
    while (const KIVO_OBJ* entry = vector.display_format_map.get_next_entry(port)) {
        if (const auto* format = dynamic_cast<const KIVO_VECTOR_DISPLAY_OBJ*>(entry)) {
            markup += (markup.empty() ? "" : ", ") + code_cell(port) + " " + radix_text(*format);
        }
    }
    return markup;
}

void write_facts(HtmlWriter& html, KIVO_VECTOR_OBJ& vector, const std::string& unit) {
    FactList facts;
    facts.add("Name", code_cell(vector.name));
    if (vector.wave_condition != nullptr) {
        facts.add("Applies", "when " + code_cell(join_lines(vector.wave_condition->text3)));
    }
    if (vector.max_time >= 0) {
        facts.add("Length", with_unit(vector.max_time, unit));
    }
    facts.add("Step", with_unit(vector.time_step, unit));
    facts.add("Values shown as", display_formats(vector));
    facts.write(html);
}

void write_stimulus(HtmlWriter& html, KIVO_VECTOR_OBJ& vector) {
    HtmlTable table("stimulus", "Stimulus of " + vector.name, {"Stimulus", "If", "Otherwise"});
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        table.add_row({code_cell(join_lines(entry->text1)), code_cell(join_lines(entry->text3)),
                       code_cell(join_lines(entry->text2))});
    }
    table.write(html);
}

void write_waveform(HtmlWriter& html, KIVO_VECTOR_OBJ& vector, const std::string& unit) {
    const HtmlScope article(html, "article");
    html.element("h3", vector.caption.empty() ? vector.name : join_lines(vector.caption));
    write_facts(html, vector, unit);
    write_help_text(html, vector.description);
    write_stimulus(html, vector);
}

}  // namespace

void write_waveforms(HtmlWriter& html, DocSource& source) {
    source.info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = source.info.get_next_vector_obj()) {
        write_waveform(html, *vector, source.info.time_scale);
    }
}
