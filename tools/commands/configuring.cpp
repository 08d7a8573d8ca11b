#include "tools/commands/configuring.h"

#include "tools/commands/exit_status.h"
#include "tools/configure/report.h"
#include "tools/text/text_escape.h"

namespace {

// A map that does not apply can be chosen all the same.
void warn_of_map(Terminal& terminal, const KIVO_SESSION& session) {
    const std::string map = session.map();
    for (const KIVO_APPLICATION& each : session.maps()) {
        if (!map.empty() && each.name == map && each.applies != KIVO_TRUTH::kYes) {
            terminal.err.write(
                "kivo: warning: the condition of wizard map '" + escape_text(map) +
                (each.applies == KIVO_TRUTH::kNo ? "' does not hold\n" : "' is not decided\n"));
        }
    }
}

}  // namespace

OptionRow settings_row(ConfigurationRequest& request) {
    return {.name = "NAME=VALUE",
            .target = &request.settings,
            .help = "A value; of a port USED, UNUSED, VARIABLE or CONSTANT, CONSTANT:5",
            .accepts = is_setting};
}

OptionRow map_row(ConfigurationRequest& request) {
    return {.name = "--wizard",
            .value_name = "MAP",
            .target = &request.map,
            .help = "Take the values and rules of a wizard map"};
}

OptionRow from_row(ConfigurationRequest& request) {
    return {.name = "--from",
            .value_name = "FILE",
            .target = &request.from,
            .help = "Start with the settings and map of an earlier configuration, in JSON",
            .offer = Offer::kFiles};
}

std::optional<KIVO_SESSION> configured(Terminal& terminal, const KIVO_INFO& info,
                                       const ConfigurationRequest& request, int* status) {
    KIVO_SESSION session(info);
    if (const std::optional<Refusal> refusal = apply_request(session, request)) {
        terminal.report_error(refusal->text);
        *status = refusal->is_unreadable ? kExitFailed : kExitUsage;
        return std::nullopt;
    }
    warn_of_map(terminal, session);
    return session;
}

int status_of(const KIVO_SESSION& session) {
    return session.is_legal() && session.is_granted() ? kExitDone : kExitMessages;
}

Configuration::Configuration(Terminal& terminal, const KIVO_INFO& info,
                             const ConfigurationRequest& request) {
    if (request.settings.empty()) {
        return;
    }
    int refused = kExitDone;
    session_ = configured(terminal, info, request, &refused);
    if (!session_) {
        failure_ = refused;
    } else if (status_of(*session_) != kExitDone) {
        terminal.err.write("kivo: note: the configuration is " + standing_of(*session_) +
                           "; 'kivo configure' tells more\n");
    }
}

int Configuration::status() const {
    return session_ ? status_of(*session_) : static_cast<int>(kExitDone);
}
