#pragma once

#include <string>

#include "kivo/kivo.h"

// The value rules of an object as a list of sentences, in markup; empty when it has none.
std::string value_rule_list(KIVO_OBJ_INFO& object);
