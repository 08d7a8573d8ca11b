#include "results.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

using Cells = std::array<std::string, 6>;

std::string format_number(double number, const char* unit) {
    const int digits = number < 10 ? 2 : number < 100 ? 1 : 0;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f%s", digits, number, unit);
    return text;
}

Cells cells_of(const Results::Row& row) {
    return {row.what, row.ours, row.against, row.theirs, row.ratio, row.goal};
}

}  // namespace

void Results::add_cost(const std::string& what, const std::string& against,
                       const Comparison& measured, const std::string& goal) {
    add({what, format_time(measured.ours), against, format_time(measured.theirs),
         format_ratio(measured.ratio) + " x", goal});
}

void Results::add_speed(const std::string& what, const std::string& against,
                        const Comparison& measured, const std::string& goal) {
    add({what, format_time(measured.ours), against, format_time(measured.theirs),
         format_ratio(1 / measured.ratio) + " x faster", goal});
}

void Results::add_single(const std::string& what, const std::string& ours,
                         const std::string& goal) {
    add({what, ours, "", "", "", goal});
}

void Results::print(std::ostream& to) const {
    std::vector<Cells> lines = {{"measurement", "kivo", "compared with", "", "ratio", "goal"}};
    std::array<std::size_t, 6> widths{};
    for (const Row& row : rows_) {
        lines.push_back(cells_of(row));
    }
    for (const Cells& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            widths[i] = std::max(widths[i], line[i].size());
        }
    }
    Cells rule;
    for (std::size_t i = 0; i < rule.size(); ++i) {
        rule[i].assign(widths[i], '-');
    }
    lines.insert(lines.begin() + 1, rule);
    for (const Cells& line : lines) {
        for (std::size_t i = 0; i < line.size(); ++i) {
            to << "| " << line[i] << std::string(widths[i] - line[i].size() + 1, ' ');
        }
        to << "|\n";
    }
}

std::string format_time(double seconds) {
    return seconds < 1e-6   ? format_number(seconds * 1e9, " ns")
           : seconds < 1e-3 ? format_number(seconds * 1e6, " us")
           : seconds < 1    ? format_number(seconds * 1e3, " ms")
                            : format_number(seconds, " s");
}

std::string format_size(std::size_t bytes) {
    const double size = static_cast<double>(bytes);
    return bytes < 1000000 ? format_number(size / 1e3, " kB") : format_number(size / 1e6, " MB");
}

std::string format_ratio(double ratio) {
    return format_number(ratio, "");
}
