#include "tools/findings/xml_findings.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tools/findings/library_findings.h"
#include "tools/findings/notes.h"
#include "tools/findings/xml_fault.h"
#include "tools/text/text_steps.h"

namespace {

bool is_blank_between(std::string_view text, std::size_t first, std::size_t second) {
    const auto [begin, end] = std::minmax(first, second);
    const std::string_view between = text.substr(begin, end - begin);
    return is_blank(between);
}

// Where the library has found faults of the XML itself, by file.
using KnownFaults = std::multimap<std::string, Position>;

KnownFaults known_faults(const std::vector<Finding>& findings) {
    KnownFaults known;
    for (const Finding& finding : findings) {
        const bool is_fault = finding.id == "xml-syntax" || finding.id == "read-error";
        if (is_fault && finding.place.start) {
            known.emplace(finding.place.file, *finding.place.start);
        }
    }
    return known;
}

// Whether the library has found the same: in the same line, or with nothing but blanks between the
// two places, as at the end of a file.
bool is_known(const KnownFaults& known, const std::string& file, const XmlFault& fault,
              const Position& at, const SourceText& source) {
    const auto [first, last] = known.equal_range(file);
    return std::any_of(first, last, [&](const auto& entry) {
        const Position& start = entry.second;
        const auto offset = source.offset(start.line, start.column);
        return start.line == at.line ||
               (offset && is_blank_between(source.text(), *offset, fault.begin));
    });
}

}  // namespace

void append_xml_findings(std::vector<Finding>& findings, const Description& description,
                         Sources& sources) {
    const KnownFaults known = known_faults(findings);
    for (const std::string& path : files_of(description.info())) {
        const SourceText& source = sources.at(path);
        const std::optional<XmlFault> fault = find_xml_fault(source.text(), source.encoding());
        if (!fault) {
            continue;
        }
        Finding finding;
        finding.severity = Severity::kWarning;
        finding.id = fault->id;
        finding.text = fault->text;
        const std::string name = path == description.path() ? description.name() : path;
        finding.place = source.place(name, fault->begin, fault->end);
        const Position& start = *finding.place.start;
        if (!is_known(known, name, *fault, start, source)) {
            Notes(description, sources).add_to(finding, {path, start.line, start.column});
            findings.push_back(std::move(finding));
        }
    }
}
