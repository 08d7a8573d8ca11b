#include "tools/findings/library_findings.h"

#include <optional>
#include <string_view>

#include "tools/findings/attribute_at_fault.h"
#include "tools/findings/notes.h"

namespace {

Severity severity_of(const std::string& id) {
    const MessageDescription* const known = find_message(id);
    return known == nullptr ? Severity::kError : known->severity;
}

std::optional<WrongAttribute> attribute_of(const Finding& finding, const std::string& name,
                                           const KIVO_PLACE& told, Sources& sources) {
    if (name.empty() || !finding.place.excerpt) {
        return std::nullopt;
    }
    const SourceText& source = sources.at(told.file);
    const auto offset = source.offset(told.line, told.column);
    if (!offset) {
        return std::nullopt;
    }
    // Only what is shown: an element may have any number of attributes, all of them wrong.
    const std::string_view shown =
        source.text().substr(*offset, finding.place.excerpt->from.size());
    const std::string_view attribute = attribute_at_fault(name, shown);
    if (attribute.empty()) {
        return std::nullopt;
    }
    return WrongAttribute{static_cast<std::size_t>(attribute.data() - shown.data()),
                          std::string(attribute)};
}

// Without the path of a file that stands for something else.
std::string as_named(const Description& description, std::string text) {
    const std::string& path = description.path();
    const std::string& name = description.name();
    if (path == name) {
        return text;
    }
    for (std::size_t at = text.find(path); at != std::string::npos;
         at = text.find(path, at + name.size())) {
        text.replace(at, path.size(), name);
    }
    return text;
}

}  // namespace

Place place_of(const Description& description, const KIVO_PLACE& told, Sources& sources) {
    const std::string file = told.file == description.path() ? description.name() : told.file;
    if (told.file.empty() || told.line == 0) {
        return {file, {}, {}, {}};
    }
    const SourceText& source = sources.at(told.file);
    if (const auto offset = source.offset(told.line, told.column)) {
        return source.place(file, *offset);
    }
    // The file is gone or another one since it was loaded.
    const Position position{told.line, told.column, told.column};
    return {file, position, position, {}};
}

std::vector<Finding> library_findings(const Description& description, Sources& sources) {
    const KIVO_INFO& info = description.info();
    std::vector<Finding> findings;
    Notes notes(description, sources);
    findings.reserve(info.error_list.size());
    for (std::size_t index = 0; index < info.error_list.size(); ++index) {
        const KIVO_PLACE told = info.get_error_place(index);
        Finding finding;
        finding.id = info.get_error_id(index);
        finding.severity = severity_of(finding.id);
        finding.text = as_named(description, info.error_list[index]);
        finding.place = place_of(description, told, sources);
        const KIVO_MESSAGE_FACTS facts = info.get_error_facts(index);
        finding.attribute = attribute_of(finding, facts.attribute, told, sources);
        notes.add_to(finding, told, facts);
        findings.push_back(std::move(finding));
    }
    return findings;
}
