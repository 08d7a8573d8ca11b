#pragma once

#include <cstdint>
#include <string>

#include "kivo/export.h"
#include "kivo/toolkit/records/obj_list.h"

// Evaluates one stimulus command ("force -hex data 0 0,F 10,-repeat 20") at one time, in the time
// unit of the description. True when the command makes a transition at exactly that time. "signal"
// and "value" are always written: the signal's name (empty after a cancel) and its new value,
// empty for none. Values of "-bin", "-hex" and fixed-point commands come as "0b" and binary digits.
// A malformed command answers false; an item that cannot be read is ignored.
KIVO_API bool kivo_get_transition_at_time(std::string command, std::int32_t time,
                                          std::string& signal, std::string& value);

// Evaluates the commands of a list of KIVO_RULE_ELEMENTs from its cursor on, up to the first that
// makes a transition: then true, with the cursor after that command, so that the next call goes
// on there. At the end resets the cursor and returns false. "signal" and "value" hold what the
// last command evaluated left in them.
// REQUIRES: stimulus != nullptr
KIVO_API bool kivo_get_vector_transition(KIVO_OBJ_LIST* stimulus, std::int32_t time,
                                         std::string& signal, std::string& value);

// Whether any command of the list drives the signal (exact name). Starts at the list's first
// command; leaves the cursor after the one found.
// REQUIRES: stimulus != nullptr
KIVO_API bool kivo_stimulus_exists(KIVO_OBJ_LIST* stimulus, const std::string& signal);
