#include "tools/description/time_scale.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <system_error>

TimeScale read_time_scale(const std::string& written) {
    std::int64_t number = 1;
    const char* const end = written.data() + written.size();
    const auto read = std::from_chars(written.data(), end, number);
    const char* at = read.ec == std::errc() ? read.ptr : written.data();
    at = std::find_if(at, end, [](char letter) { return letter != ' '; });
    const std::string_view unit(at, static_cast<std::size_t>(end - at));
    constexpr std::string_view kUnits[] = {"fs", "ps", "ns", "us", "ms", "s"};
    constexpr std::int64_t kLargestNumber = 1'000'000;
    const bool is_unit = std::find(std::begin(kUnits), std::end(kUnits), unit) != std::end(kUnits);
    if (!is_unit || number < 1 || number > kLargestNumber) {
        return {};
    }
    if (number == 1 || number == 10 || number == 100) {
        return {1, fmt::format("{} {}", number, unit), true};
    }
    return {number, fmt::format("1 {}", unit), true};
}
