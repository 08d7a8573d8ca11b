#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "kivo/session/session.h"

// The whole number that a text is, or comes to when it is a calculation with numbers alone.
std::optional<std::int64_t> constant_limit(const KIVO_SESSION& session, std::string_view text);
