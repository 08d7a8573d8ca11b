#pragma once

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "tools/doc/html.h"

// Draws a box with the function's name, input ports at its left side, output and bidirectional
// ports at its right one, as an SVG picture. Buried ports do not leave the box and are left out.
// REQUIRES: every port is one of the four port types, none is null
void write_block_symbol(HtmlWriter& html, const std::string& name,
                        const std::vector<KIVO_OBJ_INFO*>& ports);

// Whether the symbol would show any of the ports.
bool has_symbol(const std::vector<KIVO_OBJ_INFO*>& ports);
