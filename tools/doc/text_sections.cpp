#include "tools/doc/cell.h"
#include "tools/doc/help_text.h"
#include "tools/doc/sections.h"
#include "tools/doc/table.h"
#include "tools/text/text_escape.h"

void write_introduction(HtmlWriter& html, DocSource& source) {
    if (source.info.html_text != nullptr) {
        write_help_text(html, source.names, source.info.html_text->intro, source.session);
    }
}

void write_closing_text(HtmlWriter& html, DocSource& source) {
    if (source.info.html_text != nullptr) {
        write_help_text(html, source.names, source.info.html_text->end, source.session);
    }
}

void write_simulation(HtmlWriter& html, DocSource& source) {
    const KIVO_INFO& info = source.info;
    FactList facts;
    facts.add("VHDL units", code_cell(info.vhdl_library));
    facts.add("Libraries to map", code_cell(info.get_simulation_library()));
    if (!info.time_scale.empty() || !info.time_delta.empty()) {
        facts.add("Time unit", code_cell(info.time_scale));
        facts.add("Time delta", code_cell(info.time_delta));
        facts.add("Start time", time_cell(info.start_time, join_lines(info.time_scale)));
    }
    facts.write(html);
}
