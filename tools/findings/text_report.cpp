#include "tools/findings/text_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"

namespace {

// A tab is one column in places, so it is shown as one blank.
std::string as_shown(std::string source) {
    std::replace(source.begin(), source.end(), '\t', ' ');
    return escape_text(source);
}

// Points at the place where "from" begins, and underlines the attribute where it is shown there.
std::string pointer_at(const std::string& from, const std::optional<WrongAttribute>& attribute) {
    if (!attribute || attribute->distance == 0 || attribute->text.empty() ||
        attribute->distance > from.size() ||
        from.compare(attribute->distance, attribute->text.size(), attribute->text) != 0) {
        return "^";
    }
    const std::size_t before = text_width(as_shown(from.substr(0, attribute->distance)));
    return '^' + std::string(std::max<std::size_t>(before, 1) - 1, ' ') +
           std::string(text_width(as_shown(attribute->text)), '~');
}

std::string excerpt_of(const Stream& stream, const Place& place,
                       const std::optional<WrongAttribute>& attribute) {
    if (!place.excerpt || (place.excerpt->before.empty() && place.excerpt->from.empty())) {
        return {};
    }
    const std::string before = as_shown(place.excerpt->before);
    const std::string pointer = pointer_at(place.excerpt->from, attribute);
    return fmt::format("{:>6} | {}{}\n{:>6} | {:{}}{}\n", place.start->line, before,
                       as_shown(place.excerpt->from), "", "", text_width(before),
                       stream.paint(Style::kPointer, pointer));
}

std::string where(const Stream& stream, const std::string& name, const Place& place) {
    std::string text = escape_text(place.file.empty() ? name : place.file);
    if (place.start) {
        text += fmt::format(":{}:{}", place.start->line, place.start->column);
    }
    return stream.paint(Style::kBold, text + ':');
}

bool is_same_place(const Place& left, const Place& right) {
    return left.file == right.file && left.start && right.start &&
           left.start->line == right.start->line && left.start->column == right.start->column;
}

}  // namespace

std::string finding_text(const Stream& stream, const std::string& name, const Finding& finding) {
    const Style style = finding.severity == Severity::kError ? Style::kError : Style::kWarning;
    std::string out =
        fmt::format("{} {} {} {}\n", where(stream, name, finding.place),
                    stream.paint(style, std::string(severity_word(finding.severity)) + ':'),
                    escape_text(finding.text), stream.paint(Style::kDim, '[' + finding.id + ']'));
    out += excerpt_of(stream, finding.place, finding.attribute);
    for (const Note& note : finding.notes) {
        out += fmt::format("{} {} {}\n", where(stream, name, note.place),
                           stream.paint(Style::kNote, "note:"), escape_text(note.text));
        // The line that has just been shown says nothing new.
        out += is_same_place(note.place, finding.place) ? "" : excerpt_of(stream, note.place, {});
    }
    return out;
}

void write_finding(Stream& stream, const std::string& name, const Finding& finding) {
    stream.write(finding_text(stream, name, finding));
}
