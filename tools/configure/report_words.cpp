#include <algorithm>

#include "tools/configure/report.h"
#include "tools/description/message_severity.h"
#include "tools/text/words.h"

std::string standing_of(const KIVO_SESSION& session) {
    if (!session.is_legal()) {
        const std::vector<KIVO_VERDICT>& verdicts = session.verdicts();
        const auto errors = std::count_if(
            verdicts.begin(), verdicts.end(),
            [](const KIVO_VERDICT& verdict) { return verdict.severity == KIVO_SEVERITY::kError; });
        return "not legal: " + counted(static_cast<std::size_t>(errors), "error");
    }
    return session.is_granted() ? "legal" : "legal, but not what was asked for";
}

const char* source_word(KIVO_VALUE_SOURCE source, bool is_port) {
    switch (source) {
        case KIVO_VALUE_SOURCE::kDefault:
            return "default";
        case KIVO_VALUE_SOURCE::kPreset:
            return "preset";
        case KIVO_VALUE_SOURCE::kGiven:
            return "given";
        case KIVO_VALUE_SOURCE::kForced:
            break;
    }
    return is_port ? "state" : "forced";
}

const char* severity_word(KIVO_SEVERITY severity) {
    for (const MessageSeverity& row : kMessageSeverities) {
        if (row.severity == severity) {
            return row.id;
        }
    }
    return "advice";  // which verdicts alone give
}

std::string asked_for(const KIVO_SESSION& session) {
    std::string text;
    for (const KIVO_ASSIGNMENT& each : session.assignments()) {
        text += (text.empty() ? "" : " ") + each.name + "=" + each.value;
    }
    return text;
}
