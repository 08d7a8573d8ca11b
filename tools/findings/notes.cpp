#include "tools/findings/notes.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/description/start_tag.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/suggestion.h"
#include "tools/findings/xml_notes.h"

namespace {

// How far back the tag of an attribute is looked for: an element may have any number of them.
constexpr std::size_t kLongestWalk = 4096;

// What the library points at besides the place itself.
struct RelatedRow {
    std::string_view id;
    const char* note;
};

// clang-format off
constexpr RelatedRow kRelated[] = {
    {"type-clash", "first declared here"},
    {"wizard-map-objects", "the map is declared here"},
    {"xml-syntax", "first given here"},
};
// clang-format on

// What mends a text of the library that misleads: hosts match on the texts, so they stay.
struct MendingRow {
    std::string_view id;
    std::string_view element;  // the tag that the note is for; empty: any
    bool has_word;             // whether a word is at fault
    const char* note;
};

// clang-format off
constexpr MendingRow kMending[] = {
    {"object-sub-tag",       "PARAMETER", true,
     "this is a PARAMETER; the message says PORT of any element"},
    {"wizard-map-attribute", "",          true,
     "this is a WIZARD_MAP; the message says vector stimulus of maps too"},
    {"rule-without-data",    "",          false,
     "the condition is the text between the tags; no attribute holds it"},
    {"rule-without-data",    "",          true,
     "ENABLED switches it off, so it is not stored"},
};
// clang-format on

// The first attribute of the same name in the tag of the attribute at "second". The "<" before it
// may stand in a value; then what seems to be its tag holds a quote, or the walk misses the
// attribute or meets it before any other of its name.
std::optional<std::size_t> find_first_attribute(std::string_view text, std::size_t second) {
    const std::size_t from = second > kLongestWalk ? second - kLongestWalk : 0;
    const std::size_t tag = text.substr(from, second - from).rfind('<');
    if (tag == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = text.substr(second, end_of_name(text, second) - second);
    std::optional<std::size_t> first;
    StartTag walk(text.substr(from + tag));
    if (walk.name().find_first_of("'\"") != std::string_view::npos) {
        return std::nullopt;
    }
    for (Attribute attribute; walk.next(attribute);) {
        const auto at = static_cast<std::size_t>(attribute.name.data() - text.data());
        if (at >= second) {
            return at == second ? first : std::nullopt;
        }
        if (!first && attribute.name == name) {
            first = at;
        }
    }
    return std::nullopt;
}

std::optional<Note> first_attribute(const Finding& finding, const KIVO_PLACE& told,
                                    Sources& sources) {
    const SourceText& source = sources.at(told.file);
    const auto second = source.offset(told.line, told.column);
    const auto first = second ? find_first_attribute(source.text(), *second) : std::nullopt;
    return first ? std::optional(Note{"first given here", source.place(finding.place.file, *first)})
                 : std::nullopt;
}

}  // namespace

Note did_you_mean(std::string_view word, const Place& place) {
    return {"did you mean \"" + std::string(word) + "\"?", place};
}

Note known_here(const std::vector<std::string_view>& words, const Place& place) {
    std::string text = "known here: ";
    const char* separator = "";
    for (const std::string_view word : words) {
        text.append(separator).append(word);
        separator = ", ";
    }
    return {text, place};
}

void Notes::add_to(Finding& finding, const KIVO_PLACE& told, const KIVO_MESSAGE_FACTS& facts) {
    const auto add = [&finding](std::optional<Note> note) {
        if (note) {
            finding.notes.push_back(std::move(*note));
        }
        return note.has_value();
    };
    for (const MendingRow& row : kMending) {
        if (row.id == finding.id && row.has_word == !facts.word.empty() &&
            (row.element.empty() || row.element == facts.element)) {
            add(Note{row.note, finding.place});
        }
    }
    if (finding.id == "xml-syntax" && facts.attribute.empty()) {
        add(xml_note(finding, told));
    }
    if (finding.id == "file-not-found") {
        add_file_notes(finding, told, facts.word);
    }
    if (!facts.reason.empty()) {
        add(Note{"the system says: " + facts.reason, finding.place});
    }
    for (const RelatedRow& row : kRelated) {
        if (row.id == finding.id) {
            add(related(row.note, facts.related));
        }
    }
    // What was unknown at the finding and is known in the end.
    const KIVO_OBJ_INFO* const later =
        finding.id == "unknown-type" ? description_.info().get_kivo_obj(facts.object) : nullptr;
    if (later == nullptr || !add(related("declared later, here", later->mark))) {
        add(likely_word(finding, told, facts));
    }
}

void Notes::add_to(Finding& finding, const KIVO_PLACE& told) {
    if (finding.id != "xml-repeated-attribute") {
        return;
    }
    if (auto note = first_attribute(finding, told, sources_)) {
        finding.notes.push_back(std::move(*note));
    }
}

std::optional<Note> Notes::xml_note(const Finding& finding, const KIVO_PLACE& told) {
    const SourceText& source = sources_.at(told.file);
    const auto fault = source.offset(told.line, told.column);
    const auto note = fault ? note_of_xml_fault(source.text(), *fault) : std::nullopt;
    return note ? std::optional(Note{note->text, source.place(finding.place.file, note->at)})
                : std::nullopt;
}

void Notes::add_file_notes(Finding& finding, const KIVO_PLACE& told, const std::string& name) {
    if (!finding.place.start) {
        return;
    }
    finding.notes.push_back({includes_.searched(name), finding.place});
    if (const std::string path = includes_.beside(name, told.file); !path.empty()) {
        finding.notes.push_back({"there is a file \"" + path +
                                     "\"; names are not relative to the file that includes them",
                                 finding.place});
    } else if (const std::string near = includes_.nearest(name); !near.empty()) {
        finding.notes.push_back(did_you_mean(near, finding.place));
    }
}

std::optional<Note> Notes::related(const std::string& text, const KIVO_MARK& mark) {
    if (mark.file == 0) {
        return std::nullopt;
    }
    const KIVO_PLACE told = description_.info().get_place(mark);
    return Note{text, place_of(description_, told, sources_)};
}

const ObjectNames& Notes::names(ObjectNames::Kind kind) {
    std::optional<ObjectNames>& names =
        kind == ObjectNames::Kind::kParameters ? parameters_ : ports_;
    if (!names) {
        names.emplace(description_.info(), kind);
    }
    return *names;
}

// The name of another object that may be meant by one that no element declares.
std::string Notes::likely_name(const KIVO_MESSAGE_FACTS& facts) {
    const ObjectNames::Kind kind =
        facts.element == "PORT" ? ObjectNames::Kind::kPorts : ObjectNames::Kind::kParameters;
    return names(kind).nearest(facts.object);
}

std::optional<Note> Notes::likely_word(const Finding& finding, const KIVO_PLACE& told,
                                       const KIVO_MESSAGE_FACTS& facts) {
    if (!finding.place.start) {
        return std::nullopt;
    }
    const SourceText& source = sources_.at(told.file);
    const auto offset = source.offset(told.line, told.column);
    if (!offset) {
        return std::nullopt;
    }
    const std::string_view rest = source.text().substr(*offset);
    std::string word = suggested_word(finding.id, facts, rest);
    // An element with a TYPE, though a wrong one, declares: its name is meant.
    if (word.empty() && finding.id == "unknown-type" && facts.attribute == "NAME") {
        word = likely_name(facts);
    }
    if (!word.empty()) {
        return did_you_mean(word, finding.place);
    }
    const std::vector<std::string> known = words_to_list(finding.id, facts, rest);
    return known.empty() ? std::nullopt
                         : std::optional(known_here({known.begin(), known.end()}, finding.place));
}
