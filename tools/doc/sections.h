#pragma once

#include <map>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tools/doc/html.h"
#include "tools/doc/names.h"
#include "tools/findings/finding.h"

// What the sections of a page are written from.
struct DocSource {
    KIVO_INFO& info;
    std::string function;  // a name for the function, never empty
    const std::vector<Finding>& findings;
    // The objects of the store, in the order in which they were declared.
    std::vector<KIVO_OBJ_INFO*> parameters;
    std::vector<KIVO_OBJ_INFO*> ports;
    std::vector<KIVO_OBJ_INFO*> hidden_parameters;
    std::vector<KIVO_OBJ_INFO*> macros;
    const KIVO_SESSION* session;  // the configuration to be shown; null for none
    PageNames names;              // of all objects and of the waveforms
    // The ids of the objects and waveforms, in their order.
    std::map<const KIVO_OBJ*, std::string> ids;
};

// Each writes the content of one section, and nothing when the description has none.
void write_introduction(HtmlWriter& html, DocSource& source);
void write_symbol(HtmlWriter& html, DocSource& source);
void write_parameters(HtmlWriter& html, DocSource& source);
void write_ports(HtmlWriter& html, DocSource& source);
void write_hidden_parameters(HtmlWriter& html, DocSource& source);
void write_macros(HtmlWriter& html, DocSource& source);
void write_rules(HtmlWriter& html, DocSource& source);
void write_verdicts(HtmlWriter& html, DocSource& source);
void write_messages(HtmlWriter& html, DocSource& source);
void write_waveforms(HtmlWriter& html, DocSource& source);
void write_wizard_maps(HtmlWriter& html, DocSource& source);
void write_closing_text(HtmlWriter& html, DocSource& source);
void write_simulation(HtmlWriter& html, DocSource& source);
void write_problems(HtmlWriter& html, DocSource& source);
