#include "kivo/objects/internal/message.h"

#include <cstddef>

namespace {

#define KIVO_MESSAGE_ID_NAME(name, id) id,
constexpr const char* kIdNames[] = {KIVO_MESSAGE_IDS(KIVO_MESSAGE_ID_NAME)};
#undef KIVO_MESSAGE_ID_NAME

struct FactRow {
    std::string_view name;
    std::string_view KIVO_MESSAGE::*fact;
};

// clang-format off
constexpr FactRow kFacts[] = {
    { "attribute", &KIVO_MESSAGE::attribute },
    { "detail",    &KIVO_MESSAGE::detail    },
    { "element",   &KIVO_MESSAGE::element   },
    { "object",    &KIVO_MESSAGE::object    },
    { "word",      &KIVO_MESSAGE::word      },
};
// clang-format on

std::string_view fact_of(const KIVO_MESSAGE& message, std::string_view name) {
    for (const FactRow& row : kFacts) {
        if (row.name == name) {
            return message.*row.fact;
        }
    }
    return {};
}

// Calls "take" with each piece of the text in turn, those in braces replaced.
template <class Take>
void for_each_piece(const KIVO_MESSAGE& message, const Take& take) {
    std::string_view rest = message.says.text;
    for (;;) {
        const std::size_t open = rest.find('{');
        take(rest.substr(0, open));
        if (open == std::string_view::npos) {
            return;
        }
        const std::size_t close = rest.find('}', open);
        take(fact_of(message, rest.substr(open + 1, close - open - 1)));
        rest.remove_prefix(close + 1);
    }
}

}  // namespace

std::string fill_in(const KIVO_MESSAGE& message) {
    std::size_t size = 0;
    for_each_piece(message, [&size](std::string_view piece) { size += piece.size(); });
    std::string text;
    text.reserve(size);
    for_each_piece(message, [&text](std::string_view piece) { text += piece; });
    return text;
}

const char* kivo_message_id_name(MessageId id) {
    return kIdNames[static_cast<std::size_t>(id)];
}
