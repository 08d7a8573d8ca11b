#include <algorithm>
#include <set>
#include <string_view>

#include "tools/lint/rooms.h"
#include "tools/text/letters.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kArgumentTwice = {
    "given-twice", "the argument {} is given again"};
constexpr LintRow kUnusedArgument = {
    "unused-argument", "the definition of {} does not use its argument {}"};
// clang-format on

// The names in a definition; what stands in quotes is a text.
std::set<std::string_view> names_in(std::string_view definition) {
    std::set<std::string_view> names;
    bool is_text = false;
    for (std::size_t at = 0; at < definition.size();) {
        std::size_t end = at;
        while (end < definition.size() && can_be_in_name(definition[end])) {
            ++end;
        }
        if (end > at && !is_text) {
            names.insert(definition.substr(at, end - at));
        }
        is_text = is_text != (end < definition.size() && definition[end] == '"');
        at = end + 1;
    }
    return names;
}

// As the library reads it: the first element goes before the attribute.
std::string_view definition_of(const DocumentElement& macro) {
    return macro.first_sub != nullptr ? std::string_view(macro.first_sub->text.text)
                                      : macro.value_of("DEFINITION");
}

void check_macro(Lint& lint, const Spot& spot) {
    const DocumentAttribute* const arguments = spot.element.attribute("ARGUMENTS");
    const std::string_view definition = definition_of(spot.element);
    if (arguments == nullptr || is_blank(definition)) {
        return;
    }
    const std::set<std::string_view> used = names_in(definition);
    std::set<std::string_view> seen;
    const std::string_view list = arguments->value.text;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        const std::string_view name = trimmed(list.substr(begin, end - begin));
        begin = end + 1;
        // What no definition can write is told of as such.
        if (name.empty() || !std::all_of(name.begin(), name.end(), can_be_in_name)) {
            continue;
        }
        const auto at = static_cast<std::size_t>(name.data() - list.data());
        const Place place = spot.document.place(arguments->value, at, at + name.size());
        if (!seen.insert(name).second) {
            lint.post(kArgumentTwice, spot.element, place, quoted(name));
        } else if (used.count(name) == 0) {
            lint.post(kUnusedArgument, spot.element, place, quoted(spot.element.value_of("NAME")),
                      quoted(name));
        }
    }
}

}  // namespace

void find_wrong_macros(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) {
        if (spot.context == Context::kMacro) {
            check_macro(lint, spot);
        }
    });
}
