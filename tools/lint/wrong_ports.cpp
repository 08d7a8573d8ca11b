#include <cstdint>
#include <string>

#include "tools/description/port_width.h"
#include "tools/lint/rooms.h"
#include "tools/lint/slots.h"
#include "tools/lint/value_facts.h"
#include "tools/text/text_steps.h"
#include "tools/text/words.h"

namespace {

// clang-format off
constexpr LintRow kInputsOnly = {
    "wrong-direction", "{} does not count: the port {} is no INPUT"};
constexpr LintRow kNoClock = {
    "wrong-direction", "CLOCK_PERIOD does not count: the port {} is no clock"};
constexpr LintRow kAlwaysUsed = {
    "overridden", "USAGE does not count beside CNX_TYPE=\"USED_PORT\": the port {} is always used"};
constexpr LintRow kDefaultTooLarge = {
    "value-out-of-range", "{} does not fit into the {} of the port {}"};
constexpr LintRow kNoConstantOutput = {
    "wrong-direction", "the OUTPUT {} cannot be CONSTANT: it drives and is not tied"};
constexpr LintRow kRunTimeWidth = {
    "run-time-width", "a width is known before the design runs, and the value of the port {} is not"};
// clang-format on

constexpr std::string_view kConstant = "CONSTANT";
constexpr std::string_view kRunTime = "run-time ";

void check_clock(Lint& lint, const Spot& spot, const KIVO_OBJ_INFO& port) {
    if (port.obj_type == KIVO_OBJ_INPUT_PORT) {
        return;
    }
    const DocumentAttribute* const clock = spot.element.attribute("IS_CLOCK_PORT");
    const bool is_clock = clock != nullptr && clock->value.text == "TRUE";
    for (const DocumentAttribute* const attribute :
         {is_clock ? clock : nullptr, spot.element.attribute("ASYNC")}) {
        if (attribute != nullptr) {
            lint.post(kInputsOnly, spot.element, spot.document.place(*attribute), attribute->name,
                      port.name);
        }
    }
}

void check_period(Lint& lint, const Spot& spot, const KIVO_OBJ_INFO& port) {
    const DocumentAttribute* const period = spot.element.attribute("CLOCK_PERIOD");
    if (period != nullptr && !is_blank(period->value.text) && !port.is_clock()) {
        lint.post(kNoClock, spot.element, spot.document.place(*period), port.name);
    }
}

// With everything at its default, in which it counts.
void check_default(Lint& lint, const Spot& spot, const KIVO_OBJ_INFO& port) {
    constexpr std::size_t kMostBits = 62;
    const DocumentAttribute* const value = spot.element.attribute("DEFAULT_VALUE");
    const auto width = configured_width(lint.session(), port.name);
    if (value == nullptr || value->value.text != port.default_value || !width ||
        *width > kMostBits || !port.port_width2d.empty()) {
        return;
    }
    const auto number = FactsOfValues(lint).constant(value->value.text);
    const std::int64_t limit = std::int64_t{1} << *width;
    if (number && (*number >= limit || *number < -limit / 2)) {
        lint.post(kDefaultTooLarge, spot.element, spot.document.place(value->value), *number,
                  counted(*width, "bit"), port.name);
    }
}

void check_usage(Lint& lint, const Spot& spot, const KIVO_OBJ_INFO& port) {
    const DocumentAttribute* const usage = spot.element.attribute("USAGE");
    const bool is_unused =
        usage != nullptr && (usage->value.text == "UNUSED" || usage->value.text == kConstant);
    if (is_unused && spot.element.value_of("CNX_TYPE") == "USED_PORT") {
        lint.post(kAlwaysUsed, spot.element, spot.document.place(*usage), port.name);
        return;
    }
    if (port.obj_type == KIVO_OBJ_OUTPUT_PORT && usage != nullptr &&
        usage->value.text == kConstant) {
        lint.post(kNoConstantOutput, spot.element, spot.document.place(usage->value), port.name);
    }
}

void check_state(Lint& lint, const Spot& spot, const KIVO_OBJ_INFO& port) {
    for (const std::string_view word : {"V", "ELSE"}) {
        const std::vector<Giver> givers = givers_of(spot, slot_of(spot.context, word));
        if (port.obj_type == KIVO_OBJ_OUTPUT_PORT && !givers.empty() &&
            givers.back().text() == kConstant) {
            lint.post(kNoConstantOutput, spot.element, givers.back().place(spot.document),
                      port.name);
        }
    }
}

void check_width(Lint& lint, const Spot& spot) {
    for (const std::string_view name : {"WIDTH", "WIDTH2D"}) {
        const DocumentAttribute* const width = spot.element.attribute(name);
        if (width == nullptr) {
            continue;
        }
        // As a number: alone, a port stands for whether it is connected.
        const std::string number = fmt::format("0 + ( {} )", width->value.text);
        for (const std::string& reason : lint.session().evaluate(number).reasons) {
            if (reason.starts_with(kRunTime)) {
                lint.post(kRunTimeWidth, spot.element, spot.document.place(width->value),
                          reason.substr(kRunTime.size()));
                break;
            }
        }
    }
}

void check_port(Lint& lint, const Spot& spot) {
    const bool is_port = spot.context == Context::kPort;
    if ((!is_port && spot.context != Context::kState) || is_in_map(spot.element)) {
        return;
    }
    const DocumentElement& element = is_port ? spot.element : *spot.element.parent;
    const KIVO_OBJ_INFO* const port =
        lint.info().get_kivo_obj(std::string(element.value_of("NAME")));
    if (port == nullptr || !kivo_is_port(port->obj_type)) {
        return;
    }
    if (is_port) {
        check_clock(lint, spot, *port);
        check_period(lint, spot, *port);
        check_default(lint, spot, *port);
        check_usage(lint, spot, *port);
        check_width(lint, spot);
    } else {
        check_state(lint, spot, *port);
    }
}

}  // namespace

void find_wrong_ports(Lint& lint) {
    lint.for_each([&lint](const Spot& spot) { check_port(lint, spot); });
}
