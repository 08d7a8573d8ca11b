#include "tools/findings/warning_settings.h"

#include <fmt/format.h>

#include <algorithm>

#include "kivo/session/internal/near_word.h"
#include "tools/findings/catalogue.h"

namespace {

constexpr std::size_t kMostEdits = 3;
constexpr std::string_view kNo = "no-";
constexpr std::string_view kError = "error=";

bool is_warning(std::string_view id) {
    const MessageDescription* const row = find_message(id);
    return row != nullptr && row->severity == Severity::kWarning;
}

std::vector<std::string_view> switchable_ids() {
    std::vector<std::string_view> ids;
    for (const MessageDescription& row : message_catalogue()) {
        if (row.severity == Severity::kWarning) {
            ids.push_back(row.id);
        }
    }
    return ids;
}

std::string unknown(std::string_view id) {
    if (find_message(id) != nullptr) {
        return fmt::format("'{}' is an error, which cannot be switched", id);
    }
    const std::string_view nearest = nearest_word(id, switchable_ids(), kMostEdits);
    return nearest.empty() ? fmt::format("no warning '{}'", id)
                           : fmt::format("no warning '{}', perhaps '{}'", id, nearest);
}

bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

}  // namespace

std::vector<std::string> WarningSettings::all() {
    std::vector<std::string> settings = {"all"};
    for (const std::string_view id : switchable_ids()) {
        settings.emplace_back(id);
        settings.push_back(std::string(kNo).append(id));
    }
    return settings;
}

std::string WarningSettings::take(std::string_view setting) {
    if (setting == "all") {
        has_all_ = true;
        choices_.clear();
        return {};
    }
    if (setting == "error=all") {
        all_are_errors_ = true;
        return {};
    }
    Choice choice = Choice::kOn;
    if (begins_with(setting, kNo) && !is_warning(setting)) {
        choice = Choice::kOff;
        setting.remove_prefix(kNo.size());
    } else if (begins_with(setting, kError)) {
        choice = Choice::kError;
        setting.remove_prefix(kError.size());
    }
    if (!is_warning(setting)) {
        return unknown(setting);
    }
    choices_.insert_or_assign(std::string(setting), choice);
    return {};
}

WarningSettings::Choice WarningSettings::choice_of(std::string_view id) const {
    const MessageDescription* const row = find_message(id);
    const auto chosen = choices_.find(id);
    Choice choice = has_all_ || row == nullptr || row->is_on ? Choice::kOn : Choice::kOff;
    choice = chosen == choices_.end() ? choice : chosen->second;
    return choice == Choice::kOn && all_are_errors_ ? Choice::kError : choice;
}

void WarningSettings::apply(std::vector<Finding>& findings) const {
    const auto is_off = [this](const Finding& finding) {
        return finding.severity == Severity::kWarning && choice_of(finding.id) == Choice::kOff;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_off), findings.end());
    for (Finding& finding : findings) {
        if (finding.severity == Severity::kWarning && choice_of(finding.id) == Choice::kError) {
            finding.severity = Severity::kError;
        }
    }
}
