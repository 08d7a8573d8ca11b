#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kivo/kivo.h"

// The items of a list of values ("AUTO; BLOCK"), without the blanks around them. Empty ones do not
// count.
std::vector<std::string> list_items(const std::string& list);

// The value that an object has when nobody sets it: its default as text, or the item of its list
// of values that its index names, from 0. Nothing when the list has no such item.
std::optional<std::string> default_of(const KIVO_OBJ_INFO& object);

// What stands in place of a default that the list does not have: its index, with a note.
std::string missing_default(const KIVO_OBJ_INFO& object);
