#pragma once

#include <string>

// Reachable through kivo_static alone; libkivo.so does not export them.

// Whether a regular file of that path exists; a directory, a pipe or a device does not count.
bool dro_file_exists(const std::string& path);

// The directory from which the library itself was loaded, with a "/" at its end.
std::string dro_get_library_module_path();
