#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "tools/description/document.h"

// What an element is, by its tag and those around it. Tags that mean the same are one.
enum class Context : std::uint8_t {
    kUnread,  // the library passes it over, with all that it holds
    kRoot,
    kInclude,
    kIncludedFile,
    kFunctionInformation,
    kVhdlLibrary,
    kStartTime,
    kTimeScale,
    kTimeDelta,
    kParameters,  // PARAMETER_RULES too
    kPorts,       // PORT_RULES too
    kHiddenParameters,
    kMacros,
    kRules,
    kMessages,
    kVectors,
    kWizardData,
    kHtmlText,
    kParameter,  // of a wizard map too
    kPort,       // of a wizard map too
    kHiddenParameter,
    kForceValue,
    kHiddenForceValue,
    kState,
    kParameterRange,
    kPortRange,
    kConstantRange,
    kValueRule,
    kMacro,
    kDefinition,
    kRule,
    kMessage,
    kVector,
    kCommands,  // THEN or ELSE of a vector
    kWaveCondition,
    kWizardMap,
    kWizardCondition,
    kSequence,      // conditional text: INTRO, END, DESCRIPTION
    kSequencePart,  // T, THEN, ELSE: a text or a sequence
    kSequenceCondition,
    kCondition,  // IF, WHEN, WHEN_CMD, and the parts of a VALUE_RULE
    kValueText,
    kStateText,
    kLimit,
    kStimulus,
    kDisplay,
    kPlainText,
    kCount
};

// What the parts of such an element are to each other. Rooms switch over it without "default", so
// that the compiler names those that have to know of a new one.
enum class Form : std::uint8_t {
    kOther,
    kMacro,
    kForce,      // a value, perhaps another one, and a condition
    kRange,      // limits and a condition
    kValueRule,  // a text, or IF, THEN and ELSE
    kRule,
    kMessage,
    kVector,  // IF, THEN, ELSE and commands in their order
    kWizardCondition,
    kSequence,   // IF, THEN, ELSE and texts in their order
    kCondition,  // a text
};

// What a text or the value of an attribute is.
enum class Meaning : std::uint8_t {
    kNotRead,
    kText,  // whatever the author likes
    kFileName,
    kName,         // of a parameter, port or macro: conditions can write it
    kTitle,        // the name of a vector or map
    kType,         // of which the library says when it does not know it
    kWord,         // one of a few; any other counts as one of them
    kWholeNumber,  // read up to the first letter that is none of it
    kTime,         // a number that is kept as text
    kTimeScale,    // a unit of time
    kInitialValue,
    kList,       // of the values of a parameter, separated by ";"
    kLibraries,  // separated by ";"
    kArguments,  // names separated by ","
    kValue,      // an expression or a word of a list
    kState,      // of a port
    kExpression,
    kCondition,
    kCommand,
    kDisplayFormat,
};

// The words of an attribute of which any other counts as one.
struct Keywords {
    const std::string_view* words;
    std::size_t count;
    std::string_view otherwise;

    bool has(std::string_view word) const;
    std::vector<std::string_view> all() const { return {words, words + count}; }
};

struct AttributeRule {
    std::uint64_t contexts;  // as bits
    std::string_view name;
    Meaning meaning;
    const Keywords* keywords;  // for words and states, else null
};

// Whether the library says it where it does not know a part of an element.
enum class Telling : std::uint8_t { kNever, kOfFirst, kAlways };

struct ContextRule {
    Context context;
    Telling of_sub_elements;
    Telling of_attributes;
    Meaning text;
    Form form;
};

const ContextRule& rule_of(Context context);
inline Form form_of(Context context) {
    return rule_of(context).form;
}

// Null for an attribute that the element does not have.
const AttributeRule* find_attribute_rule(Context context, std::string_view name);

// What an element of that tag is in another; kUnread for one that the library ignores.
Context context_in(Context parent, std::string_view tag);

// The tags and attribute names that are known there, in alphabetical order.
std::vector<std::string_view> tags_in(Context context);
std::vector<std::string_view> attributes_in(Context context);

// What a port can be.
extern const Keywords kUsageStates;

// Whether the library takes the attribute or element of that name for a condition, wherever it
// reads one.
bool is_condition_word(std::string_view word);

// What the elements of a document are, in their order; all unread when its root is not ROOT.
std::vector<Context> contexts_of(const Document& document);
