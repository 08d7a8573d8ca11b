#pragma once

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tools/findings/finding.h"

// The whole page of a loaded description: HTML that is well-formed XML too, with its style sheet
// and pictures in it. "path" is where the description was loaded from; "warnings" are those about
// its vectors, which stand beside their pictures. With a session, the page is that of its
// configuration: conditions are decided, and values and widths are those that take effect.
std::string make_page(KIVO_INFO& info, const std::string& path,
                      const std::vector<Finding>& warnings, const KIVO_SESSION* session = nullptr);
