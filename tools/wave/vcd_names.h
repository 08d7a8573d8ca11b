#pragma once

#include <string>
#include <vector>

#include "tools/wave/wave_model.h"

// Names as every reader of dumps takes them: letters, digits and "_", each once.
struct VcdNames {
    std::string scope;
    std::vector<std::string> signals;  // without the range of bits
};

VcdNames make_vcd_names(const WaveModel& model);

// "[7:0]", empty for a single bit.
std::string vcd_range(const WaveSignal& signal);
