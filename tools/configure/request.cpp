#include "tools/configure/request.h"

#include <string_view>

#include "kivo/session/internal/near_word.h"
#include "tools/configure/saved.h"
#include "tools/text/words.h"

namespace {

constexpr std::size_t kMostEdits = 2;
const std::vector<std::string_view> kStates = {"USED", "UNUSED", "VARIABLE", "CONSTANT"};

std::string with_hint(std::string text, std::string_view near) {
    return near.empty() ? text : text.append("; did you mean '").append(near).append("'?");
}

KIVO_ASSIGNMENT assignment_of(const std::string& word) {
    const std::size_t sign = word.find('=');
    return {word.substr(0, sign), word.substr(sign + 1)};
}

// Macros have names too, but nobody sets them.
std::string nearest_setting(const KIVO_SESSION& session, const std::string& name) {
    const std::string near = session.nearest_name(name);
    return session.find(near) != nullptr || session.find_port(near) != nullptr ? near : "";
}

std::string why_not_a_setting(const KIVO_SESSION& session, const KIVO_ASSIGNMENT& wanted) {
    const KIVO_PORT* const port = session.find_port(wanted.name);
    if (port == nullptr) {
        return "is a hidden parameter, which only --allow-hidden sets";
    }
    return port->settable                       ? "is an output, which cannot be CONSTANT"
           : port->type == KIVO_OBJ_BURIED_PORT ? "is a buried port and cannot be set"
                                                : "is a port that is always used";
}

std::string text_of(const KIVO_SESSION& session, KIVO_SET_RESULT result,
                    const KIVO_ASSIGNMENT& wanted) {
    const std::string name = "'" + wanted.name + "'";
    switch (result) {
        case KIVO_SET_RESULT::kDone:
            break;
        case KIVO_SET_RESULT::kUnknownName:
            return with_hint("no parameter or port is called " + name,
                             nearest_setting(session, wanted.name));
        case KIVO_SET_RESULT::kNotASetting:
            return name + " " + why_not_a_setting(session, wanted);
        case KIVO_SET_RESULT::kNotANumber:
            return name +
                   (session.find_port(wanted.name) == nullptr
                        ? " takes a whole number of at most 128 bits, not '"
                        : " takes CONSTANT: with a whole number of at most 128 bits, not '") +
                   wanted.value + "'";
        case KIVO_SET_RESULT::kNotAState:
            return with_hint(
                name + " takes USED, UNUSED, VARIABLE, CONSTANT or CONSTANT:NUMBER, not '" +
                    wanted.value + "'",
                nearest_word(wanted.value, kStates, kMostEdits));
    }
    return {};
}

std::optional<Refusal> choose_map(KIVO_SESSION& session, const std::string& map) {
    if (session.select_map(map)) {
        return std::nullopt;
    }
    std::vector<std::string> names;
    for (const KIVO_APPLICATION& each : session.maps()) {
        names.push_back(each.name);
    }
    const std::string_view near = nearest_word(map, {names.begin(), names.end()}, kMostEdits);
    return Refusal{false, near.empty()
                              ? "no wizard map '" + map + "'; the wizard maps are: " + quoted(names)
                              : with_hint("no wizard map '" + map + "'", near)};
}

}  // namespace

bool is_setting(std::string_view word) {
    return word.find('=') != std::string_view::npos;
}

bool is_no_setting(std::string_view word) {
    return !is_setting(word);
}

std::optional<Refusal> apply_request(KIVO_SESSION& session, const ConfigurationRequest& request) {
    SavedConfiguration wanted;
    if (!request.from.empty()) {
        if (const std::string problem = read_saved(request.from, wanted); !problem.empty()) {
            return Refusal{true, problem};
        }
    }
    for (const std::string& word : request.settings) {
        wanted.settings.push_back(assignment_of(word));
    }
    session.allow_hidden(request.allows_hidden);
    if (auto refusal = choose_map(session, request.map.empty() ? wanted.map : request.map)) {
        return refusal;
    }
    std::size_t refused = 0;
    const KIVO_SET_RESULT result = session.set_all(wanted.settings, &refused);
    if (result == KIVO_SET_RESULT::kDone) {
        return std::nullopt;
    }
    return Refusal{false, text_of(session, result, wanted.settings[refused])};
}
