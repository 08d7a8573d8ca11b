#include "tools/text/xml_escape.h"

#include "tools/text/text_escape.h"

std::string escape_xml(std::string_view text) {
    std::string escaped;
    for (const char letter : escape_text(text)) {
        switch (letter) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            case '\'':
                escaped += "&#39;";
                break;
            default:
                escaped += letter;
        }
    }
    return escaped;
}
