#pragma once

#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"
#include "tools/findings/finding.h"

// The whole page of a loaded description: HTML that is well-formed XML too, with its style sheet
// and pictures in it. "path" is where the description was loaded from, "findings" what is wrong
// with it.
std::string make_page(KIVO_INFO& info, const std::string& path,
                      const std::vector<Finding>& findings, const KIVO_SESSION* session = nullptr);
