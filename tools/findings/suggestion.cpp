#include "tools/findings/suggestion.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "tools/description/start_tag.h"
#include "tools/text/near_word.h"
#include "tools/text/text_steps.h"

namespace {

using Words = std::vector<std::string_view>;

struct Message {
    std::string_view text;
    std::string_view source;
};

struct Row;

// The words of the description that may be a misspelling of one that the row knows.
using Reader = Words (*)(const Message& message, const Row& row);

struct Row {
    std::string_view id;
    Reader read;
    // What stands before and behind the word in the text, or the attribute whose value it is.
    std::string_view before;
    std::string_view behind;
    Words known;
    std::size_t most_edits = 1;
};

Words words_of(std::string_view text, std::size_t most) {
    Words words;
    for (skip_blanks(text); !text.empty() && words.size() < most; skip_blanks(text)) {
        words.push_back(taken_until(text, kBlanks));
    }
    return words;
}

Words between(std::string_view text, std::string_view before, std::string_view behind) {
    if (text.substr(0, before.size()) != before) {
        return {};
    }
    text.remove_prefix(before.size());
    const std::size_t end = text.find(behind);
    return end == std::string_view::npos ? Words() : Words{text.substr(0, end)};
}

Words in_text(const Message& message, const Row& row) {
    return between(message.text, row.before, row.behind);
}

// For a message that says the same of different elements: "before" is the tag of the element.
Words attribute_in_text(const Message& message, const Row& row) {
    return StartTag(message.source).name() == row.before
               ? between(message.text, "Attribute ", row.behind)
               : Words();
}

Words tag_in_source(const Message& message, const Row&) {
    return {StartTag(message.source).name()};
}

// For messages that an attribute is missing.
Words attributes_in_source(const Message& message, const Row&) {
    Words names;
    StartTag tag(message.source);
    for (Attribute attribute; tag.next(attribute);) {
        names.push_back(attribute.name);
    }
    return names;
}

Words value_in_source(const Message& message, const Row& row) {
    const Attribute attribute = find_attribute(message.source, row.before);
    return attribute.name.empty() ? Words() : Words{attribute.value};
}

// The radix of a display format, without what stands in parentheses behind it.
Words radix_in_source(const Message& message, const Row&) {
    StartTag tag(message.source);
    for (Attribute attribute; tag.next(attribute);) {
    }
    std::string_view text = tag.rest();
    if (text.empty() || text.front() != '>') {
        return {};
    }
    text.remove_prefix(1);
    const Words words = words_of(taken_until(text, "<"), 3);
    return words.size() < 3 ? Words() : Words{words[2].substr(0, words[2].find('('))};
}

constexpr std::string_view kInvalidFormat = "Invalid display format specification string ";

Words verb_in_text(const Message& message, const Row&) {
    const std::size_t start = std::min(kInvalidFormat.size(), message.text.size());
    return words_of(message.text.substr(start), 1);
}

Words object_in_text(const Message& message, const Row&) {
    const std::size_t start = std::min(kInvalidFormat.size(), message.text.size());
    const Words words = words_of(message.text.substr(start), 2);
    return words.size() == 2 && words[0] == "add" ? Words{words[1]} : Words();
}

constexpr std::string_view kOfObject = " is not a recognized attribute for object ";
constexpr std::string_view kOfVector = " is not a recognized attribute for vector stimulus ";
constexpr std::string_view kNoSetting =
    " is not a valid sub tag of the main tag FUNCTION_INFORMATION";

// Of several rows of an id the first that knows a word counts.
// clang-format off
const std::vector<Row> kRows = {
    {"unknown-section", in_text, "Main element tag ", " is not a valid recognized tag",
     {"CUSTOM_VECTORS", "FUNCTION_INFORMATION", "HIDDEN_PARAMETERS", "HTML_TEXT", "INCLUDE",
      "MACROS", "MESSAGES", "MSGS", "PARAMETERS", "PARAMETER_RULES", "PORTS", "PORT_RULES", "RULES",
      "WAVE_DATA", "WIZARD_DATA"}},
    {"include-attribute", in_text, "Attribute ", " is not a recognized attribute", {"FILE"}},
    {"include-sub-tag", in_text, "Sub element tag ", " is not a valid sub tag", {"FILE"}},
    {"function-information-sub-tag", in_text, "Sub element tag ", kNoSetting,
     {"START_TIME", "TIME_DELTA", "TIME_SCALE", "VHDL_LIBRARY"}},
    {"function-information-attribute", in_text, "Sub tag",
     " is not a recognized sub-tag for VHDL_LIBRARY ", {"NAME"}},
    {"function-information-attribute", in_text, "Sub tag",
     " is not a recognized sub-tag for START_TIME ", {"VALUE"}},
    {"function-information-attribute", in_text, "Sub tag",
     " is not a recognized sub-tag for TIME_", {"VALUE"}},
    {"unknown-type", attributes_in_source, "", "", {"TYPE"}},
    {"parameter-type", in_text, "Parameter type ", " of parameter ", {"INTEGER", "STRING"}},
    {"parameter-name", attributes_in_source, "", "", {"NAME"}},
    {"parameter-cnx-type", in_text, "Attribute value ", " is not a recognized value",
     {"CONSTANT", "PRIVATE"}},
    {"parameter-attribute", in_text, "Attribute ", " is not a recognized attribute",
     {"CNX_TYPE", "DEFAULT_VALUE", "DEFAULT_VALUE_INDEX", "LPM_HINT", "NAME", "TYPE", "VALUE"}},
    {"port-type", in_text, "Port type ", " of port ", {"BIDIR", "BURIED", "INPUT", "OUTPUT"}},
    {"port-name", attributes_in_source, "", "", {"NAME"}},
    {"port-cnx-type", in_text, "Attribute value ", " is not a recognized value", {"USED_PORT"}},
    {"port-attribute", in_text, "Attribute ", " is not a recognized attribute",
     {"ASYNC", "CLOCK_PERIOD", "CNX_TYPE", "DEFAULT_VALUE", "HIGH_PROBABILITY",
      "INITIAL_VEC_STATE", "IS_CLOCK_PORT", "NAME", "TYPE", "USAGE", "WIDTH", "WIDTH2D"}},
    // No words, but what may stand there.
    {"high-probability", value_in_source, "HIGH_PROBABILITY", "", {"whole numbers from 1 to 100"}},
    {"hidden-parameter-attribute", in_text, "Attribute ", " is not a recognized attribute",
     {"NAME", "VALUE"}},
    {"object-sub-tag", in_text, "Sub tag ", " is not a valid sub tag",
     {"CONSTANT_RANGE", "FORCE_RANGE", "FORCE_VALUE", "STATE", "VALUE_RULE"}},
    {"range-attribute", attribute_in_text, "FORCE_VALUE", kOfObject,
     {"ELSE", "IF", "THEN", "TO", "V", "WHEN", "WHEN_CMD"}},
    {"range-attribute", attribute_in_text, "STATE", kOfObject,
     {"ELSE", "IF", "THEN", "TO", "V", "WHEN", "WHEN_CMD"}},
    {"range-attribute", attribute_in_text, "FORCE_RANGE", kOfObject,
     {"IF", "MAX", "MIN", "WHEN", "WHEN_CMD"}},
    {"range-attribute", attribute_in_text, "CONSTANT_RANGE", kOfObject,
     {"IF", "MAX", "MIN", "THEN", "TO", "V", "WHEN", "WHEN_CMD"}},
    {"range-sub-tag", in_text, "Sub tag ", " is not a recognized sub-tag",
     {"ELSE", "IF", "MAX", "MIN", "THEN", "TO", "V", "WHEN", "WHEN_CMD"}},
    {"value-rule-sub-tag", in_text, "Unrecognized sub tag ", " of VALUE_RULE ",
     {"ELSE", "IF", "THEN"}},
    // Anything but ON switches a rule off, on purpose perhaps: NO is no misspelling.
    {"rule-without-data", value_in_source, "ENABLED", "", {"ON"}, 0},
    {"rules-sub-tag", in_text, "Sub element tag ", " is not a valid sub tag",
     {"CONDITION", "RULE"}},
    {"message-type", value_in_source, "TYPE", "",
     {"CRITICAL_WARNING", "ERROR", "INFO", "WARNING"}},
    {"message-type", attributes_in_source, "", "", {"TYPE"}},
    {"message-sub-tag", in_text, "Sub tag ", " is not a recognized sub-tag",
     {"ELSE", "IF", "TEXT", "THEN", "WHEN"}},
    {"messages-sub-tag", in_text, "Sub element tag ", " is not a valid sub tag",
     {"MESSAGE", "MSG"}},
    {"macros-sub-tag", in_text, "Sub element tag ", " is not a valid sub tag", {"MACRO"}},
    {"macro-sub-tag", in_text, "Sub tag", " is not a recognized sub-tag", {"DEFINITION"}},
    {"vector-name", attributes_in_source, "", "", {"NAME"}},
    {"vector-display-truncation", in_text, "Attribute DISPLAY_TRUNCATION has illegal value ",
     " in wave ( ", {"HIGH", "LOW"}},
    {"vector-attribute", in_text, "Attribute ", kOfVector,
     {"DISPLAY_TRUNCATION", "INDEX", "MAX_TIME", "NAME", "TIME_STEP"}},
    {"vector-sub-tag", in_text, "Unrecognized Sub tag ", " for ",
     {"CAPTION", "DESCRIPTION", "DISPLAY", "ELSE", "IF", "STIM", "THEN", "VECTOR",
      "WAVE_CONDITION"}},
    {"then-sub-tag", tag_in_source, "", "", {"STIM", "VECTOR"}},
    {"else-sub-tag", tag_in_source, "", "", {"STIM", "VECTOR"}},
    {"display-radix", radix_in_source, "", "",
     {"-bin", "-fixed_point", "-hex", "-signed", "-unsigned"}},
    {"display-command", verb_in_text, "", "", {"add"}},
    {"display-command", object_in_text, "", "", {"wave"}},
    {"wizard-map-name", attributes_in_source, "", "", {"NAME"}},
    {"wizard-map-attribute", in_text, "Attribute ", kOfVector,
     {"MAP_CONSTANTS", "MAP_USED_PORTS", "MODULE_NAME", "NAME", "WIZARD_NAME"}},
    {"wizard-map-sub-tag", in_text, "Unrecognized Sub tag ", " for ",
     {"PARAMETER", "PORT", "WIZARD_CONDITION"}},
};
// clang-format on

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

std::string_view suggestion_of(const Row& row, const Message& message) {
    for (const std::string_view word : row.read(message, row)) {
        if (const std::string_view meant = synonym(row.id, word); !meant.empty()) {
            return meant;
        }
        const std::string_view nearest = nearest_word(word, row.known, row.most_edits);
        if (!nearest.empty()) {
            return nearest;
        }
    }
    return {};
}

constexpr std::string_view kPartlyKnown[] = {
    "display-command",  // a whole command is wrong, not a word
    "object-sub-tag",   // what fits into a parameter does not into a port
    "range-sub-tag",
};

// A longer list, as that of the sections, hides the message that it is to explain.
constexpr std::size_t kMostListed = 12;

// Whether any word that the row knows may stand in place of the one that was read. A message that
// something is missing has read none, and a word that is known is not what the message is about.
bool is_choice(const Row& row, const Words& read) {
    return row.read != attributes_in_source && row.most_edits > 0 && !read.empty() &&
           row.known.size() <= kMostListed &&
           std::find(std::begin(kPartlyKnown), std::end(kPartlyKnown), row.id) ==
               std::end(kPartlyKnown) &&
           std::find_first_of(read.begin(), read.end(), row.known.begin(), row.known.end()) ==
               read.end();
}

}  // namespace

std::string suggested_word(std::string_view id, std::string_view text,
                           std::string_view source_from_place) {
    for (const Row& row : kRows) {
        if (row.id == id) {
            const std::string_view word = suggestion_of(row, {text, source_from_place});
            if (!word.empty()) {
                return std::string(word);
            }
        }
    }
    return {};
}

std::vector<std::string_view> words_known(std::string_view id, std::string_view text,
                                          std::string_view source_from_place) {
    const Message message = {text, source_from_place};
    for (const Row& row : kRows) {
        if (row.id == id && is_choice(row, row.read(message, row))) {
            return row.known;
        }
    }
    return {};
}
