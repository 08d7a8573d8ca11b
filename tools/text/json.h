#pragma once

// The JSON library of the program; nothing else includes it directly. The destructor of its values
// asserts, in builds for debugging, what does not hold of one whose constructor ran out of memory.
#define JSON_ASSERT(condition) static_cast<void>(0)

#include <nlohmann/json.hpp>
