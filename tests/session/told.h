#pragma once

#include <optional>
#include <string>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

inline std::string or_none(const std::optional<std::string>& text) {
    return text ? *text : "none";
}

inline std::string value_of(const KIVO_SESSION& session, const std::string& name) {
    const KIVO_SETTING* setting = session.find(name);
    return setting == nullptr ? "no setting" : or_none(setting->value);
}

// "USED", "CONSTANT:5", ...
inline std::string state_of(const KIVO_SESSION& session, const std::string& name) {
    const KIVO_PORT* port = session.find_port(name);
    if (port == nullptr || !port->state) {
        return port == nullptr ? "no port" : "none";
    }
    return kivo_get_usage_state_as_string(*port->state) + (port->tied ? ":" + *port->tied : "");
}

// "id subject", with "?" after what is not decided.
inline std::vector<std::string> verdicts_of(const KIVO_SESSION& session) {
    std::vector<std::string> result;
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        result.push_back(verdict.id + " " + verdict.subject.name +
                         (verdict.is_undecided ? "?" : ""));
    }
    return result;
}

// The value, or the reasons in brackets.
inline std::string evaluated(const KIVO_SESSION& session, const std::string& text) {
    const KIVO_EVALUATION result = session.evaluate(text);
    if (result.kind != KIVO_VALUE_KIND::kUnknown) {
        return result.value;
    }
    std::string reasons;
    for (const std::string& reason : result.reasons) {
        reasons += (reasons.empty() ? "" : ", ") + reason;
    }
    return "[" + reasons + "]";
}

// Everything that a session says, for comparing sessions.
inline std::string everything(const KIVO_SESSION& session, KIVO_INFO& info) {
    std::string all;
    const auto add = [&all](const std::string& text) { all += text + "\n"; };
    for (const auto& list : {session.settings(), session.hidden()}) {
        for (const KIVO_SETTING& each : list) {
            add(each.name + "=" + or_none(each.asked) + "/" + or_none(each.value) + "/" +
                std::to_string(static_cast<int>(each.source)));
        }
    }
    for (const KIVO_PORT& each : session.ports()) {
        add(each.name + "=" + or_none(each.asked) + "/" + state_of(session, each.name) + "/" +
            (each.width ? std::to_string(*each.width) : "none") + "/" +
            std::to_string(static_cast<int>(each.source)));
    }
    for (const KIVO_VERDICT& each : session.verdicts()) {
        add(each.id + " " + each.subject.name + " " + std::to_string(each.mark.offset) + " " +
            std::to_string(each.is_undecided) + " " + each.text);
    }
    for (const KIVO_FAULT& each : session.faults()) {
        add(each.id + " " + std::to_string(each.mark.offset) + " " + std::to_string(each.offset));
    }
    for (const KIVO_SHOWN_MESSAGE& each : session.messages()) {
        add(each.text);
    }
    for (const KIVO_APPLICATION& each : session.vectors()) {
        add(each.name + std::to_string(static_cast<int>(each.applies)));
        for (const std::string& command : session.stimulus(*info.get_vector_obj(each.name))) {
            add(command);
        }
    }
    for (const KIVO_APPLICATION& each : session.maps()) {
        add(each.name + std::to_string(static_cast<int>(each.applies)));
    }
    if (info.html_text != nullptr) {
        add(session.text(info.html_text->intro));
        add(session.text(info.html_text->end));
    }
    return all;
}
