#pragma once

#include <string_view>

// Writes all of it to an open file. The errno of the call that failed, 0 for none.
int write_all(int file, std::string_view content);
