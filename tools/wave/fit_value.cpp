#include "tools/wave/fit_value.h"

#include "tools/text/text_width.h"

namespace {

// The mark and two digits: less tells nothing.
constexpr std::size_t kFewestColumns = 3;
constexpr std::string_view kDigits = "0123456789";

bool is_decimal(const std::string& shown, DRO_MEMORY_RADIXES radix) {
    return radix == DRO_RADIX_SIGNED || radix == DRO_RADIX_UNSIGNED ||
           radix == DRO_RADIX_FIXED_POINT || shown.front() == '-' || shown.front() == '+' ||
           shown.find('.') != std::string::npos;
}

// Whether so much of the start of a number tells its value but for decimal places.
bool is_all_but_places(const std::string& shown, std::size_t kept) {
    const std::size_t point = shown.find('.');
    return point != std::string::npos && kept > point + 1 &&
           shown.find_first_not_of(kDigits, point + 1) == std::string::npos;
}

}  // namespace

std::string fit_value(const std::string& shown, DRO_MEMORY_RADIXES radix, bool truncate_low,
                      std::size_t columns, std::string_view mark) {
    if (text_width(shown) <= columns) {
        return shown;
    }
    if (columns < kFewestColumns) {
        return {};
    }
    const std::string_view start = start_within(shown, columns - 1);
    if (is_decimal(shown, radix) && !(truncate_low && is_all_but_places(shown, start.size()))) {
        return std::string(mark);
    }
    return truncate_low ? std::string(start).append(mark)
                        : std::string(mark).append(end_within(shown, columns - 1));
}
