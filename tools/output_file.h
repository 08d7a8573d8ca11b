#pragma once

#include <optional>
#include <string>
#include <string_view>

// Writes a file, whole or not at all: under its name stands the new content or what was there
// before. Answers why it could not be written; nothing when it was.
std::optional<std::string> write_file(const std::string& path, std::string_view content);
