#include <charconv>
#include <cstdint>
#include <optional>

#include "tools/description/time_scale.h"
#include "tools/lint/rooms.h"
#include "tools/text/letters.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kUnknownWord = {
    "unknown-word", "{} is none of the words of {} and counts as {}"};
constexpr LintRow kUnknownState = {
    "unknown-word", "{} is no state of a port"};
constexpr LintRow kNotANumber = {
    "not-a-number", "{} is no whole number: {} is read as {}"};
constexpr LintRow kTooLarge = {
    "not-a-number", "{} is too large for {}: it is read as {}"};
constexpr LintRow kNoTime = {
    "not-a-number", "{} is no number: {} counts in the unit of TIME_SCALE"};
constexpr LintRow kNoUnit = {
    "time-unit", "{} is no unit of time: fs, ps, ns, us, ms or s, perhaps a whole number before it"};
constexpr LintRow kNoStep = {
    "time-step", "a {} of {} gets nowhere"};
constexpr LintRow kStepTooFar = {
    "time-step", "a TIME_STEP of {} goes beyond MAX_TIME {} at once"};
constexpr LintRow kEndBeforeStart = {
    "time-step", "MAX_TIME {} lies before START_TIME {}: nothing is drawn"};
constexpr LintRow kNoInitialValue = {
    "not-a-number", "{} is no value: INITIAL_VEC_STATE has digits, X or Z"};
constexpr LintRow kListSeparator = {
    "wrong-separator", "the values of {} are separated by \",\": {} is one value, a list has \";\""};
constexpr LintRow kLibrarySeparator = {
    "wrong-separator", "{} is one library: a list has \";\" between its entries"};
constexpr LintRow kArgumentSeparator = {
    "wrong-separator", "{} is one argument: a list has \",\" between its names"};
// clang-format on

constexpr std::string_view kDigits = "0123456789";

bool is_word_letter(char letter) {
    return can_be_in_name(letter) || letter == '.' || letter == '+' || letter == '-';
}

// A number as the library reads it from the start of a text.
struct ReadNumber {
    std::int64_t value = 0;  // as large as it is written, if that fits
    bool is_whole = false;   // whether all of the text is the number
    bool fits = true;        // into the 32 bits in which it is kept
};

ReadNumber read_number(std::string_view text) {
    skip_blanks(text);
    const bool is_negative = text.substr(0, 1) == "-";
    text.remove_prefix(is_negative || text.substr(0, 1) == "+" ? 1 : 0);
    const std::string_view digits = text.substr(0, text.find_first_not_of(kDigits));
    ReadNumber read;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), read.value);
    read.value = is_negative ? -read.value : read.value;
    read.is_whole = !digits.empty() && is_blank(text.substr(digits.size()));
    read.fits = result.ec != std::errc::result_out_of_range && read.value >= INT32_MIN &&
                read.value <= INT32_MAX;
    return read;
}

// "2.5", perhaps with a sign.
bool is_decimal(std::string_view text) {
    skip_blanks(text);
    text.remove_prefix(text.substr(0, 1) == "-" || text.substr(0, 1) == "+" ? 1 : 0);
    const std::string_view whole = text.substr(0, text.find_first_not_of(kDigits));
    text.remove_prefix(whole.size());
    std::string_view fraction;
    if (text.substr(0, 1) == ".") {
        text.remove_prefix(1);
        fraction = text.substr(0, text.find_first_not_of(kDigits));
        text.remove_prefix(fraction.size());
    }
    return !(whole.empty() && fraction.empty()) && is_blank(text);
}

// Words with commas between them and nothing else.
bool is_comma_list(std::string_view text) {
    bool has_comma = false;
    for (;;) {
        skip_blanks(text);
        std::size_t end = 0;
        while (end < text.size() && is_word_letter(text[end])) {
            ++end;
        }
        text.remove_prefix(end);
        skip_blanks(text);
        if (end == 0 || text.empty()) {
            return end != 0 && has_comma;
        }
        if (text.front() != ',') {
            return false;
        }
        has_comma = true;
        text.remove_prefix(1);
    }
}

// Several words in one entry of a list, or what separates other lists.
std::optional<std::size_t> find_wrong_separator(std::string_view text, char right,
                                                std::string_view wrong) {
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find(right, begin), text.size());
        std::string_view entry = text.substr(begin, end - begin);
        const std::size_t first = entry.find_first_not_of(kBlanks);
        if (first != std::string_view::npos) {
            entry = entry.substr(0, entry.find_last_not_of(kBlanks) + 1);
            const std::size_t at = entry.find_first_of(wrong, first);
            if (at != std::string_view::npos) {
                return begin + at;
            }
        }
        begin = end + 1;
    }
    return std::nullopt;
}

// One attribute whose value is looked at.
struct Value {
    Lint& lint;
    const Spot& spot;
    const DocumentAttribute& attribute;
    const AttributeRule& rule;

    std::string_view text() const { return attribute.value.text; }
    Place place() const { return spot.document.place(attribute.value); }
};

void check_word(const Value& value) {
    if (!value.rule.keywords->has(value.text())) {
        Finding& finding =
            value.lint.post(kUnknownWord, value.spot.element, value.place(), quoted(value.text()),
                            value.attribute.name, value.rule.keywords->otherwise);
        add_likely_word(finding, value.text(), value.rule.keywords->all());
    }
}

// A whole number is the state of a port that is tied to it.
void check_state(Lint& lint, const Spot& spot, const DocumentText& text) {
    if (!text.text.empty() && !kUsageStates.has(text.text) && !read_number(text.text).is_whole) {
        Finding& finding =
            lint.post(kUnknownState, spot.element, spot.document.place(text), quoted(text.text));
        add_likely_word(finding, text.text, kUsageStates.all());
    }
}

// An empty START_TIME leaves the setting as it was; what HIGH_PROBABILITY refuses is told of.
bool is_told_or_harmless(const Value& value, const ReadNumber& read) {
    return (value.spot.context == Context::kStartTime && value.text().empty()) ||
           (value.rule.name == "HIGH_PROBABILITY" && (read.value < 1 || read.value > 100));
}

void check_step(const Value& value, std::int64_t step) {
    const ReadNumber end = read_number(value.spot.element.value_of("MAX_TIME"));
    if (step <= 0) {
        value.lint.post(kNoStep, value.spot.element, value.place(), value.rule.name, step);
    } else if (end.is_whole && end.value >= 0 && step > end.value) {
        value.lint.post(kStepTooFar, value.spot.element, value.place(), step, end.value);
    }
}

void check_end(const Value& value, std::int64_t end) {
    const std::int32_t start = value.lint.info().start_time;
    if (end >= 0 && end < start) {
        value.lint.post(kEndBeforeStart, value.spot.element, value.place(), end, start);
    }
}

void check_whole_number(const Value& value) {
    const ReadNumber read = read_number(value.text());
    const std::string_view name =
        value.spot.context == Context::kStartTime ? value.spot.element.tag : value.attribute.name;
    if (is_told_or_harmless(value, read)) {
        return;
    }
    const auto kept = static_cast<std::int32_t>(static_cast<std::uint32_t>(read.value));
    if (!read.is_whole) {
        value.lint.post(kNotANumber, value.spot.element, value.place(), quoted(value.text()), name,
                        kept);
    } else if (!read.fits) {
        value.lint.post(kTooLarge, value.spot.element, value.place(), quoted(value.text()), name,
                        kept);
    } else if (value.rule.name == "TIME_STEP") {
        check_step(value, read.value);
    } else if (value.rule.name == "MAX_TIME") {
        check_end(value, read.value);
    }
}

void check_time(const Value& value) {
    const std::string_view name =
        value.spot.context == Context::kTimeDelta ? value.spot.element.tag : value.attribute.name;
    if (value.text().empty()) {
        return;
    }
    if (!is_decimal(value.text())) {
        value.lint.post(kNoTime, value.spot.element, value.place(), quoted(value.text()), name);
    } else if (value.text().find_first_of("123456789") == std::string_view::npos) {
        value.lint.post(kNoStep, value.spot.element, value.place(), name, value.text());
    }
}

// A number of any radix, or letters of multi-valued logic.
void check_initial_value(const Value& value) {
    constexpr std::string_view kLetters = "0123456789ABCDEFabcdefXZUWLHxzuwlh-_";
    if (!value.text().empty() &&
        value.text().find_first_not_of(kLetters) != std::string_view::npos) {
        value.lint.post(kNoInitialValue, value.spot.element, value.place(), quoted(value.text()));
    }
}

// An empty one leaves the setting as it was.
void check_time_scale(const Value& value) {
    const std::string written(value.text());
    if (!written.empty() && !read_time_scale(written).is_known) {
        value.lint.post(kNoUnit, value.spot.element, value.place(), quoted(written));
    }
}

// Places the warning where the first separator stands that is none.
void check_list(const Value& value) {
    if (is_comma_list(value.text())) {
        const std::size_t comma = value.text().find(',');
        value.lint.post(kListSeparator, value.spot.element,
                        value.spot.document.place(value.attribute.value, comma, comma + 1),
                        value.attribute.name, quoted(value.text()));
    }
}

void check_separator(const Value& value, const LintRow& row, char right, std::string_view wrong) {
    if (const auto at = find_wrong_separator(value.text(), right, wrong)) {
        value.lint.post(row, value.spot.element,
                        value.spot.document.place(value.attribute.value, *at, *at + 1),
                        quoted(value.text()));
    }
}

void check_value(const Value& value) {
    switch (value.rule.meaning) {
        case Meaning::kWord:
            check_word(value);
            break;
        case Meaning::kState:
            check_state(value.lint, value.spot, value.attribute.value);
            break;
        case Meaning::kWholeNumber:
            check_whole_number(value);
            break;
        case Meaning::kTime:
            check_time(value);
            break;
        case Meaning::kInitialValue:
            check_initial_value(value);
            break;
        case Meaning::kTimeScale:
            check_time_scale(value);
            break;
        case Meaning::kList:
            check_list(value);
            break;
        case Meaning::kLibraries:
            check_separator(value, kLibrarySeparator, ';', ", \t\r\n");
            break;
        case Meaning::kArguments:
            check_separator(value, kArgumentSeparator, ',', "; \t\r\n");
            break;
        default:
            break;
    }
}

}  // namespace

void find_wrong_words(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        const DocumentElement& element = spot.element;
        for (std::size_t index = 0; index < element.attribute_count; ++index) {
            const DocumentAttribute& attribute = element.attributes[index];
            if (const AttributeRule* rule = find_attribute_rule(spot.context, attribute.name)) {
                check_value({lint, spot, attribute, *rule});
            }
        }
        if (spot.context == Context::kStateText) {
            check_state(lint, spot, element.text);
        }
    });
}
