#include "kivo/session/internal/instance/write.h"

#include <algorithm>

namespace kivo_session {

std::string write_list(const std::vector<ListLine>& lines, std::string_view indent,
                       std::string_view separator, std::string_view hint) {
    std::string out;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        out.append(indent).append(lines[i].text);
        out.append(i + 1 < lines.size() ? separator : "");
        out.append(lines[i].is_hint ? hint : "").append("\n");
    }
    return out;
}

std::string write_comment(std::string_view sign, const std::string& text) {
    if (text.empty()) {
        return {};
    }
    std::string line = text;
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
    return std::string(sign) + " " + line + "\n";
}

}  // namespace kivo_session
