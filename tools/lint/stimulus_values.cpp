#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <system_error>

#include "tools/lint/stimulus.h"
#include "tools/text/whole_number.h"

namespace {

// clang-format off
constexpr LintRow kUnknownRadix = {
    "stimulus-option", "{} is no radix: the values are taken as decimal numbers"};
constexpr LintRow kUnknownOption = {
    "stimulus-option", "{} is no option of an item: it is taken for a value"};
constexpr LintRow kLateRadix = {
    "stimulus-option", "{} is taken for a value: a radix stands before the signal"};
constexpr LintRow kNoNumber = {
    "stimulus-value", "{} is no {} number"};
constexpr LintRow kUnknownBits = {
    "stimulus-value", "the {} of {} stands for unknown bits: hexadecimal values have no {}"};
constexpr LintRow kNegative = {
    "stimulus-value", "{} is negative after {}"};
constexpr LintRow kTooLarge = {
    "stimulus-value", "{} does not fit into {}"};
constexpr LintRow kOutOfRange = {
    "stimulus-value", "{} is outside the range of port {}, which is always {}"};
constexpr LintRow kNoFixedPoint = {
    "fixed-point", "{} is no format of fixed point: (8.4) has 8 bits before and 4 after the point"};
// clang-format on

constexpr std::string_view kRadixes[] = {"-bin", "-fixed_point", "-hex", "-signed", "-unsigned"};
constexpr std::string_view kItemOptions[] = {"-c", "-cancel", "-r", "-repeat"};
constexpr std::string_view kFixedPoint = "-fixed_point";

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBits = "01";
constexpr std::string_view kHexDigits = "0123456789ABCDEFabcdef";
constexpr std::string_view kMultiValued = "XZUWLH-xzuwlh";

enum class Radix { kDecimal, kUnsigned, kBinary, kHex, kFixedPoint, kUnknown };

struct FixedPoint {
    bool is_signed = false;
    std::size_t integer_bits = 0;
    std::size_t bits = 0;
};

bool has_letter(std::string_view letters, char letter) {
    return letters.find(letter) != std::string_view::npos;
}

bool are_all_of(std::string_view letters, std::string_view text) {
    return !text.empty() && text.find_first_not_of(letters) == std::string_view::npos;
}

bool is_multi_valued(std::string_view text) {
    return are_all_of(kMultiValued, text);
}

// Digits of these and of multi-valued logic, with single "_" between them.
bool is_pattern(std::string_view text, std::string_view digits) {
    bool is_after_digit = false;
    for (const char letter : text) {
        const bool is_digit = has_letter(digits, letter) || has_letter(kMultiValued, letter);
        if (!is_digit && !(letter == '_' && is_after_digit)) {
            return false;
        }
        is_after_digit = is_digit;
    }
    return is_after_digit;
}

// The bits that a pattern cannot do without: zeros in front, and all but one of what stands for
// any number of equal bits, can be left out.
std::size_t bits_needed(std::string_view pattern, std::size_t bits_of_digit) {
    std::string digits(pattern);
    std::erase(digits, '_');
    std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
    if (first == digits.size()) {
        return 0;
    }
    if (first == 0 && has_letter(kMultiValued, digits.front())) {
        first = std::min(digits.find_first_not_of(digits.front()), digits.size()) - 1;
        return (digits.size() - first - 1) * bits_of_digit + 1;
    }
    // Of a letter in either case.
    const std::size_t position = kHexDigits.find(digits[first]);
    const std::size_t value = position < 16 ? position : position - 6;
    std::size_t of_first = has_letter(kMultiValued, digits[first]) ? bits_of_digit : 1;
    while (of_first < bits_of_digit && value >> of_first != 0) {
        ++of_first;
    }
    return (digits.size() - first - 1) * bits_of_digit + of_first;
}

// Whether a decimal is surely too large for so many bits, of which a negative one needs one more.
bool is_beyond(std::string_view digits, bool is_negative, std::size_t bits) {
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    constexpr std::size_t kMostBits = 63;
    if (bits > kMostBits) {
        // A digit takes more than 3.32 bits.
        return !digits.empty() && (digits.size() - 1) * 332 / 100 >= bits;
    }
    const std::optional<std::uint64_t> value =
        digits.empty() ? 0 : whole_number<std::uint64_t>(digits);
    const std::uint64_t limit = std::uint64_t{1} << bits;
    return !value || (is_negative ? *value > limit / 2 : *value >= limit);
}

// Nothing for what has other letters or is beyond 64 bits.
std::optional<std::int64_t> number_of(std::string_view text, int base) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

// The format that the library takes a description for: it tells by how it rewrites a number.
std::optional<FixedPoint> read_fixed_point(std::string_view description) {
    std::string signal;
    std::string value;
    kivo_get_transition_at_time(fmt::format("force {}({}) s 0.0 0", kFixedPoint, description), 0,
                                signal, value);
    if (value.find('.') != std::string::npos) {
        return std::nullopt;
    }
    FixedPoint format;
    format.is_signed = description.front() == 's';
    description.remove_prefix(format.is_signed ? 1 : 0);
    format.integer_bits =
        whole_number<std::size_t>(description.substr(0, description.find('.'))).value_or(0);
    format.bits = value.size() - std::string_view("0b").size();
    return format;
}

bool is_fixed_point_option(std::string_view option) {
    return option.substr(0, option.find('(')) == kFixedPoint && option.size() > kFixedPoint.size();
}

std::optional<FixedPoint> format_of(std::string_view option) {
    std::string_view description = option.substr(kFixedPoint.size() + 1);
    const bool is_closed = !description.empty() && description.back() == ')';
    description.remove_suffix(is_closed ? 1 : 0);
    const bool is_sound =
        is_closed && !description.empty() && description.find(')') == std::string_view::npos;
    return is_sound ? read_fixed_point(description) : std::nullopt;
}

class ValuesCheck {
public:
    ValuesCheck(const CommandSpot& at, const StimulusCommand& command)
        : at_(at),
          command_(command),
          width_(at.width_of(command.signal)),
          range_(at.ports.range(std::string(command.signal))) {}

    void run() {
        radix_ = read_option();
        if (radix_ == Radix::kFixedPoint && width_ && fixed_point_.bits > width_->bits) {
            post(kTooLarge, command_.option, quoted(command_.option), port_text());
        }
        for (const CommandItem& item : command_.items) {
            if (item.kind() == ItemKind::kUnknownOption) {
                post_option(item);
            } else if (item.kind() == ItemKind::kValue) {
                check(item.value);
            }
        }
    }

private:
    template <class... Argument>
    Finding& post(const LintRow& row, std::string_view part, const Argument&... arguments) {
        return at_.post(row, command_.text, part, arguments...);
    }

    std::string port_text() const { return width_->of_port(command_.signal); }

    Radix read_option() {
        const std::string_view option = command_.option;
        if (option.empty() || option == "-signed") {
            return Radix::kDecimal;
        }
        if (option == "-unsigned") {
            return Radix::kUnsigned;
        }
        if (option == "-bin") {
            return Radix::kBinary;
        }
        if (option == "-hex") {
            return Radix::kHex;
        }
        if (is_fixed_point_option(option)) {
            if (!check_fixed_point(at_, command_.text, option)) {
                return Radix::kUnknown;
            }
            fixed_point_ = *format_of(option);
            return Radix::kFixedPoint;
        }
        add_likely_word(post(kUnknownRadix, option, quoted(option)), option,
                        {std::begin(kRadixes), std::end(kRadixes)});
        return Radix::kUnknown;
    }

    void post_option(const CommandItem& item) {
        const bool is_radix =
            std::find(std::begin(kRadixes), std::end(kRadixes), item.value) != std::end(kRadixes) ||
            is_fixed_point_option(item.value);
        if (is_radix) {
            post(kLateRadix, item.value, quoted(item.value));
        } else {
            add_likely_word(post(kUnknownOption, item.value, quoted(item.value)), item.value,
                            {std::begin(kItemOptions), std::end(kItemOptions)});
        }
    }

    void check(std::string_view value) {
        switch (radix_) {
            case Radix::kDecimal:
            case Radix::kUnsigned:
                check_decimal(value);
                break;
            case Radix::kBinary:
                value.remove_prefix(value.starts_with("0b") ? 2 : 0);
                check_pattern(value, kBits, 1, "binary");
                break;
            case Radix::kHex:
                check_hex(value);
                break;
            case Radix::kFixedPoint:
                check_fixed(value);
                break;
            case Radix::kUnknown:
                break;
        }
    }

    void check_pattern(std::string_view value, std::string_view digits, std::size_t bits_of_digit,
                       std::string_view noun) {
        if (!is_pattern(value, digits)) {
            post(kNoNumber, value, quoted(value), noun);
        } else if (width_ && bits_needed(value, bits_of_digit) > width_->bits) {
            post(kTooLarge, value, quoted(value), port_text());
        } else {
            std::string bare(value);
            std::erase(bare, '_');
            check_range(value, number_of(bare, bits_of_digit == 1 ? 2 : 16));
        }
    }

    // The same bits may stand for a number with a sign or without: the value is outside when it is
    // so either way.
    void check_range(std::string_view value, std::optional<std::int64_t> number) {
        if (!number || range_.holds(*number)) {
            return;
        }
        constexpr std::size_t kMostBits = 62;
        const bool has_one_reading = *number >= 0 && range_.least.value_or(0) >= 0;
        const bool has_other = width_ && width_->bits <= kMostBits;
        const std::int64_t turn = has_other ? std::int64_t{1} << width_->bits : 0;
        if (has_one_reading ||
            (has_other && !range_.holds(*number + (*number < 0 ? turn : -turn)))) {
            post(kOutOfRange, value, quoted(value), quoted(command_.signal), range_.text());
        }
    }

    void check_hex(std::string_view value) {
        const bool has_prefix =
            value.size() > 2 && value[0] == '0' && (value[1] == 'x' || value[1] == 'X');
        const bool has_sign =
            value.size() > 1 && value[0] == '-' && has_letter(kHexDigits, value[1]);
        if (has_prefix || has_sign) {
            const std::string_view at_fault = has_prefix ? value.substr(1, 1) : value.substr(0, 1);
            post(kUnknownBits, value, quoted(at_fault), quoted(value),
                 has_prefix ? "prefix" : "sign");
        } else {
            check_pattern(value, kHexDigits, 4, "hexadecimal");
        }
    }

    // Patterns are passed on as they are written.
    static bool is_pattern_in_decimal(std::string_view value) {
        return value.starts_with("0b")
                   ? is_pattern(value.substr(2), kBits)
                   : is_pattern(value, kBits) &&
                         value.find_first_of(kMultiValued.substr(0, 6)) != std::string_view::npos;
    }

    void check_decimal(std::string_view value) {
        const bool is_negative = value.substr(0, 1) == "-";
        const std::string_view digits = value.substr(is_negative ? 1 : 0);
        if (!are_all_of(kDigits, digits)) {
            if (!is_multi_valued(value) && !is_pattern_in_decimal(value)) {
                post(kNoNumber, value, quoted(value), "decimal");
            }
        } else if (is_negative && radix_ == Radix::kUnsigned) {
            post(kNegative, value, quoted(value), command_.option);
        } else if (width_ && is_beyond(digits, is_negative, width_->bits)) {
            post(kTooLarge, value, quoted(value), port_text());
        } else {
            check_range(value, number_of(value, 10));
        }
    }

    void check_fixed(std::string_view value) {
        const bool is_negative = value.substr(0, 1) == "-";
        const std::string_view digits = value.substr(is_negative ? 1 : 0);
        const std::string_view whole = digits.substr(0, digits.find('.'));
        const std::string_view places =
            whole.size() < digits.size() ? digits.substr(whole.size() + 1) : "0";
        const std::size_t sign_bits = fixed_point_.is_signed && !is_negative ? 1 : 0;
        if (!are_all_of(kDigits, whole) || !are_all_of(kDigits, places)) {
            if (!is_multi_valued(value)) {
                post(kNoNumber, value, quoted(value), "fixed-point");
            }
        } else if (is_negative && !fixed_point_.is_signed) {
            post(kNegative, value, quoted(value), command_.option);
        } else if (is_beyond(whole, is_negative, fixed_point_.integer_bits - sign_bits)) {
            post(kTooLarge, value, quoted(value), command_.option);
        }
    }

    const CommandSpot& at_;
    const StimulusCommand& command_;
    std::optional<PortWidth> width_;  // of the port, when it is known
    const PortRange& range_;
    Radix radix_ = Radix::kDecimal;
    FixedPoint fixed_point_;
};

}  // namespace

bool check_fixed_point(const CommandSpot& at, std::string_view whole, std::string_view option) {
    if (format_of(option)) {
        return true;
    }
    at.post(kNoFixedPoint, whole, option, quoted(option));
    return false;
}

std::optional<std::size_t> fixed_point_bits(std::string_view option) {
    const auto format = format_of(option);
    return format ? std::optional(format->bits) : std::nullopt;
}

void check_values(const CommandSpot& at, const StimulusCommand& command) {
    ValuesCheck(at, command).run();
}
