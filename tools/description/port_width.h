#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

// The width in bits that the port declares, when it is a number and one that a picture or file can
// have, and the port has one dimension.
std::optional<std::size_t> numeric_width(const KIVO_INFO& info, const std::string& port);

// The width of the port in a configuration, when it is known and one that a picture can have.
std::optional<std::size_t> configured_width(const KIVO_SESSION& session, const std::string& port);
