#pragma once

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tools/doc/html.h"
#include "tools/doc/names.h"

// Writes a sequence of help texts, with the condition of each conditional one before it. Any depth
// of nesting is fine; null writes nothing. Names link. A session decides the
// conditions: what holds is written.
void write_help_text(HtmlWriter& html, const PageNames& names, KIVO_CONDITIONAL_TEXT* sequence,
                     const KIVO_SESSION* session = nullptr);

// Writes the text as paragraphs, which blank lines separate.
void write_paragraphs(HtmlWriter& html, const PageNames& names, std::string_view text);
