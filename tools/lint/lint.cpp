#include "tools/lint/lint.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tuple>

#include "kivo/session/internal/near_word.h"
#include "tools/findings/notes.h"
#include "tools/lint/rooms.h"
#include "tools/text/utf8.h"

namespace {

// A longer list hides the message that it is to explain.
constexpr std::size_t kMostListed = 12;

// clang-format off
constexpr void (*kRooms[])(Lint&) = {
    find_foreign_roots,
    find_unread_parts,
    find_incomplete_parts,
    find_lost_branches,
    find_wrong_words,
    find_wrong_names,
    find_misplaced_declarations,
    find_repetitions,
    find_synonyms,
    find_wrong_stimulus,
    find_wrong_expressions,
    find_wrong_values,
    find_wrong_defaults,
    find_wrong_ports,
    find_wrong_macros,
};
// clang-format on

}  // namespace

std::string quoted(std::string_view text) {
    constexpr std::size_t kMost = 60;
    std::size_t cut = 0;
    while (cut < text.size() && cut < kMost) {
        cut += std::max<std::size_t>(utf8_length(text.substr(cut)), 1);
    }
    std::string shown = '"' + std::string(text.substr(0, cut));
    return shown + (cut < text.size() ? "...\"" : "\"");
}

Lint::Lint(const Description& description, const std::deque<Document>& documents)
    : description_(description), documents_(documents), session_(description.info()) {
    for (const Document& document : documents) {
        contexts_.push_back(contexts_of(document));
    }
}

Finding& Lint::add(std::string_view id, const DocumentElement& element, Place place,
                   std::string text) {
    Finding& finding = findings_.emplace_back();
    finding.severity = Severity::kWarning;
    finding.id = id;
    finding.text = std::move(text);
    finding.place = std::move(place);
    if (element.owner_name != nullptr) {
        finding.object = element.owner_name->value.text;
    }
    return finding;
}

std::vector<Finding> Lint::take_findings() {
    std::map<std::string, std::size_t> position_of;
    for (const Document& document : documents_) {
        position_of.emplace(document.name(), position_of.size());
    }
    const auto key = [&](const Finding& finding) {
        const Position start = finding.place.start.value_or(Position{});
        return std::tuple(position_of[finding.place.file], start.line, start.column);
    };
    std::stable_sort(
        findings_.begin(), findings_.end(),
        [&](const Finding& left, const Finding& right) { return key(left) < key(right); });
    std::vector<Finding> taken(std::make_move_iterator(findings_.begin()),
                               std::make_move_iterator(findings_.end()));
    findings_.clear();
    return taken;
}

void add_likely_word(Finding& finding, std::string_view word,
                     const std::vector<std::string_view>& known) {
    const std::string_view nearest = nearest_word(word, known, 1);
    if (!nearest.empty()) {
        finding.notes.push_back(did_you_mean(nearest, finding.place));
    } else if (!known.empty() && known.size() <= kMostListed) {
        finding.notes.push_back(known_here(known, finding.place));
    }
}

std::vector<Finding> stimulus_findings(const Description& description, Sources& sources) {
    const std::deque<Document> documents = documents_of(description, sources);
    Lint lint(description, documents);
    find_wrong_stimulus(lint);
    return lint.take_findings();
}

void append_lint_findings(std::vector<Finding>& findings, const Description& description,
                          Sources& sources) {
    const std::deque<Document> documents = documents_of(description, sources);
    Lint lint(description, documents);
    for (const auto room : kRooms) {
        room(lint);
    }
    std::vector<Finding> found = lint.take_findings();
    std::move(found.begin(), found.end(), std::back_inserter(findings));
}
