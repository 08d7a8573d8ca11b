#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "tools/doc/help_text.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"
#include "tools/wave/drivers.h"
#include "tools/wave/renderers.h"
#include "tools/wave/wave_model.h"
#include "tools/wave/wave_notes.h"

namespace {

// Of one picture, and of all of a page together: a page is for browsers, and a description of a few
// hundred bytes can ask for any number of transitions.
constexpr std::size_t kMaxPictureBytes = 2'000'000;
constexpr std::size_t kMaxPictureTransitions = 1'000'000;
constexpr std::size_t kMaxBytes = 16'000'000;

std::string radix_text(const KIVO_VECTOR_DISPLAY_OBJ& format) {
    return radix_name(format.radix) +
           (format.description.empty() ? "" : " " + code_cell(format.description));
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
        facts.add("Length", text_cell(with_unit(vector.max_time, unit)));
    }
    facts.add("Step", text_cell(with_unit(vector.time_step, unit)));
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

// The conditions under which the picture is right; they are not evaluated here.
void write_conditions(HtmlWriter& html, KIVO_VECTOR_OBJ& vector) {
    const std::vector<std::string> conditions = wave_conditions(vector);
    if (conditions.empty()) {
        return;
    }
    const HtmlScope caption(html, "figcaption");
    html.text("Drawn for the case that ");
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        html.text(i == 0 ? "" : i + 1 == conditions.size() ? " and " : ", ");
        html.element("code", conditions[i]);
    }
    html.text(conditions.size() == 1 ? " holds." : " hold.");
}

// The commands that apply to a configuration.
void write_decided_stimulus(HtmlWriter& html, const KIVO_VECTOR_OBJ& vector,
                            const KIVO_SESSION& session) {
    HtmlTable table("stimulus", "Stimulus of " + vector.name, {"Stimulus"});
    for (const std::string& command : session.stimulus(vector)) {
        table.add_row({code_cell(join_lines(command))});
    }
    table.write(html);
}

class WaveformSection {
public:
    WaveformSection(HtmlWriter& html, const DocSource& source)
        : html_(html), info_(source.info), session_(source.session), warnings_(source.warnings) {}

    void write(KIVO_VECTOR_OBJ& vector) {
        const HtmlScope article(html_, "article");
        html_.element("h3", vector.caption.empty() ? vector.name : join_lines(vector.caption));
        write_facts(html_, vector, join_lines(info_.time_scale));
        write_help_text(html_, vector.description, session_);
        write_picture(vector);
        for (const std::string& note : wave_notes(warnings_, vector.name)) {
            write_note(note);
        }
        session_ == nullptr ? write_stimulus(html_, vector)
                            : write_decided_stimulus(html_, vector, *session_);
    }

private:
    void write_note(const std::string& text) {
        html_.element("p", {{"class", "note"}}, as_note(text));
    }

    void write_picture(KIVO_VECTOR_OBJ& vector) {
        if (bytes_ >= kMaxBytes || transitions_ >= kMaxTransitions) {
            write_note("no picture, since those before it fill what a page can hold");
            return;
        }
        const WaveModel model =
            make_wave_model(info_, vector, {{}, session_},
                            std::min(kMaxPictureTransitions, kMaxTransitions - transitions_));
        transitions_ += model.transitions;
        if (model.signals.empty()) {
            write_note("no picture, since the vector drives no signal");
        } else {
            write_figure(vector, model);
        }
        for (const std::string& note : model.notes) {
            write_note(note);
        }
    }

    void write_figure(KIVO_VECTOR_OBJ& vector, const WaveModel& model) {
        const EmbeddedSvg svg =
            render_embedded_svg(model, fmt::format("wave-{}", ++pictures_), kMaxPictureBytes);
        bytes_ += svg.markup.size();
        {
            const HtmlScope figure(html_, "figure");
            {
                // Focus lets the keyboard scroll it.
                const HtmlScope box(html_, "div",
                                    {{"class", "scroll picture"},
                                     {"role", "group"},
                                     {"aria-label", "Waveform " + vector.name},
                                     {"tabindex", "0"}});
                html_.markup(svg.markup);
            }
            if (session_ == nullptr) {
                write_conditions(html_, vector);
            }
        }
        if (svg.rows < model.signals.size()) {
            write_note(
                fmt::format("only the first {} of {} signals are drawn, more would be too "
                            "much for a page",
                            svg.rows, model.signals.size()));
        }
    }

    HtmlWriter& html_;
    const KIVO_INFO& info_;
    const KIVO_SESSION* session_;  // may be null
    const std::vector<Finding>& warnings_;
    std::size_t pictures_ = 0;
    std::size_t bytes_ = 0;
    std::size_t transitions_ = 0;
};

}  // namespace

void write_waveforms(HtmlWriter& html, DocSource& source) {
    WaveformSection section(html, source);
    const std::set<std::string> others = vectors_left_out(source.session);
    source.info.reset_vector_map();
    while (KIVO_VECTOR_OBJ* vector = source.info.get_next_vector_obj()) {
        if (others.count(vector->name) == 0) {
            section.write(*vector);
        }
    }
}
