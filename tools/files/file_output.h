#pragma once

#include <optional>
#include <string>
#include <string_view>

// Makes "content" the whole content of the file at "path": a new file beside it takes its place
// once it is complete, so that nobody ever sees half of it. Devices and pipes are written directly.
// Returns nothing when done, else the reason ("No space left on device"); what stood at "path"
// before is then untouched.
std::optional<std::string> write_file(const std::string& path, std::string_view content);

// Whether what is written to the one path would replace the file at the other, which need not exist
// yet.
bool is_same_file(const std::string& left, const std::string& right);
