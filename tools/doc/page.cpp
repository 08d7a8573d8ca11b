#include "tools/doc/page.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "tools/doc/html.h"
#include "tools/doc/sections.h"
#include "tools/doc/style.h"
#include "tools/doc/table.h"
#include "tools/text/text_escape.h"
#include "tools/text/words.h"

namespace {

struct SectionRow {
    const char* id;
    const char* title;
    void (*write)(HtmlWriter& html, DocSource& source);
};

// clang-format off
constexpr SectionRow kSections[] = {
    { "introduction",      "Introduction",                write_introduction },
    { "symbol",            "Block symbol",                write_symbol },
    { "parameters",        "Parameters",                  write_parameters },
    { "ports",             "Ports",                       write_ports },
    { "hidden-parameters", "Hidden parameters",           write_hidden_parameters },
    { "macros",            "Macros",                      write_macros },
    { "rules",             "Rules",                       write_rules },
    { "verdicts",          "What is wrong with it",       write_verdicts },
    { "messages",          "Messages",                    write_messages },
    { "waveforms",         "Waveforms",                   write_waveforms },
    { "wizard-maps",       "Wizard maps",                 write_wizard_maps },
    { "notes",             "Notes",                       write_closing_text },
    { "simulation",        "Simulation",                  write_simulation },
    { "problems",          "Problems in the description", write_problems },
};
// clang-format on

struct Section {
    const SectionRow* row;
    std::string content;
};

std::string file_name_of(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

std::string function_of(const KIVO_INFO& info, const std::string& path) {
    if (!info.function_name.empty()) {
        return info.function_name;
    }
    const std::string file = file_name_of(path);
    return file.empty() ? "function" : file.substr(0, file.find_last_of('.'));
}

void name_all(DocSource& source) {
    const auto add = [&source](const char* kind, const std::vector<KIVO_OBJ_INFO*>& objects) {
        // Those beyond have no row to link to.
        const std::size_t count = std::min(objects.size(), HtmlTable::kMostRows);
        for (std::size_t i = 0; i < count; ++i) {
            source.ids[objects[i]] = source.names.add(kind, objects[i]->name);
        }
    };
    add("parameter", source.parameters);
    add("port", source.ports);
    add("hidden-parameter", source.hidden_parameters);
    add("macro", source.macros);
    source.info.reset_vector_map();
    while (const KIVO_VECTOR_OBJ* vector = source.info.get_next_vector_obj()) {
        source.ids[vector] = source.names.add("waveform", vector->name);
    }
}

DocSource make_source(KIVO_INFO& info, const std::string& path,
                      const std::vector<Finding>& findings, const KIVO_SESSION* session) {
    DocSource source{info, function_of(info, path), findings, {}, {}, {}, {}, session, {}, {}};
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        if (kivo_is_port(object->obj_type)) {
            source.ports.push_back(object);
        } else if (kivo_is_parameter(object->obj_type)) {
            source.parameters.push_back(object);
        } else if (object->obj_type == KIVO_OBJ_HIDDEN_PARAMETER) {
            source.hidden_parameters.push_back(object);
        } else if (object->obj_type == KIVO_OBJ_MACRO) {
            source.macros.push_back(object);
        }
    }
    name_all(source);
    return source;
}

std::vector<Section> make_sections(DocSource& source) {
    std::vector<Section> sections;
    for (const SectionRow& row : kSections) {
        HtmlWriter content;
        row.write(content, source);
        if (!content.empty()) {
            sections.push_back({&row, content.result()});
        }
    }
    return sections;
}

std::string title_of(const DocSource& source) {
    const KIVO_TEXT_OBJ* const help = source.info.html_text;
    const std::string title = help == nullptr ? std::string() : join_lines(help->title);
    return title.empty() ? source.function : title;
}

void write_head(HtmlWriter& html, const std::string& title) {
    const HtmlScope head(html, "head");
    html.void_element("meta", {{"charset", "utf-8"}});
    html.void_element("meta",
                      {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
    html.void_element("meta", {{"name", "color-scheme"}, {"content", "light dark"}});
    html.element("title", title);
    const HtmlScope style(html, "style");
    html.markup(kStyleSheet);
}

void write_settings(HtmlWriter& html, const KIVO_SESSION& session) {
    const char* before = ", configured with ";
    for (const KIVO_ASSIGNMENT& each : session.assignments()) {
        html.text(before);
        html.element("code", each.name + "=" + each.value);
        before = ", ";
    }
}

// Above all else: a page with gaps must not look whole.
void write_alert(HtmlWriter& html, const std::vector<Finding>& findings) {
    if (findings.empty()) {
        return;
    }
    const auto errors = static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(),
                      [](const Finding& finding) { return finding.severity == Severity::kError; }));
    const std::size_t warnings = findings.size() - errors;
    const HtmlScope alert(html, "p", {{"class", errors > 0 ? "alert error" : "alert"}});
    html.text("The description has ");
    html.text(errors > 0 ? counted(errors, "error") : "");
    html.text(errors > 0 && warnings > 0 ? " and " : "");
    html.text(warnings > 0 ? counted(warnings, "warning") : "");
    html.text(errors > 0 ? "; parts of it may be missing here. " : ". ");
    html.element("a", {{"href", "#problems"}}, "What is wrong");
}

void write_banner(HtmlWriter& html, const DocSource& source, const std::string& title,
                  const std::string& path) {
    const HtmlScope header(html, "header");
    html.element("h1", title);
    const KIVO_TEXT_OBJ* const help = source.info.html_text;
    if (help != nullptr && !help->header.empty()) {
        html.element("p", {{"class", "subtitle"}}, join_lines(help->header));
    }
    {
        const HtmlScope line(html, "p", {{"class", "origin"}});
        html.text("Function ");
        html.element("code", source.function);
        html.text(", described in ");
        html.element("code", file_name_of(path));
        if (source.session != nullptr) {
            write_settings(html, *source.session);
        }
    }
    write_alert(html, source.findings);
}

void write_contents(HtmlWriter& html, const std::vector<Section>& sections) {
    if (sections.empty()) {
        return;
    }
    const HtmlScope nav(html, "nav", {{"aria-labelledby", "contents"}});
    html.element("h2", {{"id", "contents"}}, "Contents");
    const HtmlScope list(html, "ol");
    for (const Section& section : sections) {
        const HtmlScope item(html, "li");
        html.element("a", {{"href", std::string("#") + section.row->id}}, section.row->title);
    }
}

void write_sections(HtmlWriter& html, const std::vector<Section>& sections) {
    const HtmlScope main(html, "main");
    if (sections.empty()) {
        html.element("p", "The description is empty.");
    }
    for (const Section& section : sections) {
        const std::string heading = std::string(section.row->id) + "-heading";
        const HtmlScope element(html, "section",
                                {{"id", section.row->id}, {"aria-labelledby", heading}});
        html.element("h2", {{"id", heading}}, section.row->title);
        html.markup(section.content);
    }
}

}  // namespace

std::string make_page(KIVO_INFO& info, const std::string& path,
                      const std::vector<Finding>& findings, const KIVO_SESSION* session) {
    DocSource source = make_source(info, path, findings, session);
    const std::vector<Section> sections = make_sections(source);
    const std::string title = title_of(source);
    HtmlWriter html;
    html.markup("<!DOCTYPE html>\n");
    {
        const HtmlScope root(html, "html", {{"lang", "en"}});
        write_head(html, title);
        const HtmlScope body(html, "body");
        write_banner(html, source, title, path);
        write_contents(html, sections);
        write_sections(html, sections);
    }
    return html.result();
}
