#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tools/doc/cell.h"
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
// Of one vector, beside the one in which they hold: nobody looks at more.
constexpr std::size_t kMaxOtherCases = 8;

std::string radix_text(const KIVO_VECTOR_DISPLAY_OBJ& format) {
    return radix_name(format.radix) +
           (format.description.empty() ? "" : " " + code_cell(format.description));
}

std::string display_formats(const PageNames& names, KIVO_VECTOR_OBJ& vector) {
    std::string markup;
    std::string port;
    vector.display_format_map.reset();
    while (const KIVO_OBJ* entry = vector.display_format_map.get_next_entry(port)) {
        if (const auto* format = dynamic_cast<const KIVO_VECTOR_DISPLAY_OBJ*>(entry)) {
            markup += (markup.empty() ? "" : ", ") + expression_cell(names, port) + " " +
                      radix_text(*format);
        }
    }
    return markup;
}

void write_facts(HtmlWriter& html, const PageNames& names, KIVO_VECTOR_OBJ& vector,
                 const std::string& unit) {
    FactList facts;
    facts.add("Name", code_cell(vector.name));
    if (vector.wave_condition != nullptr) {
        facts.add("Applies",
                  "when " + expression_cell(names, join_lines(vector.wave_condition->text3)));
    }
    if (vector.max_time >= 0) {
        facts.add("Length", time_cell(vector.max_time, unit));
    }
    facts.add("Step", time_cell(vector.time_step, unit));
    facts.add("Values shown as", display_formats(names, vector));
    facts.write(html);
}

void write_stimulus(HtmlWriter& html, const PageNames& names, KIVO_VECTOR_OBJ& vector) {
    HtmlTable table("stimulus", "Stimulus of " + vector.name, {"Stimulus", "If", "Otherwise"});
    vector.stimulus_list.reset();
    while (const KIVO_RULE_ELEMENT* entry = vector.get_next_vector_stimulus()) {
        table.add_row({command_cell(names, join_lines(entry->text1)),
                       expression_cell(names, join_lines(entry->text3)),
                       command_cell(names, join_lines(entry->text2))});
    }
    table.write(html);
}

// One of the cases in which a vector is drawn: its conditions hold, or all but one.
struct DrawnCase {
    const std::vector<std::string>& conditions;
    std::size_t failing;  // position of the one that does not; none: their number

    bool is_main() const { return failing == conditions.size(); }
    std::vector<std::string> otherwise() const {
        return is_main() ? std::vector<std::string>() : std::vector{conditions[failing]};
    }
};

// The commands that apply to a configuration.
void write_decided_stimulus(HtmlWriter& html, const PageNames& names, const KIVO_VECTOR_OBJ& vector,
                            const KIVO_SESSION& session) {
    HtmlTable table("stimulus", "Stimulus of " + vector.name, {"Stimulus"});
    for (const std::string& command : session.stimulus(vector)) {
        table.add_row({command_cell(names, join_lines(command))});
    }
    table.write(html);
}

class WaveformSection {
public:
    WaveformSection(HtmlWriter& html, DocSource& source)
        : html_(html), source_(source), names_(source.names) {
        if (source.session == nullptr) {
            defaults_.emplace(source.info);
        }
    }

    void write(KIVO_VECTOR_OBJ& vector) {
        const HtmlScope article(html_, "article", {{"id", source_.ids[&vector]}});
        html_.element("h3", vector.caption.empty() ? vector.name : join_lines(vector.caption));
        write_facts(html_, names_, vector, join_lines(source_.info.time_scale));
        write_help_text(html_, names_, vector.description, source_.session);
        write_cases(vector);
        for (const std::string& note : wave_notes(source_.findings, vector.name)) {
            write_note(note);
        }
        if (source_.session == nullptr) {
            write_stimulus(html_, names_, vector);
        } else {
            write_decided_stimulus(html_, names_, vector, *source_.session);
        }
    }

private:
    void write_note(const std::string& text) {
        html_.element("p", {{"class", "note"}}, as_note(text));
    }

    void write_cases(KIVO_VECTOR_OBJ& vector) {
        // A configuration decides them.
        const std::vector<std::string> conditions =
            source_.session == nullptr ? wave_conditions(vector) : std::vector<std::string>();
        if (conditions.empty()) {
            write_picture(vector, {conditions, 0}, "");
            return;
        }
        const std::string group = fmt::format("cases-{}", ++groups_);
        const std::size_t others = std::min(conditions.size(), kMaxOtherCases);
        {
            const HtmlScope cases(html_, "div",
                                  {{"class", "cases"},
                                   {"role", "group"},
                                   {"aria-label", "Cases of the waveform " + vector.name}});
            write_picture(vector, {conditions, conditions.size()}, group);
            for (std::size_t failing = 0; failing < others && has_room(); ++failing) {
                write_picture(vector, {conditions, failing}, group);
            }
        }
        if (others < conditions.size()) {
            write_note(fmt::format("only the first {} of {} conditions are drawn as not holding",
                                   others, conditions.size()));
        }
    }

    bool has_room() const { return bytes_ < kMaxBytes && transitions_ < kMaxTransitions; }

    void write_picture(KIVO_VECTOR_OBJ& vector, const DrawnCase& drawn, const std::string& group) {
        if (!has_room()) {
            write_note("no picture, since those before it fill what a page can hold");
            return;
        }
        const WaveModel model =
            make_wave_model(source_.info, vector,
                            {drawn.otherwise(), source_.session, defaults_ ? &*defaults_ : nullptr},
                            std::min(kMaxPictureTransitions, kMaxTransitions - transitions_));
        transitions_ += model.transitions;
        if (!group.empty()) {
            write_choice(drawn, group);
        }
        const HtmlScope panel(html_, "div",
                              {{"class", drawn.is_main() ? "case" : "case otherwise"}});
        if (model.signals.empty()) {
            write_note("no picture, since the vector drives no signal");
        } else {
            write_figure(vector, drawn, model);
        }
        for (const std::string& note : model.notes) {
            write_note(note);
        }
    }

    // What brings the picture of the case to the front.
    void write_choice(const DrawnCase& drawn, const std::string& group) {
        const std::string id =
            group + (drawn.is_main() ? "" : fmt::format("-not-{}", drawn.failing + 1));
        if (drawn.is_main()) {
            html_.void_element(
                "input", {{"type", "radio"}, {"name", group}, {"id", id}, {"checked", "checked"}});
        } else {
            html_.void_element("input", {{"type", "radio"}, {"name", group}, {"id", id}});
        }
        const HtmlScope label(html_, "label", {{"for", id}});
        if (!drawn.is_main()) {
            html_.text("not ");
            html_.element("code", drawn.conditions[drawn.failing]);
        } else if (drawn.conditions.size() == 1) {
            html_.element("code", drawn.conditions.front());
        } else {
            html_.text("all conditions hold");
        }
    }

    // The conditions under which the picture is right; they are not evaluated here.
    void write_conditions(const DrawnCase& drawn) {
        std::vector<std::string> holding = drawn.conditions;
        if (!drawn.is_main()) {
            holding.erase(holding.begin() + static_cast<std::ptrdiff_t>(drawn.failing));
        }
        if (drawn.conditions.empty()) {
            return;
        }
        const HtmlScope caption(html_, "figcaption");
        html_.text("Drawn for the case that ");
        for (std::size_t i = 0; i < holding.size(); ++i) {
            html_.text(i == 0 ? "" : i + 1 == holding.size() ? " and " : ", ");
            html_.markup(expression_cell(names_, holding[i]));
        }
        html_.text(holding.empty() ? "" : holding.size() == 1 ? " holds" : " hold");
        if (!drawn.is_main()) {
            html_.text(holding.empty() ? "" : " and ");
            html_.markup(expression_cell(names_, drawn.conditions[drawn.failing]));
            html_.text(" does not hold");
        }
        html_.text(".");
    }

    void write_figure(KIVO_VECTOR_OBJ& vector, const DrawnCase& drawn, const WaveModel& model) {
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
            write_conditions(drawn);
        }
        if (svg.rows < model.signals.size()) {
            write_note(
                fmt::format("only the first {} of {} signals are drawn, more would be too "
                            "much for a page",
                            svg.rows, model.signals.size()));
        }
    }

    HtmlWriter& html_;
    DocSource& source_;
    const PageNames& names_;
    std::optional<KIVO_SESSION> defaults_;  // without a configuration
    std::size_t groups_ = 0;
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
