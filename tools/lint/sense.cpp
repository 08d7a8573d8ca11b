#include "tools/lint/sense.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "kivo/session/sense.h"
#include "tools/lint/expressions_source.h"
#include "tools/lint/lint.h"

namespace {

// What a finding adds nothing to: "earlier" tells the same of the same object, or of the same text.
enum class Of { kObject, kText };
struct Overlap {
    std::string_view id;
    std::string_view earlier;
    Of of;
};

// clang-format off
constexpr Overlap kOverlaps[] = {
    { "default-breaks-rule", "default-index",      Of::kObject },
    { "default-breaks-rule", "empty-range",        Of::kObject },
    { "default-breaks-rule", "number-expected",    Of::kObject },
    { "default-breaks-rule", "value-not-in-list",  Of::kObject },
    { "default-breaks-rule", "value-out-of-range", Of::kObject },
    { "ranges-exclude",      "empty-range",        Of::kObject },
    { "ranges-exclude",      "value-not-in-list",  Of::kObject },
    { "ranges-exclude",      "value-out-of-range", Of::kObject },
    { "range-empty",         "empty-range",        Of::kObject },
    { "dead-in-legal",       "value-not-in-list",  Of::kObject },
    { "dead-in-legal",       "value-out-of-range", Of::kObject },
    { "default-never-used",  "else-without-if",    Of::kObject },
    { "default-never-used",  "empty-condition",    Of::kObject },
    { "default-never-used",  "range-attribute",    Of::kObject },
    { "port-width-never",    "number-expected",    Of::kObject },
    { "port-width-never",    "run-time-width",     Of::kObject },
    { "value-never-legal",   "empty-range",        Of::kObject },
    { "value-never-legal",   "value-out-of-range", Of::kObject },
    { "",                    "text-not-in-list",      Of::kText },
    { "",                    "mixed-comparison",      Of::kText },
    { "",                    "not-before-comparison", Of::kText },
    { "",                    "division-by-zero",      Of::kText },
    { "",                    "domain",                Of::kText },
    { "",                    "ill-typed",             Of::kText },
    { "",                    "too-large",             Of::kText },
};
// clang-format on

bool is_before(const Position& left, const Position& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
}

bool is_inside(const Place& inner, const Place& outer) {
    return inner.file == outer.file && inner.start && outer.start && outer.end &&
           !is_before(*inner.start, *outer.start) && is_before(*inner.start, *outer.end);
}

// The session's way to speak of a text.
KIVO_FAULT text_of(const KIVO_SENSE_FINDING& found) {
    KIVO_FAULT text;
    text.object = found.object;
    text.element = found.element;
    text.attribute = found.attribute;
    text.source = found.source;
    text.mark = found.mark;
    return text;
}

KIVO_FAULT element_at(const KIVO_MARK& mark) {
    KIVO_FAULT element;
    element.mark = mark;
    element.attribute = "-";  // no attribute: the place is that of the element
    return element;
}

class SenseRoom {
public:
    SenseRoom(Lint& lint, const std::vector<Finding>& told)
        : lint_(lint), source_(lint), told_(told) {}

    void pass(const KIVO_SENSE_FINDING& found) {
        const auto where = source_.find(text_of(found));
        if (!where) {
            return;
        }
        const Place place = where->place(0, found.source.size());
        const Position start = place.start.value_or(Position{});
        const bool is_told =
            is_known(found, place) ||
            !posted_.emplace(place.file, start.line, start.column, found.id).second;
        if (is_told) {
            return;
        }
        Finding& finding = lint_.post({found.id, "{}"}, *where->element, place, found.text);
        finding.object = found.object.empty() ? finding.object : found.object;
        for (const KIVO_SENSE_NOTE& note : found.notes) {
            if (const auto element = source_.find(element_at(note.mark))) {
                finding.notes.push_back({note.text, element->place(0, 0)});
            }
        }
    }

private:
    bool is_known(const KIVO_SENSE_FINDING& found, const Place& place) const {
        return std::any_of(std::begin(kOverlaps), std::end(kOverlaps), [&](const Overlap& row) {
            return (row.id.empty() || row.id == found.id) &&
                   std::any_of(told_.begin(), told_.end(), [&](const Finding& earlier) {
                       return earlier.id == row.earlier &&
                              (row.of == Of::kObject
                                   ? !found.object.empty() && earlier.object == found.object
                                   : is_inside(earlier.place, place));
                   });
        });
    }

    Lint& lint_;
    ExpressionSource source_;
    const std::vector<Finding>& told_;
    std::set<std::tuple<std::string, std::int32_t, std::int32_t, std::string>> posted_;
};

// Messages after which something of the description is missing.
constexpr std::string_view kOfLostFiles[] = {"file-not-found", "file-not-opened", "file-not-read",
                                             "too-many-files", "invalid-file"};

// Of a description of which a part could not be read nothing is certain.
bool is_whole(const KIVO_INFO& info) {
    for (std::size_t index = 0; index < info.error_list.size(); ++index) {
        const std::string id = info.get_error_id(index);
        if (std::find(std::begin(kOfLostFiles), std::end(kOfLostFiles), id) !=
            std::end(kOfLostFiles)) {
            return false;
        }
    }
    return true;
}

KIVO_EFFORT effort_of(std::int32_t steps) {
    constexpr std::uint32_t kEvaluationsAStep = 6000;  // of all questions together
    constexpr std::uint32_t kMilliseconds = 2000;
    const auto number = static_cast<std::uint32_t>(steps);
    return {number * kEvaluationsAStep, number, kMilliseconds};
}

}  // namespace

Sense sense_findings(const Description& description, Sources& sources, std::int32_t effort,
                     const std::vector<Finding>& told) {
    Sense sense;
    if (effort == 0 || !is_whole(description.info())) {
        return sense;
    }
    const std::deque<Document> documents = documents_of(description, sources);
    Lint lint(description, documents);
    const KIVO_SENSE found = kivo_judge_sense(lint.session(), effort_of(effort));
    SenseRoom room(lint, told);
    for (const KIVO_SENSE_FINDING& each : found.findings) {
        room.pass(each);
    }
    sense.findings = lint.take_findings();
    sense.undecided = found.undecided;
    return sense;
}
