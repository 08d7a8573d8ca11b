#include "tools/findings/notes.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/description/start_tag.h"
#include "tools/findings/library_findings.h"
#include "tools/findings/suggestion.h"

namespace {

// How far back the tag of an attribute is looked for: an element may have any number of them.
constexpr std::size_t kLongestWalk = 4096;

constexpr std::string_view kClash = " of different type ";
constexpr std::string_view kUnknownType = " is of unknown type ";

// The name in "Kivofunction Object NAME of different type TYPE already exists" and its like. It may
// be any text itself.
std::string object_name(const std::string& text, std::string_view behind) {
    constexpr std::string_view kBefore = "Kivofunction Object ";
    const std::size_t end = text.rfind(behind);
    return end == std::string::npos || end < kBefore.size()
               ? std::string()
               : text.substr(kBefore.size(), end - kBefore.size());
}

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

bool is_repeated_attribute(const Finding& finding) {
    constexpr std::string_view kRepeated = " is given more than once";
    return finding.id == "xml-repeated-attribute" ||
           (finding.id == "xml-syntax" && finding.text.size() > kRepeated.size() &&
            finding.text.compare(finding.text.size() - kRepeated.size(), kRepeated.size(),
                                 kRepeated) == 0);
}

std::string listed(const std::vector<std::string_view>& words) {
    std::string text;
    for (const std::string_view word : words) {
        text += text.empty() ? "" : ", ";
        text += word;
    }
    return text;
}

}  // namespace

void Notes::add_to(Finding& finding, const KIVO_PLACE& told) {
    if (auto note = earlier_one(finding, told)) {
        finding.notes.push_back(std::move(*note));
    }
    if (auto note = declared_later(finding)) {
        finding.notes.push_back(std::move(*note));
        return;
    }
    if (auto note = likely_word(finding, told)) {
        finding.notes.push_back(std::move(*note));
    }
}

std::optional<Note> Notes::earlier_one(const Finding& finding, const KIVO_PLACE& told) {
    if (finding.id == "type-clash") {
        return declaration(object_name(finding.text, kClash), "first declared here");
    }
    return is_repeated_attribute(finding) ? first_attribute(finding, told, sources_) : std::nullopt;
}

// What was unknown at the finding and is known in the end.
std::optional<Note> Notes::declared_later(const Finding& finding) {
    return finding.id == "unknown-type"
               ? declaration(object_name(finding.text, kUnknownType), "declared later, here")
               : std::nullopt;
}

std::optional<Note> Notes::declaration(const std::string& name, const std::string& text) {
    const KIVO_OBJ_INFO* const object = description_.info().get_kivo_obj(name);
    if (object == nullptr || object->mark.file == 0) {
        return std::nullopt;
    }
    const KIVO_PLACE told = description_.info().get_place(object->mark);
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

// The words are looked for in the source from the finding on.
std::optional<Note> Notes::likely_word(const Finding& finding, const KIVO_PLACE& told) {
    if (!finding.place.start) {
        return std::nullopt;
    }
    const SourceText& source = sources_.at(told.file);
    const auto offset = source.offset(told.line, told.column);
    if (!offset) {
        return std::nullopt;
    }
    const std::string_view rest = source.text().substr(*offset);
    std::string word = suggested_word(finding.id, finding.text, rest);
    // An element with a TYPE, though a wrong one, declares: its name is meant.
    if (word.empty() && finding.id == "unknown-type" && find_attribute(rest, "TYPE").name.empty()) {
        const ObjectNames::Kind kind = StartTag(rest).name() == "PORT"
                                           ? ObjectNames::Kind::kPorts
                                           : ObjectNames::Kind::kParameters;
        word = names(kind).nearest(object_name(finding.text, kUnknownType));
    }
    if (!word.empty()) {
        return Note{"did you mean \"" + word + "\"?", finding.place};
    }
    const std::string known = listed(words_known(finding.id, finding.text, rest));
    return known.empty() ? std::nullopt
                         : std::optional(Note{"known here: " + known, finding.place});
}
