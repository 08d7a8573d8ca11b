#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "kivo/kivo.h"

// The width in bits that the port declares, when it is a number or the default of a parameter, and
// one that a picture or file can have.
std::optional<std::size_t> declared_width(const KIVO_INFO& info, const std::string& port);
