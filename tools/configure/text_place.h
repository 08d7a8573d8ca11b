#pragma once

#include "kivo/session/session.h"
#include "tools/description/description.h"
#include "tools/description/source_text.h"

// Where in the file the wrong part of a text stands, when the text is found as it was read in the
// element at "told"; else the element.
Place place_in_text(const Description& description, const KIVO_PLACE& told, const KIVO_FAULT& fault,
                    Sources& sources);
