#include <algorithm>

#include "tools/configure/report.h"
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
    switch (severity) {
        case KIVO_SEVERITY::kError:
            return "error";
        case KIVO_SEVERITY::kCriticalWarning:
            return "critical-warning";
        case KIVO_SEVERITY::kWarning:
            return "warning";
        case KIVO_SEVERITY::kAdvice:
            return "advice";
        case KIVO_SEVERITY::kInfo:
            break;
    }
    return "info";
}

std::string asked_for(const KIVO_SESSION& session) {
    std::string text;
    for (const KIVO_ASSIGNMENT& each : session.assignments()) {
        text += (text.empty() ? "" : " ") + each.name + "=" + each.value;
    }
    return text;
}
