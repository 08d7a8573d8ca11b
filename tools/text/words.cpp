#include "tools/text/words.h"

#include <fmt/format.h>

#include <algorithm>
#include <cassert>
#include <iterator>

namespace {

struct RadixRow {
    DRO_MEMORY_RADIXES radix;
    const char* name;
    const char* id;
};

// The last row is for whatever else.
// clang-format off
constexpr RadixRow kRadixes[] = {
    { DRO_RADIX_BINARY,      "binary",      "binary"      },
    { DRO_RADIX_SIGNED,      "signed",      "signed"      },
    { DRO_RADIX_UNSIGNED,    "unsigned",    "unsigned"    },
    { DRO_RADIX_HEX,         "hexadecimal", "hex"         },
    { DRO_RADIX_OCTAL,       "octal",       "octal"       },
    { DRO_RADIX_FIXED_POINT, "fixed point", "fixed_point" },
    { DRO_RADIX_NONE,        "as written",  "none"        },
};
// clang-format on

const RadixRow& row_of(DRO_MEMORY_RADIXES radix) {
    return *std::find_if(std::begin(kRadixes), std::end(kRadixes) - 1,
                         [radix](const RadixRow& row) { return row.radix == radix; });
}

}  // namespace

std::string unit_of_times(const std::string& scale) {
    const bool is_unit = !scale.empty() && scale.find_first_of("0123456789") == std::string::npos;
    return is_unit ? ' ' + scale : std::string();
}

std::string with_unit(std::int64_t time, const std::string& scale) {
    return fmt::format("{}{}", time, unit_of_times(scale));
}

std::string counted(std::size_t count, const std::string& noun) {
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string as_note(const std::string& text) {
    return "Note: " + text + ".";
}

std::string quoted(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "'" : ", '") + name + '\'';
    }
    return text.empty() ? "none" : text;
}

std::string quoted_choice(const std::vector<std::string>& names) {
    assert(!names.empty());
    const std::string last = '\'' + names.back() + '\'';
    return names.size() == 1 ? last : quoted({names.begin(), names.end() - 1}) + " or " + last;
}

std::string radix_name(DRO_MEMORY_RADIXES radix) {
    return row_of(radix).name;
}

const char* radix_id(DRO_MEMORY_RADIXES radix) {
    return row_of(radix).id;
}

std::string connection_name(std::int32_t cnx_type) {
    switch (cnx_type) {
        case 0:
            return "private";
        case 1:
            return "constant";
        case 2:
            return "used port";
        default:
            return "";
    }
}
