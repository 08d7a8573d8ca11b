#pragma once

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tools/doc/html.h"

// Writes a sequence of help texts, with the condition of each conditional one before it. Any depth
// of nesting is fine; null writes nothing. A session decides the conditions: what holds is written.
void write_help_text(HtmlWriter& html, KIVO_CONDITIONAL_TEXT* sequence,
                     const KIVO_SESSION* session = nullptr);

// Writes the text as paragraphs, which blank lines separate.
void write_paragraphs(HtmlWriter& html, std::string_view text);
