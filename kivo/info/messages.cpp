#include <memory>
#include <utility>

#include "kivo/info/internal/reader.h"
#include "kivo/toolkit/records/internal/items.h"

namespace {

// clang-format off
constexpr MessageText kUnknownElement = {
    MessageId::kMessagesSubTag,
    "Sub element tag {word} is not a valid sub tag of the main tag MESSAGES"};
constexpr MessageText kNoType = {
    MessageId::kMessageType,
    "Required attribute TYPE not specified for MESSAGE"};
constexpr MessageText kUnknownSubTag = {
    MessageId::kMessageSubTag,
    "Sub tag {word} is not a recognized sub-tag for messages "};
// clang-format on

constexpr WordRow kElements[] = {{"MESSAGE"}, {"MSG"}};

struct SeverityRow {
    std::string_view word;
    KIVO_RULE_KIND kind;
};

// clang-format off
constexpr SeverityRow kSeverities[] = {
    { "CRITICAL_WARNING", KIVO_RULE_CRITICAL_WARNING },
    { "ERROR",            KIVO_RULE_ERROR            },
    { "INFO",             KIVO_RULE_INFO             },
    { "WARNING",          KIVO_RULE_WARNING          },
};
// clang-format on

// The value of TYPE, empty when there is none.
std::string_view type_attribute(KIVO_XML_ELEMENT& element) {
    for (const auto& [name, value] : element.attributes()) {
        if (name == "TYPE") {
            return value;
        }
    }
    return {};
}

KIVO_MESSAGE no_type(const KIVO_XML_ELEMENT& element, std::string_view type) {
    return {.says = kNoType,
            .mark = element.mark(),
            .element = element.tag_name(),
            .attribute = "TYPE",
            .word = type,
            .known = kWordsOf<kSeverities>};
}

struct SubTagRow {
    std::string_view word;
    std::string KIVO_RULE_ELEMENT::*field;
};

// clang-format off
constexpr SubTagRow kSubTags[] = {
    { "ELSE", &KIVO_RULE_ELEMENT::text2 },
    { "IF",   &KIVO_RULE_ELEMENT::text3 },
    { "TEXT", &KIVO_RULE_ELEMENT::text1 },
    { "THEN", &KIVO_RULE_ELEMENT::text1 },
    { "WHEN", &KIVO_RULE_ELEMENT::text3 },
};
// clang-format on

void read_conditional(KIVO_XML_ELEMENT& element, KIVO_RULE_ELEMENT& message,
                      const MessagePoster& poster) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (const SubTagRow* row = find_row(kSubTags, sub.tag_name())) {
            message.*row->field = sub.text();
        } else {
            poster.post(unknown_sub_tag(kUnknownSubTag, element, sub, kWordsOf<kSubTags>));
        }
    }
}

}  // namespace

void KIVO_INFO::process_messages(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (find_row(kElements, element.tag_name()) == nullptr) {
            post(unknown_sub_tag(kUnknownElement, section, element, kWordsOf<kElements>));
            continue;
        }
        const std::string_view type = type_attribute(element);
        const SeverityRow* const severity = find_row(kSeverities, type);
        if (severity == nullptr) {
            post(no_type(element, type));
            continue;
        }
        auto message = std::make_unique<KIVO_RULE_ELEMENT>(element.text(), "", "", severity->kind,
                                                           element.mark());
        if (message->text1.empty()) {
            read_conditional(element, *message, MessagePoster(this));
        }
        if (!message->text1.empty()) {
            KIVO_ITEMS::add(message_list, std::move(message));
        }
    }
}
