// Answers questions about configurations, one JSON object a line; see oracle/PROTOCOL.md.
#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

namespace {

using nlohmann::json;

constexpr const char* kSources[] = {"default", "preset", "given", "forced"};
constexpr const char* kPortSources[] = {"default", "preset", "given", "state"};
constexpr const char* kSeverities[] = {"error", "critical-warning", "warning", "advice", "info"};
constexpr const char* kKinds[] = {"unknown", "truth", "integer", "real", "text"};
constexpr const char* kSetResults[] = {"done", "unknown-name", "not-a-setting", "not-a-number",
                                       "not-a-state"};

// A store of which nothing outlives the question.
struct Store {
    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() { info.delete_detached_objects(); }

    KIVO_INFO info;
};

template <class Optional>
json or_null(const Optional& value) {
    return value ? json(*value) : json(nullptr);
}

json truth(KIVO_TRUTH truth) {
    return truth == KIVO_TRUTH::kUnknown ? json(nullptr) : json(truth == KIVO_TRUTH::kYes);
}

json parameters_of(const KIVO_SESSION& session) {
    json list = json::array();
    for (const KIVO_SETTING& each : session.settings()) {
        list.push_back({{"name", each.name},
                        {"type", each.type == KIVO_OBJ_INTEGER_PARAMETER ? "INTEGER" : "STRING"},
                        {"asked", or_null(each.asked)},
                        {"value", or_null(each.value)},
                        {"source", kSources[static_cast<int>(each.source)]},
                        {"settable", each.settable}});
    }
    return list;
}

json hidden_of(const KIVO_SESSION& session) {
    json list = json::array();
    for (const KIVO_SETTING& each : session.hidden()) {
        list.push_back({{"name", each.name}, {"value", or_null(each.value)}});
    }
    return list;
}

json ports_of(const KIVO_SESSION& session) {
    json list = json::array();
    for (const KIVO_PORT& each : session.ports()) {
        list.push_back(
            {{"name", each.name},
             {"asked", or_null(each.asked)},
             {"state", each.state ? json(kivo_get_usage_state_as_string(*each.state)) : json()},
             {"source", kPortSources[static_cast<int>(each.source)]},
             {"width", or_null(each.width)},
             {"tied", or_null(each.tied)},
             {"settable", each.settable}});
    }
    return list;
}

json verdicts_of(const KIVO_SESSION& session, const KIVO_INFO& info) {
    std::vector<std::pair<std::vector<std::string>, json>> sorted;
    for (const KIVO_VERDICT& each : session.verdicts()) {
        const int line = info.get_place(each.mark).line;
        const std::string severity = kSeverities[static_cast<int>(each.severity)];
        const std::string result = each.is_undecided ? "undecided" : "fails";
        std::string key = std::to_string(line);
        key.insert(0, 12 - key.size(), '0');
        sorted.push_back({{key, each.id, each.subject.name, severity, result},
                          {{"id", each.id},
                           {"severity", severity},
                           {"result", result},
                           {"subject", each.subject.name},
                           {"line", line}}});
    }
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& left, const auto& right) { return left.first < right.first; });
    json list = json::array();
    for (auto& [key, verdict] : sorted) {
        list.push_back(std::move(verdict));
    }
    return list;
}

json faults_of(const KIVO_SESSION& session, const KIVO_INFO& info) {
    std::vector<std::tuple<int, std::uint32_t, std::string>> sorted;
    for (const KIVO_FAULT& each : session.faults()) {
        sorted.emplace_back(info.get_place(each.mark).line, each.offset, each.id);
    }
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    json list = json::array();
    for (const auto& [line, offset, id] : sorted) {
        list.push_back({{"id", id}, {"offset", offset}, {"line", line}});
    }
    return list;
}

json vectors_of(const KIVO_SESSION& session, KIVO_INFO& info) {
    json list = json::array();
    for (const KIVO_APPLICATION& each : session.vectors()) {
        list.push_back({{"name", each.name},
                        {"applies", truth(each.applies)},
                        {"stimulus", session.stimulus(*info.get_vector_obj(each.name))}});
    }
    return list;
}

json answer(const json& question) {
    Store store;
    json result;
    result["loaded"] = store.info.process_xml_file(question.at("file"));
    KIVO_SESSION session(store.info);
    std::string set = "done";
    if (question.contains("map") && !question["map"].is_null() &&
        !session.select_map(question["map"].get<std::string>())) {
        set = "unknown-map";
    }
    std::vector<KIVO_ASSIGNMENT> assignments;
    for (const json& pair : question.value("settings", json::array())) {
        assignments.push_back({pair.at(0), pair.at(1)});
    }
    if (set == "done") {
        set = kSetResults[static_cast<int>(session.set_all(assignments))];
    }
    result["set"] = set;
    result["parameters"] = parameters_of(session);
    result["hidden"] = hidden_of(session);
    result["ports"] = ports_of(session);
    result["verdicts"] = verdicts_of(session, store.info);
    result["messages"] = json::array();
    for (const KIVO_SHOWN_MESSAGE& each : session.messages()) {
        result["messages"].push_back(
            {{"severity", kSeverities[static_cast<int>(each.severity)]}, {"text", each.text}});
    }
    result["vectors"] = vectors_of(session, store.info);
    result["maps"] = json::array();
    for (const KIVO_APPLICATION& each : session.maps()) {
        result["maps"].push_back({{"name", each.name}, {"applies", truth(each.applies)}});
    }
    result["legal"] = session.is_legal();
    result["granted"] = session.is_granted();
    result["settings"] = json::object();
    for (const KIVO_ASSIGNMENT& each : session.assignments()) {
        result["settings"][each.name] = each.value;
    }
    result["map"] = session.map().empty() ? json(nullptr) : json(session.map());
    result["faults"] = faults_of(session, store.info);
    result["expressions"] = json::array();
    for (const json& text : question.value("expressions", json::array())) {
        const KIVO_EVALUATION value = session.evaluate(text.get<std::string>());
        const bool is_known = value.kind != KIVO_VALUE_KIND::kUnknown;
        result["expressions"].push_back({{"kind", kKinds[static_cast<int>(value.kind)]},
                                         {"value", is_known ? json(value.value) : json(nullptr)},
                                         {"reasons", value.reasons}});
    }
    return result;
}

}  // namespace

int main() {
    std::ios::sync_with_stdio(false);
    for (std::string line; std::getline(std::cin, line);) {
        json result;
        try {
            result = answer(json::parse(line));
        } catch (const json::exception& problem) {
            result = {{"error", problem.what()}};
        }
        std::cout << result.dump(-1, ' ', false, json::error_handler_t::replace) << std::endl;
    }
}
