#include <memory>

#include "kivo/info/internal/reader.h"

namespace {

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

KIVO_RULE_KIND severity(KIVO_XML_ELEMENT& element) {
    for (const auto& [name, value] : element.attributes()) {
        if (name != "TYPE") {
            continue;
        }
        for (const SeverityRow& row : kSeverities) {
            if (value == row.word) {
                return row.kind;
            }
        }
    }
    return KIVO_RULE_NO_MESSAGE_TYPE;
}

// The field that a sub-element of a conditional message fills, null for an unknown tag.
std::string KIVO_RULE_ELEMENT::*field_of(std::string_view tag) {
    if (tag == "THEN" || tag == "TEXT") {
        return &KIVO_RULE_ELEMENT::text1;
    }
    if (tag == "ELSE") {
        return &KIVO_RULE_ELEMENT::text2;
    }
    return tag == "IF" || tag == "WHEN" ? &KIVO_RULE_ELEMENT::text3 : nullptr;
}

void read_conditional(KIVO_XML_ELEMENT& element, KIVO_RULE_ELEMENT& message,
                      KIVO_MESSAGE_LIST& problems) {
    for (KIVO_XML_ELEMENT& sub : element.sub_elements()) {
        if (std::string KIVO_RULE_ELEMENT::*field = field_of(sub.tag_name())) {
            message.*field = sub.text();
        } else {
            MessageCollector(problems, sub.mark())
                .add(KIVO_MESSAGE_ID::kMessageSubTag, "Sub tag ", sub.tag_name(),
                     " is not a recognized sub-tag for messages ");
        }
    }
}

}  // namespace

void KIVO_INFO::process_messages(KIVO_XML_ELEMENT& section) {
    for (KIVO_XML_ELEMENT& element : section.sub_elements()) {
        if (element.tag_name() != "MESSAGE" && element.tag_name() != "MSG") {
            post({KIVO_MESSAGE_ID::kMessagesSubTag, element.mark(),
                  compose("Sub element tag ", element.tag_name(),
                          " is not a valid sub tag of the main tag MESSAGES")});
            continue;
        }
        const KIVO_RULE_KIND kind = severity(element);
        if (kind == KIVO_RULE_NO_MESSAGE_TYPE) {
            post({KIVO_MESSAGE_ID::kMessageType, element.mark(),
                  "Required attribute TYPE not specified for MESSAGE"});
            continue;
        }
        auto message =
            std::make_unique<KIVO_RULE_ELEMENT>(element.text(), "", "", kind, element.mark());
        if (message->text1.empty()) {
            KIVO_MESSAGE_LIST problems;
            read_conditional(element, *message, problems);
            copy_messages(std::move(problems));
        }
        if (!message->text1.empty()) {
            message_list.add_at_tail(message.release());
        }
    }
}
