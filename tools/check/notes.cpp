#include "tools/check/notes.h"

#include <optional>
#include <string>
#include <string_view>

#include "tools/check/library_findings.h"
#include "tools/check/suggestion.h"

namespace {

// How far back the tag of an attribute is looked for: an element may have any number of them.
constexpr std::size_t kLongestWalk = 4096;

// The name in "Kivofunction Object NAME of different type TYPE already exists", which may be any
// text itself.
std::string name_in_clash(const std::string& text) {
    constexpr std::string_view kBefore = "Kivofunction Object ";
    constexpr std::string_view kBehind = " of different type ";
    const std::size_t end = text.rfind(kBehind);
    return end == std::string::npos || end < kBefore.size()
               ? std::string()
               : text.substr(kBefore.size(), end - kBefore.size());
}

std::optional<Note> first_declaration(const Finding& finding, const Description& description,
                                      Sources& sources) {
    const KIVO_OBJ_INFO* const first = description.info().get_kivo_obj(name_in_clash(finding.text));
    if (first == nullptr || first->mark.file == 0) {
        return std::nullopt;
    }
    const KIVO_PLACE told = description.info().get_place(first->mark);
    return Note{"first declared here", place_of(description, told, sources)};
}

bool is_blank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\n' || letter == '\r';
}

// The attributes of a start tag, one after the other.
class AttributeWalk {
public:
    // "at" is behind the "<".
    AttributeWalk(std::string_view text, std::size_t at) : text_(text), at_(end_of_name(text, at)) {
        skip_blanks();
    }

    // The offset of the name of the attribute at hand.
    std::size_t at() const { return at_; }
    std::string_view name() const { return text_.substr(at_, end_of_name(text_, at_) - at_); }

    // False when what is at hand is no attribute.
    bool advance() {
        std::size_t next = end_of_name(text_, at_);
        if (next == at_) {
            return false;
        }
        at_ = next;
        skip_blanks();
        const bool has_value = at_ < text_.size() && text_[at_] == '=';
        at_ += has_value ? 1 : 0;
        skip_blanks();
        if (!has_value || at_ >= text_.size() || (text_[at_] != '"' && text_[at_] != '\'')) {
            return false;
        }
        next = text_.find(text_[at_], at_ + 1);
        if (next == std::string_view::npos) {
            return false;
        }
        at_ = next + 1;
        skip_blanks();
        return true;
    }

private:
    void skip_blanks() {
        while (at_ < text_.size() && is_blank(text_[at_])) {
            ++at_;
        }
    }

    std::string_view text_;
    std::size_t at_;
};

// The first attribute of the same name in the tag of the attribute at "second". The "<" before it
// may stand in a value; then the walk misses the attribute, or meets it before any other of its
// name.
std::optional<std::size_t> find_first_attribute(std::string_view text, std::size_t second) {
    const std::size_t from = second > kLongestWalk ? second - kLongestWalk : 0;
    const std::size_t tag = text.substr(from, second - from).rfind('<');
    if (tag == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view name = text.substr(second, end_of_name(text, second) - second);
    std::optional<std::size_t> first;
    AttributeWalk walk(text, from + tag + 1);
    while (walk.at() < second) {
        if (!first && walk.name() == name) {
            first = walk.at();
        }
        if (!walk.advance()) {
            return std::nullopt;
        }
    }
    return walk.at() == second ? first : std::nullopt;
}

std::optional<Note> first_attribute(const Finding& finding, const KIVO_PLACE& told,
                                    Sources& sources) {
    const SourceText& source = sources.at(told.file);
    const auto second = source.offset(told.line, told.column);
    const auto first = second ? find_first_attribute(source.text(), *second) : std::nullopt;
    return first ? std::optional(Note{"first given here", source.place(finding.place.file, *first)})
                 : std::nullopt;
}

std::optional<Note> earlier_one(const Finding& finding, const Description& description,
                                const KIVO_PLACE& told, Sources& sources) {
    if (finding.id == "type-clash") {
        return first_declaration(finding, description, sources);
    }
    constexpr std::string_view kRepeated = " is given more than once";
    const bool is_repeated_attribute =
        finding.id == "xml-repeated-attribute" ||
        (finding.id == "xml-syntax" && finding.text.size() > kRepeated.size() &&
         finding.text.compare(finding.text.size() - kRepeated.size(), kRepeated.size(),
                              kRepeated) == 0);
    return is_repeated_attribute ? first_attribute(finding, told, sources) : std::nullopt;
}

// The word is looked for in the source from the finding on.
std::optional<Note> likely_word(const Finding& finding, const KIVO_PLACE& told, Sources& sources) {
    if (!finding.place.start) {
        return std::nullopt;
    }
    const SourceText& source = sources.at(told.file);
    const auto offset = source.offset(told.line, told.column);
    const std::string word =
        offset ? suggested_word(finding.id, finding.text, source.text().substr(*offset)) : "";
    return word.empty() ? std::nullopt
                        : std::optional(Note{"did you mean \"" + word + "\"?", finding.place});
}

}  // namespace

void add_notes(Finding& finding, const Description& description, const KIVO_PLACE& told,
               Sources& sources) {
    if (auto note = earlier_one(finding, description, told, sources)) {
        finding.notes.push_back(std::move(*note));
    }
    if (auto note = likely_word(finding, told, sources)) {
        finding.notes.push_back(std::move(*note));
    }
}
