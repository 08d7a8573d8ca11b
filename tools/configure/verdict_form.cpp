#include "tools/configure/verdict_form.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

#include "kivo/session/internal/near_word.h"
#include "tools/configure/text_place.h"
#include "tools/description/default_value.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/notes.h"
#include "tools/text/text_escape.h"

namespace {

constexpr std::size_t kMostEdits = 2;

Severity severity_of(KIVO_SEVERITY severity) {
    return severity == KIVO_SEVERITY::kError    ? Severity::kError
           : severity == KIVO_SEVERITY::kAdvice ? Severity::kAdvice
                                                : Severity::kWarning;
}

bool ends_with(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The faults of a description by the element that they stand in.
class FaultsByElement {
public:
    explicit FaultsByElement(const std::vector<KIVO_FAULT>& faults) {
        for (const KIVO_FAULT& fault : faults) {
            faults_[{fault.mark.file, fault.mark.offset}].push_back(&fault);
        }
    }

    // The one that a verdict tells; null for a verdict of another sort. Each is given out once: the
    // same text may have the same fault in several places.
    const KIVO_FAULT* take_told_by(const KIVO_VERDICT& verdict) {
        const auto element = faults_.find({verdict.mark.file, verdict.mark.offset});
        if (verdict.id != "fault" || element == faults_.end()) {
            return nullptr;
        }
        std::vector<const KIVO_FAULT*>& faults = element->second;
        const auto found =
            std::find_if(faults.begin(), faults.end(), [&verdict](const KIVO_FAULT* fault) {
                return ends_with(verdict.text, "\"" + fault->source + "\": " + fault->text + " [" +
                                                   fault->id + "]");
            });
        if (found == faults.end()) {
            return nullptr;
        }
        const KIVO_FAULT* const fault = *found;
        faults.erase(found);
        return fault;
    }

private:
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<const KIVO_FAULT*>> faults_;
};

// The item of a parameter's list that was probably meant by its value.
std::string meant_value(const KIVO_SESSION& session, const Description& description,
                        const KIVO_VERDICT& verdict) {
    const KIVO_OBJ_INFO* const object = description.info().get_kivo_obj(verdict.subject.name);
    const KIVO_SETTING* const setting = session.find(verdict.subject.name);
    if (verdict.id != "not-in-list" || object == nullptr || setting == nullptr || !setting->value) {
        return {};
    }
    const std::vector<std::string> items = list_items(object->value_array);
    return std::string(nearest_word(*setting->value, {items.begin(), items.end()}, kMostEdits));
}

Finding finding_of(const KIVO_SESSION& session, const Description& description,
                   const KIVO_VERDICT& verdict, const KIVO_FAULT* fault, Sources& sources) {
    Finding finding;
    finding.severity = severity_of(verdict.severity);
    finding.id = verdict.id;
    finding.text = join_lines(verdict.text);
    finding.object = verdict.subject.name;
    const KIVO_PLACE told = description.info().get_place(verdict.mark);
    finding.place = fault == nullptr ? place_of(description, told, sources)
                                     : place_in_text(description, told, *fault, sources);
    if (const std::string meant = meant_value(session, description, verdict); !meant.empty()) {
        finding.notes.push_back(did_you_mean(meant, finding.place));
    }
    return finding;
}

// However many verdicts there are, the answer comes soon.
constexpr std::size_t kMostExplained = 100;

KIVO_EFFORT effort_for_each(std::size_t verdicts) {
    constexpr std::size_t kWithFullEffort = 20;
    KIVO_EFFORT effort;
    const std::size_t explained = std::min(verdicts, kMostExplained);
    const auto share = static_cast<std::uint32_t>(explained / kWithFullEffort + 1);
    effort.evaluations /= share;
    effort.steps /= share;
    return effort;
}

}  // namespace

std::vector<VerdictForm> verdict_forms(const KIVO_SESSION& session,
                                       const Description& description) {
    std::vector<VerdictForm> forms;
    Sources sources;
    FaultsByElement faults(session.faults());
    std::size_t explained = 0;
    const KIVO_EFFORT effort = effort_for_each(session.verdicts().size());
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        VerdictForm& form = forms.emplace_back();
        form.finding =
            finding_of(session, description, verdict, faults.take_told_by(verdict), sources);
        form.subject = verdict.subject;
        form.is_undecided = verdict.is_undecided;
        form.is_explained =
            verdict.severity != KIVO_SEVERITY::kWarning && explained < kMostExplained;
        if (form.is_explained) {
            ++explained;
            form.conflict = session.conflict(verdict.subject, effort);
            form.repairs = session.repairs(verdict.subject, effort, &form.are_all_tried);
        }
    }
    return forms;
}
