#include "tools/configure/legal_column.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace {

constexpr std::size_t kMostRuns = 5;

std::string joined(const std::vector<std::string>& texts) {
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::string text_of(const KIVO_RUN& run) {
    return run.first == run.last ? run.first : run.first + " to " + run.last;
}

// "2, 4, 6, 8, ..., 64"
std::string text_of(const std::vector<KIVO_RUN>& runs) {
    std::vector<std::string> texts;
    const bool has_gap = runs.size() > kMostRuns;
    const std::size_t shown = has_gap ? kMostRuns - 1 : runs.size();
    std::transform(runs.begin(), runs.begin() + static_cast<std::ptrdiff_t>(shown),
                   std::back_inserter(texts), [](const KIVO_RUN& run) { return text_of(run); });
    if (has_gap) {
        texts.emplace_back("...");
        texts.push_back(text_of(runs.back()));
    }
    return joined(texts);
}

std::string text_of(const KIVO_LEGAL_VALUES& legal) {
    std::vector<std::string> texts;
    for (const std::string& value : legal.values) {
        texts.push_back(value.empty() ? "\"\"" : value);
    }
    if (legal.are_others_legal) {
        texts.emplace_back(texts.empty() ? "any text" : "any other text");
    }
    if (!legal.runs.empty()) {
        texts.push_back(text_of(legal.runs));
    }
    std::string text = joined(texts);
    if (legal.undecided.empty()) {
        return text;
    }
    return text.empty() ? "not decided" : text + "; not decided: " + text_of(legal.undecided);
}

}  // namespace

LegalColumn::LegalColumn(const KIVO_SESSION& session) : session_(session) {
    const auto parameters =
        static_cast<std::uint32_t>(std::max<std::size_t>(session.settings().size(), 1));
    // However many parameters there are, the table comes soon.
    effort_.steps /= parameters;
    effort_.evaluations /= parameters;
}

std::string LegalColumn::cell(const std::string& parameter) {
    std::string whole =
        text_of(session_.legal_values(parameter, KIVO_LEGAL_SCOPE::kWhole, effort_));
    if (!whole.empty()) {
        return whole;
    }
    const std::string own =
        text_of(session_.legal_values(parameter, KIVO_LEGAL_SCOPE::kOwn, effort_));
    if (own.empty()) {
        return "none";
    }
    has_parentheses_ = true;
    return "(" + own + ")";
}

std::string LegalColumn::footnote() const {
    return has_parentheses_ ? "( ) admitted by its own list, ranges and rules, but something else "
                              "must change as well"
                            : "";
}
