#pragma once

#include <string>
#include <vector>

#include "kivo/toolkit/place.h"

// Every message that the library posts has a stable id, by which tools and hosts know it.
// clang-format off
#define KIVO_MESSAGE_IDS(ROW)                                              \
    ROW(kHostMessage,               "host-message")                        \
    ROW(kFileNotFound,              "file-not-found")                      \
    ROW(kInvalidFile,               "invalid-file")                        \
    ROW(kParserFinding,             "xml-syntax")                          \
    ROW(kNoRoot,                    "no-root")                             \
    ROW(kIncludeCycle,              "include-cycle")                       \
    ROW(kUnknownSection,            "unknown-section")                     \
    ROW(kIncludeAttribute,          "include-attribute")                   \
    ROW(kIncludeSubTag,             "include-sub-tag")                     \
    ROW(kFunctionInfoSubTag,        "function-information-sub-tag")        \
    ROW(kFunctionInfoAttribute,     "function-information-attribute")      \
    ROW(kFunctionInfoNested,        "function-information-nested-tag")     \
    ROW(kTypeClash,                 "type-clash")                          \
    ROW(kUnknownType,               "unknown-type")                        \
    ROW(kParameterType,             "parameter-type")                      \
    ROW(kParameterName,             "parameter-name")                      \
    ROW(kParameterConnection,       "parameter-cnx-type")                  \
    ROW(kParameterAttribute,        "parameter-attribute")                 \
    ROW(kPortType,                  "port-type")                           \
    ROW(kPortName,                  "port-name")                           \
    ROW(kPortConnection,            "port-cnx-type")                       \
    ROW(kPortAttribute,             "port-attribute")                      \
    ROW(kHighProbability,           "high-probability")                    \
    ROW(kHiddenParameterAttribute,  "hidden-parameter-attribute")          \
    ROW(kObjectSubTag,              "object-sub-tag")                      \
    ROW(kRangeAttribute,            "range-attribute")                     \
    ROW(kRangeSubTag,               "range-sub-tag")                       \
    ROW(kValueRuleSubTag,           "value-rule-sub-tag")                  \
    ROW(kRuleWithoutData,           "rule-without-data")                   \
    ROW(kRulesSubTag,               "rules-sub-tag")                       \
    ROW(kMessageType,               "message-type")                        \
    ROW(kMessageSubTag,             "message-sub-tag")                     \
    ROW(kMessagesSubTag,            "messages-sub-tag")                    \
    ROW(kMacrosSubTag,              "macros-sub-tag")                      \
    ROW(kMacroSubTag,               "macro-sub-tag")                       \
    ROW(kVectorName,                "vector-name")                         \
    ROW(kVectorTruncation,          "vector-display-truncation")           \
    ROW(kVectorAttribute,           "vector-attribute")                    \
    ROW(kVectorSubTag,              "vector-sub-tag")                      \
    ROW(kThenWithoutStimulus,       "then-sub-tag")                        \
    ROW(kElseWithoutStimulus,       "else-sub-tag")                        \
    ROW(kSurplusElse,               "surplus-else")                        \
    ROW(kDisplayRadix,              "display-radix")                       \
    ROW(kDisplayCommand,            "display-command")                     \
    ROW(kWizardMapName,             "wizard-map-name")                     \
    ROW(kWizardMapAttribute,        "wizard-map-attribute")                \
    ROW(kWizardMapSubTag,           "wizard-map-sub-tag")                  \
    ROW(kIfWithSubTags,             "if-with-sub-tags")                    \
    ROW(kTextWithSubTags,           "text-with-sub-tags")
// clang-format on

#define KIVO_MESSAGE_ENUMERATOR(name, id) name,
enum class KIVO_MESSAGE_ID { KIVO_MESSAGE_IDS(KIVO_MESSAGE_ENUMERATOR) };
#undef KIVO_MESSAGE_ENUMERATOR

// One message on its way to the error list.
struct KIVO_MESSAGE {
    KIVO_MESSAGE_ID id;
    KIVO_MARK mark;
    std::string text;
};

using KIVO_MESSAGE_LIST = std::vector<KIVO_MESSAGE>;
