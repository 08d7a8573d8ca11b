#include "tools/text/json_text.h"

#include <nlohmann/json.hpp>

std::string json_text(const nlohmann::ordered_json& document) {
    constexpr bool kIsAscii = true;
    return document.dump(2, ' ', kIsAscii, nlohmann::ordered_json::error_handler_t::replace);
}
