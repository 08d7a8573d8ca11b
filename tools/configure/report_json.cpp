#include <nlohmann/json.hpp>
#include <optional>

#include "tools/configure/report.h"
#include "tools/text/json_text.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kFormat = "kivo.configuration/1";

Json text_or_null(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json();
}

Json truth_json(KIVO_TRUTH truth) {
    return truth == KIVO_TRUTH::kUnknown ? Json() : Json(truth == KIVO_TRUTH::kYes);
}

// Names are given once, so that none need be looked for.
Json settings_json(const std::vector<KIVO_ASSIGNMENT>& assignments) {
    Json::object_t members;
    for (const KIVO_ASSIGNMENT& each : assignments) {
        members.Container::emplace_back(each.name, each.value);
    }
    return members;
}

Json parameter_json(const KIVO_SETTING& setting) {
    return {{"name", setting.name},
            {"type", setting.type == KIVO_OBJ_INTEGER_PARAMETER ? "INTEGER" : "STRING"},
            {"asked", text_or_null(setting.asked)},
            {"value", text_or_null(setting.value)},
            {"source", source_word(setting.source, false)},
            {"settable", setting.settable}};
}

Json hidden_json(const KIVO_SETTING& setting) {
    return {{"name", setting.name}, {"value", text_or_null(setting.value)}};
}

Json port_json(const KIVO_PORT& port) {
    return {{"name", port.name},
            {"asked", text_or_null(port.asked)},
            {"state", port.state ? Json(kivo_get_usage_state_as_string(*port.state)) : Json()},
            {"source", source_word(port.source, true)},
            {"width", port.width ? Json(*port.width) : Json()},
            {"tied", text_or_null(port.tied)}};
}

Json place_json(const Place& place) {
    const Position nowhere{0, 0, 0};
    const Position& start = place.start ? *place.start : nowhere;
    return {{"file", place.file}, {"line", start.line}, {"column", start.column}};
}

Json verdict_json(const VerdictForm& form) {
    Json repairs = Json::array();
    for (const KIVO_REPAIR& repair : form.repairs) {
        repairs.push_back({{"set", settings_json(repair.set)}, {"text", repair.text}});
    }
    Json conflict = Json::array();
    for (const KIVO_ASSIGNMENT& setting : form.conflict.settings) {
        conflict.push_back(setting.name);
    }
    return {{"id", form.finding.id},
            {"severity", severity_word(form.finding.severity)},
            {"result", form.is_undecided ? "undecided" : "fails"},
            {"subject", form.finding.object},
            {"text", form.finding.text},
            {"place", place_json(form.finding.place)},
            {"repairs", std::move(repairs)},
            {"conflict", std::move(conflict)}};
}

Json message_json(const KIVO_SHOWN_MESSAGE& message) {
    return {{"severity", severity_word(message.severity)}, {"text", message.text}};
}

Json application_json(const KIVO_APPLICATION& application) {
    return {{"name", application.name}, {"applies", truth_json(application.applies)}};
}

template <class Items, class ToJson>
Json list_json(const Items& items, ToJson to_json) {
    Json json = Json::array();
    for (const auto& item : items) {
        json.push_back(to_json(item));
    }
    return json;
}

}  // namespace

std::string configuration_json(const KIVO_SESSION& session, const Description& description) {
    const std::string map = session.map();
    Json json;
    json["format"] = kFormat;
    json["legal"] = session.is_legal();
    json["granted"] = session.is_granted();
    json["settings"] = settings_json(session.assignments());
    json["map"] = map.empty() ? Json() : Json(map);
    json["parameters"] = list_json(session.settings(), parameter_json);
    json["hidden"] = list_json(session.hidden(), hidden_json);
    json["ports"] = list_json(session.ports(), port_json);
    json["verdicts"] = list_json(verdict_forms(session, description), verdict_json);
    json["messages"] = list_json(session.messages(), message_json);
    json["vectors"] = list_json(session.vectors(), application_json);
    json["maps"] = list_json(session.maps(), application_json);
    return json_text(json) + "\n";
}
