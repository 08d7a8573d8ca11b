#include <cassert>
#include <memory>
#include <optional>
#include <utility>

#include "kivo/info/internal/reader.h"
#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/objects/internal/owning.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

// clang-format off
// No blank stands before "used": hosts match on the text.
constexpr MessageText kUnknownRadix = {
    MessageId::kDisplayRadix,
    "Unknown radix {detail}used to specify display format for port {object}"};
constexpr MessageText kInvalidCommand = {
    MessageId::kDisplayCommand,
    "Invalid display format specification string {detail}"};
// clang-format on

constexpr WordRow kVerbs[] = {{"add"}};
constexpr WordRow kObjects[] = {{"wave"}};

struct RadixRow {
    std::string_view word;
    DRO_MEMORY_RADIXES radix;
};

// clang-format off
constexpr RadixRow kRadixes[] = {
    { "-bin",         DRO_RADIX_BINARY      },
    { "-fixed_point", DRO_RADIX_FIXED_POINT },  // with a description in parentheses
    { "-hex",         DRO_RADIX_HEX         },
    { "-signed",      DRO_RADIX_SIGNED      },
    { "-unsigned",    DRO_RADIX_UNSIGNED    },
};
// clang-format on

// One option and what it says.
struct RadixOption {
    std::string_view word;  // what stands before a parenthesis
    std::string_view description;
    std::string_view rest;  // what is left of the option, which a message about it shows
    std::optional<DRO_MEMORY_RADIXES> radix;
};

RadixOption read_radix(std::string_view option) {
    RadixOption read;
    read.rest = option;
    const RadixRow* row = find_row(kRadixes, option);
    if (row != nullptr && row->radix != DRO_RADIX_FIXED_POINT) {
        read.word = option;
        read.radix = row->radix;
        return read;
    }
    read.word = next_token(read.rest, '(');
    row = find_row(kRadixes, read.word);
    if (row != nullptr && row->radix == DRO_RADIX_FIXED_POINT) {
        read.description = next_token(read.rest, ')');
        if (!read.description.empty()) {
            read.radix = DRO_RADIX_FIXED_POINT;
        }
    }
    return read;
}

// About a command of which neither verb nor object may be missing; what else is wrong with it is
// more than one word.
KIVO_MESSAGE invalid_command(std::string_view command, std::string_view verb,
                             std::string_view object) {
    KIVO_MESSAGE message = {.says = kInvalidCommand, .detail = command};
    if (find_row(kVerbs, verb) == nullptr) {
        message.word = verb;
        message.known = kWordsOf<kVerbs>;
    } else if (find_row(kObjects, object) == nullptr) {
        message.word = object;
        message.known = kWordsOf<kObjects>;
    }
    return message;
}

}  // namespace

void KIVO_INFO::process_display_format_string(KIVO_VECTOR_OBJ* vector, const std::string& text) {
    assert(vector != nullptr);
    process_display_format_at(vector, text, {}, {});
}

void KIVO_INFO::process_display_format_at(KIVO_VECTOR_OBJ* vector, std::string_view text,
                                          std::string_view element, KIVO_MARK mark) {
    std::string_view rest = text;
    const std::string_view verb = next_token(rest, ' ');
    const std::string_view object = next_token(rest, ' ');
    const std::string_view option = next_token(rest, ' ');
    const std::string_view port = next_token(rest, ' ');
    const bool is_command = find_row(kVerbs, verb) != nullptr &&
                            find_row(kObjects, object) != nullptr && !option.empty() &&
                            !port.empty();
    if (is_command) {
        const RadixOption read = read_radix(option);
        if (read.radix) {
            auto format = std::make_unique<KIVO_VECTOR_DISPLAY_OBJ>();
            format->port_name = port;
            format->radix = *read.radix;
            format->description = read.description;
            KIVO_OWNING::replace_format(*vector, std::move(format), loaded_->store);
            return;
        }
        post({.says = kUnknownRadix,
              .mark = mark,
              .element = element,
              .word = read.word,
              .object = port,
              .detail = read.rest,
              .known = kWordsOf<kRadixes>});
    }
    KIVO_MESSAGE message = invalid_command(text, verb, object);
    message.mark = mark;
    message.element = element;
    message.object = vector->name;
    post(message);
}
