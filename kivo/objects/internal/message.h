#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "kivo/toolkit/place.h"

// Every message that the library posts has a stable id, by which tools and hosts know it.
// clang-format off
#define KIVO_MESSAGE_IDS(ROW)                                              \
    ROW(kHostMessage,               "host-message")                        \
    ROW(kFileNotFound,              "file-not-found")                      \
    ROW(kFileNotOpened,             "file-not-opened")                     \
    ROW(kFileNotRead,               "file-not-read")                       \
    ROW(kReadError,                 "read-error")                          \
    ROW(kTooManyFiles,              "too-many-files")                      \
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
    ROW(kWizardMapObjects,          "wizard-map-objects")                  \
    ROW(kIfWithSubTags,             "if-with-sub-tags")                    \
    ROW(kTextWithSubTags,           "text-with-sub-tags")
// clang-format on

#define KIVO_MESSAGE_ENUMERATOR(name, id) name,
enum class MessageId { KIVO_MESSAGE_IDS(KIVO_MESSAGE_ENUMERATOR) };
#undef KIVO_MESSAGE_ENUMERATOR

// The text that a message of an id has. Facts in braces stand for what the message tells of them.
struct MessageText {
    MessageId id;
    std::string_view text;
};

// The words that a reader knows in one place, gathered from the reader's own table when somebody
// asks for them.
struct KnownWords {
    using Gather = void (*)(std::uint32_t part, std::vector<std::string>& words);

    Gather gather = nullptr;  // null: none
    std::uint32_t part = 0;   // of the table; what the number means is the reader's
};

// One message on its way to the error list, with what KIVO_MESSAGE_FACTS tells of it. The views
// are looked at while it is posted and not afterwards.
struct KIVO_MESSAGE {
    MessageText says{MessageId::kHostMessage, "{detail}"};
    KIVO_MARK mark{};
    std::string_view element{};
    std::string_view attribute{};
    std::string_view word{};
    std::string_view object{};
    std::string_view reason{};
    std::string_view detail{};  // what only the text tells
    KnownWords known{};
    KIVO_MARK related{};
};

// The element that declares an object, for messages about that; nothing is known of what no element
// declares. Views as in a message.
struct KIVO_DECLARING_ELEMENT {
    KIVO_MARK mark{};
    std::string_view tag{};
    std::string_view attribute{};  // TYPE, or NAME when it has none
    std::string_view word{};       // the value of that attribute
};

// The text with its facts filled in.
std::string fill_in(const KIVO_MESSAGE& message);

// "unknown-section" and its like.
const char* kivo_message_id_name(MessageId id);
