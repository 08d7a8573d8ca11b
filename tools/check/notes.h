#pragma once

#include "tools/check/finding.h"
#include "tools/check/source_text.h"
#include "tools/load.h"

// Adds what helps to understand a finding at that place: the earlier declaration with which it
// clashes, and the word that was probably meant.
void add_notes(Finding& finding, const Description& description, const KIVO_PLACE& told,
               Sources& sources);
