#pragma once

#include <string>

// The directory, with a "/" at its end, of the file from which the code at "address" was loaded.
// "told" is what the dynamic linker calls that file, null when it has no answer. A relative name,
// as a program's own often is, is relative to a working directory that the host may have left
// since: the system is asked then, and when it does not know either, the answer is "./".
std::string directory_of_module(const char* told, const void* address);
