#include <fmt/format.h>

#include <string>

#include "tools/show/parts.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"

namespace {

void show_facts(Page& page, const KIVO_VECTOR_OBJ& vector, const std::string& scale) {
    Facts facts;
    facts.add("Caption", vector.caption);
    facts.add("Index", vector.index < 0 ? std::string() : fmt::format("{}", vector.index));
    facts.add("Max time", vector.max_time < 0 ? std::string() : with_unit(vector.max_time, scale));
    facts.add("Time step", with_unit(vector.time_step, scale));
    facts.add("Truncation", vector.truncate_low ? "low" : "high");
    facts.add("Applies if",
              vector.wave_condition == nullptr ? std::string() : vector.wave_condition->text3);
    page.table(facts.table(), 4);
}

// Entries of one condition stand together under it.
void show_stimulus(Page& page, KIVO_VECTOR_OBJ& vector) {
    std::string condition;
    bool is_first = true;
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        if (is_first) {
            page.label("Stimulus", 4);
        }
        is_first = false;
        if (entry->text3.empty()) {
            page.code(entry->text1, 6);
        } else if (entry->text3 != condition) {
            page.code("if " + join_lines(entry->text3), 6);
        }
        condition = entry->text3;
        if (!condition.empty()) {
            page.code("then  " + entry->text1, 8);
            if (!entry->text2.empty()) {
                page.code("else  " + entry->text2, 8);
            }
        }
    }
}

void show_display_formats(Page& page, KIVO_VECTOR_OBJ& vector) {
    Table formats;
    std::string port;
    vector.display_format_map.reset();
    while (KIVO_OBJ* object = vector.display_format_map.get_next_entry(port)) {
        if (const auto* format = dynamic_cast<const KIVO_VECTOR_DISPLAY_OBJ*>(object)) {
            const std::string description =
                format->description.empty() ? "" : ' ' + format->description;
            formats.add_row({port, radix_name(format->radix) + description});
        }
    }
    if (!formats.empty()) {
        page.label("Display formats", 4);
        page.table(formats, 6);
    }
}

void show_vector(Page& page, KIVO_VECTOR_OBJ& vector, const std::string& scale) {
    page.sub_heading(vector.name);
    show_facts(page, vector, scale);
    if (vector.description != nullptr) {
        page.label("Description", 4);
        show_conditional_text(page, *vector.description, 6);
    }
    show_stimulus(page, vector);
    show_display_formats(page, vector);
}

}  // namespace

void show_vectors(Page& page, KIVO_INFO& info) {
    info.reset_vector_map();
    bool is_first = true;
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        if (is_first) {
            page.heading("Vectors");
        }
        is_first = false;
        show_vector(page, *vector, info.time_scale);
    }
}
