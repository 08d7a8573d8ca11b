#include "tools/text/uri.h"

#include <fmt/format.h>

namespace {

bool stands_for_itself(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= 'a' && letter <= 'z') ||
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
