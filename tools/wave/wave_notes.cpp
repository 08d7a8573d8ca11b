#include "tools/wave/wave_notes.h"

#include <fmt/format.h>

namespace {

// More would hide the picture.
constexpr std::size_t kMostNotes = 20;

std::string as_line(const Finding& finding) {
    const std::string& path = finding.place.file;
    const Position start = finding.place.start.value_or(Position{});
    return fmt::format("{}:{}:{}: {}", path.substr(path.find_last_of('/') + 1), start.line,
                       start.column, finding.text);
}

}  // namespace

std::vector<std::string> wave_notes(const std::vector<Finding>& findings,
                                    const std::string& vector) {
    std::vector<std::string> notes;
    std::size_t left = 0;
    for (const Finding& finding : findings) {
        if (finding.object != vector) {
            continue;
        }
        if (notes.size() < kMostNotes) {
            notes.push_back(as_line(finding));
        } else {
            ++left;
        }
    }
    if (left > 0) {
        notes.push_back(fmt::format("'kivo check' warns of {} more", left));
    }
    return notes;
}
