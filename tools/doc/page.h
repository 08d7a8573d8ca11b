#pragma once

#include <string>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

// The whole page of a loaded description: HTML that is well-formed XML too, with its style sheet
// and pictures in it. "path" is where the description was loaded from.
// With a session, the page is that of its configuration: conditions are decided, and values and
// widths are those that take effect.
std::string make_page(KIVO_INFO& info, const std::string& path,
                      const KIVO_SESSION* session = nullptr);
