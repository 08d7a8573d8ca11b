#include "tools/findings/suggestion.h"

#include <algorithm>
#include <cstddef>

#include "kivo/session/internal/near_word.h"
#include "tools/description/start_tag.h"

namespace {

using Words = std::vector<std::string_view>;

// A longer list, as that of the sections, hides the message that it is to explain.
constexpr std::size_t kMostListed = 12;

// Words that stand near another known word but mean this one, there or elsewhere.
struct Synonym {
    std::string_view id;
    std::string_view word;
    std::string_view meant;
};

// clang-format off
constexpr Synonym kSynonyms[] = {
    {"port-type",          "INOUT", "BIDIR"},
    {"value-rule-sub-tag", "WHEN",  "IF"},
};
// clang-format on

std::string_view synonym(std::string_view id, std::string_view word) {
    for (const Synonym& row : kSynonyms) {
        if (row.id == id && equals_but_for_case(row.word, word)) {
            return row.meant;
        }
    }
    return {};
}

// Anything but ON switches a rule off, on purpose perhaps: NO is no misspelling.
bool is_on_purpose(std::string_view id) {
    return id == "rule-without-data";
}

bool contains(const Words& words, std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string_view meant_by(std::string_view id, std::string_view word, const Words& known) {
    const std::string_view meant = synonym(id, word);
    return contains(known, meant) ? meant : nearest_word(word, known, is_on_purpose(id) ? 0 : 1);
}

bool has_attribute(std::string_view source, std::string_view name) {
    return !find_attribute(source, name).name.empty();
}

// The attribute that the element lacks, empty when it lacks none.
std::string_view missing_attribute(std::string_view id, const KIVO_MESSAGE_FACTS& facts,
                                   std::string_view source) {
    // An object that is not known is not declared here either.
    const bool is_about_name = id == "unknown-type" && facts.attribute == "NAME";
    const std::string_view wanted = is_about_name        ? std::string_view("TYPE")
                                    : facts.word.empty() ? std::string_view(facts.attribute)
                                                         : std::string_view();
    return has_attribute(source, wanted) ? std::string_view() : wanted;
}

// The attribute itself when another one seems to be it, misspelt.
std::string_view misspelt_in(std::string_view source, std::string_view wanted) {
    StartTag tag(source);
    for (Attribute attribute; tag.next(attribute);) {
        if (!nearest_word(attribute.name, {wanted}, 1).empty()) {
            return wanted;
        }
    }
    return {};
}

}  // namespace

std::string suggested_word(std::string_view id, const KIVO_MESSAGE_FACTS& facts,
                           std::string_view source_from_place) {
    const Words known(facts.known_words.begin(), facts.known_words.end());
    const std::string_view missing = missing_attribute(id, facts, source_from_place);
    return std::string(missing.empty() ? meant_by(id, facts.word, known)
                                       : misspelt_in(source_from_place, missing));
}

std::vector<std::string> words_to_list(std::string_view id, const KIVO_MESSAGE_FACTS& facts,
                                       std::string_view source_from_place) {
    const Words known(facts.known_words.begin(), facts.known_words.end());
    const bool stands_there =
        !facts.word.empty() || has_attribute(source_from_place, facts.attribute);
    const bool is_choice = stands_there && !is_on_purpose(id) && known.size() <= kMostListed &&
                           !contains(known, facts.word);
    return is_choice ? facts.known_words : std::vector<std::string>();
}
