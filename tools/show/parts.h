#pragma once

#include <cstddef>
#include <string>

#include "kivo/kivo.h"
#include "tools/terminal/page.h"

// The parts of "kivo show", each leaving out what the description does not have.

void show_parameters(Page& page, KIVO_INFO& info);
void show_ports(Page& page, KIVO_INFO& info);
void show_hidden_parameters(Page& page, KIVO_INFO& info);
void show_macros(Page& page, KIVO_INFO& info);
void show_wizard_maps(Page& page, KIVO_INFO& info);
void show_vectors(Page& page, KIVO_INFO& info);
void show_help_text(Page& page, KIVO_INFO& info);

// All that the store holds as one JSON object; docs/show.schema.json says what stands where.
std::string show_json(KIVO_INFO& info, const std::string& path);

// The pieces of a conditional text, nested ones deeper.
void show_conditional_text(Page& page, KIVO_CONDITIONAL_TEXT& text, std::size_t indent);
