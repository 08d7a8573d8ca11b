#pragma once

#include <cstdint>
#include <string>

#include "kivo/toolkit/records/obj_list.h"

// The stimulus functions once more, written as plainly as they can be thought of: one step after
// the other over copies of strings. What the library's answers and speed are compared with.
namespace stimulus_reference {

bool get_transition_at_time(std::string command, std::int32_t time, std::string& signal,
                            std::string& value);
bool get_vector_transition(KIVO_OBJ_LIST* stimulus, std::int32_t time, std::string& signal,
                           std::string& value);
bool stimulus_exists(KIVO_OBJ_LIST* stimulus, const std::string& signal);

}  // namespace stimulus_reference
