#include "tools/lint/stimulus.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <utility>

#include "tools/description/port_width.h"
#include "tools/findings/notes.h"
#include "tools/lint/rooms.h"
#include "tools/text/text_steps.h"
#include "tools/text/words.h"

namespace {

// clang-format off
constexpr LintRow kEmpty = {
    "stimulus-command", "the command is empty"};
constexpr LintRow kNotForce = {
    "stimulus-command", "{} is no \"force\": the command is not evaluated"};
constexpr LintRow kNoSignal = {
    "stimulus-command", "the command names no signal"};
constexpr LintRow kSecondOption = {
    "stimulus-option", "{} is taken for the signal: a command has one option"};
constexpr LintRow kNoItems = {
    "stimulus-command", "the command gives {} no value"};
constexpr LintRow kValueTwice = {
    "given-twice", "another command gives {} a value at {} already: only the last counts"};
constexpr LintRow kNoStimulus = {
    "wave-without-stimulus", "{} {} has no stimulus: nothing is drawn"};
constexpr LintRow kNoPort = {
    "unknown-port", "{} is no port"};
constexpr LintRow kOtherObject = {
    "unknown-port", "{} is no port but a {}"};
// clang-format on

constexpr std::string_view kForce = "force";

std::string_view noun_of(const KIVO_OBJ_INFO& object) {
    switch (object.obj_type) {
        case KIVO_OBJ_HIDDEN_PARAMETER:
            return "hidden parameter";
        case KIVO_OBJ_MACRO:
            return "macro";
        default:
            return "parameter";
    }
}

// Where a command is to be read although it stands for nothing: the first of ELSE replaces the
// first of THEN, and one of them may do nothing.
bool is_placeholder(const Spot& spot) {
    return spot.element.parent->tag != "WAVE" && spot.element.parent->tag != "CUSTOM_VECTOR";
}

void check_command(const CommandSpot& at) {
    if (is_blank(at.source())) {
        if (!is_placeholder(at.spot)) {
            at.lint.post(kEmpty, at.spot.element, at.spot.document.place(at.spot.element));
        }
        return;
    }
    const StimulusCommand command(at.source());
    if (command.keyword != kForce) {
        Finding& finding =
            at.post(kNotForce, command.text, command.keyword, quoted(command.keyword));
        add_likely_word(finding, command.keyword, {kForce});
        return;
    }
    check_blanks(at);
    if (command.signal.empty()) {
        at.post(kNoSignal, command.text, command.keyword);
        return;
    }
    if (command.signal.front() == '-') {
        at.post(kSecondOption, command.text, command.signal, quoted(command.signal));
        return;
    }
    check_port(at, command.text, command.signal);
    check_values(at, command);
    check_times(at, command);
    if (command.items.empty()) {
        at.post(kNoItems, command.text, command.signal, quoted(command.signal));
    }
}

// The times at which commands that always apply give signals their values.
class GivenTimes {
public:
    void pass(const CommandSpot& at) {
        const DocumentElement& vector = *at.spot.element.parent;
        if (is_placeholder(at.spot) || is_blank(at.source())) {
            return;
        }
        const StimulusCommand command(at.source());
        if (command.keyword != kForce || command.signal.empty()) {
            return;
        }
        Signal& signal =
            signals_[{std::string(vector.value_of("NAME")), std::string(command.signal)}];
        bool is_told = false;
        for (const CommandItem& item : command.items) {
            if (item.kind() != ItemKind::kValue || !item.has_time || !item.time.is_whole) {
                continue;
            }
            const auto [first, is_new] =
                signal.emplace(item.time.value, First{&at.spot.document, &at.spot.element});
            if (!is_new && first->second.element != &at.spot.element && !is_told) {
                is_told = true;
                Finding& finding = at.post(kValueTwice, command.text, item.value,
                                           quoted(command.signal), item.time.value);
                finding.notes.push_back(
                    {"first given here", first->second.document->place(*first->second.element)});
            }
        }
    }

private:
    struct First {
        const Document* document;
        const DocumentElement* element;
    };
    using Signal = std::map<std::int32_t, First>;

    std::map<std::pair<std::string, std::string>, Signal> signals_;
};

bool has_stimulus(const KIVO_INFO& info, std::string_view name) {
    const KIVO_VECTOR_OBJ* const vector = info.get_vector_obj(std::string(name));
    if (vector == nullptr) {
        return true;  // its name is that of something else
    }
    // A copy, because walking moves the cursor.
    KIVO_OBJ_LIST stimulus = vector->stimulus_list;
    stimulus.reset();
    return stimulus.get_next_value() != nullptr;
}

bool holds_commands(const DocumentElement& vector) {
    for (const DocumentElement& sub : vector.sub_elements()) {
        if (context_in(Context::kVector, sub.tag) == Context::kStimulus) {
            return true;
        }
        if (context_in(Context::kVector, sub.tag) == Context::kCommands &&
            sub.first_sub != nullptr) {
            return true;
        }
    }
    return false;
}

void check_wave(Lint& lint, const Spot& spot) {
    const std::string_view name = spot.element.value_of("NAME");
    if (!name.empty() && !holds_commands(spot.element) && !has_stimulus(lint.info(), name)) {
        lint.post(kNoStimulus, spot.element, spot.document.place(spot.element), spot.element.tag,
                  quoted(name));
    }
}

}  // namespace

PortNames::PortNames(const Lint& lint)
    : lint_(lint), names_(lint.info(), ObjectNames::Kind::kPorts) {
    lint.for_each([this](const Spot& spot) {
        const bool is_declaration =
            spot.context == Context::kPort &&
            (spot.element.parent->tag == "PORTS" || spot.element.parent->tag == "PORT_RULES");
        if (is_declaration) {
            declared_.insert(spot.element.value_of("NAME"));
        }
    });
}

const PortRange& PortNames::range(const std::string& name) const {
    const auto [found, is_new] = ranges_.try_emplace(name);
    if (is_new) {
        found->second = range_of_port(lint_, name);
    }
    return found->second;
}

VectorsByDefault::VectorsByDefault(const Lint& lint) {
    for (const KIVO_APPLICATION& vector : lint.session().vectors()) {
        if (vector.applies == KIVO_TRUTH::kYes) {
            names_.insert(vector.name);
        }
    }
}

bool VectorsByDefault::has(const Spot& command) const {
    const DocumentElement& parent = *command.element.parent;
    return context_in(Context::kVectors, parent.tag) == Context::kVector &&
           names_.count(parent.value_of("NAME")) != 0;
}

std::string PortWidth::of_port(std::string_view port) const {
    return fmt::format("the {} {} port {}{}", counted(bits, "bit"), is_default ? "that" : "of",
                       quoted(port), is_default ? " has by default" : "");
}

std::optional<PortWidth> CommandSpot::width_of(std::string_view port) const {
    const std::string name(port);
    if (const auto number = numeric_width(lint.info(), name)) {
        return PortWidth{*number, false};
    }
    const KIVO_OBJ_INFO* const object = lint.info().get_kivo_obj(name);
    if (object == nullptr || !object->port_width2d.empty() || !vectors.has(spot)) {
        return std::nullopt;
    }
    const auto by_default = configured_width(lint.session(), name);
    return by_default ? std::optional(PortWidth{*by_default, true}) : std::nullopt;
}

void check_port(const CommandSpot& at, std::string_view whole, std::string_view name) {
    if (at.ports.has(name)) {
        return;
    }
    const KIVO_OBJ_INFO* const object = at.lint.info().get_kivo_obj(std::string(name));
    if (object != nullptr) {
        at.post(kOtherObject, whole, name, quoted(name), noun_of(*object));
        return;
    }
    Finding& finding = at.post(kNoPort, whole, name, quoted(name));
    if (const std::string nearest = at.ports.nearest(name); !nearest.empty()) {
        finding.notes.push_back(did_you_mean(nearest, finding.place));
    }
}

void find_wrong_stimulus(Lint& lint) {
    const PortNames ports(lint);
    const VectorsByDefault vectors(lint);
    GivenTimes given;
    lint.for_each([&](const Spot& spot) {
        switch (spot.context) {
            case Context::kVector:
                check_wave(lint, spot);
                break;
            case Context::kStimulus:
                check_command({lint, spot, ports, vectors});
                given.pass({lint, spot, ports, vectors});
                break;
            case Context::kDisplay:
                check_display({lint, spot, ports, vectors});
                break;
            default:
                break;
        }
    });
}
