#include <algorithm>

#include "tools/lint/stimulus.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kBlankInName = {
    "command-blank", "{} is taken as a part of the port's name"};
constexpr LintRow kOnePort = {
    "unread-text", "{} is not read: a DISPLAY is for one port"};
constexpr LintRow kTooWide = {
    "fixed-point", "{} does not fit into {}"};
// clang-format on

constexpr std::string_view kRadixes[] = {"-bin", "-hex", "-signed", "-unsigned"};
constexpr std::string_view kFixedPoint = "-fixed_point(";

std::string_view take_word(std::string_view& rest) {
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    return word;
}

// Up to the first white space of any kind.
std::string_view without_blanks(std::string_view name) {
    std::size_t end = 0;
    while (end < name.size() && blank_length(name.substr(end)) == 0) {
        ++end;
    }
    return name.substr(0, end);
}

void check_fixed_width(const CommandSpot& at, std::string_view radix, std::string_view port) {
    const auto width = at.width_of(port);
    if (width && fixed_point_bits(radix).value_or(0) > width->bits) {
        at.post(kTooWide, at.source(), radix, quoted(radix), width->of_port(port));
    }
}

}  // namespace

void check_display(const CommandSpot& at) {
    std::string_view rest = at.source();
    const bool is_display = take_word(rest) == "add" && take_word(rest) == "wave";
    const std::string_view radix = take_word(rest);
    const std::string_view name = take_word(rest);
    const bool is_fixed_point = radix.starts_with(kFixedPoint) &&
                                radix.substr(kFixedPoint.size(), 1) != ")" &&
                                radix.size() > kFixedPoint.size();
    const bool is_known = is_fixed_point || std::find(std::begin(kRadixes), std::end(kRadixes),
                                                      radix) != std::end(kRadixes);
    if (!is_display || !is_known || name.empty()) {
        return;  // which the library tells
    }
    const std::string_view port = without_blanks(name);
    if (is_fixed_point && check_fixed_point(at, at.source(), radix)) {
        check_fixed_width(at, radix, port);
    }
    if (port.size() < name.size()) {
        const std::string_view blank = name.substr(port.size());
        at.post(kBlankInName, at.source(), blank.substr(0, blank_length(blank)),
                name_of_blank(blank));
    } else if (!is_blank(rest)) {
        const std::size_t begin = rest.find_first_not_of(' ');
        rest = rest.substr(begin, rest.find_last_not_of(" \t\r\n") + 1 - begin);
        at.post(kOnePort, at.source(), rest, quoted(rest));
    }
    if (!port.empty()) {
        check_port(at, at.source(), port);
    }
}
