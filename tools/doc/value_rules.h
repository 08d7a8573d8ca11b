#pragma once

#include <string>

#include "kivo/kivo.h"
#include "tools/doc/names.h"

// The value rules of an object as a list of sentences, in markup; empty when it has none.
std::string value_rule_list(const PageNames& names, KIVO_OBJ_INFO& object);

// A required condition: "B when A, otherwise C" for one that the library composed of three texts.
std::string requirement(const PageNames& names, const std::string& condition);
