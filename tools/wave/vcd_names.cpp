#include "tools/wave/vcd_names.h"

#include <fmt/format.h>

#include <set>

#include "tools/text/letters.h"

namespace {

std::string plain_name(const std::string& name) {
    std::string plain;
    for (const char letter : name) {
        plain += is_letter_or_digit(letter) ? letter : '_';
    }
    return plain.empty() || is_digit(plain.front()) ? "_" + plain : plain;
}

}  // namespace

VcdNames make_vcd_names(const WaveModel& model) {
    VcdNames names;
    names.scope = plain_name(model.name);
    std::set<std::string> taken;
    std::size_t next_number = 2;
    for (const WaveSignal& signal : model.signals) {
        const std::string plain = plain_name(signal.name);
        std::string name = plain;
        while (!taken.insert(name).second) {
            name = fmt::format("{}_{}", plain, next_number++);
        }
        names.signals.push_back(name);
    }
    return names;
}

std::string vcd_range(const WaveSignal& signal) {
    return signal.width == 1 ? std::string() : fmt::format("[{}:0]", signal.width - 1);
}
