#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "tools/text/whole_number.h"
#include "tools/wave/renderers.h"
#include "tools/wave/vcd_names.h"

namespace {

// The trace flags of GTKWave.
constexpr unsigned kHexadecimal = 0x2;
constexpr unsigned kDecimal = 0x4;
constexpr unsigned kBinary = 0x8;
constexpr unsigned kOctal = 0x10;
constexpr unsigned kRightJustified = 0x20;
constexpr unsigned kSigned = 0x400;
constexpr unsigned kFixedPoint = 0x40000000;

struct Format {
    unsigned flags = kHexadecimal;
    unsigned fraction_bits = 0;
};

// "4.12", or "s4.12" for signed numbers.
Format fixed_point_format(std::string_view description) {
    const bool is_signed = !description.empty() && description.front() == 's';
    const std::size_t point = description.find('.');
    if (point == std::string_view::npos) {
        return {};
    }
    const auto fraction_bits = whole_number<unsigned>(description.substr(point + 1));
    return fraction_bits ? Format{kFixedPoint | (is_signed ? kSigned : kDecimal), *fraction_bits}
                         : Format();
}

Format format_of(const WaveSignal& signal) {
    switch (signal.radix) {
        case DRO_RADIX_BINARY:
            return {kBinary, 0};
        case DRO_RADIX_SIGNED:
            return {kSigned, 0};
        case DRO_RADIX_UNSIGNED:
            return {kDecimal, 0};
        case DRO_RADIX_OCTAL:
            return {kOctal, 0};
        case DRO_RADIX_FIXED_POINT:
            return fixed_point_format(signal.fixed_point);
        case DRO_RADIX_HEX:
        case DRO_RADIX_NONE:
            break;
    }
    return {};
}

// Nothing for a path that the format has no way to write.
std::string path_line(std::string_view keyword, const std::string& path) {
    const std::string absolute = std::filesystem::absolute(path).string();
    if (absolute.find_first_of("\"\n\r") != std::string::npos) {
        return {};
    }
    return fmt::format("[{}] \"{}\"\n", keyword, absolute);
}

}  // namespace

std::string write_gtkw(const WaveModel& model, const std::string& dump_path,
                       const std::string& own_path) {
    const VcdNames names = make_vcd_names(model);
    std::string out = "[*] kivo\n";
    out += path_line("dumpfile", dump_path);
    out += path_line("savefile", own_path);
    out += fmt::format("[timestart] {}\n", std::max<std::int64_t>(model.start, 0));
    for (std::size_t i = 0; i < model.signals.size(); ++i) {
        const WaveSignal& signal = model.signals[i];
        const Format format = format_of(signal);
        if (format.fraction_bits > 0) {
            out += fmt::format("[fpshift_count] {}\n", format.fraction_bits);
        }
        out += fmt::format("@{:x}\n{}.{}{}\n", format.flags | kRightJustified, names.scope,
                           names.signals[i], vcd_range(signal));
    }
    return out;
}
