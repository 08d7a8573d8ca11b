#pragma once

#include <string>

#include "kivo/hdl/hdl_translator.h"

// The translation once more, written as plainly as it can be thought of: tokens come off the front
// of a copy and are looked up in a map built for the call. What the library's answers and speed
// are compared with.
namespace hdl_reference {

inline KIVO_HDL_TRANSLATOR_MAP make_map(KIVO_HDL_LANGUAGE language) {
    KIVO_HDL_TRANSLATOR_MAP map;
    if (language == KIVO_HDL_NHDL) {
        map["and"] = std::string("&");
        map["%"] = std::string("mod");
        map["lte"] = std::string("<=");
        map["lt"] = std::string("<");
        map["gte"] = std::string(">=");
        map["gt"] = std::string(">");
        map["||"] = std::string("#");
        map["/"] = std::string("div");
        map["quot"] = std::string("div");
    } else if (language == KIVO_HDL_VERILOG) {
        map["and"] = std::string("&&");
        map["div"] = std::string("/");
        map["lte"] = std::string("<=");
        map["lt"] = std::string("<");
        map["gte"] = std::string(">=");
        map["gt"] = std::string(">");
        map["quot"] = std::string("/");
    }
    return map;
}

inline std::string take_token(std::string& text) {
    std::string token;
    const std::size_t end = text.find_first_of(" ");
    if (end == std::string::npos) {
        token = text;
        text.clear();
    } else {
        token = text.substr(0, end);
        text = text.substr(end + 1);
    }
    return token;
}

inline std::string translate(const std::string& text, KIVO_HDL_LANGUAGE language) {
    std::string rest = text;
    std::string result;
    KIVO_HDL_TRANSLATOR_MAP map = make_map(language);
    while (rest != "") {
        std::string token = take_token(rest);
        if (result != "") {
            result += std::string(" ");
        }
        if (map.find(token) != map.end()) {
            result += map[token];
        } else {
            result += token;
        }
    }
    return result;
}

}  // namespace hdl_reference
