#pragma once

#include "tools/lint/lint.h"

// Files of which nothing is read because their root is not ROOT.
void find_foreign_roots(Lint& lint);
