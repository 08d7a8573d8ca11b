#include <map>
#include <utility>

#include "tools/lint/rooms.h"
#include "tools/text/text_steps.h"

namespace {

// clang-format off
constexpr LintRow kGivenAgain = {
    "given-twice", "{} is given again and replaces the first"};
constexpr LintRow kSameIndex = {
    "given-twice", "the INDEX {} is that of another vector"};
constexpr LintRow kIncludedAgain = {
    "given-twice", "the file {} is included again: it is read once more"};
constexpr LintRow kShownAgain = {
    "given-twice", "the display format of {} is given again and replaces the first"};
// clang-format on

struct First {
    const Document* document;
    const DocumentElement* element;
};

// Where what can be given once was given first; by the element that it belongs to, if any.
using Seen = std::map<std::pair<const DocumentElement*, std::string_view>, First>;

// What an element can hold once.
bool can_be_given_once(const Spot& spot) {
    const std::string_view tag = spot.element.tag;
    switch (spot.context) {
        case Context::kWaveCondition:
        case Context::kWizardCondition:
        case Context::kSequence:
            return true;
        case Context::kPlainText:
            return tag == "CAPTION" || tag == "TITLE" || tag == "HEADER";
        default:
            return false;
    }
}

bool is_setting(Context context) {
    return context == Context::kStartTime || context == Context::kTimeDelta ||
           context == Context::kTimeScale || context == Context::kVhdlLibrary;
}

std::string_view value_of_setting(const Spot& spot) {
    return spot.element.value_of(spot.context == Context::kVhdlLibrary ? "NAME" : "VALUE");
}

// The port of "add wave -hex PORT"; empty for a command that is refused.
std::string_view port_of(std::string_view command) {
    for (int word = 0; word < 3; ++word) {
        command.remove_prefix(std::min(command.find(' '), command.size()));
        command.remove_prefix(command.empty() ? 0 : 1);
    }
    return taken_until(command, " ");
}

class Repetitions {
public:
    explicit Repetitions(Lint& lint) : lint_(lint) {}

    void pass(const Spot& spot) {
        const DocumentElement& element = spot.element;
        if (can_be_given_once(spot)) {
            take(spot, element.parent, element.tag, kGivenAgain, element.tag);
        } else if (is_setting(spot.context)) {
            if (!value_of_setting(spot).empty()) {
                take(spot, nullptr, element.tag, kGivenAgain, element.tag);
            }
        } else if (spot.context == Context::kHtmlText) {
            take(spot, nullptr, element.tag, kGivenAgain, element.tag);
        } else if (spot.context == Context::kDisplay) {
            const std::string_view port = port_of(element.text.text);
            if (!port.empty()) {
                take(spot, element.parent, port, kShownAgain, quoted(port));
            }
        } else if (spot.context == Context::kVector) {
            if (const std::string_view index = element.value_of("INDEX"); !index.empty()) {
                take(spot, nullptr, index, kSameIndex, quoted(index));
            }
        } else {
            pass_include(spot);
        }
    }

private:
    void pass_include(const Spot& spot) {
        const bool is_element = spot.context == Context::kIncludedFile;
        const std::string_view name = is_element ? trimmed(spot.element.text.text)
                                      : spot.context == Context::kInclude
                                          ? spot.element.value_of("FILE")
                                          : std::string_view();
        if (!name.empty()) {
            take(spot, nullptr, name, kIncludedAgain, quoted(name), included_);
        }
    }

    template <class Shown>
    void take(const Spot& spot, const DocumentElement* owner, std::string_view key,
              const LintRow& row, const Shown& shown) {
        take(spot, owner, key, row, shown, spot.context == Context::kVector ? indices_ : seen_);
    }

    template <class Shown>
    void take(const Spot& spot, const DocumentElement* owner, std::string_view key,
              const LintRow& row, const Shown& shown, Seen& seen) {
        const auto [first, is_new] =
            seen.try_emplace({owner, key}, First{&spot.document, &spot.element});
        if (!is_new) {
            Finding& finding =
                lint_.post(row, spot.element, spot.document.place(spot.element), shown);
            finding.notes.push_back(
                {"first given here", first->second.document->place(*first->second.element)});
        }
    }

    Lint& lint_;
    Seen seen_;
    Seen indices_;
    Seen included_;
};

}  // namespace

void find_repetitions(Lint& lint) {
    Repetitions repetitions(lint);
    lint.for_each([&repetitions](const Spot& spot) { repetitions.pass(spot); });
}
