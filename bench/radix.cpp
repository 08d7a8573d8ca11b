#include "kivo/toolkit/radix/radix.h"

#include <cstring>

#include "settings.h"

namespace {

// A number of so many digits without any pattern to it, always the same.
std::string digits(std::size_t count, unsigned radix) {
    std::string number;
    unsigned state = 1;
    for (std::size_t i = 0; i < count; ++i) {
        state = state * 1664525 + 1013904223;
        const unsigned digit = i == 0 ? 1 : (state >> 16) % radix;
        number += "0123456789ABCDEF"[digit];
    }
    return number;
}

Work convert(const std::string& number, DRO_MEMORY_RADIXES from, DRO_MEMORY_RADIXES to) {
    return timed([=] {
        std::string converted;
        require(dro_radix_conversion(number, &converted, from, to, 0), "a number is refused");
        benchmark::DoNotOptimize(converted.data());
    });
}

Work copy(const std::string& bytes) {
    return timed([bytes, to = std::string(bytes.size(), ' ')]() mutable {
        std::memcpy(to.data(), bytes.data(), bytes.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    });
}

void register_pattern(const Settings& settings, Results& results, const std::string& what,
                      unsigned radix, DRO_MEMORY_RADIXES from, DRO_MEMORY_RADIXES to) {
    const std::string name = what + ", " + std::to_string(settings.pattern_digits) + " digits";
    register_rounds(name.c_str(), settings.rounds, [=, &results](benchmark::State& state) {
        const std::string number = digits(settings.pattern_digits, radix);
        results.add_cost(
            name, "memcpy of its input",
            compare(state, convert(number, from, to), copy(number), settings.batch_seconds), "");
    });
}

void register_decimal(const Settings& settings, Results& results, std::size_t count, int rounds) {
    const std::string suffix = ", " + std::to_string(count) + " digits";
    const double batch = settings.batch_seconds;
    register_rounds(("decimal to hexadecimal" + suffix).c_str(), rounds,
                    [=, &results](benchmark::State& state) {
                        const Work work =
                            convert(digits(count, 10), DRO_RADIX_UNSIGNED, DRO_RADIX_HEX);
                        results.add_single("decimal to hexadecimal" + suffix,
                                           format_time(measure(state, work, batch)), "");
                    });
    register_rounds(("hexadecimal to decimal" + suffix).c_str(), rounds,
                    [=, &results](benchmark::State& state) {
                        std::string number;
                        require(dro_radix_conversion(digits(count, 10), &number, DRO_RADIX_UNSIGNED,
                                                     DRO_RADIX_HEX, 0),
                                "a number is refused");
                        const Work work = convert(number, DRO_RADIX_HEX, DRO_RADIX_UNSIGNED);
                        results.add_single("hexadecimal to decimal" + suffix,
                                           format_time(measure(state, work, batch)), "");
                    });
}

}  // namespace

void register_radix(const Settings& settings, Results& results) {
    register_pattern(settings, results, "binary to hexadecimal", 2, DRO_RADIX_BINARY,
                     DRO_RADIX_HEX);
    register_pattern(settings, results, "hexadecimal to binary", 16, DRO_RADIX_HEX,
                     DRO_RADIX_BINARY);
    register_decimal(settings, results, settings.decimal_digits / 100, settings.rounds);
    register_decimal(settings, results, settings.decimal_digits, settings.large_rounds);
}
