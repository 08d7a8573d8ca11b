#include <optional>

#include "kivo/info/internal/reader.h"
#include "kivo/objects/info.h"
#include "kivo/objects/vector_obj.h"
#include "kivo/toolkit/internal/text_view.h"

namespace {

struct RadixRow {
    std::string_view option;
    DRO_MEMORY_RADIXES radix;
};

// clang-format off
constexpr RadixRow kRadixes[] = {
    { "-bin",      DRO_RADIX_BINARY   },
    { "-hex",      DRO_RADIX_HEX      },
    { "-signed",   DRO_RADIX_SIGNED   },
    { "-unsigned", DRO_RADIX_UNSIGNED },
};
// clang-format on

// The radix that the option names, none for an unknown option. A fixed-point option is split at
// its parentheses: "description" gets what stands between them. "option" keeps what is left of it,
// which the message about an unknown radix shows.
std::optional<DRO_MEMORY_RADIXES> take_radix(std::string_view& option,
                                             std::string_view& description) {
    for (const RadixRow& row : kRadixes) {
        if (option == row.option) {
            return row.radix;
        }
    }
    if (next_token(option, '(') != "-fixed_point") {
        return std::nullopt;
    }
    description = next_token(option, ')');
    if (description.empty()) {
        return std::nullopt;
    }
    return DRO_RADIX_FIXED_POINT;
}

}  // namespace

void KIVO_INFO::process_display_format_string(KIVO_VECTOR_OBJ* vector, const std::string& text) {
    process_display_format_at(vector, text, {});
}

void KIVO_INFO::process_display_format_at(KIVO_VECTOR_OBJ* vector, std::string_view text,
                                          KIVO_MARK mark) {
    std::string_view rest = text;
    const std::string_view verb = next_token(rest, ' ');
    const std::string_view object = next_token(rest, ' ');
    std::string_view option = next_token(rest, ' ');
    const std::string_view port = next_token(rest, ' ');
    if (verb == "add" && object == "wave" && !option.empty() && !port.empty()) {
        std::string_view description;
        if (const auto radix = take_radix(option, description)) {
            vector->add_vector_display_format(std::string(port), *radix, std::string(description));
            return;
        }
        // No blank stands before "used": hosts match on the text.
        post({KIVO_MESSAGE_ID::kDisplayRadix, mark,
              compose("Unknown radix ", option, "used to specify display format for port ", port)});
    }
    post({KIVO_MESSAGE_ID::kDisplayCommand, mark,
          compose("Invalid display format specification string ", text)});
}
