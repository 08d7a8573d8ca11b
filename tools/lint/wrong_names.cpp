#include "tools/lint/rooms.h"
#include "tools/text/letters.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kBlanksAround = {
    "name-with-blanks", "the name {} has blanks around it: they are part of it"};
constexpr LintRow kUnwritable = {
    "unwritable-name", "no condition can write the name {}: {} cannot be part of a name"};
constexpr LintRow kUnwritableModule = {
    "unwritable-name", "no design can name the module {}: a name has no blanks"};
constexpr LintRow kUnwritableStart = {
    "unwritable-name", "no condition can write the name {}: a name cannot begin with {}"};
// clang-format on

bool has_blanks_around(std::string_view name) {
    return !is_blank(name) && (kBlanks.find(name.front()) != std::string_view::npos ||
                               kBlanks.find(name.back()) != std::string_view::npos);
}

// Whether the element declares what it names, so that each name is told of once.
bool declares(const Spot& spot) {
    const bool needs_type = spot.context == Context::kParameter || spot.context == Context::kPort;
    return !needs_type || spot.element.attribute("TYPE") != nullptr;
}

struct Name {
    const DocumentText& value;
    std::size_t begin;
    std::size_t end;

    std::string_view text() const { return value.text.substr(begin, end - begin); }
};

void check_writable(Lint& lint, const Spot& spot, const Name& name) {
    const std::string_view text = name.text();
    std::size_t wrong = 0;
    while (wrong < text.size() && can_be_in_name(text[wrong])) {
        ++wrong;
    }
    const bool starts_wrong = !text.empty() && !can_begin_name(text.front());
    if (wrong == text.size() && !starts_wrong) {
        return;
    }
    wrong = starts_wrong ? 0 : wrong;
    const std::size_t at = name.begin + wrong;
    const std::string_view sign = text.substr(wrong, 1);
    const Place place = spot.document.place(name.value, at, at + 1);
    const bool is_start = starts_wrong && can_be_in_name(text.front());
    lint.post(is_start ? kUnwritableStart : kUnwritable, spot.element, place, quoted(text),
              quoted(sign));
}

void check_name(Lint& lint, const Spot& spot, const DocumentText& value, bool is_in_conditions) {
    const std::string_view text = value.text;
    if (has_blanks_around(text)) {
        lint.post(kBlanksAround, spot.element, spot.document.place(value, 0, text.size()),
                  quoted(text));
    } else if (is_in_conditions && !is_blank(text)) {
        check_writable(lint, spot, {value, 0, text.size()});
    }
}

void check_module(Lint& lint, const Spot& spot, const DocumentText& value) {
    if (value.text.find_first_of(kBlanks) != std::string_view::npos) {
        lint.post(kUnwritableModule, spot.element, spot.document.place(value), quoted(value.text));
    }
}

// Entries that hold several words are told of as badly separated.
void check_arguments(Lint& lint, const Spot& spot, const DocumentText& value) {
    const std::string_view text = value.text;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::size_t first = std::min(text.find_first_not_of(kBlanks, begin), end);
        std::size_t last = end;
        while (last > first && kBlanks.find(text[last - 1]) != std::string_view::npos) {
            --last;
        }
        const Name name{value, first, last};
        if (name.text().find_first_of("; \t\r\n") == std::string_view::npos) {
            check_writable(lint, spot, name);
        }
        begin = end + 1;
    }
}

}  // namespace

void find_wrong_names(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        const DocumentElement& element = spot.element;
        for (std::size_t index = 0; index < element.attribute_count; ++index) {
            const DocumentAttribute& attribute = element.attributes[index];
            const AttributeRule* const rule = find_attribute_rule(spot.context, attribute.name);
            if (rule == nullptr) {
                continue;
            }
            if (rule->name == "MODULE_NAME") {
                check_module(lint, spot, attribute.value);
            }
            const bool is_name = rule->meaning == Meaning::kName;
            if ((is_name || rule->meaning == Meaning::kTitle) && declares(spot)) {
                check_name(lint, spot, attribute.value, is_name);
            } else if (rule->meaning == Meaning::kArguments) {
                check_arguments(lint, spot, attribute.value);
            }
        }
    });
}
