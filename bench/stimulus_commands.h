#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct StimulusCall {
    std::string command;
    std::int32_t time;
};

// Commands of 30 to 80 characters as descriptions hold them, each at several times: with a
// transition, between two, and in its repetition.
const std::vector<StimulusCall>& stimulus_calls();
