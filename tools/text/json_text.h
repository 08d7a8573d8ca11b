#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

// A document as the program writes it: indented, pure ASCII, which cannot steer a terminal, and
// with U+FFFD for what is not UTF-8. No line end after it.
std::string json_text(const nlohmann::ordered_json& document);
