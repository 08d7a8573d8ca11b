#include "tools/text/uri.h"

#include <fmt/format.h>

#include "tools/text/letters.h"

namespace {

bool stands_for_itself(char letter) {
    return is_letter_or_digit(letter) ||
           std::string_view("-._~/").find(letter) != std::string_view::npos;
}

}  // namespace

std::string uri_of_path(std::string_view path) {
    std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
    for (const char letter : path) {
        if (stands_for_itself(letter)) {
            uri += letter;
        } else {
            uri += fmt::format("%{:02X}", static_cast<unsigned char>(letter));
        }
    }
    return uri;
}
